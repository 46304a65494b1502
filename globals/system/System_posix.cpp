#include "globals/system/Calls_unix_p.h"
#include "globals/system/System_p.h"

#include <cerrno>

#include <ctime>
#include <unistd.h>

// For every Unix but Linux.

namespace TEKLUVA::System {

bool isSettled(const FileStatus& status)
{
    constexpr clockid_t FILE_CLOCK = CLOCK_REALTIME;
    timespec now = {};
    timespec tick = {};
    const bool isKnown = ::clock_gettime(FILE_CLOCK, &now) == 0 && ::clock_getres(FILE_CLOCK, &tick) == 0;
    return isKnown && status.changed + 2 * nanoseconds(tick) < nanoseconds(now);
}

std::error_code FileHandle::sync() const
{
    const std::error_code error = errorOf(retryOnEintr([this] { return ::fsync(m_descriptor); }));
    // Some file systems cannot wait for one file.
    return error == std::errc::invalid_argument ? std::error_code() : error;
}

std::error_code FileHandle::syncFileSystem() const
{
    ::sync();
    return {};
}

} // namespace TEKLUVA::System
