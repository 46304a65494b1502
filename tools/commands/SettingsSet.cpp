#include "commands/Command.h"
#include "support/ExitCode.h"
#include "support/SettingsFile.h"

namespace globalsctl {

int setSetting(const QCommandLineParser& line)
{
    SettingsRequest request(line);
    request.requireWhole();
    request.settings.setSetting(request.group, request.key, request.value);
    request.requireWritten();
    return Done;
}

} // namespace globalsctl
