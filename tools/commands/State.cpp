#include "commands/Command.h"
#include "support/ApplicationFolders.h"
#include "support/ExitCode.h"
#include "support/Output.h"
#include "support/RunRecord.h"

#include <QCommandLineParser>
#include <QJsonObject>

namespace globalsctl {

int showState(const QCommandLineParser& line)
{
    const QString file = settingsFileOf(line);
    if (line.isSet(QStringLiteral("json")))
        printAnswer(objectOfLastRun(file));
    else
        printTable(rowsOfLastRun(file));
    return Done;
}

} // namespace globalsctl
