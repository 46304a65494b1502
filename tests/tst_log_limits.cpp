#include "OtherPrograms.h"
#include "TestLog.h"

#include "globals/ConfigManager.h"

#include <QDir>
#include <QLoggingCategory>
#include <QPointer>
#include <QTextStream>

#include <functional>
#include <set>
#include <thread>

using namespace TEKLUVA;
using TestLog::messagesIn;
using TestLog::messagesOf;
using TestLog::pathOf;

namespace {

constexpr qint64 LARGEST = 500; ///< bytes of a rotated file

/// The number of the other process's first line.
constexpr int OTHERS = 100'000;

const auto registry = &LogManager::getInstance;

void write(Log& log, int from, int count)
{
    for (int i = from; i < from + count; ++i)
        log.logStatusMessage(std::to_string(i), "", 0);
}

/// The part of another process: writes lines until it is killed.
int writeUntilKilled()
{
    Log log("rotated", false);
    log.setRotation(LARGEST, 10'000);
    for (int i = OTHERS;; ++i) {
        write(log, i, 1);
        if (i == OTHERS)
            QTextStream(stdout) << "begun";
    }
}

/// The log file and all older ones, the newest first, from "NAME.log.1" on.
QStringList filesOf(const Log& log)
{
    QStringList files = {pathOf(log)};
    const auto older = [&] { return pathOf(log) + QLatin1Char('.') + QString::number(files.size()); };
    while (QFile::exists(older()))
        files << older();
    return files;
}

/// The messages of each of these files, joined.
QStringList contentsOf(const Log& log)
{
    QStringList contents;
    for (const QString& file : filesOf(log))
        contents << messagesIn(file).join(QLatin1Char(' '));
    return contents;
}

} // namespace

class LogLimitsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        registry()->clear();
        QVERIFY(QDir(ConfigManager::getInstance()->getPath(E_PT_LOGS)).removeRecursively());
    }

    void whatIsBelowTheThresholdIsDropped()
    {
        Log log("threshold", true);
        const auto writeAll = [&log] {
            for (const int level : {E_LL_DEBUG, E_LL_INFO, E_LL_WARNING, E_LL_ERROR, E_LogLevel(0)})
                log.logMessage(E_LogLevel(level), std::to_string(level), "", 0);
        };
        log.setThreshold(E_LL_WARNING);
        writeAll();
        QCOMPARE(messagesOf(log), QStringList({"4096"_q, "8192"_q, "0"_q}));
        QCOMPARE(log.getEntryCount(), 3U);
        log.resetLog(true);
        log.setThreshold(E_LL_DEBUG);
        writeAll();
        QCOMPARE(messagesOf(log).size(), 5);
    }

    void aNewEntryIsAnnouncedAndThere()
    {
        Log log("announced", true);
        QStringList seen;
        connect(&log, &Log::entryAdded, [&log, &seen](unsigned int index) {
            LogEntry* entry = log.getEntry(index);
            seen << QString::number(index) + QString::fromStdString(entry->getMessage());
            log.writeEntry(entry); // not a second time afterwards
        });
        log.setMaxEntryCount(2);
        for (const char* message : {"a", "b", "c"})
            log.logStatusMessage(message, "", 0);
        log.resetLog(false);
        log.logStatusMessage("d", "", 0);
        QCOMPARE(seen.join(QLatin1Char(' ')), "0a 1b 1c 0d"_q);
        QCOMPARE(messagesOf(log).join(QLatin1Char(' ')), "a b c d"_q);
    }

    void onlyTheNewestEntriesAreKept()
    {
        Log log("bound", false);
        write(log, 0, 10);
        const QPointer<LogEntry> shown = log.getEntry(6);
        log.setMaxEntryCount(4);
        QCOMPARE(log.getEntry(0), shown.data());
        write(log, 10, 1);
        QVERIFY(shown); // whoever looks at it may go on until the event loop runs
        QCOMPARE(shown->getMessage(), std::string("6"));
        TestHome::sendDeletions();
        QVERIFY(!shown);

        const auto lines = [&log](quint64 from, unsigned int atMost) {
            const LogLines found = log.getLines(from, atMost);
            QStringList words = {QString::number(found.oldest), QString::number(found.first)};
            for (const LogLine& line : found.lines)
                words << QString::fromStdString(line.message);
            return words.join(QLatin1Char(' '));
        };
        QCOMPARE(lines(0, 100), "7 7 7 8 9 10"_q);
        QCOMPARE(lines(9, 1), "7 9 9"_q);
        QCOMPARE(lines(50, 100), "7 11"_q);
        const QPointer<LogEntry> reset = log.getEntry(0);
        std::thread([&log] { log.resetLog(false); }).join();
        QVERIFY(reset); // as above
        write(log, 20, 1);
        QCOMPARE(lines(0, 100), "11 11 20"_q);
        QCOMPARE(messagesOf(log).size(), 12); // the file has all
    }

    void anEntryTakesLittleMemory()
    {
        Log log("small", true);
        const std::string message(70, 'x');
        constexpr int COUNT = 20'000;
        log.logStatusMessage(message, "", 0);
        const qint64 before = TestPlatform::allocated();
        for (int i = 0; i < COUNT; ++i)
            log.logStatusMessage(message, "", 0);
        const qint64 each = (TestPlatform::allocated() - before) / COUNT;
        QVERIFY2(each <= 200, QByteArray::number(each));
    }

    void aFullFileIsMoved()
    {
        Log log("moved", true);
        log.setRotation(110, 2); // a line is 33 bytes or 34
        write(log, 1, 6);
        QCOMPARE(contentsOf(log), QStringList({"4 5 6"_q, "1 2 3"_q}));
        write(log, 7, 6);
        QCOMPARE(contentsOf(log), QStringList({"10 11 12"_q, "7 8 9"_q, "4 5 6"_q}));
        log.logStatusMessage(std::string(200, 'x'), "", 0); // in a file of its own
        write(log, 1, 1);
        QCOMPARE(contentsOf(log), QStringList({"1"_q, QString(200, QLatin1Char('x')), "10 11 12"_q}));
        log.setRotation(0, 0);
        write(log, 2, 9);
        QCOMPARE(contentsOf(log).first(), "1 2 3 4 5 6 7 8 9 10"_q);
        log.setRotation(1000, -1); // none, as with 0
        log.logStatusMessage(std::string(900, 'x'), "", 0);
        QCOMPARE(messagesOf(log).size(), 1);
        QCOMPARE(contentsOf(log).mid(1), QStringList({QString(200, QLatin1Char('x')), "10 11 12"_q}));
    }

    void whoFindsItsFileMovedGoesOnInTheNewOne()
    {
        Log first("shared", false);
        Log second("shared", false);
        first.setRotation(110, 2);
        second.setRotation(110, 2);
        write(second, 1, 1);
        write(first, 2, 4);
        write(second, 6, 1);
        QCOMPARE(contentsOf(first), QStringList({"4 5 6"_q, "1 2 3"_q}));
    }

    void aMoveThatWasCutIsGoneOnWith()
    {
        Log log("cut", true);
        log.setRotation(110, 3);
        write(log, 1, 12);
        QVERIFY(QFile::rename(pathOf(log) + ".1"_q,
                              pathOf(log) + ".old"_q)); // as a kill between two moves leaves it
        write(log, 13, 3);
        QCOMPARE(contentsOf(log), QStringList({"13 14 15"_q, "10 11 12"_q, "4 5 6"_q, "1 2 3"_q}));

        QVERIFY(QFile::remove(pathOf(log) + ".1"_q) && QDir().mkpath(pathOf(log) + ".1/in the way"_q));
        log.setRotation(110, 1);
        write(log, 16, 3);
        QCOMPARE(messagesOf(log).size(), 6); // a file that cannot be moved stays in use

        QVERIFY(QFile::rename(pathOf(log), pathOf(log) + ".old2"_q) && QDir().mkdir(pathOf(log)));
        write(log, 19, 1); // which cannot be written
        QVERIFY(QDir().rmdir(pathOf(log)));
        Log other("cut", false);
        write(other, 20, 1);
        write(log, 21, 1);
        QCOMPARE(contentsOf(log).first(), "20 21"_q); // it began long ago
    }

    void twoProcessesShareARotatedFile()
    {
        SKIP_ON_WINDOWS("appending at once by two processes, of which Wine makes two steps");
        for (int i = 0; i < 3; ++i) {
            const TestHome::Turn turn(i);
            QVERIFY(QDir(ConfigManager::getInstance()->getPath(E_PT_LOGS)).removeRecursively());
            Log log("rotated", false);
            log.setRotation(LARGEST, 10'000);
            QProcess other;
            other.start(QCoreApplication::applicationFilePath(), {"write"_q});
            QVERIFY(other.waitForReadyRead());
            write(log, 0, 300);
            other.kill();
            other.waitForFinished();
            write(log, 300, 100);
            QVERIFY(filesOf(log).size() > 5); // of the last lines at least, when nobody else held the lock

            std::multiset<int> ours;
            std::multiset<int> others;
            for (const QString& file : filesOf(log)) {
                for (const QString& message : messagesIn(file))
                    (message.toInt() < OTHERS ? ours : others).insert(message.toInt());
            }
            QCOMPARE(ours.size(), 400U);
            QCOMPARE(std::set<int>(ours.begin(), ours.end()).size(), 400U);
            QCOMPARE(*others.rbegin() - *others.begin() + 1, int(others.size())); // none lost, none twice
        }
    }

    void qtsMessagesComeIn()
    {
        TestLog::ActiveLog active;
        LogManager::installQtMessageHandler();
        LogManager::installQtMessageHandler();
        QTest::ignoreMessage(QtDebugMsg, "debug");
        QTest::ignoreMessage(QtInfoMsg, "info");
        QTest::ignoreMessage(QtWarningMsg, "warning");
        QTest::ignoreMessage(QtCriticalMsg, "critical");
        QTest::ignoreMessage(QtDebugMsg, "category");
        const QLoggingCategory category("app.test");
        qDebug("debug");
        qInfo("info");
        qWarning("warning");
        qCritical("critical");
        std::thread([&category] { qCDebug(category, "category"); }).join();
        QCOMPARE(active.entries(), QStringList({"1024 debug"_q, "2048 info"_q, "4096 warning"_q,
                                                "8192 critical"_q, "1024 app.test: category"_q}));
    }

    void receiversMayMakeQtSpeak()
    {
        TestLog::ActiveLog active;
        LogManager::installQtMessageHandler();
        const auto speak = [] { qWarning("spoken"); };
        for (int i = 0; i < 3; ++i)
            QTest::ignoreMessage(QtWarningMsg, "spoken");
        connect(&active.log(), &Log::contentChanged, speak);
        const auto connection = connect(registry(), &LogManager::logAdded, speak);
        active.log().logStatusMessage("one", "", 0);
        const Log other("other", true);
        disconnect(connection);
        speak(); // and once more in the receiver, for which Qt calls no handler
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("^QVariant::save"_q)); // in the settings' lock
        ConfigManager::getInstance()->setSetting("G"_q, "k"_q, QVariant::fromValue<QObject*>(nullptr));
        QCOMPARE(active.entries(), QStringList({"2048 one"_q, "4096 spoken"_q}));
    }
};

int main(int argc, char** argv)
{
    if (argc != 2 || argv[1] != QByteArray("write"))
        return TestHome::run<LogLimitsTest>(argc, argv);
    QCoreApplication application(argc, argv);
    TestHome::nameApplication();
    return writeUntilKilled();
}
#include "tst_log_limits.moc"
