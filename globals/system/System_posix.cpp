#include "globals/system/Calls_unix_p.h"
#include "globals/system/System_p.h"

#include <cerrno>

#include <ctime>
#include <unistd.h>

// For every Unix but Linux.

namespace TEKLUVA::System {

const clockid_t FILE_CLOCK = CLOCK_REALTIME;

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
