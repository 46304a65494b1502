#include "manual/Completion.h"

#include "commands/Command.h"
#include "support/LogRecord.h"
#include "support/Report.h"

#include "globals/MeasurementManager.h"
#include "globals/PresetManager.h"

#include <QStringList>

#include <algorithm>

namespace Completion {

namespace {

using namespace TEKLUVA;
using globalsctl::Command;
using globalsctl::Option;

QStringList units()
{
    QStringList units;
    for (const E_MeasurementUnit unit : MeasurementManager::getMeasurementUnits())
        units << MeasurementManager::getInstance()->getLinearMeasurementUnitAbbrevation(unit);
    return units;
}

QStringList dimensions()
{
    return {QStringLiteral("linear"), QStringLiteral("squared"), QStringLiteral("cubic")};
}

QStringList presets()
{
    QStringList keys;
    for (const PresetDescription& preset : PresetManager::describePresets())
        keys << preset.key;
    return keys;
}

struct ValueRow
{
    const char* word;
    QStringList (*values)();
};

constexpr ValueRow VALUES[] = {
    {"UNIT", &units},
    {"DIMENSION", &dimensions},
    {"LEVEL", &globalsctl::levelNames},
    {"PRESET", &presets},
    {"PART", &globalsctl::reportPartNames},
};

constexpr const char* FILES[] = {"FILE", "TARGET", "TEXT", "ARCHIVE"};

QString joined(const QStringList& words)
{
    return words.join(QLatin1Char(' '));
}

QStringList split(const char* text)
{
    return QString::fromUtf8(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

QString optionWords(const std::vector<Option>& options)
{
    QStringList words;
    for (const Option& option : options)
        words << QStringLiteral("--") + QString::fromUtf8(option.name);
    return joined(words);
}

/// "--to:UNIT", for options with a value.
QString valuedOptions(const std::vector<Option>& options)
{
    QStringList words;
    for (const Option& option : options) {
        if (option.value)
            words << QStringLiteral("--%1:%2").arg(QLatin1String(option.name), QLatin1String(option.value));
    }
    return joined(words);
}

/// In single quotes, for fish.
QString quoted(QString text)
{
    text.replace(QLatin1Char('\\'), QLatin1String("\\\\")).replace(QLatin1Char('\''), QLatin1String("\\'"));
    return QLatin1Char('\'') + text + QLatin1Char('\'');
}

/// What fish offers where \p word stands in the help.
QString fishValues(QString word)
{
    word.remove(QLatin1Char('[')).remove(QLatin1Char(']')).remove(QLatin1Char('.'));
    const auto* row = std::find_if(std::begin(VALUES), std::end(VALUES), [&word](const ValueRow& candidate) {
        return word == QLatin1String(candidate.word);
    });
    if (row != std::end(VALUES))
        return QStringLiteral("-a ") + quoted(joined(row->values()));
    if (word == QLatin1String("ENTRY"))
        return QStringLiteral("-a '(__globalsctl_entries)'");
    if (word == QLatin1String("VARIABLE"))
        return QStringLiteral("-a '(set --names --export)'");
    if (word == QLatin1String("FOLDER"))
        return QStringLiteral("-a '(__fish_complete_directories)'");
    const bool isFile = std::any_of(std::begin(FILES), std::end(FILES),
                                    [&word](const char* file) { return word == QLatin1String(file); });
    return isFile ? QStringLiteral("-F") : QString();
}

/// Of an option that does not stand alone; its value is no file, unless \p values say so.
QString requiredValue(const QString& values)
{
    return (values == QLatin1String("-F") ? QStringLiteral(" -r ") : QStringLiteral(" -x ")) + values;
}

QString fishLine(const char* condition, const QString& words, const QString& rest)
{
    return QStringLiteral("complete -c globalsctl -n %1 %2")
        .arg(quoted(QLatin1String(condition) + QLatin1Char(' ') + words).trimmed(), rest);
}

/// The word after each beginning of the command's words.
QStringList fishWords(const Command& command)
{
    QStringList lines;
    QStringList before;
    const QStringList words = split(command.words);
    for (const QString& word : words) {
        const bool isLast = before.size() + 1 == words.size();
        const QString summary =
            isLast ? QStringLiteral(" -d ") + quoted(QString::fromUtf8(command.summary)) : QString();
        lines << fishLine("__globalsctl_after", joined(before), QStringLiteral("-a ") + word + summary);
        before << word;
    }
    return lines;
}

QStringList fishOptions(const Command& command)
{
    QStringList lines;
    const QString words = QString::fromLatin1(command.words);
    for (const Option& option : optionsOf(command)) {
        QString rest = QStringLiteral("-l ") + QLatin1String(option.name);
        if (option.value)
            rest += requiredValue(fishValues(QLatin1String(option.value)));
        rest += QStringLiteral(" -d ") + quoted(QString::fromUtf8(option.summary));
        lines << fishLine("__globalsctl_in", words, rest);
    }
    return lines;
}

QStringList fishArguments(const Command& command)
{
    QStringList lines;
    for (const QString& word : split(command.arguments)) {
        const QString values = fishValues(word);
        if (!values.isEmpty())
            lines << fishLine("__globalsctl_in", QString::fromLatin1(command.words), values);
    }
    lines.removeDuplicates();
    return lines;
}

} // namespace

QString commandRows()
{
    QStringList rows;
    for (const Command& command : globalsctl::commands()) {
        const std::vector<Option> options = optionsOf(command);
        rows << QStringLiteral("        '%1|%2|%3|%4'")
                    .arg(QString::fromUtf8(command.words), QString::fromUtf8(command.arguments),
                         optionWords(options), valuedOptions(options));
    }
    return rows.join(QLatin1Char('\n'));
}

QString commonOptionWords()
{
    return optionWords(globalsctl::commonOptions());
}

QString valueCases()
{
    QStringList cases;
    for (const ValueRow& row : VALUES)
        cases << QStringLiteral("        %1) offered='%2' ;;")
                     .arg(QLatin1String(row.word), joined(row.values()));
    return cases.join(QLatin1Char('\n'));
}

QString fishLines()
{
    QStringList lines;
    for (const Command& command : globalsctl::commands())
        lines << fishWords(command) << fishOptions(command) << fishArguments(command);
    lines.removeDuplicates();
    return lines.join(QLatin1Char('\n'));
}

} // namespace Completion
