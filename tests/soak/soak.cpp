// What scripts/soak runs: the file operations of the library, each with what must hold behind it, whatever
// fails.
//
//     soak faults
//         once, between the system calls access("soak-begin") and access("soak-end")
//     soak full
//         with room for 0, 512, 1024, ... bytes in each file
//     soak cycles
//         opens what cannot be opened, two thousand times, and looks for lost memory and files
//     soak threads
//         eight threads at once
//     soak logs
//         four threads report to the active log, while logs are made and deleted, and one after the end of
//         main()
//     soak start HOME
//         the start of an application with that home folder
//     soak write FILE NAME [COUNT]
//         writes two settings that are always equal, under NAME, and prints each number that is on disk;
//         COUNT times, or until it is killed
//     soak write-by-qt FILE NAME COUNT
//         the same by QSettings
//     soak check FILE NAME NUMBER
//         whether these are equal, and NUMBER or later ones; and whether the next write is quick and leaves
//         nothing else in the folder

#include "Operations.h"

#include "tests/TestLog.h"
#include "tests/TestThreads.h"

#include "globals/ConfigManager.h"
#include "globals/DataFileCreator.h"
#include "globals/DataFileReader.h"
#include "globals/StateHandler.h"

#include <QElapsedTimer>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <limits>
#include <map>
#include <thread>

#include <malloc.h>
#include <unistd.h>

using namespace TEKLUVA;
using namespace Operations;

namespace {

template <typename Fault>
bool survives(Fault&& fault)
{
    bool isGood = prepareFiles();
    std::vector<bool> claims;
    fault([&claims] {
        for (const Operation& operation : all())
            claims.push_back(operation.succeeds());
        TestHome::sendDeletions();
    });
    for (std::size_t i = 0; i < claims.size(); ++i) {
        if (all()[i].holds(claims[i]))
            continue;
        qWarning("broken, %s: %s", claims[i] ? "claims success" : "fails", all()[i].name);
        isGood = false;
    }
    const auto failing = std::count(claims.begin(), claims.end(), false);
    std::printf("%td of %zu operations fail\n", failing, claims.size());
    return isGood;
}

bool faults()
{
    return survives([](auto&& work) {
        static_cast<void>(access("soak-begin", F_OK));
        work();
        static_cast<void>(access("soak-end", F_OK));
    });
}

bool full()
{
    bool isGood = true;
    for (rlim_t room = 0; room <= rlim_t(24) * 512; room += 512) {
        isGood &= survives([room](auto&& work) {
            const TestPlatform::FullDisk disk(room);
            work();
        });
    }
    return isGood;
}

bool cycles()
{
    const QString nowhere = "/proc/none/file"_q;
    using Files = std::filesystem::directory_iterator;
    const auto used = [] {
        const auto files = std::distance(Files("/proc/self/fd"), Files());
        return std::make_pair(files, ssize_t(mallinfo2().uordblks));
    };
    if (!prepareFiles()
        || !TestFiles::write("damaged.zip"_q, TestFiles::contentOf("old.zip"_q).replace("PK\1\2", "PX\1\2")))
        return false;
    auto before = used();
    for (int i = 0; i < 2000; ++i) {
        if (i == 1000) // behind all that is made once
            before = used();
        for (const QString& path : {nowhere, "."_q, "damaged.zip"_q}) {
            const DataFileReader reader(path, PASSWORD);
            reader.getFileContent();
            reader.getListOfArchivedFiles();
            DataFileCreator().createArchivFromFiles({path}, nowhere, PASSWORD);
            ConfigManager::getInstance()->writeDataToFile(nowhere, NEW, false);
            ConfigManager::getInstance()->copyDirectory(path, nowhere, true, false, {});
            Settings(nowhere, QSettings::IniFormat, nullptr).setSetting("G"_q, "k"_q, 1);
            Log("no/where", true).logStatusMessage("lost", "", 0);
        }
        TestHome::sendDeletions();
        QCoreApplication::sendPostedEvents(); // only now Qt 6 forgets them
    }
    const auto after = used();
    std::printf("%zd files and %zd bytes more\n", after.first - before.first, after.second - before.second);
    return after.first <= before.first && after.second - before.second < 1000; // not a byte for each
}

bool threads()
{
    Settings settings("settings.ini"_q, QSettings::IniFormat, nullptr);
    TestLog::ActiveLog active;
    StateHandler& states = *StateHandler::getInstance();
    states.newProcess("soak"_q, true, true);
    TestThreads::run(8, [&](int worker) {
        const QString name = QString::number(worker);
        states.addProgressStep(name, ProgressStep::E_PRT_TRANSFER, name, name, false,
                               ProgressStep::E_PS_RUNNING);
        for (unsigned int i = 1; i <= 50; ++i) {
            settings.setSetting(name, "i"_q, i);
            active.log().logStatusMessage(name.toStdString(), "", 0);
            states.setCurrentProgressBarStep(name, i);
            states.setAbort();
            static_cast<void>(states.wasAborted() && settings.getAllGroups().isEmpty());
        }
    });
    return active.log().getEntryCount() == 400 && settings.getAllGroups().count() == 8;
}

/// Lets the library report a failure to the active log, if there is one.
void reportFailure()
{
    bool ok = true;
    ConfigManager::getInstance()->readDataFromFile(QString(), ok);
}

/// Logs after the end of main(), when the application object is gone.
struct LateLine
{
    ~LateLine()
    {
        LogManager::getInstance()->withActiveLog([](Log& log) { log.logErrorMessage("late", "", 0); });
    }
};

bool logs()
{
    static const LateLine LATE;
    reportFailure(); // the configuration manager is made in the main thread
    std::atomic<bool> isOver{false};
    const auto report = [&isOver](int) {
        while (!isOver)
            reportFailure();
    };
    unsigned entries = 0;
    {
        const TestThreads workers(4, report, [&isOver] { isOver = true; });
        LogManager* registry = LogManager::getInstance(); // for which the others are asking
        for (int i = 0; i < 300; ++i) {
            const auto log = std::make_unique<Log>("soak" + std::to_string(i % 3), true);
            registry->setActiveLog(log.get());
            std::this_thread::sleep_for(std::chrono::microseconds(100 * (i % 5)));
            if (i % 2 == 0) // the others are deleted while they are active
                registry->restorePreviousLog();
            entries += log->getEntryCount();
        }
    }
    LogManager::getInstance()->setActiveLog(new Log("late", true)); // nobody deletes it
    return entries > 0 && LogManager::getInstance()->getAllLogs().size() == 1;
}

bool start(const QString& home)
{
    qputenv("HOME", QFile::encodeName(home));
    ConfigManager::getInstance()->setRuntimeState(E_RS_STARTED);
    return ConfigManager::getInstance()->getLastRuntimeState() == E_RS_STARTED;
}

/// Acknowledges each number that is on disk.
bool write(const QString& path, const QString& name, int count, const std::function<bool(int)>& store)
{
    QElapsedTimer timer;
    qint64 longest = 0;
    for (int i = 1; i <= count; ++i) {
        timer.start();
        if (!store(i))
            return false;
        longest = std::max(longest, timer.elapsed());
        std::printf("%d\n", i);
        static_cast<void>(std::fflush(stdout));
    }
    qInfo("    %s wrote %d times, %lld ms at most", qPrintable(name), count, longest);
    return QFile::exists(path);
}

QVariantMap numbers(int i)
{
    return {{"a"_q, i}, {"b"_q, i}, {"kept"_q, QString(2000, QLatin1Char('k'))}};
}

bool writeByUs(const QString& path, const QString& name, int count)
{
    Settings settings(path, QSettings::IniFormat, nullptr);
    return write(path, name, count, [&](int i) {
        settings.setSettings(name, numbers(i));
        return !settings.hasPendingChanges() && settings.getSetting(name, "a"_q).toInt() == i;
    });
}

bool writeByQt(const QString& path, const QString& name, int count)
{
    QSettings settings(path, QSettings::IniFormat);
    return write(path, name, count, [&](int i) {
        // Two of them that write in the same millisecond undo each other's changes.
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        const QVariantMap values = numbers(i);
        for (auto value = values.begin(); value != values.end(); ++value)
            settings.setValue(name + QLatin1Char('/') + value.key(), *value);
        settings.sync();
        return settings.status() == QSettings::NoError && settings.value(name + "/a"_q).toInt() == i;
    });
}

bool check(const QString& path, const QString& name, int acknowledged)
{
    QElapsedTimer timer;
    timer.start();
    Settings settings(path, QSettings::IniFormat, nullptr);
    settings.setSetting("check"_q, "number"_q, acknowledged);
    const bool isQuick = !settings.hasPendingChanges() && timer.elapsed() < 1000;
    const QVariantMap values = settings.getSettings(name);
    const int number = values.value("a"_q).toInt();
    const bool isWhole = number >= acknowledged && values.value("b"_q).toInt() == number
                         && (number == 0 || values.value("kept"_q).toString().size() == 2000);
    const QStringList files =
        QFileInfo(path).dir().entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    const bool isAlone = files == QStringList(QFileInfo(path).fileName());
    if (!isQuick || !isWhole || !isAlone)
        qWarning("%s: %d of %d, %lld ms, %s", qPrintable(name), number, acknowledged, timer.elapsed(),
                 qPrintable(files.join(" "_q)));
    return isQuick && isWhole && isAlone;
}

} // namespace

int main(int argc, char** argv)
{
    const QString file = argc > 2 ? QFileInfo(QString::fromLocal8Bit(argv[2])).absoluteFilePath() : QString();
    const QString name = argc > 3 ? QString::fromLocal8Bit(argv[3]) : QString();
    const int number = argc > 4 ? QByteArray(argv[4]).toInt() : std::numeric_limits<int>::max();
    const std::map<std::string, std::function<bool()>> parts = {
        {"faults", faults},
        {"full", full},
        {"cycles", cycles},
        {"threads", threads},
        {"logs", logs},
        {"start", [&] { return start(file); }},
        {"write", [&] { return writeByUs(file, name, number); }},
        {"write-by-qt", [&] { return writeByQt(file, name, number); }},
        {"check", [&] { return check(file, name, number); }},
    };
    const TestHome::Home home;
    const QCoreApplication application(argc, argv);
    TestHome::nameApplication();
    const auto part = parts.find(argc > 1 ? argv[1] : "");
    return part != parts.end() && part->second() ? 0 : 1;
}
