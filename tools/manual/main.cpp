// Writes a manual page or a completion of globalsctl: a template, with its placeholders replaced by texts
// from the tool's table of commands.
//
//     globalsctl_manual TEMPLATE OUTPUT

#include "manual/Completion.h"

#include "commands/Command.h"
#include "support/ExitCode.h"
#include "support/Output.h"
#include "support/PresetTable.h"

#include <QFile>
#include <QSaveFile>

namespace {

using globalsctl::Command;
using globalsctl::Option;

struct Escape
{
    uint character;
    const char* roff;
};

/// Roff takes these for commands, or replaces them by typographic ones, which cannot be pasted into a shell.
/// Plain terminals lack the last two.
constexpr Escape ESCAPES[] = {
    {'\\', "\\e"},  {'-', "\\-"},   {'\'', "\\(aq"}, {'^', "\\(ha"},
    {'~', "\\(ti"}, {'`', "\\(ga"}, {0xB2, "2"},     {0xB3, "3"},
};

QString roffOf(uint character)
{
    for (const Escape& escape : ESCAPES) {
        if (character == escape.character)
            return QString::fromLatin1(escape.roff);
    }
    if (character < 0x80)
        return QChar(character);
    return QStringLiteral("\\[u%1]").arg(QString::number(character, 16).toUpper(), 4, QLatin1Char('0'));
}

/// \p text with the escapes that make roff print it as it is.
QString roff(const QString& text)
{
    QString escaped;
    for (const uint character : text.toUcs4())
        escaped += roffOf(character);
    return escaped.startsWith(QLatin1Char('.')) ? QStringLiteral("\\&") + escaped : escaped;
}

QString roff(const char* text)
{
    return roff(QString::fromUtf8(text));
}

QString italic(const char* text)
{
    return QStringLiteral(" \\fI%1\\fR").arg(roff(text));
}

QString optionEntry(const Option& option)
{
    QString entry = QStringLiteral(".TP\n\\fB\\-\\-%1\\fR").arg(roff(option.name));
    if (option.value)
        entry += italic(option.value);
    entry += QStringLiteral("\n%1.\n").arg(roff(option.summary));
    if (option.initial)
        entry += QStringLiteral("Otherwise \"%1\".\n").arg(roff(option.initial));
    return entry;
}

QString optionEntries(const std::vector<Option>& options)
{
    QString entries;
    for (const Option& option : options)
        entries += optionEntry(option);
    return entries.chopped(entries.isEmpty() ? 0 : 1);
}

QString commandSection(const Command& command)
{
    QString heading = QStringLiteral(".SS ") + roff(command.words);
    if (*command.arguments)
        heading += italic(command.arguments);
    return QStringLiteral("%1\n%2.\n%3").arg(heading, roff(command.summary), optionEntries(command.options));
}

QString commandSections()
{
    QStringList sections;
    for (const Command& command : globalsctl::commands())
        sections << commandSection(command).trimmed();
    return sections.join(QLatin1Char('\n'));
}

QString commonOptionEntries()
{
    return optionEntries(globalsctl::commonOptions());
}

/// A paragraph for each preset, of the built-in values.
QString presetEntries()
{
    const globalsctl::PresetFile builtIn;
    QStringList entries;
    for (const TEKLUVA::PresetDescription& preset : TEKLUVA::PresetManager::describePresets()) {
        const QString value = globalsctl::valueInForce(preset);
        entries << QStringLiteral(".TP\n\\fB%1\\fR=%2\n%3: %4.")
                       .arg(roff(preset.key), roff(value), roff(preset.type), roff(preset.bounds));
    }
    return entries.join(QLatin1Char('\n'));
}

struct Placeholder
{
    const char* text;
    QString (*content)();
};

constexpr Placeholder PLACEHOLDERS[] = {
    {"<COMMANDS>", &commandSections},
    {"<COMMON OPTIONS>", &commonOptionEntries},
    {"<COMMAND ROWS>", &Completion::commandRows},
    {"<COMMON OPTION WORDS>", &Completion::commonOptionWords},
    {"<VALUE CASES>", &Completion::valueCases},
    {"<FISH LINES>", &Completion::fishLines},
    {"<PRESET ENTRIES>", &presetEntries},
};

int fail(const QFileDevice& file)
{
    globalsctl::printNote(QStringLiteral("%1: %2").arg(file.fileName(), file.errorString()));
    return globalsctl::Failed;
}

int writeFilled(QFile& source, QSaveFile& target)
{
    if (!source.open(QIODevice::ReadOnly))
        return fail(source);
    QString text = QString::fromUtf8(source.readAll());
    for (const Placeholder& placeholder : PLACEHOLDERS)
        text.replace(QLatin1String(placeholder.text), placeholder.content());
    if (!target.open(QIODevice::WriteOnly))
        return fail(target);
    target.write(text.toUtf8());
    return target.commit() ? globalsctl::Done : fail(target);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        globalsctl::printNote(QStringLiteral("Usage: globalsctl_manual TEMPLATE OUTPUT"));
        return globalsctl::WrongUsage;
    }
    QFile source(QFile::decodeName(argv[1]));
    QSaveFile target(QFile::decodeName(argv[2]));
    return writeFilled(source, target);
}
