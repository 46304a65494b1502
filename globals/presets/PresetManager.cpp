#include "globals/PresetManager.h"

#include "globals/ConfigManager.h"
#include "globals/DataFileCreator.h"
#include "globals/DataFileReader.h"
#include "globals/Exception.h"
#include "globals/logs/ActiveLog_p.h"
#include "globals/presets/PresetPassword_p.h"
#include "globals/presets/PresetTable_p.h"

#include <QFile>
#include <QStringList>

namespace TEKLUVA {

namespace {

/// Throws as the library always does: the description in UTF-8, the exit flag set.
[[noreturn]] void fail(E_ExceptionType type, const QString& description)
{
    throw Exception(type, description.toStdString(), true);
}

constexpr bool isGiven(E_PresetValue key)
{
    return key >= E_PV_FALLBACK && key <= E_PV_FALLBACK + PRESET_COUNT;
}

constexpr std::size_t placeOf(E_PresetValue key)
{
    return static_cast<std::size_t>(key);
}

/// Turns a built-in value into what is stored, and names its type.
struct ToVariant
{
    QVariant operator()(const char* text) const { return QString::fromLatin1(text); }
    QVariant operator()(float (*current)()) const { return current(); }
    template <typename Number>
    QVariant operator()(Number number) const
    {
        return number;
    }
};

struct TypeName
{
    QString operator()(double /*value*/) const { return QStringLiteral("double"); }
    QString operator()(float /*value*/) const { return QStringLiteral("float"); }
    QString operator()(int /*value*/) const { return QStringLiteral("int"); }
    QString operator()(bool /*value*/) const { return QStringLiteral("bool"); }
    QString operator()(const char* /*value*/) const { return QStringLiteral("string"); }
    QString operator()(float (* /*value*/)()) const { return QStringLiteral("float"); }
};

/// A bound in words: the key of the preset that is it, or the number.
QString boundInWords(E_PresetValue key, double number)
{
    const PresetRow* row = presetRow(key);
    return row ? QString::fromLatin1(row->key) : QString::number(number, 'g', 15);
}

QString inWords(const PresetConstraint& constraint)
{
    return QString::fromLatin1(constraint.words)
        .replace(QLatin1String("%lower"), boundInWords(constraint.lower, constraint.min))
        .replace(QLatin1String("%upper"), boundInWords(constraint.upper, constraint.max));
}

} // namespace

PresetManager* PresetManager::__instance = nullptr;

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
    for (const PresetRow& row : presetTable())
        m_values.insert(QString::fromLatin1(row.key), row.value);
}

void PresetManager::setInitialPresets()
{
    setPreset(E_PV_FALLBACK, QVariant());
    for (const PresetRow& row : presetTable())
        setPreset(row.value, std::visit(ToVariant(), row.initial));
}

void PresetManager::readFile(const QString& path)
{
    const QString text = textOfFile(path);
    if (text.isEmpty())
        logWarning(QStringLiteral("The preset file %1 has no content. The built-in presets stay in force.")
                       .arg(path));
    readText(text);
}

void PresetManager::readText(const QString& text)
{
    const auto lines = text.splitRef(QLatin1Char('\n'));
    for (const QStringRef& line : lines)
        readLine(line.toString());
}

void PresetManager::readLine(const QString& line)
{
    if (const auto entry = parseLine(line))
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
    const auto asGiven = m_values.find(key); // most are written as we write them, which saves the folding
    return asGiven != m_values.end() ? *asGiven : m_values.value(key.toLower(), E_PV_NONE);
}

bool PresetManager::hasPreset(const E_PresetValue& value)
{
    return isGiven(value) && getInstance()->m_presets[placeOf(value)].has_value();
}

QVariant& PresetManager::getPreset(const E_PresetValue& value)
{
    auto& presets = getInstance()->m_presets;
    if (isGiven(value) && presets[placeOf(value)])
        return *presets[placeOf(value)];
    auto& fallback = presets[placeOf(E_PV_FALLBACK)];
    return fallback ? *fallback : fallback.emplace();
}

QList<PresetDescription> PresetManager::describePresets()
{
    QList<PresetDescription> descriptions;
    for (int value = E_PV_FALLBACK + 1; isGiven(E_PresetValue(value)); ++value) {
        const PresetRow& row = *presetRow(E_PresetValue(value));
        descriptions << PresetDescription{row.value, QString::fromLatin1(row.key),
                                          std::visit(TypeName(), row.initial), inWords(row.constraint)};
    }
    return descriptions;
}

void PresetManager::setPreset(const QString& key, const QVariant& value)
{
    const E_PresetValue known = getKey(key);
    if (!isGiven(known))
        fail(E_ET_FATAL, QStringLiteral("The preset key %1 is invalid").arg(key));
    setPreset(known, value);
}

void PresetManager::setPreset(const E_PresetValue& key, const QVariant& value)
{
    if (const PresetRow* row = presetRow(key))
        row->constraint.write(*this, key, row->constraint, value);
    else if (key == E_PV_FALLBACK)
        setValue(key, value);
    else
        fail(E_ET_FATAL, QStringLiteral("The preset key %1 is invalid").arg(key));
}

void PresetManager::setValue(const E_PresetValue& key, const QVariant& value)
{
    if (isGiven(key))
        m_presets[placeOf(key)] = value;
}

void PresetManager::setValue(const E_PresetValue& key, const QVariant& value, const E_PresetValue& minKey,
                             const E_PresetValue& maxKey)
{
    const double number = value.toDouble();
    setValue(key, value);
    if (hasPreset(minKey) && getPreset(minKey).toDouble() > number)
        setValue(key, getPreset(minKey));
    if (hasPreset(maxKey) && number > getPreset(maxKey).toDouble())
        setValue(key, getPreset(maxKey));
}

void PresetManager::setValue(const E_PresetValue& key, const QVariant& value, const double& min,
                             const double& max)
{
    const double number = value.toDouble();
    setValue(key, value);
    if (min > number)
        setValue(key, min);
    if (number > max)
        setValue(key, max);
}

void PresetManager::setMinBound(const E_PresetValue& key, const QVariant& value, const E_PresetValue& maxKey,
                                const E_PresetValue& valueKey)
{
    raise(key, value);
    if (hasPreset(maxKey))
        raise(maxKey, value);
    if (isGiven(valueKey))
        raise(valueKey, value);
}

void PresetManager::setMaxBound(const E_PresetValue& key, const QVariant& value, const E_PresetValue& minKey,
                                const E_PresetValue& valueKey)
{
    lower(key, value);
    if (hasPreset(minKey))
        lower(minKey, value);
    if (isGiven(valueKey))
        lower(valueKey, value);
}

void PresetManager::raise(const E_PresetValue& key, const QVariant& value)
{
    if (!hasPreset(key) || value.toDouble() > getPreset(key).toDouble())
        setValue(key, value);
}

void PresetManager::lower(const E_PresetValue& key, const QVariant& value)
{
    if (!hasPreset(key) || getPreset(key).toDouble() > value.toDouble())
        setValue(key, value);
}

} // namespace TEKLUVA
