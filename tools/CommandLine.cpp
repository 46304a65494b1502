#include "CommandLine.h"

#include "commands/Command.h"
#include "support/Failure.h"
#include "support/Output.h"
#include "support/Suggestion.h"
#include "support/Table.h"

#include <QCommandLineParser>
#include <QStringList>

#include <algorithm>

namespace globalsctl {

namespace {

QStringList split(const char* text)
{
    return QString::fromUtf8(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

bool beginsWith(const QStringList& list, const QStringList& beginning)
{
    return list.mid(0, beginning.size()) == beginning;
}

/// The commands whose words begin with \p words; all when that is empty.
std::vector<Command> commandsBelow(const QStringList& words)
{
    std::vector<Command> found;
    std::copy_if(commands().begin(), commands().end(), std::back_inserter(found),
                 [&words](const Command& command) { return beginsWith(split(command.words), words); });
    return found;
}

const Command* findCommand(const QStringList& arguments)
{
    const auto found =
        std::find_if(commands().begin(), commands().end(), [&arguments](const Command& command) {
            return beginsWith(arguments, split(command.words));
        });
    return found == commands().end() ? nullptr : &*found;
}

/// Prints what is wrong with the arguments, and where help is: that of the command with these \p words, if it
/// is known. Returns the exit code.
int printUsageError(const QString& message, const QString& words = QString())
{
    printError(message);
    const QString help = words.isEmpty() ? QStringLiteral("--help") : QStringLiteral("help ") + words;
    printNote(QStringLiteral("Try \"globalsctl %1\".").arg(help));
    return WrongUsage;
}

QString optionHelp(const std::vector<Option>& options)
{
    QList<QStringList> rows;
    for (const Option& option : options) {
        QString form = QStringLiteral("  --") + QLatin1String(option.name);
        if (option.value)
            form += QLatin1Char(' ') + QLatin1String(option.value);
        QString summary = QString::fromUtf8(option.summary);
        if (option.initial)
            summary += QStringLiteral(" (otherwise \"%1\")").arg(QString::fromUtf8(option.initial));
        rows << QStringList{form, summary};
    }
    return QStringLiteral("Options:\n") + aligned(rows, resultColumns());
}

QString paragraph(const QString& text)
{
    return aligned({{text}}, resultColumns());
}

QString helpOn(const Command& command)
{
    const QStringList form = split(command.words) + split(command.arguments);
    return QStringLiteral("Usage: globalsctl %1 [OPTIONS]\n\n%2\n\n%3")
        .arg(form.join(QLatin1Char(' ')), paragraph(QString::fromUtf8(command.summary) + QLatin1Char('.')),
             optionHelp(optionsOf(command)));
}

QString helpOn(const std::vector<Command>& several)
{
    QList<QStringList> rows;
    for (const Command& command : several) {
        const QStringList form = split(command.words) + split(command.arguments);
        rows << QStringList{QStringLiteral("  ") + form.join(QLatin1Char(' ')),
                            QString::fromUtf8(command.summary)};
    }
    return QStringLiteral("Usage: globalsctl COMMAND [ARGUMENTS] [OPTIONS]\n\nCommands:\n%1\n\n%2\n\n"
                          "\"globalsctl help COMMAND\" shows the options of a command.")
        .arg(aligned(rows, resultColumns()), optionHelp(commonOptions()));
}

/// Parses \p arguments, those after the words of a command. False, with an error text in \p line, for unknown
/// options.
bool parse(QCommandLineParser& line, const std::vector<Option>& options, const QStringList& arguments)
{
    for (const Option& option : options) {
        QStringList names = {QString::fromLatin1(option.name)};
        if (names.first() == QLatin1String("help"))
            names << QStringLiteral("h");
        if (option.former)
            names << QString::fromLatin1(option.former);
        line.addOption({names, QString::fromUtf8(option.summary), QString::fromUtf8(option.value),
                        QString::fromUtf8(option.initial)});
    }
    return line.parse(QStringList(QStringLiteral("globalsctl")) + arguments);
}

/// Prints the help or the version; false when neither is asked for.
bool printCommon(const QCommandLineParser& line, const QString& help)
{
    if (line.isSet(QStringLiteral("help")))
        printResult(help);
    else if (line.isSet(QStringLiteral("version")))
        printResult(QStringLiteral("globalsctl " GLOBALSCTL_VERSION));
    else
        return false;
    return true;
}

/// What is wrong with the number of arguments; empty for nothing.
QString countError(const QStringList& expected, const QStringList& given)
{
    const QString several = QStringLiteral("...");
    const bool hasEnd = expected.isEmpty() || !expected.last().contains(several);
    if (hasEnd && given.size() > expected.size())
        return QStringLiteral("unexpected argument \"%1\"").arg(given[expected.size()]);
    const QString missing = expected.value(given.size()).remove(several);
    if (!missing.isEmpty() && !missing.startsWith(QLatin1Char('[')))
        return missing + QStringLiteral(" is missing");
    return QString();
}

/// What the first unknown option was probably meant to be.
QString suggestedOption(const QCommandLineParser& line, const std::vector<Option>& options)
{
    QStringList names;
    for (const Option& option : options)
        names << QString::fromLatin1(option.name);
    return suggestion(line.unknownOptionNames().value(0), names);
}

QStringList namesOf(const std::vector<Command>& commands)
{
    QStringList names;
    for (const Command& command : commands)
        names << QString::fromLatin1(command.words);
    return names;
}

/// Runs \p command, or prints its help. Throws UsageError.
int runParsed(const Command& command, const QStringList& arguments)
{
    QCommandLineParser line;
    if (!parse(line, optionsOf(command), arguments))
        throw UsageError(line.errorText() + suggestedOption(line, optionsOf(command)));
    if (printCommon(line, helpOn(command)))
        return Done;
    const QString wrong = countError(split(command.arguments), line.positionalArguments());
    if (!wrong.isEmpty())
        throw UsageError(wrong);
    return command.run(line);
}

int run(const Command& command, const QStringList& arguments)
{
    const QString words = QString::fromLatin1(command.words);
    try {
        return runParsed(command, arguments);
    } catch (const UsageError& e) {
        return printUsageError(QStringLiteral("%1: %2").arg(words, e.reason()), words);
    }
}

/// For arguments that begin with the first words of a command only, or with none of its words.
int runWithoutCommand(const QStringList& arguments)
{
    const auto isOption = [](const QString& argument) { return argument.startsWith(QLatin1Char('-')); };
    const auto firstOption = std::find_if(arguments.begin(), arguments.end(), isOption);
    const QStringList words = arguments.mid(0, static_cast<int>(firstOption - arguments.begin()));
    const std::vector<Command> below = commandsBelow(words);
    if (below.empty()) {
        // A file named behind a command is not a part of its name.
        const QString similar = suggestion(words.mid(0, 2).join(QLatin1Char(' ')), namesOf(commands()));
        const QString given = words.join(QLatin1Char(' '));
        return printUsageError(QStringLiteral("unknown command \"%1\"%2").arg(given, similar));
    }

    QCommandLineParser line;
    if (!parse(line, commonOptions(), arguments.mid(words.size())))
        return printUsageError(line.errorText());
    if (printCommon(line, helpOn(below)))
        return Done;
    const QStringList names = namesOf(below);
    return printUsageError(
        QStringLiteral("a command is missing, one of: %1").arg(names.join(QStringLiteral(", "))));
}

} // namespace

int runCommandLine(QStringList arguments)
{
    if (arguments.value(0) == QLatin1String("help")) {
        arguments.removeFirst();
        arguments << QStringLiteral("--help");
    }
    if (const Command* command = findCommand(arguments))
        return run(*command, arguments.mid(split(command->words).size()));
    return runWithoutCommand(arguments);
}

} // namespace globalsctl
