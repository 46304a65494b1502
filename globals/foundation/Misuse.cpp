#include "globals/foundation/Misuse_p.h"

#include "globals/foundation/MainThread_p.h"
#include <QtDebug>

#ifndef QT_NO_DEBUG
#include <mutex>
#include <set>
#include <string>
#endif

namespace TEKLUVA::Misuse {

#ifdef QT_NO_DEBUG

void warn(const char* /*mistake*/)
{
}

#else

namespace {

bool isFirst(const char* mistake)
{
    // Never destroyed, because singletons are used until the process is gone.
    static std::mutex& mutex = *new std::mutex;
    static std::set<std::string>& told = *new std::set<std::string>;
    const std::lock_guard<std::mutex> lock(mutex);
    return told.insert(mistake).second;
}

} // namespace

void warn(const char* mistake)
{
    if (isFirst(mistake))
        qWarning("libglobals: %s", mistake);
}

#endif

void checkMainThread(const char* mistake)
{
    if (isOffMainThread())
        warn(mistake);
}

} // namespace TEKLUVA::Misuse
