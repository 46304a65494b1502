#pragma once

#include <QMutex>

#include <mutex>

namespace TEKLUVA {

class Log;

/// Holds the lock of a log, and lets its own thread find out that it does. The lock is not recursive, and
/// receivers of contentChanged() run under it: what they report must not go to the same log.
class LogLock
{
    Q_DISABLE_COPY(LogLock)

public:
    LogLock(const Log* log, QMutex& mutex);
    ~LogLock();

    /// Whether the calling thread holds the lock of \p log.
    static bool isHeldHere(const Log* log);
    /// Whether it holds the lock of some log.
    static bool isAnyHeldHere();

private:
    const std::lock_guard<QMutex> m_lock;
    const Log* const m_log;
    const LogLock* const m_outer; ///< the lock that this thread took before and still holds
};

} // namespace TEKLUVA
