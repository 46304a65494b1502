#include "TestData.h"
#include "TestHome.h"
#include "TestLog.h"

#include "globals/ConfigManager.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTextStream>

using namespace TEKLUVA;

namespace {

const QString APPLICATION = "Application"_q;

ConfigManager* config()
{
    return ConfigManager::getInstance();
}

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

/// The part of another process: records states until it is killed, or answers the preferred language.
int runAsOtherProcess(const QByteArray& part)
{
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

    void aStateIsRecordedWithItsError_data()
    {
        TestData::addRows("runtime-states.txt", {"state", "word", "error", "readBack", "verdict", "inWords"});
    }
    void aStateIsRecordedWithItsError()
    {
        config()->setRuntimeState(E_RS_INITIALIZING);
        config()->setRuntimeState(E_RuntimeState(TestData::field("state").toInt()));
        const auto noState = E_RuntimeState(10);
        config()->setRuntimeState(noState); // nothing happens
        QCOMPARE(runVerdict(noState), E_RV_CRASHED);
        const QString word = config()->getSetting(APPLICATION, "last_runtime_state"_q).toString();
        QCOMPARE(word, TestData::field("word"));
        const E_RuntimeState readBack = nextStart()->getLastRuntimeState();
        QCOMPARE(readBack, E_RuntimeState(TestData::field("readBack").toInt()));
        QCOMPARE(runVerdict(readBack), E_RunVerdict(TestData::field("verdict").toInt()));
        QCOMPARE(runVerdictText(readBack), TestData::field("inWords"));
        QCOMPARE(config()->getLastPotentialError(), TestData::field("error").toUInt());
        QVERIFY(qAbs(config()->getLastLifeTime().secsTo(QDateTime::currentDateTime())) < 60);
    }

    void aStoredWordIsReadInAnyCase_data() { TestData::addRows("runtime-words.txt", {"word", "state"}); }
    void aStoredWordIsReadInAnyCase()
    {
        config()->setSetting(APPLICATION, "last_runtime_state"_q, TestData::field("word"));
        QCOMPARE(config()->getLastRuntimeState(), E_RuntimeState(TestData::field("state").toInt()));
    }

    void aFreshFileIsAFirstStart()
    {
        QCOMPARE(config()->getLastRuntimeState(), E_RS_FIRST_START);
        QVERIFY(config()->getLastPotentialError() == 0 && !config()->getAutosaveSessionState());
        QVERIFY(!config()->getLastLifeTime().isValid());
        config()->setAutosaveSessionState(true);
        QVERIFY(nextStart()->getAutosaveSessionState());
        config()->setPotentialError(7);
        QCOMPARE(TestData::contentOf(settingsFile()).count("pec=7\n"), 1);
    }

    void aCorrectedClockRenamesTheLog_data()
    {
        TestData::addRows("server-times.txt", {"milliseconds", "renamed"});
    }
    void aCorrectedClockRenamesTheLog()
    {
        TestLog::ActiveLog active("before");
        const qint64 shift = TestData::field("milliseconds").toLongLong();
        config()->setCurrentServerTime(QDateTime::currentDateTime().addMSecs(shift));
        QVERIFY(qAbs(QDateTime::currentDateTime().addMSecs(shift).secsTo(config()->getCurrentServerTime()))
                < 5);

        const bool renamed = TestData::field("renamed") == "yes"_q;
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
            config()->setSetting(APPLICATION, "last_life_time"_q, local);
            config()->setSetting(APPLICATION, "time_sync"_q, onServerTime);
            QCOMPARE(config()->getLastLifeTime(), local.addSecs(onServerTime ? 0 : 60));
        }
        TestLog::ActiveLog active;
        config()->setCurrentServerTime(QDateTime());
        QCOMPARE(active.entries(), QStringList("8192 The server time is not valid."_q));
    }

    void theLanguageIsStoredOrTheSystems_data()
    {
        TestData::addRows("languages.txt", {"system", "stored", "preferred"});
    }
    void theLanguageIsStoredOrTheSystems()
    {
        config()->setPrefferedLang(TestData::field("stored"));
        QProcess other;
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert("LC_ALL"_q, TestData::field("system"));
        other.setProcessEnvironment(environment);
        other.start(QCoreApplication::applicationFilePath(), {"language"_q});
        QVERIFY(other.waitForFinished());
        QCOMPARE(QString::fromUtf8(other.readAll()), TestData::field("preferred"));
    }

    void aKilledProcessLeavesAWholeRecord()
    {
        config()->setSetting("Kept"_q, "key"_q, "value"_q);
        for (int i = 0; i < 25; ++i) {
            QProcess other;
            other.start(QCoreApplication::applicationFilePath(), {"record"_q});
            QVERIFY(other.waitForReadyRead());
            QTest::qWait(QRandomGenerator::global()->bounded(30));
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
    QCoreApplication application(argc, argv);
    TestHome::nameApplication();
    return runAsOtherProcess(argv[1]);
}
#include "tst_runtime.moc"
