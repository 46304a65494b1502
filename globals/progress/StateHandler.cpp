#include "globals/StateHandler.h"

#include <QCoreApplication>

namespace TEKLUVA {

StateHandler* StateHandler::__instance = nullptr;

StateHandler* StateHandler::getInstance()
{
    if (!__instance)
        __instance = new StateHandler;
    return __instance;
}

StateHandler::StateHandler()
{
    // Under the name that the signal is declared with, so that it can be queued.
    qRegisterMetaType<E_StateType>("E_StateType");
    m_data.setClearTimerSingleShot(true);
    connect(m_data.getClearTimer(), &QTimer::timeout, this, &StateHandler::clear);
}

StateHandler::~StateHandler()
{
    __instance = nullptr;
}

void StateHandler::newProcess(const QString& name, bool show_total_progress, bool show_abort_btn)
{
    m_data.setShowAbortState(show_abort_btn);
    m_data.setProcessName(name);
    m_data.setShowTotalProgressState(show_total_progress);
    Q_EMIT createNewProcessRequested(name, show_total_progress, show_abort_btn);
    throwStepsAway();
    m_data.setStepCounter(0);
    m_data.setActiveProgressStep(nullptr);
    m_data.setAbortState(false);
}

void StateHandler::throwStepsAway()
{
    const QMap<QString, ProgressStep*> steps = m_data.getProgressStepMap();
    for (auto step = steps.begin(); step != steps.end(); ++step) {
        disconnect(*step, &ProgressStep::changeProgressStateRequested, this,
                   &StateHandler::handleChangeProgressStateRequest);
        m_data.removeStep(step.key(), true);
    }
    m_data.clearStepMap();
}

void StateHandler::setProcessName(const QString& name)
{
    m_data.setProcessName(name);
    Q_EMIT renameProcessTitleRequested(name);
}

QString StateHandler::getProcessName() const
{
    return m_data.getProcessName();
}

bool StateHandler::showTotalProgress() const
{
    return m_data.getShowTotalProgressState();
}

void StateHandler::addProgressStep(const QString& name, ProgressStep::E_ProgressType type,
                                   const QString& label, const QString& description, bool prepend,
                                   ProgressStep::E_ProgressState state)
{
    auto* step = new ProgressStep(m_data.increaseStepCounter(), name, type, label, description, state);
    // Deleted in the thread in which calls that name it are queued, and so after the last of them. A worker's
    // thread might also have no event loop to delete anything in.
    step->moveToThread(thread());
    connect(step, &ProgressStep::changeProgressStateRequested, this,
            &StateHandler::handleChangeProgressStateRequest);
    m_data.addStep(name, step);
    Q_EMIT createNewProgressStepRequested(step, prepend);
}

ProgressStep* StateHandler::getStepData(const QString& name) const
{
    return m_data.getProgressStep(name);
}

QMap<QString, ProgressStep*> StateHandler::getAllSteps() const
{
    return m_data.getProgressStepMap();
}

ProgressStep* StateHandler::getActiveStep() const
{
    return m_data.getActiveProgressStep();
}

// NOLINTBEGIN(readability-make-member-function-const): the steps are what the handler holds.
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
// NOLINTEND(readability-make-member-function-const)

void StateHandler::setAbort()
{
    m_data.setAbortState(true);
    Q_EMIT abortProcess();
}

bool StateHandler::wasAborted()
{
    // Without asking whether there are any: some event dispatchers answer no while a click is still on its
    // way from the window system.
    if (m_data.getShowAbortState())
        QCoreApplication::processEvents(QEventLoop::AllEvents);
    return m_data.getAbortState();
}

void StateHandler::newStatusMessage(const QString& msg, E_StateType type, int time)
{
    m_data.setCurrentMessage(msg);
    m_data.setCurrentState(type);
    Q_EMIT statusMessage(msg, type, time);
    if (time > 0)
        m_data.startClearTimer(time);
}

void StateHandler::addStatusMessage(const QString& msg)
{
    const QString message = m_data.getCurrentMessage() + QLatin1Char(' ') + msg;
    m_data.setCurrentMessage(message);
    Q_EMIT statusMessage(message, m_data.getCurrentState(), 0);
}

QString StateHandler::getCurrentMessage() const
{
    return m_data.getCurrentMessage();
}

void StateHandler::clear()
{
    m_data.stopClearTimer();
    m_data.setCurrentMessage(QString());
    m_data.setCurrentState(E_ST_NONE);
    Q_EMIT statusMessage(QString(), E_ST_NONE, 1);
}

void StateHandler::handleChangeProgressStateRequest(ProgressStep* step)
{
    // A worker's last call may have been queued when its process ended; it must not disturb the new one.
    if (m_data.isThrownAway(step))
        return;
    const bool isRunning = step->getProgressStepState() == ProgressStep::E_PS_RUNNING;
    ProgressStep* active = m_data.getActiveProgressStep();
    if (step == active) {
        if (!isRunning)
            m_data.setActiveProgressStep(nullptr);
        return;
    }
    if (!isRunning)
        return;
    if (active)
        active->setProgressStepState(ProgressStep::E_PS_FINISHED);
    m_data.setActiveProgressStep(step);
}

} // namespace TEKLUVA
