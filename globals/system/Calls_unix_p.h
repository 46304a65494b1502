#pragma once

#include "globals/system/LastError_p.h"
#include "globals/system/System_p.h"

#include <ctime>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>

/// What the sources with calls of Unix share.
namespace TEKLUVA::System {

/// By which file systems tell the times of files.
extern const clockid_t FILE_CLOCK;

/// Makes a system call again as long as signals interrupt it.
template <typename Call>
auto retryOnEintr(Call&& call)
{
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

/// The error of a system call with this \p result.
inline std::error_code errorOf(int result)
{
    return result < 0 ? lastError() : std::error_code();
}

FileStatus statusFrom(const struct stat& status);

inline int openFile(const Path& path, int flags)
{
    constexpr mode_t NEW_FILE = 0666; // less the umask
    return retryOnEintr([&] { return ::open(path.c_str(), flags | O_CLOEXEC, NEW_FILE); });
}

inline qint64 nanoseconds(const timespec& time)
{
    constexpr qint64 SECOND = 1000000000;
    return time.tv_sec * SECOND + time.tv_nsec;
}

/// Whether the process may not write a file of \p size bytes. The system would end it by SIGXFSZ.
inline bool exceedsSizeLimit(qint64 size)
{
    rlimit limit = {};
    return ::getrlimit(RLIMIT_FSIZE, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY
           && static_cast<rlim_t>(size) > limit.rlim_cur;
}

} // namespace TEKLUVA::System
