// What an application does with the library in its first minute, on real files: it opens its configuration,
// looks how the last run ended, starts its log, reads the protected "presets.dat" beside the executable and
// asks for the room height. With the argument "crash" it ends without a word, for the next run to see.
//
// The files go where the application's would go; run it with another HOME to keep yours clean.

#include "globals/ConfigManager.h"
#include "globals/Exception.h"
#include "globals/Log.h"
#include "globals/LogManager.h"
#include "globals/PresetManager.h"
#include "globals/SettingsKeys.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QFile>
#include <QTextStream>

#include <cstdlib>

using namespace TEKLUVA;

namespace {

QTextStream& out()
{
    static QTextStream stream(stdout);
    return stream;
}

void showPresets()
{
    for (const E_PresetValue value : {E_PV_ROOM_HEIGHT, E_PV_MAX_ROOM_HEIGHT, E_PV_MIN_WALL_STRENGTH,
                                      E_PV_SCREENSHOT_ASPECT_RATIO, E_PV_PERS_NAV_X}) {
        const PresetDescription preset = PresetManager::describePresets()[value - E_PV_MIN_ROOM_HEIGHT];
        out() << "  " << preset.key.leftJustified(26) << PresetManager::getPreset(value).toString() << "\n";
    }
}

void showFiles(const QString& folder)
{
    QDirIterator files(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        out() << "  " << path << " (" << files.fileInfo().size() << " bytes)\n";
    }
}

void showFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return;
    while (!file.atEnd())
        out() << "  " << QString::fromUtf8(file.readLine()).trimmed() << "\n";
}

void showLastRun(const ConfigManager& config)
{
    const E_RuntimeState state = config.getLastRuntimeState();
    out() << "Last run: " << runVerdictText(state);
    if (runVerdict(state) != E_RV_NO_RUN)
        out() << ", alive until " << config.getLastLifeTime().toString(Qt::ISODate);
    out() << "\n\n";
}

void start()
{
    ConfigManager* config = ConfigManager::getInstance();
    showLastRun(*config);
    config->setRuntimeState(E_RS_INITIALIZING);

    auto* log = new Log("tekluva-3D", false); // the registry deletes it
    LogManager::getInstance()->setActiveLog(log);
    log->logStatusMessage("Application started.", "", 0);

    PresetManager::getInstance()->init();
    const QVariant& height = PresetManager::getPreset(E_PV_ROOM_HEIGHT);
    log->logStatusMessage("The room height is " + height.toString().toStdString() + " cm.", "", 0);
    config->setRuntimeState(E_RS_STARTED);
}

void show()
{
    const ConfigManager* config = ConfigManager::getInstance();
    out() << "Presets in force:\n";
    showPresets();
    out() << "\nFiles made:\n";
    showFiles(config->getPath(E_PT_SETTINGS));
    out() << "\nSettings:\n";
    showFile(config->getPath(E_PT_SETTINGS) + SettingsKeys::FILE_NAME);
    out() << "\nLog:\n";
    showFile(QString::fromStdString(LogManager::getInstance()->getActiveLog()->getFilePath()));
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("tekluva"));
    QCoreApplication::setApplicationName(QStringLiteral("tekluva 3D-Planner"));
    int result = EXIT_SUCCESS;
    try {
        start();
        show();
        out().flush();
        if (QCoreApplication::arguments().contains(QStringLiteral("crash")))
            std::_Exit(EXIT_FAILURE);
        ConfigManager::getInstance()->setRuntimeState(E_RS_SHUTDOWN);
    } catch (const Exception& e) {
        QTextStream(stderr) << e.what() << "\n" << e.getDescription() << "\n";
        ConfigManager::getInstance()->setRuntimeState(E_RS_CRASHED);
        result = EXIT_FAILURE;
    }
    out().flush();
    delete LogManager::getInstance();
    return result;
}
