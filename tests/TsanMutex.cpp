// Debian's Qt is not built with the thread sanitizer, which therefore does not see that a contended QMutex
// orders what it guards. Here the lock operations that our code calls are wrapped, and tell it. Built and
// linked into the test programs with the sanitizer only.

#include <QMutex>

#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>

namespace {

template <typename Function>
Function qtFunction(const char* mangledName)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, mangledName));
}

} // namespace

void QMutex::lock() QT_MUTEX_LOCK_NOEXCEPT
{
    static const auto lockOfQt = qtFunction<void (*)(QMutex*)>("_ZN6QMutex4lockEv");
    lockOfQt(this);
    __tsan_acquire(this);
}

bool QMutex::tryLock(int timeout) QT_MUTEX_LOCK_NOEXCEPT
{
    static const auto tryLockOfQt = qtFunction<bool (*)(QMutex*, int)>("_ZN6QMutex7tryLockEi");
    const bool locked = tryLockOfQt(this, timeout);
    if (locked)
        __tsan_acquire(this);
    return locked;
}

void QMutex::unlock() noexcept
{
    static const auto unlockOfQt = qtFunction<void (*)(QMutex*)>("_ZN6QMutex6unlockEv");
    __tsan_release(this);
    unlockOfQt(this);
}
