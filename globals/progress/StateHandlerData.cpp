#include "globals/StateHandlerData.h"

#include "globals/foundation/LockedRecord_p.h"

#include <QHash>
#include <QPointer>
#include <QTimer>
#include <QVector>

namespace TEKLUVA {

class GLOBALS_NO_EXPORT StateHandlerData::Private : public LockedRecord
{
public:
    QMap<QString, ProgressStep*> steps;
    QVector<const QObject*> pendingDeletions;
    QHash<const QObject*, int> endsToCome; ///< of the steps that were in one place, one after the other
    QPointer<ProgressStep> activeStep;
    unsigned int stepCounter = 0;
    QString processName;
    bool abort = false;
    bool showAbort = false;
    QString message;
    E_StateType messageType = E_ST_NONE;
    QTimer clearTimer;
    bool showTotalProgress = false;
};

StateHandlerData::StateHandlerData()
    : d(std::make_unique<Private>())
{
}

StateHandlerData::~StateHandlerData() = default;

QMap<QString, ProgressStep*> StateHandlerData::getProgressStepMap() const
{
    return d->get(d->steps);
}

ProgressStep* StateHandlerData::getProgressStep(const QString& name) const
{
    const QMutexLocker lock(d->mutex());
    return d->steps.value(name, nullptr);
}

bool StateHandlerData::hasStep(const QString& name) const
{
    const QMutexLocker lock(d->mutex());
    return d->steps.contains(name);
}

bool StateHandlerData::hasSteps() const
{
    const QMutexLocker lock(d->mutex());
    return !d->steps.isEmpty();
}

QStringList StateHandlerData::getListStepNames() const
{
    const QMutexLocker lock(d->mutex());
    return d->steps.keys();
}

void StateHandlerData::addStep(const QString& name, ProgressStep* step)
{
    const QMutexLocker lock(d->mutex());
    d->steps.insert(name, step);
    d->pendingDeletions.removeAll(step); // in the place of an older one
    ++d->endsToCome[step];
}

void StateHandlerData::removeStep(const QString& name, bool deleteStep)
{
    const QMutexLocker lock(d->mutex());
    ProgressStep* step = d->steps.take(name);
    if (!step || !deleteStep)
        return;
    d->pendingDeletions.append(step);
    step->deleteLater();
}

bool StateHandlerData::isDeletionPending(const ProgressStep* step) const
{
    const QMutexLocker lock(d->mutex());
    return d->pendingDeletions.contains(step);
}

void StateHandlerData::clearStepMap()
{
    const QMutexLocker lock(d->mutex());
    d->steps.clear();
}

void StateHandlerData::endDeletion(const QObject* step)
{
    const QMutexLocker lock(d->mutex());
    if (--d->endsToCome[step] > 0)
        return; // the end of an older one in the same place, told late
    d->endsToCome.remove(step);
    d->pendingDeletions.removeAll(step);
}

unsigned int StateHandlerData::increaseStepCounter()
{
    const QMutexLocker lock(d->mutex());
    return ++d->stepCounter;
}

void StateHandlerData::setStepCounter(unsigned int count)
{
    d->set(d->stepCounter, count);
}

unsigned int StateHandlerData::getStepCounter() const
{
    return d->get(d->stepCounter);
}

ProgressStep* StateHandlerData::getActiveProgressStep() const
{
    return d->get(d->activeStep);
}

void StateHandlerData::setActiveProgressStep(ProgressStep* step)
{
    d->set(d->activeStep, QPointer<ProgressStep>(step));
}

QString StateHandlerData::getProcessName() const
{
    return d->get(d->processName);
}

void StateHandlerData::setProcessName(const QString& name)
{
    d->set(d->processName, name);
}

bool StateHandlerData::getAbortState() const
{
    return d->get(d->abort);
}

void StateHandlerData::setAbortState(bool abort)
{
    d->set(d->abort, abort);
}

bool StateHandlerData::getShowAbortState() const
{
    return d->get(d->showAbort);
}

void StateHandlerData::setShowAbortState(bool show)
{
    d->set(d->showAbort, show);
}

bool StateHandlerData::getShowTotalProgressState() const
{
    return d->get(d->showTotalProgress);
}

void StateHandlerData::setShowTotalProgressState(bool show)
{
    d->set(d->showTotalProgress, show);
}

QString StateHandlerData::getCurrentMessage() const
{
    return d->get(d->message);
}

void StateHandlerData::setCurrentMessage(const QString& message)
{
    d->set(d->message, message);
}

E_StateType StateHandlerData::getCurrentState() const
{
    return d->get(d->messageType);
}

void StateHandlerData::setCurrentState(E_StateType type)
{
    d->set(d->messageType, type);
}

// A timer is started and stopped in its own thread: at once there, by its event loop from another one.
void StateHandlerData::startClearTimer(int msec)
{
    QMetaObject::invokeMethod(&d->clearTimer, "start", Q_ARG(int, msec));
}

void StateHandlerData::stopClearTimer()
{
    QMetaObject::invokeMethod(&d->clearTimer, "stop");
}

void StateHandlerData::setClearTimerSingleShot(bool singleShot)
{
    const QMutexLocker lock(d->mutex());
    d->clearTimer.setSingleShot(singleShot);
}

QTimer* StateHandlerData::getClearTimer()
{
    return &d->clearTimer;
}

} // namespace TEKLUVA
