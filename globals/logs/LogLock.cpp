#include "globals/logs/LogLock_p.h"

namespace TEKLUVA {

namespace {

/// The lock that the thread took last; the others that it holds follow by LogLock::m_outer.
thread_local const LogLock* t_innermost = nullptr;

} // namespace

LogLock::LogLock(const Log* log, QMutex& mutex)
    : m_lock(mutex)
    , m_log(log)
    , m_outer(t_innermost)
{
    t_innermost = this;
}

LogLock::~LogLock()
{
    t_innermost = m_outer;
}

bool LogLock::isHeldHere(const Log* log)
{
    for (const LogLock* lock = t_innermost; lock; lock = lock->m_outer) {
        if (lock->m_log == log)
            return true;
    }
    return false;
}

bool LogLock::isAnyHeldHere()
{
    return t_innermost != nullptr;
}

} // namespace TEKLUVA
