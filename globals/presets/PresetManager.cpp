#include "globals/PresetManager.h"

#include "globals/ConfigManager.h"
#include "globals/DataFileCreator.h"
#include "globals/DataFileReader.h"
#include "globals/Exception.h"
#include "globals/foundation/Misuse_p.h"
#include "globals/logs/ActiveLog_p.h"
#include "globals/presets/PresetPassword_p.h"
#include "globals/presets/PresetTable_p.h"

#include <QFile>
#include <QHash>
#include <QStringList>

#include <algorithm>
#include <vector>

namespace TEKLUVA {

namespace {

/// Throws as the library always does: the description in UTF-8, the exit flag set.
[[noreturn]] void fail(E_ExceptionType type, const QString& description)
{
    throw Exception(type, description.toStdString(), true);
}

/// Makes what is stored of a default.
struct ToVariant
{
    QVariant operator()(const char* text) const { return QString::fromLatin1(text); }
    QVariant operator()(float (*value)()) const { return value(); }
    template <typename Number>
    QVariant operator()(Number number) const
    {
        return number;
    }
};

/// The type in which a default is stored.
struct TypeName
{
    QString operator()(double /*value*/) const { return QStringLiteral("double"); }
    QString operator()(float /*value*/) const { return QStringLiteral("float"); }
    QString operator()(int /*value*/) const { return QStringLiteral("int"); }
    QString operator()(bool /*value*/) const { return QStringLiteral("bool"); }
    QString operator()(const char* /*value*/) const { return QStringLiteral("string"); }
    QString operator()(float (* /*value*/)()) const { return QStringLiteral("float"); }
};

/// The key of the preset that is the bound. Where no preset is, the number.
QString boundInWords(E_PresetValue preset, double number)
{
    const PresetRow* row = presetRow(preset);
    return row ? QString::fromLatin1(row->key) : QString::number(number, 'g', 15);
}

QString inWords(const PresetConstraint& constraint)
{
    return QString::fromLatin1(constraint.words)
        .replace(QLatin1String("%lower"), boundInWords(constraint.lower, constraint.min))
        .replace(QLatin1String("%upper"), boundInWords(constraint.upper, constraint.max));
}

PresetDescription describe(const PresetRow& row)
{
    return {row.value, QString::fromLatin1(row.key), std::visit(TypeName(), row.initial),
            inWords(row.constraint)};
}

} // namespace

class GLOBALS_NO_EXPORT PresetManager::Private
{
public:
    /// The value of a preset. Null when it has none, and for a number that is no preset.
    QVariant* find(E_PresetValue preset)
    {
        return isGiven(preset) && slot(preset) ? &*slot(preset) : nullptr;
    }

    QVariant& fallback()
    {
        std::optional<QVariant>& entry = slot(E_PV_FALLBACK);
        if (!entry) {
            Misuse::warn("PresetManager::getPreset() was called before init(): presets have no values yet.");
            entry.emplace();
        }
        return *entry;
    }

    /// Does nothing for a number that is no preset.
    void store(E_PresetValue preset, const QVariant& value)
    {
        if (isGiven(preset))
            slot(preset) = value;
    }

    /// Stores \p value when it is above the current one, or the first.
    void raise(E_PresetValue preset, const QVariant& value)
    {
        const QVariant* current = find(preset);
        if (!current || value.toDouble() > current->toDouble())
            store(preset, value);
    }

    /// Stores \p value when it is below the current one, or the first.
    void lower(E_PresetValue preset, const QVariant& value)
    {
        const QVariant* current = find(preset);
        if (!current || current->toDouble() > value.toDouble())
            store(preset, value);
    }

    void addKey(const QString& key, E_PresetValue preset) { m_presetsByKey.insert(key, preset); }

    E_PresetValue presetOf(const QString& key) const
    {
        // Most keys are in lower case already, and toLower() allocates.
        const auto asGiven = m_presetsByKey.find(key);
        return asGiven != m_presetsByKey.end() ? *asGiven : m_presetsByKey.value(key.toLower(), E_PV_NONE);
    }

    bool isFromFile = false;

private:
    using Values = std::vector<std::optional<QVariant>>;

    /// The fallback entry is given, too.
    bool isGiven(E_PresetValue preset) const
    {
        return preset >= E_PV_FALLBACK && static_cast<std::size_t>(preset) < m_values.size();
    }

    std::optional<QVariant>& slot(E_PresetValue preset) { return m_values[static_cast<std::size_t>(preset)]; }

    /// By number, so that finding a value takes no search: presets are read in loops over geometry.
    Values m_values = Values(E_PV_FALLBACK + 1 + presetRows().size());
    QHash<QString, E_PresetValue> m_presetsByKey; ///< in lower case
};

PresetManager* PresetManager::__instance = nullptr;

PresetManager::PresetManager()
    : d(std::make_unique<Private>())
{
}

PresetManager* PresetManager::getInstance()
{
    if (!__instance)
        __instance = new PresetManager;
    return __instance;
}

PresetManager::~PresetManager()
{
    __instance = nullptr;
}

void PresetManager::init()
{
    fillNameMap();
    setInitialPresets();
    readFile(ConfigManager::getInstance()->getPath(E_PT_APPLICATION) + QLatin1String("presets.dat"));
}

void PresetManager::fillNameMap()
{
    for (const PresetRow& row : presetRows())
        d->addKey(QString::fromLatin1(row.key), row.value);
}

void PresetManager::setInitialPresets()
{
    setPreset(E_PV_FALLBACK, QVariant());
    for (const PresetRow& row : presetRows())
        setPreset(row.value, std::visit(ToVariant(), row.initial));
}

void PresetManager::readFile(const QString& path)
{
    d->isFromFile = false; // and stays so if one of the next steps throws
    const QString text = textOfFile(path);
    if (text.isEmpty())
        logWarning(QStringLiteral("The preset file %1 has no content. The built-in presets stay in force.")
                       .arg(path));
    readText(text);
    d->isFromFile = !text.isEmpty();
}

bool PresetManager::isFromFile() const
{
    return d->isFromFile;
}

void PresetManager::readText(const QString& text)
{
    for (QString::size_type begin = 0; begin <= text.size();) {
        const auto lineEnd = text.indexOf(QLatin1Char('\n'), begin);
        const auto end = lineEnd < 0 ? text.size() : lineEnd;
        readLine(text.mid(begin, end - begin));
        begin = end + 1;
    }
}

void PresetManager::readLine(const QString& line)
{
    const std::optional<PresetLine> entry = parseLine(line);
    if (entry)
        setPreset(entry->key, entry->value);
}

QString PresetManager::textOfFile(const QString& path)
{
    if (!QFile::exists(path))
        fail(E_ET_MISSING_DATA, QStringLiteral("File %1 is missing").arg(path));
    const DataFileReader reader(path, presetPassword());
    const QByteArray content = reader.getFileContent();
    if (content.isEmpty() && reader.isArchiv())
        fail(E_ET_FATAL, QStringLiteral("File %1 is an archive but single file was expected").arg(path));
    return QString::fromUtf8(content.constData(), content.size()); // a zero byte does not end it
}

QByteArray PresetManager::protectedContent(const QByteArray& text)
{
    return DataFileCreator().encryptData(text, presetPassword());
}

std::optional<PresetLine> PresetManager::parseLine(const QString& line)
{
    // Only the ends of the line are trimmed: a blank beside the "=" belongs to the key or the value.
    const QString trimmed = line.trimmed();
    if (trimmed.isEmpty() || trimmed.startsWith(QLatin1Char('#')))
        return std::nullopt;
    const QStringList sides = trimmed.split(QLatin1Char('='));
    if (sides.size() != 2) {
        fail(E_ET_FATAL, QStringLiteral("The preset entry %1 is invalid (The token '=' is handled as "
                                        "separator and not valid as part of key or value)")
                             .arg(trimmed));
    }
    return PresetLine{sides[0], sides[1]};
}

E_PresetValue PresetManager::getKey(const QString& key) const
{
    return d->presetOf(key);
}

bool PresetManager::hasPreset(const E_PresetValue& value)
{
    return getInstance()->d->find(value) != nullptr;
}

QVariant& PresetManager::getPreset(const E_PresetValue& value)
{
    Private& presets = *getInstance()->d;
    QVariant* found = presets.find(value);
    return found ? *found : presets.fallback();
}

QList<PresetDescription> PresetManager::describePresets()
{
    QList<PresetDescription> descriptions;
    for (const PresetRow& row : presetRows())
        descriptions << describe(row);
    std::sort(descriptions.begin(), descriptions.end(),
              [](const PresetDescription& a, const PresetDescription& b) { return a.value < b.value; });
    return descriptions;
}

void PresetManager::setPreset(const QString& key, const QVariant& value)
{
    const E_PresetValue known = getKey(key);
    if (known == E_PV_NONE)
        fail(E_ET_FATAL, QStringLiteral("The preset key %1 is invalid").arg(key));
    setPreset(known, value);
}

void PresetManager::setPreset(const E_PresetValue& key, const QVariant& value)
{
    if (const PresetRow* row = presetRow(key))
        row->constraint.rule(*this, key, row->constraint, value);
    else
        setValue(key, value); // of the fallback entry, or of nothing
}

void PresetManager::setValue(const E_PresetValue& key, const QVariant& value)
{
    d->store(key, value);
}

void PresetManager::setValue(const E_PresetValue& key, const QVariant& value, const E_PresetValue& minKey,
                             const E_PresetValue& maxKey)
{
    const double number = value.toDouble();
    d->store(key, value);
    const QVariant* min = d->find(minKey);
    if (min && min->toDouble() > number)
        d->store(key, *min);
    const QVariant* max = d->find(maxKey);
    if (max && number > max->toDouble())
        d->store(key, *max);
}

void PresetManager::setValue(const E_PresetValue& key, const QVariant& value, const double& min,
                             const double& max)
{
    const double number = value.toDouble();
    d->store(key, value);
    if (min > number)
        d->store(key, min);
    if (number > max)
        d->store(key, max);
}

void PresetManager::setMinBound(const E_PresetValue& key, const QVariant& value, const E_PresetValue& maxKey,
                                const E_PresetValue& valueKey)
{
    d->raise(key, value);
    if (d->find(maxKey))
        d->raise(maxKey, value);
    d->raise(valueKey, value);
}

void PresetManager::setMaxBound(const E_PresetValue& key, const QVariant& value, const E_PresetValue& minKey,
                                const E_PresetValue& valueKey)
{
    d->lower(key, value);
    if (d->find(minKey))
        d->lower(minKey, value);
    d->lower(valueKey, value);
}

} // namespace TEKLUVA
