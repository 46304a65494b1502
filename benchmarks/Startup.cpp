#include "Bench.h"
#include "Process.h"

#include "globals/ConfigManager.h"

void Bench::addStartup()
{
    // The usual start finds a settings file; without one, each would look for data of older installations.
    TEKLUVA::ConfigManager::getInstance()->setRuntimeState(TEKLUVA::E_RS_SHUTDOWN);

    const auto add = [](const char* side, const std::vector<std::string>& command) {
        addSlow(
            std::string("process start to presets read/whole process/") + side, [] {},
            [command] { return run(command).isDone; })
            ->Unit(benchmark::kMillisecond);
    };
    add("ours", {STARTUP_PROGRAM, "presets"});
    add("QCoreApplication", {STARTUP_PROGRAM});
}
