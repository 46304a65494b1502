#include "Bench.h"
#include "Process.h"

void Bench::addStartup()
{
    const auto add = [](const char* side, const std::vector<std::string>& command) {
        addSlow(
            std::string("process start to presets read/whole process/") + side, [] {},
            [command] { return run(command).isDone; })
            ->Unit(benchmark::kMillisecond);
    };
    add("ours", {STARTUP_PROGRAM, "presets"});
    add("QCoreApplication", {STARTUP_PROGRAM});
}
