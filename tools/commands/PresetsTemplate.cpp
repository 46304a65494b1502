#include "commands/Command.h"
#include "support/ExitCode.h"
#include "support/Output.h"
#include "support/PresetTable.h"

namespace globalsctl {

using namespace TEKLUVA;

int showPresetTemplate(const QCommandLineParser& /*line*/)
{
    const PresetFile builtIn;
    for (const PresetDescription& preset : PresetManager::describePresets()) {
        const QString value = valueInForce(preset);
        printResult(QStringLiteral("# %1, default %2, %3").arg(preset.type, value, preset.bounds));
        printResult(QStringLiteral("%1=%2\n").arg(preset.key, value));
    }
    return Done;
}

} // namespace globalsctl
