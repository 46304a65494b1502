#include "commands/Command.h"
#include "support/ExitCode.h"
#include "support/Output.h"
#include "support/PresetCheck.h"

#include <QCommandLineParser>
#include <QJsonObject>

namespace globalsctl {

int checkPresets(const QCommandLineParser& line)
{
    PresetCheck check(line.isSet(QStringLiteral("strict")));
    for (const QString& path : line.positionalArguments())
        check.check(path);
    if (line.isSet(QStringLiteral("json")))
        printAnswer({{QStringLiteral("files"), check.files()}});
    else
        check.print();
    return check.isGood() ? Done : Failed;
}

} // namespace globalsctl
