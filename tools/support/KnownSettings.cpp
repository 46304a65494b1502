#include "support/KnownSettings.h"

#include "support/Suggestion.h"

#include "globals/LastRun.h"
#include "globals/MeasurementManager.h"
#include "globals/PathRegistry.h"
#include "globals/SettingsKeys.h"

#include <QDateTime>
#include <QDir>
#include <QVariant>

#include <algorithm>

namespace globalsctl {

using namespace TEKLUVA;

namespace {

bool isStateWord(const QVariant& value)
{
    for (int state = E_RS_INITIALIZING; state <= E_RS_RESTART; ++state) {
        if (value.toString().compare(runtimeStateWord(E_RuntimeState(state)), Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

bool isWholeNumber(const QVariant& value)
{
    bool isNumber = false;
    value.toString().toULongLong(&isNumber);
    return isNumber;
}

bool isTime(const QVariant& value)
{
    return value.toDateTime().isValid();
}

bool isTruth(const QVariant& value)
{
    const QString text = value.toString();
    return text == QLatin1String("true") || text == QLatin1String("false");
}

bool isLanguage(const QVariant& value)
{
    return value.toString() == QLatin1String("en") || value.toString() == QLatin1String("de");
}

bool isUnit(const QVariant& value)
{
    const auto units = MeasurementManager::getMeasurementUnits();
    return std::any_of(units.begin(), units.end(), [&value](E_MeasurementUnit unit) {
        const QString known = MeasurementManager::getInstance()->getLinearMeasurementUnitAbbrevation(unit);
        return value.toString() == known;
    });
}

bool isFolder(const QVariant& value)
{
    return QDir::isAbsolutePath(value.toString()) && QDir(value.toString()).exists();
}

bool isText(const QVariant& /*value*/)
{
    return true;
}

struct KnownRow
{
    QLatin1String group;
    QLatin1String key;
    bool (*accepts)(const QVariant& value) = nullptr;
    const char* wanted = nullptr;
};

constexpr KnownRow KNOWN[] = {
    {SettingsKeys::APPLICATION, SettingsKeys::STATE, &isStateWord, "a state that is known"},
    {SettingsKeys::APPLICATION, SettingsKeys::ERROR_CODE, &isWholeNumber, "a whole number"},
    {SettingsKeys::APPLICATION, SettingsKeys::LIFE_TIME, &isTime, "a time"},
    {SettingsKeys::APPLICATION, SettingsKeys::TIME_SYNC, &isTruth, "true or false"},
    {SettingsKeys::APPLICATION, SettingsKeys::AUTO_SAVE, &isTruth, "true or false"},
    {SettingsKeys::APPLICATION, SettingsKeys::PROCESS, &isWholeNumber, "a whole number"},
    {SettingsKeys::APPLICATION, SettingsKeys::PROCESS_START, &isText, ""},
    {SettingsKeys::APPLICATION, SettingsKeys::BOOT, &isText, ""},
    {SettingsKeys::LOCALE, SettingsKeys::LANGUAGE, &isLanguage, "en or de"},
    {SettingsKeys::LOCALE, SettingsKeys::CONSTRUCTION_UNIT, &isUnit, "the abbreviation of a unit"},
    {SettingsKeys::LOCALE, SettingsKeys::ARRANGEMENT_UNIT, &isUnit, "the abbreviation of a unit"},
};

constexpr const char* SECRETS[] = {"password", "passwd",     "passwort",     "passphrase", "kennwort",
                                   "pwd",      "secret",     "token",        "apikey",     "api_key",
                                   "api-key",  "credential", "authorization"};

QStringList pathKeys()
{
    QStringList keys;
    for (const PathDescription& path : describePaths()) {
        if (!path.overrideKey.isEmpty())
            keys << path.overrideKey;
    }
    return keys;
}

QStringList keysOf(const QString& group)
{
    static const QStringList PATH_KEYS = pathKeys(); // whose description reads the settings
    QStringList keys = group == SettingsKeys::USER_PATHS ? PATH_KEYS : QStringList();
    for (const KnownRow& row : KNOWN) {
        if (group == row.group)
            keys << row.key;
    }
    return keys;
}

QString faultOfValue(const QVariant& value, bool (*accepts)(const QVariant& value), const char* wanted)
{
    if (accepts(value))
        return {};
    return QStringLiteral("wants %1, not \"%2\"").arg(QLatin1String(wanted), value.toString());
}

} // namespace

QString faultOfSetting(const QString& path, const QVariant& value)
{
    const QString group = path.section(QLatin1Char('/'), 0, 0);
    const QString key = path.section(QLatin1Char('/'), 1);
    const QStringList keys = keysOf(group);
    if (keys.isEmpty())
        return {};
    if (!keys.contains(key)) {
        const bool isMisspelt = !closestTo(key, keys).isEmpty();
        // The application may keep more in a group of its own name.
        const bool isItsOwn = group == SettingsKeys::APPLICATION && !isMisspelt;
        return isItsOwn ? QString() : QStringLiteral("is not known") + suggestion(key, keys);
    }
    if (group == SettingsKeys::USER_PATHS)
        return faultOfValue(value, &isFolder, "the absolute path of a folder that exists");
    const auto* row = std::find_if(std::begin(KNOWN), std::end(KNOWN), [&](const KnownRow& known) {
        return group == known.group && key == known.key;
    });
    return faultOfValue(value, row->accepts, row->wanted);
}

bool namesSecret(const QString& text)
{
    const QStringList words = wordsForSecrets();
    return std::any_of(words.begin(), words.end(),
                       [&text](const QString& word) { return text.contains(word, Qt::CaseInsensitive); });
}

QStringList wordsForSecrets()
{
    QStringList words;
    for (const char* word : SECRETS)
        words << QString::fromLatin1(word);
    return words;
}

} // namespace globalsctl
