#include "FullDisk.h"
#include "TestHome.h"

#include "globals/ConfigManager.h"
#include "globals/Log.h"
#include "globals/LogManager.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QSignalSpy>

#include <memory>
#include <thread>

using namespace TEKLUVA;

namespace {

QString pathOf(const Log& log)
{
    return QString::fromStdString(log.getFilePath());
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The messages of all lines of a log file; a line that is not whole is answered as it stands.
QList<QByteArray> messagesIn(const QString& path)
{
    static const QRegularExpression line(QStringLiteral(
        "^(DEBUG    |INFO     |WARNING  |ERROR    )\\d\\d\\.\\d\\d\\.\\d{4} \\d\\d:\\d\\d:\\d\\d  "));
    QList<QByteArray> messages;
    QByteArray rest = contentOf(path);
    while (!rest.isEmpty()) {
        const int end = rest.indexOf("\r\n");
        const QByteArray text = end < 0 ? rest : rest.left(end);
        const auto match = line.match(QString::fromLatin1(text));
        messages << (end >= 0 && match.hasMatch() ? text.mid(match.capturedLength()) : text);
        rest = end < 0 ? QByteArray() : rest.mid(end + 2);
    }
    return messages;
}

} // namespace

class LoggingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        LogManager::getInstance()->clear();
        QVERIFY(QDir(ConfigManager::getInstance()->getPath(E_PT_LOGS)).removeRecursively());
    }

    void aLineIsLabelTimeAndRawBytes_data()
    {
        QTest::addColumn<int>("level");
        QTest::addColumn<QByteArray>("message");
        QTest::addColumn<QByteArray>("label");
        QTest::newRow("debug") << 1024 << QByteArray("plain") << QByteArray("DEBUG    ");
        QTest::newRow("information, empty") << 2048 << QByteArray() << QByteArray("INFO     ");
        QTest::newRow("warning, UTF-8") << 4096
                                        << QByteArray("Gr\xc3\xb6\xc3\x9f"
                                                      "e")
                                        << QByteArray("WARNING  ");
        QTest::newRow("error, no UTF-8") << 8192 << QByteArray("\xff\xfe") << QByteArray("ERROR    ");
        QTest::newRow("zero byte and line feed")
            << 2048 << QByteArray("a\0b\nc", 5) << QByteArray("INFO     ");
        QTest::newRow("level 0") << 0 << QByteArray("x") << QByteArray("ERROR    ");
        QTest::newRow("level 16384") << 16384 << QByteArray("x") << QByteArray("ERROR    ");
    }
    void aLineIsLabelTimeAndRawBytes()
    {
        QFETCH(int, level);
        QFETCH(QByteArray, message);
        QFETCH(QByteArray, label);
        Log log("line", true);
        log.logMessage(E_LogLevel(level), message.toStdString(), "location", 7);

        const QByteArray line = contentOf(pathOf(log));
        const QDateTime stamp = log.getEntry(0)->getTimeStamp();
        QCOMPARE(line, label + stamp.toString(QStringLiteral("dd.MM.yyyy hh:mm:ss")).toLatin1() + "  "
                           + message + "\r\n");
        QVERIFY(qAbs(stamp.secsTo(QDateTime::currentDateTime())) < 60);
        log.writeEntry(log.getEntry(0));
        QCOMPARE(contentOf(pathOf(log)), line);
    }

    void theStampFollowsTheClock()
    {
        Log log("clock", true);
        log.logStatusMessage("first", "", 0);
        QTest::qWait(1100);
        log.logStatusMessage("second", "", 0);
        const QList<QByteArray> lines = contentOf(pathOf(log)).split('\n');
        QVERIFY(lines[0].mid(9, 19) != lines[1].mid(9, 19));
    }

    void overwritingStartsTheFileAfresh_data()
    {
        QTest::addColumn<bool>("overwrite");
        QTest::addColumn<QList<QByteArray>>("messages");
        QTest::newRow("overwrite") << true << QList<QByteArray>{"new"};
        QTest::newRow("append") << false << QList<QByteArray>{"old", "new"};
    }
    void overwritingStartsTheFileAfresh()
    {
        QFETCH(bool, overwrite);
        QFETCH(QList<QByteArray>, messages);
        std::make_unique<Log>("again", true)->logStatusMessage("old", "", 0);

        Log log("again", overwrite);
        QCOMPARE(messagesIn(pathOf(log)), QList<QByteArray>{"old"}); // opened with the first line only
        log.logStatusMessage("new", "", 0);
        QCOMPARE(messagesIn(pathOf(log)), messages);

        QSignalSpy changed(&log, &Log::contentChanged);
        log.resetLog(overwrite);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(log.getEntryCount(), 0U);
        log.logStatusMessage("new", "", 0);
        QCOMPARE(messagesIn(pathOf(log)).count(), overwrite ? 1 : 3);
    }

    void anIndexOutOfRangeAnswersAWarning()
    {
        Log log("index", true);
        const std::unique_ptr<LogEntry> entry(log.getEntry(0));
        QCOMPARE(entry->getLevel(), E_LL_WARNING);
        QCOMPARE(entry->getMessage(), std::string("Index out of range."));
        QCOMPARE(log.getEntryCount(), 0U);
    }

    void aFileThatCannotBeOpenedKeepsTheEntry()
    {
        Log log("blocked", true);
        QVERIFY(QDir().mkpath(pathOf(log)));
        log.logErrorMessage("kept", "", 0);
        QVERIFY(!log.getEntry(0)->isWritten());
        QVERIFY(QDir().rmdir(pathOf(log)));
        log.writeEntry(log.getEntry(0));
        QVERIFY(log.getEntry(0)->isWritten());
        QCOMPARE(messagesIn(pathOf(log)), QList<QByteArray>{"kept"});
    }

    void aFullDiskLeavesNoHalfLine()
    {
        Log log("full", true);
        log.logStatusMessage("before", "", 0);
        {
            const FullDisk limit(100);
            log.logStatusMessage(std::string(200, 'x'), "", 0);
        }
        QVERIFY(!log.getEntry(1)->isWritten());
        log.logStatusMessage("after", "", 0);
        QCOMPARE(messagesIn(pathOf(log)), (QList<QByteArray>{"before", "after"}));
    }

    void renamingMovesFileAndRegistration_data()
    {
        QTest::addColumn<bool>("fromRegistry");
        QTest::newRow("by the log") << false;
        QTest::newRow("by the registry") << true;
    }
    void renamingMovesFileAndRegistration()
    {
        QFETCH(bool, fromRegistry);
        LogManager* registry = LogManager::getInstance();
        Log log("old name", true);
        Log other("other", true);
        log.logStatusMessage("one", "", 0);
        const QString oldPath = pathOf(log);
        if (fromRegistry)
            registry->updateLogName("a new name", &log);
        else
            log.setLogName("a new name", false);
        log.logStatusMessage("two", "", 0);

        QVERIFY(!QFile::exists(oldPath));
        QVERIFY(pathOf(log).endsWith(QLatin1String("/logs/a new name.log")));
        QCOMPARE(messagesIn(pathOf(log)), (QList<QByteArray>{"one", "two"}));
        QCOMPARE(registry->getAllLogs(), (std::vector<Log*>{&log, &other}));
        registry->updateLogName("a new name", &log);
        QCOMPARE(registry->getAllLogs(), (std::vector<Log*>{&log, &other}));
    }

    void aFailedRenameGoesOnInTheNewFile()
    {
        std::make_unique<Log>("taken", true)->logStatusMessage("theirs", "", 0);
        Log log("mine", true);
        log.logStatusMessage("one", "", 0);
        const QString oldPath = pathOf(log);
        log.setLogName("taken", false);
        log.logStatusMessage("two", "", 0);
        QCOMPARE(messagesIn(oldPath), QList<QByteArray>{"one"});
        QCOMPARE(messagesIn(pathOf(log)), (QList<QByteArray>{"theirs", "two"}));
    }

    void aLogFolderThatCannotBeMadeIsReportedToTheLogBeingRenamed()
    {
        Log log("reported", true);
        log.logStatusMessage("one", "", 0);
        LogManager::getInstance()->setActiveLog(&log);
        QDir folder = QFileInfo(pathOf(log)).dir();
        QVERIFY(folder.removeRecursively());
        QFile obstacle(folder.absolutePath());
        QVERIFY(obstacle.open(QIODevice::WriteOnly));
        log.setLogName("renamed", false);
        QVERIFY(obstacle.remove());
        QCOMPARE(log.getEntryCount(), 2U);
        QCOMPARE(log.getEntry(1)->getMessage(), std::string("Could not browse into logs directory"));
        LogManager::getInstance()->restorePreviousLog();
    }

    void theRegistryFindsLogsByName()
    {
        LogManager* registry = LogManager::getInstance();
        QSignalSpy added(registry, &LogManager::logAdded);
        auto first = std::make_unique<Log>("same", true);
        auto second = std::make_unique<Log>("same", true);
        auto upper = std::make_unique<Log>("Zebra", true);
        QCOMPARE(added.count(), 3);
        QCOMPARE(added[1][0].value<Log*>(), second.get());
        QCOMPARE(registry->getAllLogs(), (std::vector<Log*>{upper.get(), second.get()}));
        second.reset();
        QCOMPARE(registry->getAllLogs(), std::vector<Log*>{upper.get()});
        first.reset();
        QCOMPARE(registry->getAllLogs(), std::vector<Log*>{upper.get()});
    }

    void theActiveLogIsAStack()
    {
        LogManager* registry = LogManager::getInstance();
        registry->restorePreviousLog();
        QVERIFY(!registry->getActiveLog());
        auto a = std::make_unique<Log>("a", true);
        auto b = std::make_unique<Log>("b", true);
        for (Log* log : {a.get(), b.get(), a.get()})
            registry->setActiveLog(log);
        registry->restorePreviousLog();
        QCOMPARE(registry->getActiveLog(), b.get());
        registry->setActiveLog(a.get());
        a.reset(); // takes its first place on the stack with it, the other one leads nowhere
        QVERIFY(!registry->getActiveLog());
        registry->restorePreviousLog();
        QCOMPARE(registry->getActiveLog(), b.get());
    }

    void clearingTheRegistryDeletesItsLogs()
    {
        QPointer<Log> log = new Log("deleted", true);
        LogManager::getInstance()->setActiveLog(log);
        delete LogManager::getInstance();
        QVERIFY(!log);
        QVERIFY(!LogManager::getInstance()->getActiveLog());
    }

    void objectsMadeOnAnotherThreadLiveOnTheMainThread()
    {
        Log* log = nullptr;
        std::thread([&log] {
            log = new Log("moved", true);
            log->logStatusMessage("x", "", 0);
        }).join();
        QCOMPARE(log->thread(), qApp->thread());
        QCOMPARE(log->getEntry(0)->thread(), qApp->thread());
    }

    void linesOfManyThreadsAreWholeAndComplete()
    {
        constexpr int THREADS = 8;
        constexpr int LINES = 200;
        Log log("busy 0", true);
        std::atomic<bool> done{false};
        std::vector<std::thread> threads;
        for (int t = 0; t < THREADS; ++t) {
            threads.emplace_back([&log, t] {
                for (int i = 0; i < LINES; ++i)
                    log.logStatusMessage(std::to_string(t * LINES + i) + std::string(60, '.'), "", 0);
            });
        }
        std::thread renamer([&log, &done] {
            for (int i = 1; !done; ++i)
                log.setLogName("busy " + std::to_string(i), false);
        });
        std::thread lister([&done] {
            while (!done) {
                for (Log* listed : LogManager::getInstance()->getAllLogs())
                    QVERIFY(listed->getName().rfind("busy ", 0) == 0);
            }
        });
        for (std::thread& thread : threads)
            thread.join();
        done = true;
        renamer.join();
        lister.join();

        const QList<QByteArray> messages = messagesIn(pathOf(log));
        QCOMPARE(messages.count(), THREADS * LINES);
        QSet<QByteArray> numbers;
        for (const QByteArray& message : messages) {
            QVERIFY(message.endsWith(QByteArray(60, '.')));
            numbers << message.left(message.indexOf('.'));
        }
        QCOMPARE(numbers.count(), THREADS * LINES);
        QCOMPARE(QFileInfo(pathOf(log)).dir().entryList({QStringLiteral("busy*")}).count(), 1);
    }
};

GLOBALS_TEST_MAIN(LoggingTest)
#include "tst_logging.moc"
