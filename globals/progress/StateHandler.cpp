#include "globals/progress/StateHandler_p.h"

#include "globals/foundation/Misuse_p.h"

#include <QCoreApplication>
#include <QTimer>

namespace TEKLUVA {

StateHandler* StateHandler::__instance = nullptr;

StateHandler* StateHandler::getInstance()
{
    if (!__instance) {
        Misuse::checkMainThread("The first StateHandler::getInstance() was not called on the main thread.");
        __instance = new StateHandler;
    }
    return __instance;
}

StateHandler::StateHandler()
    : d(std::make_unique<Private>())
{
    // A queued signal looks the type up by the name that it is declared with.
    qRegisterMetaType<E_StateType>("E_StateType");
    qRegisterMetaType<E_ProcessResult>();
    qRegisterMetaType<ProgressSnapshot>();
    d->data.setClearTimerSingleShot(true);
    connect(d->data.getClearTimer(), &QTimer::timeout, this, &StateHandler::clear);
    connect(&d->snapshots, &Throttle::due, this, [this] {
        if (d->isRunning) // otherwise the last one has been emitted
            Q_EMIT progressChanged(getSnapshot());
    });
}

StateHandler::~StateHandler()
{
    __instance = nullptr;
}

void StateHandler::newProcess(const QString& name, bool show_total_progress, bool show_abort_btn)
{
    d->data.setShowAbortState(show_abort_btn);
    d->data.setProcessName(name);
    d->data.setShowTotalProgressState(show_total_progress);
    Q_EMIT createNewProcessRequested(name, show_total_progress, show_abort_btn);
    {
        const QMutexLocker lock(&d->processLock);
        deleteSteps();
        d->data.setAbortState(false);
        ++d->processNumber;
        d->isRunning = true;
    }
    d->snapshots.forget();
    d->noteChange();
}

/// What the steps of the process that ends report from now on does not reach the handler. Expects the process
/// lock.
void StateHandler::deleteSteps()
{
    const QMap<QString, ProgressStep*> steps = d->data.getProgressStepMap();
    for (auto step = steps.begin(); step != steps.end(); ++step) {
        disconnect(*step, &ProgressStep::changeProgressStateRequested, this,
                   &StateHandler::handleChangeProgressStateRequest);
        d->data.removeStep(step.key(), true);
    }
    d->data.clearStepMap();
    d->data.setStepCounter(0);
    d->data.setActiveProgressStep(nullptr);
    d->forgetSteps();
}

void StateHandler::setProcessName(const QString& name)
{
    d->data.setProcessName(name);
    Q_EMIT renameProcessTitleRequested(name);
    d->noteChange();
}

QString StateHandler::getProcessName() const
{
    return d->data.getProcessName();
}

bool StateHandler::showTotalProgress() const
{
    return d->data.getShowTotalProgressState();
}

void StateHandler::addProgressStep(const QString& name, ProgressStep::E_ProgressType type,
                                   const QString& label, const QString& description, bool prepend,
                                   ProgressStep::E_ProgressState state)
{
    const unsigned int id = d->data.increaseStepCounter();
    auto* step = new ProgressStep(id, name, type, label, description, state);
    // The step is deleted in the thread in which calls that name it are queued, and so after the last of
    // them. A worker's thread might also have no event loop that would delete it.
    step->moveToThread(thread());
    connect(step, &ProgressStep::changeProgressStateRequested, this,
            &StateHandler::handleChangeProgressStateRequest);
    // Queued, and so after the last queued call that names the step, in whatever order events are handled.
    connect(step, &QObject::destroyed, this, &StateHandler::forgetDeletedStep, Qt::QueuedConnection);
    d->data.addStep(name, step);
    d->addToOrder(name, prepend);
    if (d->isListenedTo)
        d->watch(step);
    Q_EMIT createNewProgressStepRequested(step, prepend);
    d->noteChange();
}

void StateHandler::forgetDeletedStep(QObject* step)
{
    d->data.endDeletion(step);
}

ProgressStep* StateHandler::getStepData(const QString& name) const
{
    return d->data.getProgressStep(name);
}

QMap<QString, ProgressStep*> StateHandler::getAllSteps() const
{
    return d->data.getProgressStepMap();
}

ProgressStep* StateHandler::getActiveStep() const
{
    return d->data.getActiveProgressStep();
}

// NOLINTBEGIN(readability-make-member-function-const): the steps are part of the handler.
void StateHandler::setProgressStepState(const QString& name, ProgressStep::E_ProgressState state)
{
    if (ProgressStep* step = getStepData(name))
        step->setProgressStepState(state);
}

void StateHandler::setProgressStepText(const QString& name, const QString& text)
{
    if (ProgressStep* step = getStepData(name))
        step->setProgressStepText(text);
}

void StateHandler::setProgressStepDescription(const QString& name, const QString& text)
{
    if (ProgressStep* step = getStepData(name))
        step->setProgressStepDescription(text);
}

void StateHandler::setCurrentProgressBarStep(const QString& name, unsigned int step)
{
    if (ProgressStep* data = getStepData(name))
        data->setCurrentProgressBarStep(step);
}

void StateHandler::setProgressBarSteps(const QString& name, unsigned int steps)
{
    if (ProgressStep* step = getStepData(name))
        step->setProgressBarSteps(steps);
}

void StateHandler::setAutoPercent(const QString& name, bool follows)
{
    if (ProgressStep* step = getStepData(name))
        step->setAutoPercent(follows);
}
// NOLINTEND(readability-make-member-function-const)

void StateHandler::setAbort()
{
    d->data.setAbortState(true);
    Q_EMIT abortProcess();
    d->noteChange();
}

bool StateHandler::wasAborted()
{
    // Not only when events are known to be pending: some event dispatchers report none while a click is still
    // on its way from the window system.
    if (d->data.getShowAbortState())
        QCoreApplication::processEvents(QEventLoop::AllEvents);
    return d->data.getAbortState();
}

void StateHandler::newStatusMessage(const QString& msg, E_StateType type, int time)
{
    d->data.setCurrentMessage(msg);
    d->data.setCurrentState(type);
    Q_EMIT statusMessage(msg, type, time);
    if (time > 0)
        d->data.startClearTimer(time);
}

void StateHandler::addStatusMessage(const QString& msg)
{
    const QString message = d->data.getCurrentMessage() + QLatin1Char(' ') + msg;
    d->data.setCurrentMessage(message);
    Q_EMIT statusMessage(message, d->data.getCurrentState(), 0);
}

QString StateHandler::getCurrentMessage() const
{
    return d->data.getCurrentMessage();
}

void StateHandler::clear()
{
    d->data.stopClearTimer();
    d->data.setCurrentMessage(QString());
    d->data.setCurrentState(E_ST_NONE);
    Q_EMIT statusMessage(QString(), E_ST_NONE, 1);
}

void StateHandler::handleChangeProgressStateRequest(ProgressStep* step)
{
    // A worker's last call may have been queued when its process ended. It must not disturb the new process,
    // and the step may be deleted already: QCoreApplication::sendPostedEvents() can be asked for deletions
    // only.
    if (d->data.isDeletionPending(step))
        return;
    const auto isRunning = [step] { return step->getProgressStepState() == ProgressStep::E_PS_RUNNING; };
    ProgressStep* active = d->data.getActiveProgressStep();
    if (step == active) {
        if (!isRunning())
            d->data.setActiveProgressStep(nullptr);
        return;
    }
    if (!isRunning())
        return;
    if (active)
        active->setProgressStepState(ProgressStep::E_PS_FINISHED);
    const bool isStillRunning = isRunning(); // receivers have been called
    if (isStillRunning)
        d->data.setActiveProgressStep(step);
}

} // namespace TEKLUVA
