#include "TestData.h"
#include "TestHome.h"

#include "globals/StateHandler.h"
#include "globals/Translations.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QThread>

#include <functional>
#include <memory>
#include <thread>

using namespace TEKLUVA;

namespace {

StateHandler* states()
{
    return StateHandler::getInstance();
}

ProgressStep* step(const QString& name)
{
    return states()->getStepData(name);
}

void addStep(const QString& name, int type = 0, int state = 0, bool prepend = false)
{
    states()->addProgressStep(name, ProgressStep::E_ProgressType(type), "label of "_q + name,
                              "about "_q + name, prepend, ProgressStep::E_ProgressState(state));
}

QString join(const QStringList& words)
{
    return words.join(QLatin1Char(' '));
}

/// Writes down all signals of the state handler and of its steps.
class Recorder : public QObject
{
public:
    Recorder()
    {
        using S = StateHandler;
        const auto on = [this](auto signal, auto slot) { connect(states(), signal, this, slot); };
        on(&S::statusMessage, [this](const QString& message, E_StateType type, int time) {
            note("status %1 %2 %3"_q.arg(message).arg(type).arg(time));
        });
        on(&S::createNewProcessRequested, [this](const QString& name, bool total, bool button) {
            note("new %1 %2 %3"_q.arg(name).arg(total).arg(button));
        });
        on(&S::createNewProgressStepRequested, [this](ProgressStep* step, bool prepend) {
            note("add %1 %2 %3"_q.arg(step->getProgressStepName())
                     .arg(step->getProgressStepId())
                     .arg(prepend));
            connect(step, &ProgressStep::updateProgressStepRequested, this,
                    [this](ProgressStep* sender) { note("update "_q + sender->getProgressStepName()); });
            connect(step, &ProgressStep::changeProgressStateRequested, this, [this](ProgressStep* sender) {
                note("change %1 %2"_q.arg(sender->getProgressStepName()).arg(sender->getProgressStepState()));
            });
        });
        on(&S::abortProcess, [this] { note("abort"_q); });
        on(&S::renameProcessTitleRequested, [this](const QString& title) { note("title "_q + title); });
    }

    void note(const QString& event) { m_events << event.simplified(); }
    QString events() const { return m_events.join("; "_q); }

private:
    QStringList m_events;
};

using Words = QStringList;

/// A call on a step.
void call(ProgressStep* step, const QString& what, const Words& with)
{
    const QMap<QString, std::function<void()>> calls = {
        {"percent"_q, [&] { step->setProgressStepProgress(with[0].toUInt()); }},
        {"type"_q, [&] { step->setProgressStepType(ProgressStep::E_ProgressType(with[0].toInt())); }},
        {"state"_q, [&] { step->setProgressStepState(ProgressStep::E_ProgressState(with[0].toInt())); }},
        {"visible"_q, [&] { step->setVisible(with[0].toInt()); }},
        {"blocked"_q, [&] { step->setProgressStepBlocked(with[0].toInt()); }},
        {"factor"_q, [&] { step->setProgressBarStepDivFactor(with[0].toDouble()); }},
        {"increment"_q, [&] { step->incrementCurrentProgressBarStep(); }},
        {"bars"_q, [&] { step->setProgressBarSteps(with[0].toUInt()); }},
        {"at"_q, [&] { step->setCurrentProgressBarStep(with[0].toUInt()); }},
        {"text"_q, [&] { step->setProgressStepText(with[0]); }},
        {"description"_q, [&] { step->setProgressStepDescription(with[0]); }},
        {"transfer"_q, [&] { step->handleProgressState(with[0].toLongLong(), with[1].toLongLong()); }},
    };
    calls[what]();
}

/// A call on the state handler.
void call(Recorder& recorder, const QString& what, const Words& with)
{
    const QMap<QString, std::function<void()>> calls = {
        {"new"_q, [&] { states()->newProcess(with[0], with.value(1) != "0"_q, with.value(2) != "0"_q); }},
        {"add"_q, [&] { addStep(with[0], with[1].toInt(), with[2].toInt(), with.size() > 3); }},
        {"state"_q, [&] { states()->setProgressStepState(with[0], ProgressStep::E_PS_RUNNING); }},
        {"text"_q, [&] { states()->setProgressStepText(with[0], with[1]); }},
        {"description"_q, [&] { states()->setProgressStepDescription(with[0], with[1]); }},
        {"at"_q, [&] { states()->setCurrentProgressBarStep(with[0], with[1].toUInt()); }},
        {"bars"_q, [&] { states()->setProgressBarSteps(with[0], with[1].toUInt()); }},
        {"title"_q, [&] { states()->setProcessName(with[0]); }},
        {"abort"_q, [] { states()->setAbort(); }},
        {"aborted"_q, [&] { recorder.note(QVariant(states()->wasAborted()).toString()); }},
        {"status"_q,
         [&] { states()->newStatusMessage(with[0], E_StateType(with[1].toInt()), with[2].toInt()); }},
        {"more"_q, [&] { states()->addStatusMessage(with[0]); }},
        {"clear"_q, [] { states()->clear(); }},
    };
    calls[what]();
}

QString valueOf(const QString& name)
{
    const QString owner = name.section(QLatin1Char('.'), 0, 0);
    const ProgressStep* s = step(owner);
    const ProgressStep* active = states()->getActiveStep();
    const QMap<QString, std::function<QVariant()>> values = {
        {"steps"_q, [] { return join(states()->getAllSteps().keys()); }},
        {"active"_q, [&] { return active ? active->getProgressStepName() : QString(); }},
        {"title"_q, [] { return states()->getProcessName(); }},
        {"total"_q, [] { return int(states()->showTotalProgress()); }},
        {"message"_q, [] { return states()->getCurrentMessage().trimmed(); }},
        {".id"_q, [&] { return s->getProgressStepId(); }},
        {".name"_q, [&] { return s->getProgressStepName(); }},
        {".label"_q, [&] { return s->getProgressStepLabel(); }},
        {".type"_q, [&] { return int(s->getProgressStepType()); }},
        {".state"_q, [&] { return int(s->getProgressStepState()); }},
        {".description"_q, [&] { return s->getProgressStepDescription(); }},
        {".text"_q, [&] { return s->getProgressStepText(); }},
        {".shown"_q, [&] { return s->getProgressStepDisplayText().trimmed(); }},
        {".percent"_q, [&] { return s->getProgressStepProgress(); }},
        {".bar"_q,
         [&] { return "%1/%2"_q.arg(s->getCurrentProgressBarStep()).arg(s->getProgressBarSteps()); }},
        {".factor"_q, [&] { return s->getProgressBarStepDivFactor(); }},
        {".blocked"_q, [&] { return int(s->getProgressStepBlocked()); }},
        {".visible"_q, [&] { return int(s->getVisible()); }},
    };
    return values[s ? name.mid(owner.size()) : name]().toString();
}

QStringList entriesOf(const char* column)
{
    return TestData::field(column).split(QLatin1Char(';'), Qt::SkipEmptyParts);
}

void deleteWhatIsToBeDeleted()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
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
    void takeMessage(QString message, E_StateType type, int time) { calls += time + type + message.size(); }
};

class ProgressTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        showLanguage("de"_q);
        connect(states(), &StateHandler::createNewProgressStepRequested, this,
                [this](ProgressStep* step) { m_steps << step; });
    }
    void cleanup()
    {
        delete states();
        deleteWhatIsToBeDeleted();
        for (const QPointer<ProgressStep>& step : qExchange(m_steps, {}))
            delete step;
    }

    void announcesEveryChange_data() { TestData::addRows("progress.txt", {"calls", "events", "values"}); }
    void announcesEveryChange()
    {
        Recorder recorder;
        for (const QString& entry : entriesOf("calls")) {
            const Words words = entry.split(QLatin1Char(' '), Qt::SkipEmptyParts);
            const QString owner = words[0].section(QLatin1Char('.'), 0, 0);
            if (owner == words[0])
                call(recorder, owner, words.mid(1));
            else
                call(step(owner), words[0].mid(owner.size() + 1), words.mid(1));
        }
        QCOMPARE(recorder.events(), TestData::field("events"));
        for (const QString& entry : entriesOf("values")) {
            const QString name = entry.section(QLatin1Char('='), 0, 0).trimmed();
            QCOMPARE(name + "="_q + valueOf(name), entry.trimmed());
        }
    }

    void speaksTheUsersLanguage()
    {
        showLanguage("en"_q);
        addStep("a"_q, ProgressStep::E_PRT_TRANSFER);
        states()->setProgressStepState("a"_q, ProgressStep::E_PS_FINISHED);
        QCOMPARE(step("a"_q)->getProgressStepDisplayText(), "Completed"_q);
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
        states()->newStatusMessage("short"_q, E_ST_ERROR, 60);
        states()->clear(); // with its time
        states()->newStatusMessage("stays"_q, E_ST_ERROR, 0);
        QTest::qWait(80);
        QCOMPARE(messages.size(), 6);
    }

    void hearsAClickOnlyWhereThereIsAButton()
    {
        for (const bool hasButton : {false, true}) {
            states()->newProcess("P"_q, true, hasButton);
            QMetaObject::invokeMethod(
                states(), [] { states()->setAbort(); }, Qt::QueuedConnection);
            QCOMPARE(states()->wasAborted(), hasButton);
            QCoreApplication::processEvents();
        }
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
            deleteWhatIsToBeDeleted();
            QCOMPARE(alive, 10);
        }
    }

    void ignoresWhatComesLateFromAnOldProcess()
    {
        addStep("old"_q);
        std::thread([] { step("old"_q)->setProgressStepState(ProgressStep::E_PS_RUNNING); }).join();
        states()->newProcess("P"_q, true, true);
        addStep("a"_q);
        states()->setProgressStepState("a"_q, ProgressStep::E_PS_RUNNING);
        QCoreApplication::processEvents(); // now the call of the old step arrives
        deleteWhatIsToBeDeleted();
        QCOMPARE(states()->getActiveStep(), step("a"_q));
        QCOMPARE(step("a"_q)->getProgressStepState(), ProgressStep::E_PS_RUNNING);
    }

    void aReceiverMayCallAFinishedStep()
    {
        addStep("a"_q);
        connect(step("a"_q), &ProgressStep::changeProgressStateRequested, this, [](ProgressStep* step) {
            if (step->getProgressStepState() == ProgressStep::E_PS_FINISHED)
                step->incrementCurrentProgressBarStep();
        });
        step("a"_q)->setProgressStepState(ProgressStep::E_PS_FINISHED);
        QCOMPARE(step("a"_q)->getCurrentProgressBarStep(), 100U);
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
        thread.start();
        QTRY_COMPARE(listener.calls.load(), 1 + 2 + 90 + E_ST_ERROR + 4);
        thread.quit();
        QVERIFY(thread.wait());
    }

    void workersAreWatchedAndStopped()
    {
        states()->newProcess("P"_q, true, true);
        int seen = 0;
        connect(states(), &StateHandler::createNewProgressStepRequested, this,
                [this, &seen](ProgressStep* step) {
                    connect(step, &ProgressStep::updateProgressStepRequested, this,
                            [&seen](const ProgressStep* sender) {
                                seen += !sender->getProgressStepText().isEmpty();
                                if (sender->getCurrentProgressBarStep() > 500)
                                    states()->setAbort();
                            });
                });
        std::vector<std::thread> workers;
        for (int worker = 0; worker < 3; ++worker) {
            workers.emplace_back([worker] {
                const QString name = QString::number(worker);
                addStep(name, ProgressStep::E_PRT_TRANSFER, ProgressStep::E_PS_RUNNING);
                for (int i = 0; !states()->wasAborted(); ++i) {
                    states()->setProgressStepText(name, QString::number(i));
                    step(name)->handleProgressState(i, i + i);
                    states()->setProgressStepDescription(QString::number(i % 3), name);
                }
            });
        }
        QTRY_VERIFY_WITH_TIMEOUT(states()->wasAborted() && seen > 500, 60000);
        for (std::thread& worker : workers)
            worker.join();
        QCOMPARE(join(states()->getAllSteps().keys()), "0 1 2"_q);
    }

private:
    QVector<QPointer<ProgressStep>> m_steps; ///< the handler deletes only those of earlier processes
};

GLOBALS_TEST_MAIN(ProgressTest)
#include "tst_progress.moc"
