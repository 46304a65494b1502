#include "Operations.h"

#include "tests/TestFiles.h"
#include "tests/TestHome.h"

#include "globals/ConfigManager.h"
#include "globals/DataFileCreator.h"
#include "globals/DataFileReader.h"
#include "globals/Exception.h"
#include "globals/Log.h"
#include "globals/LogManager.h"
#include "globals/PresetManager.h"
#include "globals/Settings.h"
#include "globals/StateHandler.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>

#include <memory>
#include <new>

using namespace TEKLUVA;

namespace Operations {

const QByteArray OLD(3000, 'o');
const QByteArray NEW(9000, 'n');
const QString PASSWORD = "house-planner!"_q;

namespace {

const QByteArray SETTINGS = "[A]\nother=1\n\n[G]\nk=old\n";
const QString GROUP = "G"_q;
const QString KEY = "k"_q;
const QString CHANGED = "new"_q;
const QVariantMap CHANGES = {{KEY, CHANGED}, {"l"_q, CHANGED}};
const QString ENTRY = "entry"_q;

/// Whether the file is the new one, or also the old one where nobody \p claims the new one.
bool isWhole(const QString& path, const QByteArray& old, const QByteArray& fresh, bool claims)
{
    const QByteArray content = TestFiles::contentOf(path);
    return content == fresh || (!claims && content == old);
}

QByteArray entryOf(const QString& archive)
{
    return DataFileReader(archive, PASSWORD).getContentOfArchivedFile("entry");
}

/// Wherever the log lies: its folder may be the fault.
QString logPath = "soak.log"_q;

struct Objects
{
    std::unique_ptr<Settings> settings;
    std::unique_ptr<Log> log;
};

Objects newObjects()
{
    Objects objects = {std::make_unique<Settings>("settings.ini"_q, QSettings::IniFormat, nullptr),
                       std::make_unique<Log>("a log in the soak test", true)};
    logPath = QString::fromStdString(objects.log->getFilePath());
    return objects;
}

Objects prepared;

bool changeSetting()
{
    const auto settings = prepared.settings ? std::move(prepared.settings) : newObjects().settings;
    settings->setSettings(GROUP, CHANGES);
    return !settings->hasPendingChanges() && settings->getSetting(GROUP, KEY).toString() == CHANGED;
}

/// By one reader, which makes an index of the archive for the second time.
bool readArchive()
{
    static const DataFileReader READER("old.zip"_q, PASSWORD);
    return READER.getContentOfArchivedFile(ENTRY) == OLD;
}

bool logLine()
{
    const auto log = prepared.log ? std::move(prepared.log) : newObjects().log;
    log->logStatusMessage("new", "", 0);
    try {
        return log->getEntryCount() == 1 && log->getEntry(0)->isWritten();
    } catch (const std::bad_alloc&) {
        return false; // an entry is made when it is asked for
    }
}

int snapshots = 0;
bool isEndDue = false;

bool runProcess()
{
    StateHandler* states = StateHandler::getInstance();
    static const bool IS_SHOWN =
        QObject::connect(states, &StateHandler::progressChanged, [] { ++snapshots; })
        && QObject::connect(states, &StateHandler::processFinished, [] { isEndDue = false; });
    states->newProcess(CHANGED, false, false);
    isEndDue = true;
    states->endProcess(E_PR_DONE);
    return IS_SHOWN;
}

/// Whether a change is shown, after one that may have been lost.
bool isShown()
{
    const int before = snapshots;
    StateHandler::getInstance()->setProcessName(CHANGED);
    return QTest::qWaitFor([before] { return snapshots > before; });
}

bool readPresets()
{
    try {
        PresetManager::getInstance()->fillNameMap();
        PresetManager::getInstance()->readFile("presets.dat"_q);
        return PresetManager::getPreset(E_PV_ROOM_HEIGHT).toInt() == 260;
    } catch (const Exception&) {
        return false;
    }
}

ConfigManager& config()
{
    return *ConfigManager::getInstance();
}

const std::vector<Operation> OPERATIONS = {
    {"settings", false, changeSetting,
     [](bool claims) {
         const QByteArray changed = "[A]\nother=1\n\n[G]\nk=new\nl=new\n";
         // A lock that cannot be removed says whose it was.
         const QFileInfo lock("settings.ini.lock"_q);
         return isWhole("settings.ini"_q, SETTINGS, changed, claims) && (!lock.exists() || lock.size() > 0);
     }},
    {"rename log", true,
     [] {
         const auto log = prepared.log ? std::move(prepared.log) : newObjects().log;
         log->setLogName("a log of another name", true);
         return true;
     },
     [](bool /*claims*/) { return LogManager::getInstance()->getAllLogs().empty(); }},
    {"log", false, logLine,
     [](bool claims) {
         const QByteArray line = TestFiles::contentOf(logPath);
         return line.endsWith("  new\r\n") || (!claims && line.isEmpty());
     }},
    {"progress", true, runProcess,
     [](bool /*claims*/) {
         return !isEndDue && (!StateHandler::getInstance()->isProcessRunning() || isShown());
     }},
    {"read", true, [] { return DataFileReader(QStringLiteral("block"), PASSWORD).getFileContent() == NEW; }},
    {"read archive", false, readArchive, [](bool /*claims*/) { return readArchive(); }},
    {"write", false, [] { return config().writeDataToFile(QStringLiteral("data"), NEW, false); },
     [](bool claims) { return isWhole(QStringLiteral("data"), OLD, NEW, claims); }},
    {"append", false, [] { return config().writeDataToFile(QStringLiteral("record"), NEW, true); },
     [](bool claims) { return isWhole(QStringLiteral("record"), OLD, OLD + NEW, claims); }},
    {"archive", true,
     [] {
         return DataFileCreator().createArchivFromData({{QStringLiteral("entry"), NEW}},
                                                       QStringLiteral("new.zip"), PASSWORD);
     },
     [](bool claims) {
         const QByteArray entry = entryOf(QStringLiteral("new.zip"));
         return entry == NEW || (!claims && entry == OLD);
     }},
    {"copy", false,
     [] { return config().copyDirectory(QStringLiteral("from"), QStringLiteral("to"), true, false, {}); },
     [](bool claims) {
         return isWhole(QStringLiteral("to/a"), {}, NEW, claims)
                && isWhole(QStringLiteral("to/sub/b"), {}, OLD, claims);
     }},
    {"move", false,
     [] { return config().copyDirectory(QStringLiteral("away"), QStringLiteral("to"), true, true, {}); },
     [](bool claims) {
         return TestFiles::contentOf(QStringLiteral("to/c")) == NEW
                || (!claims && TestFiles::contentOf(QStringLiteral("away/c")) == NEW);
     }},
    {"presets", true, readPresets},
};

/// What no operation changes, and what takes time to make.
bool prepareSources()
{
    if (QFile::exists("old.zip"_q))
        return true;
    const DataFileCreator creator;
    return QDir().mkpath("from/sub"_q) && QDir().mkpath("away"_q) && TestFiles::write("from/a"_q, NEW)
           && TestFiles::write("from/sub/b"_q, OLD)
           && TestFiles::write("block"_q, creator.encryptData(NEW, PASSWORD))
           && TestFiles::write("presets.dat"_q, PresetManager::protectedContent("room_height=260\n"))
           && creator.createArchivFromData({{"aside"_q, NEW}, {"entry"_q, OLD}}, "old.zip"_q, PASSWORD);
}

} // namespace

const std::vector<Operation>& all()
{
    return OPERATIONS;
}

void prepareObjects()
{
    prepared = newObjects();
}

bool prepareFiles()
{
    QDir("to"_q).removeRecursively();
    QFile::remove(logPath);
    return prepareSources() && QDir().mkpath("to"_q) && TestFiles::write("away/c"_q, NEW)
           && TestFiles::write("settings.ini"_q, SETTINGS) && TestFiles::write("data"_q, OLD)
           && TestFiles::write("record"_q, OLD)
           && TestFiles::write("new.zip"_q, TestFiles::contentOf("old.zip"_q));
}

} // namespace Operations
