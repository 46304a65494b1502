#include "globals/StateHandlerData.h"

#include <algorithm>

namespace TEKLUVA {

ProgressStep* StateHandlerData::getProgressStep(const QString& name) const
{
    const QMutexLocker lock(mutex());
    return m_steps.value(name, nullptr);
}

bool StateHandlerData::hasStep(const QString& name) const
{
    const QMutexLocker lock(mutex());
    return m_steps.contains(name);
}

bool StateHandlerData::hasSteps() const
{
    const QMutexLocker lock(mutex());
    return !m_steps.isEmpty();
}

QStringList StateHandlerData::getListStepNames() const
{
    const QMutexLocker lock(mutex());
    return m_steps.keys();
}

void StateHandlerData::addStep(const QString& name, ProgressStep* step)
{
    const QMutexLocker lock(mutex());
    m_steps.insert(name, step);
}

void StateHandlerData::removeStep(const QString& name, bool deleteStep)
{
    const QMutexLocker lock(mutex());
    ProgressStep* step = m_steps.take(name);
    if (!step || !deleteStep)
        return;
    m_thrownAway.append(step);
    step->deleteLater();
}

bool StateHandlerData::isThrownAway(const ProgressStep* step) const
{
    const QMutexLocker lock(mutex());
    return std::find(m_thrownAway.begin(), m_thrownAway.end(), step) != m_thrownAway.end();
}

void StateHandlerData::clearStepMap()
{
    const QMutexLocker lock(mutex());
    m_steps.clear();
    m_thrownAway.removeAll(nullptr); // deleted meanwhile
}

unsigned int StateHandlerData::increaseStepCounter()
{
    const QMutexLocker lock(mutex());
    return ++m_stepCounter;
}

void StateHandlerData::startClearTimer(int msec)
{
    const QMutexLocker lock(mutex());
    m_clearTimer.start(msec);
}

void StateHandlerData::stopClearTimer()
{
    const QMutexLocker lock(mutex());
    m_clearTimer.stop();
}

void StateHandlerData::setClearTimerSingleShot(bool singleShot)
{
    const QMutexLocker lock(mutex());
    m_clearTimer.setSingleShot(singleShot);
}

} // namespace TEKLUVA
