// Starts and ends: with the argument "presets" as an application of the library does, otherwise with nothing
// but the application object.

#include "globals/ConfigManager.h"
#include "globals/Exception.h"
#include "globals/Log.h"
#include "globals/LogManager.h"
#include "globals/PresetManager.h"

#include <QCoreApplication>

#include <cstdlib>

using namespace TEKLUVA;

namespace {

int readPresets()
{
    ConfigManager::getInstance();
    LogManager::getInstance()->setActiveLog(new Log("tekluva-3D", false)); // the registry deletes it
    try {
        PresetManager::getInstance()->init();
    } catch (const Exception&) {
        return EXIT_FAILURE;
    }
    return PresetManager::hasPreset(E_PV_ROOM_HEIGHT) ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("tekluva"));
    QCoreApplication::setApplicationName(QStringLiteral("tekluva 3D-Planner"));
    return argc > 1 ? readPresets() : EXIT_SUCCESS;
}
