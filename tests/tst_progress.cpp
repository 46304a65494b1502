#include "TestCalls.h"
#include "TestThreads.h"

#include "globals/StateHandler.h"
#include "globals/Translations.h"
#include "globals/Worker.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QThread>
#include <QTimer>

#include <future>
#include <memory>
#include <mutex>
#include <system_error>
#include <thread>

using namespace TEKLUVA;
using namespace TestCalls;

namespace {

const auto states = &StateHandler::getInstance;

ProgressStep* step(const QString& name)
{
    return states()->getStepData(name);
}

void addStep(const QString& name, ProgressStep::E_ProgressType type = ProgressStep::E_PRT_BAR,
             ProgressStep::E_ProgressState state = ProgressStep::E_PS_CREATED, bool prepend = false)
{
    states()->addProgressStep(name, type, "label of "_q + name, "about "_q + name, prepend, state);
}

QString join(const QStringList& words)
{
    return words.join(QLatin1Char(' '));
}

/// Writes down all signals of the state handler and of its steps.
class Recorder : public QObject
{
public:
    /// What is noted of a signal: what it tells, or what a receiver finds while it is delivered.
    enum class Noting { Arguments, State };

    explicit Recorder(Noting noting = Noting::Arguments)
        : m_noting(noting)
    {
        using S = StateHandler;
        const auto on = [this](auto signal, auto slot) { connect(states(), signal, this, slot); };
        on(&S::statusMessage, [this](const QString& message, E_StateType type, int time) {
            note("status"_q, "%1 %2 %3"_q.arg(message).arg(type).arg(time));
        });
        on(&S::createNewProcessRequested, [this](const QString& name, bool total, bool button) {
            note("new"_q, "%1 %2 %3"_q.arg(name).arg(total).arg(button));
        });
        on(&S::createNewProgressStepRequested, [this](ProgressStep* added, bool prepend) {
            QVERIFY(step(added->getProgressStepName()) == added);
            note("add"_q,
                 "%1 %2 %3"_q.arg(added->getProgressStepName()).arg(added->getProgressStepId()).arg(prepend));
            watch(added);
        });
        on(&S::abortProcess, [this] { note("abort"_q); });
        on(&S::renameProcessTitleRequested, [this](const QString& title) { note("title"_q, title); });
        on(&S::processFinished, [this](E_ProcessResult result) { note("end"_q, QString::number(result)); });
    }

    void watch(const ProgressStep* step)
    {
        connect(step, &ProgressStep::updateProgressStepRequested, this,
                [this](ProgressStep* sender) { note("update"_q, sender->getProgressStepName()); });
        connect(step, &ProgressStep::changeProgressStateRequested, this, [this](ProgressStep* sender) {
            note("change"_q,
                 "%1 %2"_q.arg(sender->getProgressStepName()).arg(sender->getProgressStepState()));
        });
    }
    void note(const QString& event, const QString& arguments = {})
    {
        const QString details = m_noting == Noting::Arguments ? arguments : state();
        m_events << (event + QLatin1Char(' ') + details).simplified();
    }
    QString events() const { return m_events.join("; "_q); }

private:
    static QString state()
    {
        const QString total = states()->showTotalProgress() ? "+"_q : QString();
        QStringList words = {states()->getProcessName() + total, states()->getCurrentMessage(),
                             states()->wasAborted() ? "aborted"_q : QString()};
        for (const ProgressStep* s : states()->getAllSteps()) {
            const QString mark = s == states()->getActiveStep() ? "*"_q : QString();
            words << "%1%2=%3/%4"_q.arg(s->getProgressStepName(), mark)
                         .arg(s->getCurrentProgressBarStep())
                         .arg(s->getProgressBarSteps())
                  << "[%1]"_q.arg(s->getProgressStepState()) << s->getProgressStepDisplayText()
                  << s->getProgressStepDescription();
        }
        return join(words);
    }

    const Noting m_noting;
    QStringList m_events;
};

/// The step that a row's call or value is about.
ProgressStep* currentStep = nullptr;

ProgressStep* subject()
{
    return currentStep;
}

const Calls CALLS = {
    {".percent"_q, call(subject, &ProgressStep::setProgressStepProgress)},
    {".type"_q, call(subject, &ProgressStep::setProgressStepType)},
    {".state"_q, call(subject, &ProgressStep::setProgressStepState)},
    {".visible"_q, call(subject, &ProgressStep::setVisible)},
    {".blocked"_q, call(subject, &ProgressStep::setProgressStepBlocked)},
    {".factor"_q, call(subject, &ProgressStep::setProgressBarStepDivFactor)},
    {".increment"_q, call(subject, &ProgressStep::incrementCurrentProgressBarStep)},
    {".bars"_q, call(subject, &ProgressStep::setProgressBarSteps)},
    {".at"_q, call(subject, &ProgressStep::setCurrentProgressBarStep)},
    {".text"_q, call(subject, &ProgressStep::setProgressStepText)},
    {".description"_q, call(subject, &ProgressStep::setProgressStepDescription)},
    {".transfer"_q, call(subject, &ProgressStep::handleProgressState)},
    {".auto"_q, call(subject, &ProgressStep::setAutoPercent)},
    {"new"_q, call(states, &StateHandler::newProcess)},
    {"add"_q, call([](const QString& name, ProgressStep::E_ProgressType type,
                      ProgressStep::E_ProgressState state) { addStep(name, type, state); })},
    {"prepend"_q, call([](const QString& name, ProgressStep::E_ProgressType type,
                          ProgressStep::E_ProgressState state) { addStep(name, type, state, true); })},
    {"state"_q, call(states, &StateHandler::setProgressStepState)},
    {"text"_q, call(states, &StateHandler::setProgressStepText)},
    {"description"_q, call(states, &StateHandler::setProgressStepDescription)},
    {"at"_q, call(states, &StateHandler::setCurrentProgressBarStep)},
    {"bars"_q, call(states, &StateHandler::setProgressBarSteps)},
    {"auto"_q, call(states, &StateHandler::setAutoPercent)},
    {"weight"_q, call(states, &StateHandler::setProgressStepWeight)},
    {"end"_q, call(states, &StateHandler::endProcess)},
    {"title"_q, call(states, &StateHandler::setProcessName)},
    {"abort"_q, call(states, &StateHandler::setAbort)},
    {"aborted"_q, call(states, &StateHandler::wasAborted)},
    {"status"_q, call(states, &StateHandler::newStatusMessage)},
    {"more"_q, call(states, &StateHandler::addStatusMessage)},
    {"clear"_q, call(states, &StateHandler::clear)},
    {"events"_q, call([] { QCoreApplication::processEvents(); })},
    {"language"_q, call([](const QString& language) { showLanguage(language); })},
};

const Calls VALUES = {
    {".id"_q, call(subject, &ProgressStep::getProgressStepId)},
    {".name"_q, call(subject, &ProgressStep::getProgressStepName)},
    {".label"_q, call(subject, &ProgressStep::getProgressStepLabel)},
    {".type"_q, call(subject, &ProgressStep::getProgressStepType)},
    {".state"_q, call(subject, &ProgressStep::getProgressStepState)},
    {".description"_q, call(subject, &ProgressStep::getProgressStepDescription)},
    {".text"_q, call(subject, &ProgressStep::getProgressStepText)},
    {".shown"_q, call(subject, &ProgressStep::getProgressStepDisplayText)},
    {".percent"_q, call(subject, &ProgressStep::getProgressStepProgress)},
    {".at"_q, call(subject, &ProgressStep::getCurrentProgressBarStep)},
    {".bars"_q, call(subject, &ProgressStep::getProgressBarSteps)},
    {".factor"_q, call(subject, &ProgressStep::getProgressBarStepDivFactor)},
    {".blocked"_q, call(subject, &ProgressStep::getProgressStepBlocked)},
    {".visible"_q, call(subject, &ProgressStep::getVisible)},
    {".auto"_q, call(subject, &ProgressStep::getAutoPercent)},
    {".flag"_q, call(subject, &ProgressStep::getProgressStepFlag)},
    {"steps"_q, call([] { return join(states()->getAllSteps().keys()); })},
    {"active"_q, call([] {
         return states()->getActiveStep() ? states()->getActiveStep()->getProgressStepName() : QString();
     })},
    {"title"_q, call(states, &StateHandler::getProcessName)},
    {"total"_q, call(states, &StateHandler::showTotalProgress)},
    {"done"_q, call(states, &StateHandler::totalProgress)},
    {"running"_q, call(states, &StateHandler::isProcessRunning)},
    {"order"_q, call([] {
         QStringList names;
         for (const ProgressStepSnapshot& shown : states()->getSnapshot().steps)
             names << shown.name;
         return join(names);
     })},
    {"message"_q, call(states, &StateHandler::getCurrentMessage)},
};

/// Makes a call on the state handler, "abort", or on a step, "a.percent 40"; "later abort" from the event
/// loop.
QVariant make(const Calls& calls, const QString& text)
{
    QStringList words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (words[0] == "later"_q) {
        const auto later = [&calls, text = join(words.mid(1))] { make(calls, text); };
        QMetaObject::invokeMethod(states(), later, Qt::QueuedConnection);
        return {};
    }
    const QString owner = words[0].section(QLatin1Char('.'), 0, 0);
    words[0].remove(0, owner == words[0] ? 0 : owner.size());
    currentStep = step(owner);
    if (words[0].startsWith(QLatin1Char('.')) && !currentStep)
        return TestData::refuse(owner, "step"), QVariant();
    QVariant result = TestCalls::make(calls, words);
    if (!words.isEmpty())
        TestData::refuse(words[0], "argument");
    return result;
}

QStringList entriesOf(const char* column)
{
    return TestData::field(column).split(QLatin1Char(';'), Qt::SkipEmptyParts);
}

/// Does with a step that has changed what the row says.
void react(ProgressStep* changed)
{
    for (QString entry : entriesOf("reaction"))
        make(CALLS, entry.replace("@"_q, changed->getProgressStepName()));
}

/// What the work returns, or the text of what it throws.
QString endOf(std::future<E_ProcessResult>& work)
{
    try {
        return QString::number(work.get());
    } catch (const std::runtime_error& error) {
        return QString::fromUtf8(error.what());
    }
}

} // namespace

/// Lives in another thread and is connected by the names of the signals, as old code does it.
class Listener : public QObject
{
    Q_OBJECT

public:
    std::atomic<int> calls = 0;

public Q_SLOTS:
    void takeStep(ProgressStep* step) { calls += step->getProgressStepName() == "a"_q; }
    void takeMessage(QString message, E_StateType type, int time)
    {
        calls += time + type + int(message.size());
    }
};

class ProgressTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        showLanguage("de"_q);
        // At once: a worker's step may be gone when an event of its making arrives, because QTRY_COMPARE()
        // deletes what is to be deleted before it looks at other events.
        const auto keep = [this](ProgressStep* step) {
            const std::lock_guard guard(m_stepsLock);
            m_steps << step;
        };
        connect(states(), &StateHandler::createNewProgressStepRequested, this, keep, Qt::DirectConnection);
    }
    void cleanup()
    {
        delete states();
        TestHome::sendDeletions();
        for (const QPointer<ProgressStep>& step : qExchange(m_steps, {}))
            delete step;
    }

    void announcesEveryChange_data() { TestData::addRows("progress.txt"); }
    void announcesEveryChange()
    {
        Recorder recorder;
        for (const QString& entry : entriesOf("calls")) {
            const QVariant result = make(CALLS, entry);
            if (result.isValid())
                recorder.note(result.toString());
        }
        QCOMPARE(recorder.events(), TestData::field("events"));
        for (const QString& entry : entriesOf("values")) {
            const QString name = entry.section(QLatin1Char('='), 0, 0).trimmed();
            QCOMPARE(name + "="_q + make(VALUES, name).toString().trimmed(), entry.trimmed());
        }
    }

    void clearsAStatusMessageInTime()
    {
        QSignalSpy messages(states(), &StateHandler::statusMessage);
        QElapsedTimer clock;
        clock.start();
        states()->newStatusMessage("short"_q, E_ST_ERROR, 60);
        states()->newStatusMessage("stays"_q, E_ST_ERROR, 0); // but for the time of the first one
        QTRY_COMPARE(messages.size(), 3);
        QVERIFY2(clock.elapsed() >= 55, QByteArray::number(clock.elapsed()));
        QCOMPARE(messages[2], QVariantList({QString(), QVariant::fromValue(E_ST_NONE), 1}));
    }

    void clearingAStatusMessageStopsItsTime()
    {
        QSignalSpy messages(states(), &StateHandler::statusMessage);
        states()->newStatusMessage("short"_q, E_ST_ERROR, 1);
        states()->clear();
        states()->newStatusMessage("stays"_q, E_ST_ERROR, 0);
        bool isOver = false;
        QTimer::singleShot(
            2, [&isOver] { isOver = true; }); // comes after a timer of 1 ms that was started before
        QTRY_VERIFY(isOver);
        QCOMPARE(messages.size(), 3);
    }

    void keepsNothingOfOldProcesses()
    {
        int alive = 0;
        const QObject scope;
        connect(states(), &StateHandler::createNewProgressStepRequested, &scope, [&](ProgressStep* step) {
            ++alive;
            connect(step, &QObject::destroyed, &scope, [&alive] { --alive; });
        });
        for (int process = 0; process < 1000; ++process) {
            states()->newProcess("P"_q, true, true);
            for (int i = 0; i < 10; ++i)
                addStep(QString::number(i));
            states()->setProgressStepState("3"_q, ProgressStep::E_PS_RUNNING);
            TestHome::sendDeletions();
            QCOMPARE(alive, 10);
        }
        states()->endProcess(E_PR_DONE);
        TestHome::sendDeletions();
        QCOMPARE(alive, 0);
    }

    void anEndMayBeginTheNextProcess()
    {
        const QObject scope;
        connect(states(), &StateHandler::processFinished, &scope, [] {
            states()->newProcess("next"_q, true, true);
            addStep("first"_q);
        });
        states()->newProcess("P"_q, true, true);
        addStep("old"_q);
        states()->endProcess(E_PR_DONE);
        QCOMPARE(states()->getAllSteps().keys(), QList<QString>({"first"_q}));
        QVERIFY(states()->isProcessRunning());
    }

    void ignoresWhatComesLateFromAnOldProcess()
    {
        for (const bool isDeletedFirst : {false, true}) {
            const TestHome::Turn turn(isDeletedFirst);
            addStep("old"_q);
            std::thread([] { step("old"_q)->setProgressStepState(ProgressStep::E_PS_RUNNING); }).join();
            states()->newProcess("P"_q, true, true);
            addStep("a"_q);
            states()->setProgressStepState("a"_q, ProgressStep::E_PS_RUNNING);
            if (isDeletedFirst)
                TestHome::sendDeletions();
            QCoreApplication::processEvents(); // now the call of the old step arrives
            TestHome::sendDeletions();
            QCOMPARE(states()->getActiveStep(), step("a"_q));
            QCOMPARE(step("a"_q)->getProgressStepState(), ProgressStep::E_PS_RUNNING);
        }
    }

    void showsReceiversWhatTheyAreToldOf_data() { TestData::addRows("progress-seen.txt"); }
    void showsReceiversWhatTheyAreToldOf()
    {
        const Recorder recorder(Recorder::Noting::State);
        for (const QString& entry : entriesOf("calls"))
            make(CALLS, entry);
        QCOMPARE(recorder.events(), TestData::field("seen"));
    }

    void aReceiverMayCallBack_data() { TestData::addRows("progress-reactions.txt"); }
    void aReceiverMayCallBack()
    {
        states()->newProcess("P"_q, true, true);
        for (const QString& name : {"a"_q, "b"_q}) {
            addStep(name);
            connect(step(name), &ProgressStep::changeProgressStateRequested, this, react);
        }
        Recorder recorder;
        for (const QString& name : {"a"_q, "b"_q})
            recorder.watch(step(name));
        for (const QString& name : {"a"_q, "b"_q})
            states()->setProgressStepState(name, ProgressStep::E_PS_RUNNING);
        QCOMPARE(recorder.events(), TestData::field("events"));
    }

    void tellsDisplaysAsOftenAsAUserCanSee()
    {
        QVector<ProgressSnapshot> shown;
        QElapsedTimer clock;
        clock.start();
        delete states(); // with what init() has connected
        states()->newProcess("P"_q, true, true);
        addStep("early"_q); // before somebody listens
        const QObject display;
        connect(states(), &StateHandler::progressChanged, &display,
                [&shown](const ProgressSnapshot& snapshot) {
                    QCOMPARE(QThread::currentThread(), QCoreApplication::instance()->thread());
                    shown << snapshot;
                });
        addStep("late"_q);
        std::future<void> work = std::async(std::launch::async, [] {
            for (int i = 0; i < 30000; ++i)
                states()->setCurrentProgressBarStep(i % 2 ? "early"_q : "late"_q,
                                                    static_cast<unsigned int>(i / 500));
        });
        QTRY_COMPARE(work.wait_for(std::chrono::milliseconds(1)), std::future_status::ready);
        QTRY_VERIFY(!shown.isEmpty()
                    && shown.last().steps[0].currentBarStep == 59); // the last one is always told
        QVERIFY2(shown.size() <= clock.elapsed() * 30 / 1000 + 2, qPrintable(QString::number(shown.size())));
        QCOMPARE(shown.last().totalPercent, 59U);
        states()->setProgressStepState("late"_q, ProgressStep::E_PS_RUNNING);
        QTRY_COMPARE(shown.last().activeStep, "late"_q);
        QVERIFY(shown.last().showsTotal && shown.last().showsAbort && shown.last().isRunning);
        QCOMPARE(shown.last().processName + shown.last().steps[1].label + shown.last().steps[1].description,
                 "Plabel of lateabout late"_q);
        states()->getAllSteps()["early"_q]->setVisible(false);
        QTRY_VERIFY(!shown.last().steps[0].isVisible);
        states()->setAbort();
        states()->endProcess(E_PR_ABORTED);
        QVERIFY(!shown.last().isRunning && shown.last().isAborted && !shown.last().steps[0].isVisible);
        const auto count = shown.size();
        QTest::qWait(50); // nothing is told of a process that has ended
        QCOMPARE(shown.size(), count);
    }

    void runsWorkers_data() { TestData::addRows("progress-workers.txt"); }
    void runsWorkers()
    {
        const auto end = E_ProcessResult(TestData::field<int>("end"));
        const QString result = TestData::field("result");
        // Not spies, which would write them down in the worker's thread.
        QList<int> ends;
        int messages = 0;
        const QObject here;
        connect(states(), &StateHandler::processFinished, &here, [&](int ended) { ends << ended; });
        connect(states(), &StateHandler::statusMessage, &here, [&] { ++messages; });
        const auto work = [end, result] {
            addStep("a"_q);
            states()->setProgressStepText("a"_q, "x"_q);
            states()->newStatusMessage("at work"_q, E_ST_INFORMATION, 1); // removed by the main thread
            while (end == E_PR_ABORTED && !states()->wasAborted())
                QThread::msleep(1);
            if (result == "no model"_q)
                throw std::runtime_error("no model");
            return end;
        };
        std::future<E_ProcessResult> future = runWorker("P"_q, work);
        QTRY_COMPARE(messages, 2);
        QVERIFY(states()->getCurrentMessage().isEmpty() && states()->showTotalProgress());
        states()->setAbort();
        QTRY_COMPARE(ends, QList<int>{end});
        QCOMPARE(endOf(future), result);
        QVERIFY(states()->getAllSteps().isEmpty());
    }

    void aWorkersEndNeedsNoResult()
    {
        for (const bool isAborted : {false, true}) {
            const auto work = [isAborted] {
                if (isAborted)
                    states()->setAbort();
            };
            QCOMPARE(runWorker("P"_q, work).get(), isAborted ? E_PR_ABORTED : E_PR_DONE);
        }
    }

    void aWorkerWithoutAThreadHasFailed()
    {
        SKIP_ON_WINDOWS("a limit of threads");
        QSignalSpy ends(states(), &StateHandler::processFinished);
        const TestPlatform::NoThreads none;
        QVERIFY_EXCEPTION_THROWN(static_cast<void>(runWorker("P"_q, [] {})), std::system_error);
        QCOMPARE(ends.value(0).value(0).toInt(), int(E_PR_FAILED));
    }

    void reachesReceiversInOtherThreads()
    {
        QThread thread;
        Listener listener;
        listener.moveToThread(&thread);
        connect(states(), SIGNAL(statusMessage(QString, E_StateType, int)), &listener,
                SLOT(takeMessage(QString, E_StateType, int)));
        connect(states(), SIGNAL(createNewProgressStepRequested(ProgressStep*, bool)), &listener,
                SLOT(takeStep(ProgressStep*)));
        addStep("a"_q);
        connect(step("a"_q), SIGNAL(changeProgressStateRequested(ProgressStep*)), &listener,
                SLOT(takeStep(ProgressStep*)));
        step("a"_q)->setProgressStepState(ProgressStep::E_PS_FINISHED);
        states()->newStatusMessage("four"_q, E_ST_ERROR, 90);
        QMetaObject::invokeMethod(
            &listener, [&thread] { thread.quit(); }, Qt::QueuedConnection); // comes last
        thread.start();
        QVERIFY(thread.wait());
        QCOMPARE(listener.calls.load(), 1 + 2 + 90 + E_ST_ERROR + 4);
    }

    void workersAreWatchedAndStopped()
    {
        states()->newProcess("P"_q, true, true);
        int seen = 0;
        const QObject display; // ends before what its receivers write to
        connect(states(), &StateHandler::createNewProgressStepRequested, &display,
                [&display, &seen](ProgressStep* step) {
                    connect(step, &ProgressStep::updateProgressStepRequested, &display,
                            [&seen](const ProgressStep* sender) {
                                seen += !sender->getProgressStepText().isEmpty();
                                if (seen > 500)
                                    states()->setAbort();
                            });
                });
        {
            const auto work = [](int worker) {
                const QString name = QString::number(worker);
                addStep(name, ProgressStep::E_PRT_TRANSFER, ProgressStep::E_PS_RUNNING);
                for (int i = 0; !states()->wasAborted(); ++i) {
                    states()->setProgressStepText(name, QString::number(i));
                    step(name)->handleProgressState(i, i + i);
                    states()->setProgressStepDescription(QString::number(i % 3), name);
                }
            };
            const TestThreads workers(3, work, [] { states()->setAbort(); });
            QTRY_VERIFY_WITH_TIMEOUT(states()->wasAborted(), 60000);
        }
        QCOMPARE(QStringList(states()->getAllSteps().keys()), QStringList({"0"_q, "1"_q, "2"_q}));
    }

private:
    std::mutex m_stepsLock;
    QVector<QPointer<ProgressStep>> m_steps; ///< the handler deletes only those of earlier processes
};

GLOBALS_TEST_MAIN(ProgressTest)
#include "tst_progress.moc"
