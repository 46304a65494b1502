#include "commands/Command.h"
#include "support/ExitCode.h"
#include "support/Output.h"
#include "support/SettingsFile.h"

#include <QCommandLineParser>
#include <QJsonObject>

namespace globalsctl {

int getSetting(const QCommandLineParser& line)
{
    const SettingsRequest request(line);
    if (!request.settings.hasSetting(request.group, request.key))
        request.failAsKeyAbsent();
    const QVariant value = request.settings.getSetting(request.group, request.key);
    if (line.isSet(QStringLiteral("json"))) {
        printAnswer({{QStringLiteral("group"), request.group},
                     {QStringLiteral("key"), request.key},
                     {QStringLiteral("value"), jsonOfSetting(value)}});
    } else {
        printResult(textOfSetting(value));
    }
    const bool isWhole = request.tellDamage();
    return value.isValid() || isWhole ? Done : Failed;
}

} // namespace globalsctl
