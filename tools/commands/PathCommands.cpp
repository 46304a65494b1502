#include "commands/Command.h"
#include "support/ApplicationFolders.h"
#include "support/ExitCode.h"
#include "support/Output.h"

#include "globals/PathRegistry.h"
#include "globals/SettingsKeys.h"

#include <QCommandLineParser>
#include <QJsonArray>
#include <QJsonObject>

namespace globalsctl {

namespace {

QString reasonOf(const TEKLUVA::PathDescription& path)
{
    return path.overridden ? QStringLiteral("set by the user: %1 in %2")
                                 .arg(path.overrideKey, TEKLUVA::SettingsKeys::USER_PATHS)
                           : path.rule;
}

QStringList rowOf(const TEKLUVA::PathDescription& path)
{
    const QString none = QStringLiteral("-");
    if (path.path.isEmpty())
        return {QString::number(path.type), path.role, none, none, none};
    return {QString::number(path.type), path.role, path.path,
            path.exists ? QStringLiteral("yes") : QStringLiteral("no"), reasonOf(path)};
}

QJsonObject objectOf(const TEKLUVA::PathDescription& path)
{
    return {{QStringLiteral("type"), path.type},
            {QStringLiteral("role"), path.role},
            {QStringLiteral("path"), path.path},
            {QStringLiteral("exists"), path.exists},
            {QStringLiteral("rule"), path.rule},
            {QStringLiteral("overrideKey"), path.overrideKey},
            {QStringLiteral("overridden"), path.overridden}};
}

} // namespace

int showPaths(const QCommandLineParser& line)
{
    static_cast<void>(settingsFileOf(line)); // throws for one that cannot be read
    QJsonArray objects;
    QList<QStringList> rows = {{QStringLiteral("TYPE"), QStringLiteral("ROLE"), QStringLiteral("PATH"),
                                QStringLiteral("EXISTS"), QStringLiteral("WHY")}};
    for (const TEKLUVA::PathDescription& path : TEKLUVA::describePaths()) {
        objects << objectOf(path);
        rows << rowOf(path);
    }
    if (line.isSet(QStringLiteral("json")))
        printResult(objects);
    else
        printResult(aligned(rows));
    return Done;
}

} // namespace globalsctl
