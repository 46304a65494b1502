// Small jobs whose instructions scripts/bench --check counts: a number that a loaded machine does not change.
//
//     globals_instructions            prints the names of the jobs
//     globals_instructions JOB        does the job once to warm up, and once within measured()

#include "globals/Colour.h"
#include "globals/ConfigManager.h"
#include "globals/DataFileCreator.h"
#include "globals/DataFileReader.h"
#include "globals/Log.h"
#include "globals/MeasurementManager.h"
#include "globals/PresetManager.h"
#include "globals/StateHandler.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <cstring>

using namespace TEKLUVA;

namespace {

constexpr int RUNS = 1000;

const QString ARCHIVE = QStringLiteral("archive.zip");
const QString SETTINGS = QStringLiteral("settings.ini");

Settings& settings()
{
    static Settings store(SETTINGS, QSettings::IniFormat, nullptr);
    return store;
}

Log& activeLog()
{
    static auto* log = new Log("instructions", true); // the registry deletes it
    return *log;
}

struct Job
{
    const char* name;
    void (*run)();
};

template <typename Work>
void repeat(Work&& work)
{
    for (int i = 0; i < RUNS; ++i)
        work(i);
}

constexpr Job JOBS[] = {
    {"read-setting",
     [] { repeat([](int) { settings().getSetting(QStringLiteral("group_1"), QStringLiteral("key_2")); }); }},
    {"open-settings", [] { Settings(SETTINGS, QSettings::IniFormat, nullptr).getAllGroups(); }},
    {"write-setting",
     [] {
         static int value = 0;
         settings().setSetting(QStringLiteral("group_1"), QStringLiteral("key_2"), ++value);
     }},
    {"log-line",
     [] { repeat([](int) { activeLog().logStatusMessage("The model \"chair\" was loaded.", "", 0); }); }},
    {"measurement-string",
     [] {
         repeat([](int i) {
             MeasurementManager::getInstance()->createMeasurementString(E_MD_LINEAR, E_MU_METER, i * 1.5,
                                                                        true);
         });
     }},
    {"preset-by-key",
     [] { repeat([](int) { PresetManager::getInstance()->getKey(QStringLiteral("room_height")); }); }},
    {"set-preset",
     [] { repeat([](int i) { PresetManager::getInstance()->setPreset(E_PV_ROOM_HEIGHT, 250 + i % 10); }); }},
    {"temperature-to-colour",
     [] {
         float red = 0;
         float green = 0;
         float blue = 0;
         for (int kelvin = 1000; kelvin < 12000; kelvin += 100)
             temperaturToColor(kelvin, red, green, blue);
     }},
    {"progress-step",
     [] {
         ProgressStep* step = StateHandler::getInstance()->getStepData(QStringLiteral("step"));
         repeat([step](int i) { step->setCurrentProgressBarStep(static_cast<unsigned>(i)); });
     }},
    {"list-archive", [] { DataFileReader(ARCHIVE, QString()).getListOfArchivedFiles(); }},
    {"read-entry", [] { DataFileReader(ARCHIVE, QString()).getContentOfArchivedFile("entry-500"); }},
};

/// Between the first and the last instruction of this function all are counted.
__attribute__((noinline)) void measured(const Job& job)
{
    job.run();
}

/// What the jobs work on.
void prepare()
{
    QMap<QString, QByteArray> entries;
    for (int i = 0; i < RUNS; ++i)
        entries.insert(QStringLiteral("entry-%1").arg(i), QByteArray(100, 'x'));
    DataFileCreator().createArchivFromData(entries, ARCHIVE, QString());
    for (int group = 0; group < 5; ++group) {
        QVariantMap values;
        for (int key = 0; key < 6; ++key)
            values.insert(QStringLiteral("key_%1").arg(key), 1000);
        settings().setSettings(QStringLiteral("group_%1").arg(group), values);
    }
    PresetManager::getInstance()->fillNameMap();
    StateHandler* states = StateHandler::getInstance();
    states->newProcess(QStringLiteral("process"), true, true);
    states->addProgressStep(QStringLiteral("step"), ProgressStep::E_PRT_BAR, QString(), QString(), false,
                            ProgressStep::E_PS_RUNNING);
    states->getStepData(QStringLiteral("step"))->setProgressBarSteps(RUNS);
}

} // namespace

int main(int argc, char** argv)
{
    const QTemporaryDir home;
    qputenv("HOME", QFile::encodeName(home.path()));
    QDir::setCurrent(home.path());
    const QCoreApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("tekluva"));
    QCoreApplication::setApplicationName(QStringLiteral("instructions"));
    if (argc < 2) {
        for (const Job& job : JOBS)
            std::puts(job.name);
        return 0;
    }
    prepare();
    for (const Job& job : JOBS) {
        if (std::strcmp(job.name, argv[1]) != 0)
            continue;
        job.run();
        measured(job);
        return 0;
    }
    return 2;
}
