#include "CommandLine.h"
#include "commands/Command.h"
#include "support/ApplicationFolders.h"
#include "support/ExitCode.h"
#include "support/Failure.h"
#include "support/Output.h"

#include "globals/Settings.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDebug>
#include <QJsonArray>
#include <QJsonObject>
#include <QSet>

namespace globalsctl {

using namespace TEKLUVA;

namespace {

/// The arguments of a command, empty where they are left out, and the settings that it works on.
struct Request
{
    explicit Request(const QCommandLineParser& line)
        : file(settingsFileOf(line))
        , settings(file, QSettings::IniFormat, QCoreApplication::instance())
        , group(line.positionalArguments().value(0))
        , key(line.positionalArguments().value(1))
        , value(line.positionalArguments().value(2))
        // Not isSet(), which prints a warning for a command without that option.
        , inJson(line.optionNames().contains(QStringLiteral("json")))
        , isForced(line.optionNames().contains(QStringLiteral("force")))
    {
    }

    QString file;
    Settings settings;
    QString group;
    QString key;
    QString value;
    bool inJson;
    bool isForced;
};

/// The settings skip separators, so "/" is as empty as "".
bool isEmptyName(const QString& name)
{
    return name.count(QLatin1Char('/')) == name.size();
}

/// Runs \p command unless a name is empty: for the settings that means the whole group, or the whole file.
int runNamed(const QCommandLineParser& line, int (*command)(Request& request))
{
    const QStringList arguments = line.positionalArguments();
    if (!arguments.isEmpty() && isEmptyName(arguments[0]))
        return printUsageError(QStringLiteral("GROUP is empty"));
    if (arguments.size() > 1 && isEmptyName(arguments[1]))
        return printUsageError(QStringLiteral("KEY is empty"));
    Request request(line);
    return command(request);
}

int failAsAbsent(const QString& what, const Request& request)
{
    printError(QStringLiteral("%1 is not in %2").arg(what, request.file));
    return Failed;
}

int failAsGroupAbsent(const Request& request)
{
    return failAsAbsent(QStringLiteral("group \"%1\"").arg(request.group), request);
}

int failAsKeyAbsent(const Request& request)
{
    return failAsAbsent(QStringLiteral("key \"%1\" of group \"%2\"").arg(request.key, request.group),
                        request);
}

/// Prints an error when the change is not on disk. Returns the exit code.
int exitCodeOfWrite(const Request& request)
{
    if (!request.settings.hasPendingChanges())
        return Done;
    printError(QStringLiteral("%1 could not be written").arg(request.file));
    return Failed;
}

bool hasGroup(const Request& request)
{
    // A group that has only sub-groups exists, too.
    return request.settings.hasSettingGroup(request.group)
           || request.settings.getAllGroups().contains(request.group);
}

QString textOf(const QVariant& value)
{
    if (value.userType() == QMetaType::QStringList)
        return value.toStringList().join(QStringLiteral(", "));
    if (value.canConvert<QString>())
        return value.toString();
    QString text;
    QDebug(&text) << value;
    return text.trimmed();
}

QJsonValue jsonOf(const QVariant& value)
{
    if (value.userType() == QMetaType::QStringList)
        return QJsonArray::fromStringList(value.toStringList());
    return textOf(value);
}

QJsonObject objectOf(const QVariantMap& values)
{
    QJsonObject object;
    for (auto value = values.begin(); value != values.end(); ++value)
        object.insert(value.key(), jsonOf(*value));
    return object;
}

void printLines(const QString& group, const QVariantMap& values)
{
    const QString prefix = group.isEmpty() ? QString() : group + QLatin1Char('/');
    for (auto value = values.begin(); value != values.end(); ++value) {
        // A line break in a value must not look like the next setting.
        const QString text = textOf(*value).replace(QLatin1Char('\n'), QStringLiteral("\\n"));
        printResult(printable(prefix + value.key() + QLatin1Char('=') + text));
    }
}

/// All groups and sub-groups that hold keys, of those below the requested group; the empty one is for keys
/// without a group.
QStringList groupsOf(const Request& request)
{
    const QString prefix = request.group.isEmpty() ? QString() : request.group + QLatin1Char('/');
    const QStringList keys = QSettings(request.file, QSettings::IniFormat).allKeys();
    QSet<QString> groups;
    for (const QString& key : keys) {
        if (key.startsWith(prefix))
            groups << key.left(qMax(0, key.lastIndexOf(QLatin1Char('/'))));
    }
    QStringList sorted = groups.values();
    sorted.sort();
    return sorted;
}

/// Prints an error for each damaged line of the file. False when there is one.
bool tellDamage(const Request& request)
{
    const QList<int> lines = request.settings.damagedLines();
    for (const int line : lines)
        printError(QStringLiteral("%1:%2: damaged").arg(request.file).arg(line));
    return lines.isEmpty();
}

/// Throws Failure for a file that a change would rewrite without its damaged lines.
void requireWhole(const Request& request)
{
    if (!tellDamage(request) && !request.isForced)
        throw Failure(
            QStringLiteral("%1 stays as it is. --force rewrites it without its damaged lines and keeps "
                           "the old one as \"%1.damaged\"")
                .arg(request.file));
}

int list(Request& request)
{
    const QStringList groups = groupsOf(request);
    if (!request.group.isEmpty() && groups.isEmpty())
        return failAsGroupAbsent(request);
    QJsonObject object;
    for (const QString& group : groups) {
        const QVariantMap values = request.settings.getSettings(group);
        if (request.inJson)
            object.insert(group, objectOf(values));
        else
            printLines(group, values);
    }
    if (request.inJson)
        printResult(object);
    return tellDamage(request) ? Done : Failed;
}

int get(Request& request)
{
    // In this order, because only getSetting() reads the file again.
    const QVariant value = request.settings.getSetting(request.group, request.key);
    if (!request.settings.hasSetting(request.group, request.key))
        return failAsKeyAbsent(request);
    printResult(textOf(value));
    tellDamage(request);
    return Done;
}

int set(Request& request)
{
    requireWhole(request);
    request.settings.setSetting(request.group, request.key, request.value);
    return exitCodeOfWrite(request);
}

int remove(Request& request)
{
    requireWhole(request);
    if (request.key.isEmpty()) {
        if (!hasGroup(request))
            return failAsGroupAbsent(request);
        request.settings.removeSettingGroup(request.group);
        return exitCodeOfWrite(request);
    }
    if (!request.settings.hasSetting(request.group, request.key))
        return failAsKeyAbsent(request);
    request.settings.removeSetting(request.group, request.key);
    return exitCodeOfWrite(request);
}

} // namespace

int listSettings(const QCommandLineParser& line)
{
    return runNamed(line, &list);
}

int getSetting(const QCommandLineParser& line)
{
    return runNamed(line, &get);
}

int setSetting(const QCommandLineParser& line)
{
    return runNamed(line, &set);
}

int removeSetting(const QCommandLineParser& line)
{
    return runNamed(line, &remove);
}

} // namespace globalsctl
