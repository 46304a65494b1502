#include "globals/progress/StateHandler_p.h"

#include "globals/foundation/WithoutExceptions_p.h"

#include <QMetaMethod>

#include <algorithm>
#include <optional>

namespace TEKLUVA {

namespace {

/// Far from where sums of weights end.
constexpr double LARGEST_WEIGHT = 1e100;

} // namespace

void StateHandler::Private::forgetSteps()
{
    const QMutexLocker lock(mutex());
    order.clear();
    weights.clear();
}

void StateHandler::Private::addToOrder(const QString& step, bool prepend)
{
    const QMutexLocker lock(mutex());
    order.removeAll(step); // an older one of this name is replaced
    order.insert(prepend ? 0 : order.size(), step);
}

void StateHandler::Private::watch(const ProgressStep* step)
{
    // Direct: many changes of a worker are one event for the display's thread.
    connect(step, &ProgressStep::updateProgressStepRequested, &snapshots, &Throttle::request,
            Qt::ConnectionType(Qt::DirectConnection | Qt::UniqueConnection));
}

void StateHandler::Private::noteChange()
{
    if (isListenedTo && isRunning)
        snapshots.request();
}

void StateHandler::connectNotify(const QMetaMethod& signal)
{
    if (signal != QMetaMethod::fromSignal(&StateHandler::progressChanged))
        return;
    // In this order: a step that is added meanwhile is watched by addProgressStep(), or found here.
    d->isListenedTo = true;
    const auto steps = getAllSteps();
    for (const ProgressStep* step : steps)
        d->watch(step);
    d->noteChange();
}

void StateHandler::endProcess(E_ProcessResult result)
{
    const unsigned int ending = d->processNumber;
    const bool wasRunning = d->isRunning.exchange(false);
    if (!wasRunning)
        return;
    if (d->isListenedTo) {
        // Without memory for the snapshot the end is told all the same.
        const auto last = withoutExceptions([this] { return std::make_optional(getSnapshot()); });
        if (last)
            Q_EMIT progressChanged(*last);
    }
    Q_EMIT processFinished(result);
    const QMutexLocker lock(&d->processLock);
    const bool isLast = d->processNumber == ending;
    if (isLast) // otherwise a receiver has begun the next process, which has deleted them
        deleteSteps();
}

bool StateHandler::isProcessRunning() const
{
    return d->isRunning;
}

void StateHandler::setProgressStepWeight(const QString& name, double weight)
{
    if (!getStepData(name))
        return;
    {
        const QMutexLocker lock(d->mutex());
        d->weights[name] = std::min(std::max(0.0, weight), LARGEST_WEIGHT); // 0 for what is no number
    }
    d->noteChange();
}

ProgressSnapshot StateHandler::getSnapshot() const
{
    ProgressSnapshot snapshot;
    snapshot.processName = getProcessName();
    snapshot.showsTotal = showTotalProgress();
    snapshot.showsAbort = d->data.getShowAbortState();
    snapshot.isAborted = d->data.getAbortState();
    snapshot.isRunning = d->isRunning;
    if (const ProgressStep* active = getActiveStep())
        snapshot.activeStep = active->getProgressStepName();
    const auto steps = getAllSteps();
    for (const QString& name : d->get(d->order)) {
        if (const ProgressStep* step = steps.value(name))
            snapshot.steps.append(snapshotOf(*step));
    }
    snapshot.totalPercent = percentDone(snapshot.steps);
    return snapshot;
}

unsigned int StateHandler::totalProgress() const
{
    return getSnapshot().totalPercent;
}

/// In percent, by weight.
unsigned int StateHandler::percentDone(const QVector<ProgressStepSnapshot>& steps) const
{
    const QHash<QString, double> weights = d->get(d->weights);
    double done = 0;
    double all = 0;
    for (const ProgressStepSnapshot& step : steps) {
        const double weight = weights.value(step.name, 1);
        done += weight * fractionDone(step);
        all += weight;
    }
    constexpr double ROUNDING = 1e-9; // ten tenths are less than one
    return all > 0 ? static_cast<unsigned int>(100 * done / all + ROUNDING) : 0;
}

} // namespace TEKLUVA
