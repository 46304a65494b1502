#include "commands/Command.h"
#include "support/ApplicationFolders.h"
#include "support/ExitCode.h"
#include "support/Output.h"
#include "support/PathList.h"

#include <QCommandLineParser>
#include <QJsonArray>
#include <QJsonObject>

namespace globalsctl {

int showPaths(const QCommandLineParser& line)
{
    static_cast<void>(settingsFileOf(line)); // throws for one that cannot be read
    const QString program = line.value(QStringLiteral("program"));
    if (line.isSet(QStringLiteral("json")))
        printAnswer({{QStringLiteral("paths"), arrayOfPaths(program)}});
    else
        printTable(rowsOfPaths(program));
    return Done;
}

} // namespace globalsctl
