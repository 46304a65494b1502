#include "OtherPrograms.h"
#include "TestLog.h"

#include "globals/ConfigManager.h"
#include "globals/PresetManager.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTextStream>
#include <QThread>

#include <algorithm>
#include <thread>

using namespace TEKLUVA;

namespace {

const QString APPLICATION = "Application"_q;

const auto config = &ConfigManager::getInstance;

/// What the next start would see.
ConfigManager* nextStart()
{
    delete config();
    return config();
}

QString settingsFile()
{
    return config()->getPath(E_PT_SETTINGS) + "settings.ini"_q;
}

bool hasOpen(qint64 process, const QString& folder)
{
    const QFileInfoList files =
        QDir("/proc/%1/fd"_q.arg(process)).entryInfoList(QDir::AllEntries | QDir::System);
    return std::any_of(files.begin(), files.end(),
                       [&](const QFileInfo& file) { return file.symLinkTarget() == folder; });
}

/// What who looks from outside would say of the last run.
QString verdictInWords()
{
    return runVerdictText(Settings(settingsFile(), QSettings::IniFormat, nullptr).getSettings(APPLICATION));
}

/// Starts a process that records that it was started.
void start(QProcess& other)
{
    other.start(QCoreApplication::applicationFilePath(), {"start"_q});
    QVERIFY(other.waitForReadyRead());
}

/// The part of another process: records states until it is killed, records that it was started and waits for
/// its end, or writes the preferred language.
int runAsOtherProcess(const QByteArray& part)
{
    if (part == "start") {
        config()->setRuntimeState(E_RS_STARTED);
        QTextStream(stdout) << "started";
        QThread::sleep(600);
    }
    if (part == "misuse") {
        delete config();
        QCoreApplication::setApplicationName({});
        static_cast<void>(config());
        for (int i = 0; i < 2; ++i) {
            std::thread([] { delete LogManager::getInstance(); }).join();
            static_cast<void>(PresetManager::getPreset(E_PV_ROOM_HEIGHT));
        }
    }
    if (part == "language")
        QTextStream(stdout) << config()->getPrefferedLang();
    while (part == "record") {
        config()->setRuntimeState(E_RS_STARTED);
        config()->setRuntimeState(E_RS_SHUTDOWN);
        QTextStream(stdout) << "recorded";
    }
    return 0;
}

} // namespace

class RuntimeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { nextStart()->clearSettings(); }

    void aStateIsRecordedWithItsError_data() { TestData::addRows("runtime-states.txt"); }
    void aStateIsRecordedWithItsError()
    {
        const int state = TestData::field<int>("state");
        config()->setRuntimeState(E_RS_INITIALIZING);
        config()->setRuntimeState(E_RuntimeState(state));
        const auto noState = E_RuntimeState(10);
        config()->setRuntimeState(noState); // nothing happens
        QCOMPARE(runVerdict(noState), E_RV_CRASHED);
        const QString word = config()->getSetting(APPLICATION, "last_runtime_state"_q).toString();
        QCOMPARE(word, TestData::field("word"));
        const E_RuntimeState readBack = nextStart()->getLastRuntimeState();
        QCOMPARE(int(readBack), state);
        QCOMPARE(int(runVerdict(readBack)), TestData::field<int>("verdict"));
        QCOMPARE(runVerdictText(readBack), TestData::field("inWords"));
        QCOMPARE(config()->getLastPotentialError(), TestData::field<unsigned int>("error"));
        const QDateTime alive = config()->getLastLifeTime();
        QVERIFY(alive.isValid() && qAbs(alive.secsTo(QDateTime::currentDateTime())) < 60);
    }

    void aStoredWordIsReadInAnyCase_data() { TestData::addRows("runtime-words.txt"); }
    void aStoredWordIsReadInAnyCase()
    {
        config()->setSetting(APPLICATION, "last_runtime_state"_q, TestData::field("word"));
        QCOMPARE(int(config()->getLastRuntimeState()), TestData::field<int>("state"));
    }

    void anotherProcessIsRunningOrHasDied()
    {
        QProcess other;
        start(other);
        QVERIFY(config()->isOtherRunning());
        QCOMPARE(config()->getLastRunVerdict(), E_RV_RUNNING);
        QCOMPARE(verdictInWords(), "running"_q);

        const QVariant start = config()->getSetting(APPLICATION, "run_start"_q);
        config()->setSetting(APPLICATION, "run_start"_q,
                             start.toLongLong() - 1); // its number, another process
        QCOMPARE(verdictInWords(), "crashed while it was started"_q);
        config()->setSetting(APPLICATION, "run_start"_q, start);
        other.kill(); // nobody has asked yet how it ended
        QTRY_VERIFY(!config()->isOtherRunning());
        other.waitForFinished();
        QCOMPARE(config()->getLastRunVerdict(), E_RV_CRASHED);
        QCOMPARE(verdictInWords(), "crashed while it was started"_q);
        config()->setSetting(APPLICATION, "last_runtime_state"_q, "updating"_q);
        QCOMPARE(verdictInWords(), "was updating"_q);
        config()->setSetting(APPLICATION, "last_runtime_state"_q, "started"_q);
        config()->setSetting(APPLICATION, "run_start"_q, 0);
        config()->setSetting(APPLICATION, "run_pid"_q, QCoreApplication::applicationPid() + (1LL << 32));
        QCOMPARE(verdictInWords(), "crashed while it was started"_q);
        config()->setSetting(APPLICATION, "run_boot"_q, "another machine's"_q);
        QCOMPARE(verdictInWords(), "running, or crashed, while it was started"_q);
    }

    void aCompanionLeavesTheRecordAlone()
    {
        QProcess other;
        start(other);
        ConfigManager::setRecordsRun(false);
        const QByteArray record = TestFiles::contentOf(settingsFile());
        config()->setRuntimeState(E_RS_SHUTDOWN);
        config()->setPotentialError(1);
        config()->setAutosaveSessionState(true);
        config()->updateLifeTime();
        QCOMPARE(TestFiles::contentOf(settingsFile()), record);
        ConfigManager::setRecordsRun(true);
        other.kill();
        other.waitForFinished();

        config()->setRuntimeState(E_RS_CLOSING);
        QCOMPARE(config()->getLastRunVerdict(), E_RV_RUNNING); // which is this process
        QVERIFY(!config()->isOtherRunning());
        config()->setRuntimeState(E_RS_SHUTDOWN);
        QVERIFY(!config()->hasSetting(APPLICATION, "run_pid"_q));
        QCOMPARE(verdictInWords(), "closed cleanly"_q);
    }

    /// Two first starts at once: the second one waits for the move, and then has its settings.
    void aFirstStartWaitsForTheMove()
    {
        SKIP_ON_WINDOWS("looking at what a process has open");
        const QTemporaryDir home;
        const QString data = home.path() + "/.local/share/data/"_q;
        const QString base = data + "tekluva/tekluva 3D-Planner"_q;
        const QString older = data + "Falbrin GmbH/Tekluva 3D-Planer/"_q;
        QVERIFY(QDir().mkpath(base) && TestFiles::write(older + "project"_q, "1"));
        TestPlatform::OpenFile turn(base);
        QVERIFY(turn.lock());

        QProcess second;
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert("HOME"_q, home.path());
        second.setProcessEnvironment(environment);
        second.start(QCoreApplication::applicationFilePath(), {"language"_q});
        QVERIFY(second.waitForStarted()); // until then it has our files
        QTRY_VERIFY(hasOpen(second.processId(), base));
        QVERIFY(TestFiles::write(base + "/settings.ini"_q, "[Locale]\nLanguage=de\n"));
        turn.close();
        QVERIFY(second.waitForFinished());
        QCOMPARE(second.readAllStandardOutput(), QByteArray("de"));
        QVERIFY(QFile::exists(older + "project"_q));
    }

    void aFreshFileIsAFirstStart()
    {
        QCOMPARE(config()->getLastRuntimeState(), E_RS_FIRST_START);
        QCOMPARE(config()->getLastPotentialError(), 0U);
        QVERIFY(!config()->getAutosaveSessionState() && !config()->getLastLifeTime().isValid());
        config()->setAutosaveSessionState(true);
        QVERIFY(nextStart()->getAutosaveSessionState());
        config()->setPotentialError(7);
        QCOMPARE(TestFiles::textOf(settingsFile()).count("pec=7\n"), 1);
    }

    void aCorrectedClockRenamesTheLog_data() { TestData::addRows("server-times.txt"); }
    void aCorrectedClockRenamesTheLog()
    {
        TestLog::ActiveLog active("before");
        const int milliseconds = TestData::field<int>("milliseconds");
        const bool renamed = TestData::field<bool>("renamed");
        const auto corrected = [=] { return QDateTime::currentDateTime().addMSecs(milliseconds); };
        config()->setCurrentServerTime(corrected());
        QVERIFY(qAbs(corrected().secsTo(config()->getCurrentServerTime())) < 5);
        QCOMPARE(active.entries(),
                 renamed ? QStringList("2048 Synchronized to server time."_q) : QStringList());
        const QRegularExpression name(renamed ? R"(^tekluva-3D_\d{14}$)"_q : "^before$"_q);
        QVERIFY(QString::fromStdString(active.log().getName()).contains(name));
        QCOMPARE(config()->getSetting(APPLICATION, "time_sync"_q).toBool(), true);
    }

    void theLifeTimeOfALocalClockIsCorrected()
    {
        const QDateTime local = QDateTime::currentDateTime().addDays(-1);
        config()->setCurrentServerTime(QDateTime::currentDateTime().addMSecs(60500));
        for (const bool onServerTime : {false, true}) {
            const TestHome::Turn turn(onServerTime);
            config()->setSetting(APPLICATION, "last_life_time"_q, local);
            config()->setSetting(APPLICATION, "time_sync"_q, onServerTime);
            QCOMPARE(config()->getLastLifeTime(), local.addSecs(onServerTime ? 0 : 60));
        }
        TestLog::ActiveLog active;
        config()->setCurrentServerTime(QDateTime());
        QCOMPARE(active.entries(), QStringList("8192 The server time is not valid."_q));
    }

    void theLanguageIsStoredOrTheSystems_data() { TestData::addRows("languages.txt"); }
    void theLanguageIsStoredOrTheSystems()
    {
        SKIP_ON_WINDOWS("a variable with the language");
        config()->setPrefferedLang(TestData::field("stored"));
        const auto other = OtherPrograms::run(QCoreApplication::applicationFilePath(), {"language"_q}, {},
                                              TestData::field("system"));
        QCOMPARE(other.text(), TestData::field("preferred"));
    }

    void mistakesAreToldOnceInDebugBuilds()
    {
#ifdef QT_NO_DEBUG
        const QStringList mistakes;
#else
        const QStringList mistakes = {
            "ConfigManager::getInstance() was called before the application object was made."_q,
            "ConfigManager::getInstance() was called before the names of organisation and application were "
            "set: all "
            "folders lack them."_q,
            "The first LogManager::getInstance() was not called on the main thread."_q,
            "PresetManager::getPreset() was called before init(): presets have no values yet."_q};
#endif
        const auto other = OtherPrograms::run(QCoreApplication::applicationFilePath(), {"misuse"_q});
        QStringList said = other.errors.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        QCOMPARE(other.exitCode, 0);
        QCOMPARE(said.replaceInStrings("libglobals: "_q, QString()), mistakes);
    }

    void aKilledProcessLeavesAWholeRecord()
    {
        config()->setSetting("Kept"_q, "key"_q, "value"_q);
        for (int i = 0; i < 25; ++i) {
            const TestHome::Turn turn(i);
            QProcess other;
            other.start(QCoreApplication::applicationFilePath(), {"record"_q});
            QVERIFY(other.waitForReadyRead());
            QTest::qWait(QRandomGenerator::global()->bounded(30)); // at any moment of its work
            other.kill();
            other.waitForFinished();

            const LastRun run =
                lastRunFrom(Settings(settingsFile(), QSettings::IniFormat, nullptr).getSettings(APPLICATION));
            QCOMPARE(run.potentialError, potentialErrorOf(run.state));
            QCOMPARE(config()->getSetting("Kept"_q, "key"_q).toString(), "value"_q);
            QElapsedTimer timer;
            timer.start();
            config()->setSetting("Next"_q, "start"_q, i);
            QVERIFY2(timer.elapsed() < 10000, QByteArray::number(timer.elapsed())); // QSettings takes 30 s
        }
        QVERIFY(config()->getLastRuntimeState() != E_RS_FIRST_START);
    }
};

int main(int argc, char** argv)
{
    if (argc != 2 || argv[1][0] == '-')
        return TestHome::run<RuntimeTest>(argc, argv);
    TestHome::nameApplication();
    if (argv[1] == QByteArray("misuse"))
        static_cast<void>(config());
    QCoreApplication application(argc, argv);
    return runAsOtherProcess(argv[1]);
}
#include "tst_runtime.moc"
