#pragma once

#include "globals/StateHandler.h"
#include "globals/foundation/LockedRecord_p.h"
#include "globals/progress/Throttle_p.h"

#include <QHash>
#include <QStringList>

#include <atomic>

namespace TEKLUVA {

/// \p data as it always was, and what only displays and the end of a process need.
class GLOBALS_NO_EXPORT StateHandler::Private : public LockedRecord
{
public:
    void forgetSteps();
    void addToOrder(const QString& step, bool prepend);
    /// Lets changes of \p step reach the displays that listen to progressChanged().
    void watch(const ProgressStep* step);
    /// Something that a snapshot shows has changed.
    void noteChange();

    StateHandlerData data;
    QStringList order;              ///< of the steps, as displays show them
    QHash<QString, double> weights; ///< of steps that do not have the weight 1
    std::atomic<bool> isRunning = false;
    std::atomic<unsigned int> processNumber = 0; ///< of the process that has begun last
    /// Held while the steps of a process are deleted, and until the next one has begun. Nothing is called
    /// back under it.
    QMutex processLock;
    std::atomic<bool> isListenedTo = false; ///< without listeners an update of a step costs no call
    Throttle snapshots{std::chrono::milliseconds(34)}; ///< not more than 30 times a second
};

} // namespace TEKLUVA
