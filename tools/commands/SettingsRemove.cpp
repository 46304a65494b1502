#include "commands/Command.h"
#include "support/ExitCode.h"
#include "support/SettingsFile.h"

namespace globalsctl {

namespace {

void removeKey(SettingsRequest& request)
{
    if (!request.settings.hasSetting(request.group, request.key))
        request.failAsKeyAbsent();
    request.settings.removeSetting(request.group, request.key);
}

void removeGroup(SettingsRequest& request)
{
    // A group that has only sub-groups exists, too.
    if (request.settings.getSettingsBelow(request.group).isEmpty())
        request.failAsGroupAbsent();
    request.settings.removeSettingGroup(request.group);
}

} // namespace

int removeSetting(const QCommandLineParser& line)
{
    SettingsRequest request(line);
    request.requireWhole();
    if (request.key.isEmpty())
        removeGroup(request);
    else
        removeKey(request);
    request.requireWritten();
    return Done;
}

} // namespace globalsctl
