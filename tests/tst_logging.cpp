#include "TestData.h"
#include "TestLog.h"
#include "TestThreads.h"

#include "globals/ConfigManager.h"

#include <QDir>
#include <QRegularExpression>
#include <QSignalSpy>

#include <atomic>
#include <memory>

using namespace TEKLUVA;
using TestLog::messagesIn;
using TestLog::messagesOf;
using TestLog::pathOf;

static const auto registry = &LogManager::getInstance;

class LoggingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        registry()->clear();
        QVERIFY(QDir(ConfigManager::getInstance()->getPath(E_PT_LOGS)).removeRecursively());
    }

    void aLineIsLabelTimeAndRawBytes_data() { TestData::addRows("log-lines.txt"); }
    void aLineIsLabelTimeAndRawBytes()
    {
        const QByteArray bytes = QByteArray::fromHex(TestData::field("message").toLatin1());
        Log log("line", true);
        log.logMessage(E_LogLevel(TestData::field<int>("level")), bytes.toStdString(), "location", 7);

        const QDateTime stamp = log.getEntry(0)->getTimeStamp();
        const QString head =
            TestData::field("label").leftJustified(9) + stamp.toString("dd.MM.yyyy hh:mm:ss"_q) + "  "_q;
        QVERIFY(qAbs(stamp.secsTo(QDateTime::currentDateTime())) < 60);
        for (int i = 0; i < 2; ++i) { // a second time it is not written
            QCOMPARE(TestFiles::contentOf(pathOf(log)), head.toLatin1() + bytes + "\r\n");
            log.writeEntry(log.getEntry(0));
        }
    }

    void qtsTextsAreWrittenInUtf8()
    {
        Log log("texts", true);
        log.logDebugMessage("Größe"_q);
        log.logStatusMessage("Größe"_q);
        log.logWarningMessage("Größe"_q);
        log.logErrorMessage("Größe"_q);
        QStringList labels;
        for (const QByteArray& line : TestFiles::contentOf(pathOf(log)).split('\n'))
            labels << QString::fromLatin1(line.left(9)).trimmed();
        QCOMPARE(labels.join(QLatin1Char(' ')), "DEBUG INFO WARNING ERROR "_q);
        QCOMPARE(messagesOf(log).join(QLatin1Char(' ')), "Größe Größe Größe Größe"_q);
    }

    void theStampFollowsTheClock()
    {
        Log log("clock", true);
        log.logStatusMessage("first", "", 0);
        ConfigManager::getInstance()->setCurrentServerTime(QDateTime::currentDateTime().addSecs(60));
        log.logStatusMessage("second", "", 0);
        const QByteArrayList lines = TestFiles::contentOf(pathOf(log)).split('\n');
        QVERIFY(lines[0].mid(9, 19) != lines[1].mid(9, 19));
        ConfigManager::getInstance()->setCurrentServerTime(QDateTime::currentDateTime());
    }

    void overwritingStartsTheFileAfresh()
    {
        for (const bool overwrite : {true, false}) {
            const TestHome::Turn turn(overwrite);
            std::make_unique<Log>("again", true)->logStatusMessage("old", "", 0);
            Log log("again", overwrite);
            QCOMPARE(messagesOf(log), QStringList("old"_q)); // opened with the first line only
            log.logStatusMessage("new", "", 0);
            QCOMPARE(messagesOf(log).join(" "_q), overwrite ? "new"_q : "old new"_q);

            QSignalSpy changed(&log, &Log::contentChanged);
            log.resetLog(overwrite);
            QCOMPARE(changed.count(), 1);
            log.logStatusMessage("newer", "", 0);
            QCOMPARE(log.getEntryCount(), 1U);
            QCOMPARE(messagesOf(log).join(" "_q), overwrite ? "newer"_q : "old new newer"_q);
        }
    }

    void aLineThatCannotBeWrittenIsKept()
    {
        Log log("blocked", true);
        QVERIFY(QDir().mkpath(pathOf(log)));
        log.logErrorMessage("kept", "", 0);
        QVERIFY(QDir().rmdir(pathOf(log)));
        QVERIFY(!log.getEntry(0)->isWritten());
        log.writeEntry(log.getEntry(0));
        QVERIFY(log.getEntry(0)->isWritten());
        SKIP_ON_WINDOWS("a full disk");
        {
            const TestPlatform::FullDisk full(100);
            log.logStatusMessage(std::string(200, 'x'), "", 0); // leaves no half line
        }
        log.logStatusMessage("after", "", 0);
        QVERIFY(!log.getEntry(1)->isWritten());
        log.getEntry(1)->setWritten(); // as told, so it is never written
        log.writeEntry(log.getEntry(1));
        QCOMPARE(messagesOf(log), QStringList({"kept"_q, "after"_q}));
        const std::unique_ptr<LogEntry> none(log.getEntry(3));
        QCOMPARE(none->getMessage(), std::string("Index out of range."));
        QCOMPARE(log.getEntryCount(), 3U);
    }

    void renamingMovesFileAndRegistration()
    {
        for (const bool byRegistry : {false, true}) {
            const TestHome::Turn turn(byRegistry);
            Log log("old name", true);
            Log other("other", true);
            log.logStatusMessage("one", "", 0);
            const QString oldPath = pathOf(log);
            if (byRegistry)
                registry()->updateLogName("a new name", &log);
            else
                log.setLogName("a new name", false);
            log.logStatusMessage("two", "", 0);

            QVERIFY(!QFile::exists(oldPath) && pathOf(log).endsWith("/logs/a new name.log"_q));
            QCOMPARE(messagesOf(log), QStringList({"one"_q, "two"_q}));
            registry()->updateLogName("a new name", &log);
            QCOMPARE(registry()->getAllLogs(), (std::vector<Log*>{&log, &other}));
            QVERIFY(QFile::remove(pathOf(log)));
        }
    }

    void aFailedRenameGoesOnInTheNewFile()
    {
        std::make_unique<Log>("taken", true)->logStatusMessage("theirs", "", 0);
        Log log("mine", true);
        log.logStatusMessage("one", "", 0);
        const QString oldPath = pathOf(log);
        log.setLogName("taken", false);
        log.logStatusMessage("two", "", 0);
        QCOMPARE(messagesIn(oldPath), QStringList("one"_q));
        QCOMPARE(messagesOf(log), QStringList({"theirs"_q, "two"_q}));
    }

    void aLogFolderThatCannotBeMadeIsReportedToTheLogBeingRenamed()
    {
        SKIP_ON_WINDOWS("removing the folder of an open file");
        Log log("reported", true);
        log.logStatusMessage("one", "", 0);
        registry()->setActiveLog(&log);
        QDir folder = QFileInfo(pathOf(log)).dir();
        QVERIFY(folder.removeRecursively() && TestFiles::write(folder.absolutePath(), "in the way"));
        log.setLogName("renamed", false);
        QVERIFY(QFile::remove(folder.absolutePath()));
        QCOMPARE(log.getEntryCount(), 2U);
        QCOMPARE(log.getEntry(1)->getMessage(), std::string("Could not browse into logs directory"));
    }

    void aReceiverThatFailsDoesNotHang()
    {
        Log log("busy", true);
        Log other("other", true);
        registry()->setActiveLog(&log);
        connect(&log, &Log::contentChanged, [&other] {
            other.logStatusMessage("two", "", 0);
            ConfigManager::getInstance()->resetPath(E_PT_LOGS);
        });
        log.logStatusMessage("one", "", 0);
        QCOMPARE(messagesOf(log), QStringList("one"_q));
    }

    void theRegistryFindsLogsByName()
    {
        QSignalSpy added(registry(), &LogManager::logAdded);
        auto first = std::make_unique<Log>("same", true);
        auto second = std::make_unique<Log>("same", true);
        Log upper("Zebra", true);
        QCOMPARE(added.count(), 3);
        QCOMPARE(added[1][0].value<Log*>(), second.get());
        QCOMPARE(registry()->getAllLogs(), (std::vector<Log*>{&upper, second.get()}));
        second.reset();
        first.reset();
        QCOMPARE(registry()->getAllLogs(), std::vector<Log*>{&upper});
    }

    void theActiveLogIsAStack()
    {
        registry()->restorePreviousLog();
        QVERIFY(!registry()->getActiveLog());
        QPointer<Log> a = new Log("a", true);
        Log b("b", true);
        for (Log* log : {a.data(), &b, a.data(), a.data()})
            registry()->setActiveLog(log);
        registry()->restorePreviousLog();
        registry()->restorePreviousLog();
        QCOMPARE(registry()->getActiveLog(), &b);
        registry()->setActiveLog(a);
        delete a; // takes its first place on the stack with it, the other one is passed over
        QCOMPARE(registry()->getActiveLog(), &b);
        registry()->restorePreviousLog();
        QCOMPARE(registry()->getActiveLog(), &b);

        a = new Log("a", true);
        b.setLogName("not registered", false);
        registry()->removeLog(&b);
        delete registry();
        QVERIFY(!a && !registry()->getActiveLog());
    }

    void theActiveLogIsDeletedWhileTheClockIsCorrected()
    {
        const auto correctBy = [](int seconds) {
            const QDateTime now = QDateTime::currentDateTime();
            ConfigManager::getInstance()->setCurrentServerTime(now.addSecs(seconds));
        };
        std::atomic<int> step{0};
        auto log = std::make_unique<Log>("before", true);
        registry()->setActiveLog(log.get());
        connect(log.get(), &Log::contentChanged, [&step] {
            step = 1;
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            step = 2;
        });
        const TestThreads corrector(
            1, [&](int) { correctBy(1000); }, [&] { correctBy(0); });
        while (step == 0)
            std::this_thread::yield();
        log.reset();
        QCOMPARE(step.load(), 2);
    }

    void anEntryMayMakeTheConfiguration()
    {
        Log log("asked", true);
        registry()->setActiveLog(&log);
        const QString settings = ConfigManager::getInstance()->getPath(E_PT_SETTINGS) + "settings.ini"_q;
        delete ConfigManager::getInstance();
        QFile::remove(settings);
        QVERIFY(QDir().mkpath(settings)); // which is an error entry
        delete log.getEntry(99);
        QVERIFY(QDir().rmdir(settings));
        QCOMPARE(log.getEntryCount(), 1U);
    }

    void twoLogsShareAFile()
    {
        Log first("shared", true);
        Log second("shared", true);
        first.logStatusMessage("begin", "", 0);
        second.logStatusMessage("afresh", "", 0);
        for (int i = 0; i < 5; ++i) {
            first.logStatusMessage("first", "", 0);
            second.logStatusMessage("the second one", "", 0);
        }
        const QStringList messages = messagesOf(first);
        QCOMPARE(messages.size(), 11);
        QCOMPARE(messages.filter(QRegularExpression("^(afresh|first|the second one)$"_q)), messages);
    }

    void namesThatLeaveTheFolder()
    {
        Log active("active", true);
        registry()->setActiveLog(&active);
        const QString elsewhere = QDir(pathOf(active)).absoluteFilePath("../../elsewhere.log"_q);
        Log log("../elsewhere", true);
        log.logStatusMessage("x", "", 0);
        QVERIFY(!log.getEntry(0)->isWritten());
        QVERIFY(!QFile::exists(QDir::cleanPath(elsewhere)));
        QCOMPARE(
            messagesOf(active),
            QStringList("The log ../elsewhere would not lie in the log folder. Its lines are not written "
                        "to a file."_q));
        log.setLogName("inside", false);
        log.logStatusMessage("y", "", 0);
        QCOMPARE(messagesOf(log), QStringList("y"_q));
        registry()->restorePreviousLog();
    }

    void aPipeTakesNoLines()
    {
        SKIP_ON_WINDOWS("pipes");
        Log log("pipe", true);
        QVERIFY(TestFiles::makePipe(pathOf(log)));
        log.logStatusMessage("x", "", 0);
        QVERIFY(!log.getEntry(0)->isWritten());
        QFile::remove(pathOf(log));
    }

    void objectsMadeOnAnotherThreadLiveOnTheMainThread()
    {
        Log* log = nullptr;
        std::thread([&log] { (log = new Log("moved", true))->logStatusMessage("x", "", 0); }).join();
        QCOMPARE(log->thread(), QCoreApplication::instance()->thread());
        QCOMPARE(log->getEntry(0)->thread(), QCoreApplication::instance()->thread());
    }

    void linesOfManyThreadsAreWholeAndComplete()
    {
        Log log("busy 0", true);
        std::atomic<bool> isOver{false};
        std::atomic<bool> namesAreWhole{true};
        const auto disturb = [&](int thread) {
            for (int i = 1; !isOver; ++i) {
                if (thread == 0)
                    log.setLogName("busy " + std::to_string(i), false);
                for (const Log* listed : registry()->getAllLogs())
                    namesAreWhole = namesAreWhole && listed->getName().rfind("busy ", 0) == 0;
            }
        };
        {
            const TestThreads disturbers(2, disturb, [&isOver] { isOver = true; });
            TestThreads::run(8, [&log](int thread) {
                for (int i = 0; i < 200; ++i)
                    log.logStatusMessage(std::to_string(1000 * thread + i) + std::string(60, '.'), "", 0);
            });
        }
        QVERIFY(namesAreWhole);

        QStringList messages = messagesOf(log);
        QCOMPARE(messages.count(), 8 * 200);
        QCOMPARE(messages.filter(QRegularExpression(R"(^\d{1,4}\.{60}$)"_q)).count(), 8 * 200);
        QCOMPARE(messages.removeDuplicates(), 0);
        QCOMPARE(QFileInfo(pathOf(log)).dir().entryList({"busy*"_q}).count(), 1);
    }
};

GLOBALS_TEST_MAIN(LoggingTest)
#include "tst_logging.moc"
