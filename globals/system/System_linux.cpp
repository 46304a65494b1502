#include "globals/system/Calls_unix_p.h"
#include "globals/system/System_p.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <string>
#include <utility>

#include <ctime>
#include <fcntl.h>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/mman.h>
#include <unistd.h>

// What Linux does better than System_plain.cpp and System_posix.cpp do.

namespace TEKLUVA::System {

namespace {

/// The name under which the system lets an open file be found; it needs /proc.
std::string nameOfDescriptor(int descriptor)
{
    return "/proc/self/fd/" + std::to_string(descriptor);
}

} // namespace

const clockid_t FILE_CLOCK = CLOCK_REALTIME_COARSE;

FileHandle FileHandle::createUnnamed(const Path& folder, std::error_code& error)
{
    static const bool CAN_GET_A_NAME = ::access("/proc/self/fd", X_OK) == 0;
    if (CAN_GET_A_NAME) {
        FileHandle file(openFile(folder, O_RDWR | O_TMPFILE));
        error = errorOf(file.m_descriptor);
        return file;
    }
    error = std::make_error_code(std::errc::not_supported);
    return {};
}

std::error_code FileHandle::copyFrom(const FileHandle& source) const
{
    std::error_code error;
    const qint64 size = source.status(error).size;
    if (error)
        return error;
    if (exceedsSizeLimit(size))
        return std::make_error_code(std::errc::file_too_large);
    qint64 position = 0;
    constexpr std::size_t PIECE = std::size_t{1} << 30;
    while (position < size) {
        off_t from = position;
        off_t to = position;
        const auto count = retryOnEintr(
            [&] { return ::copy_file_range(source.m_descriptor, &from, m_descriptor, &to, PIECE, 0); });
        // Not between any two file systems.
        if (count <= 0)
            break;
        position += count;
    }
    return copyPieces(source, position);
}

std::error_code FileHandle::linkTo(const Path& path) const
{
    const std::string name = nameOfDescriptor(m_descriptor);
    return errorOf(::linkat(AT_FDCWD, name.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW));
}

std::error_code FileHandle::sync() const
{
    const std::error_code error = errorOf(retryOnEintr([this] { return ::fdatasync(m_descriptor); }));
    // Some file systems cannot wait for one file.
    return error == std::errc::invalid_argument ? std::error_code() : error;
}

std::error_code FileHandle::syncFileSystem() const
{
    return errorOf(::syncfs(m_descriptor));
}

FileWatch::FileWatch(const Path& path)
    : m_descriptor(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK))
{
    // IN_ATTRIB comes when the name is removed. Not IN_CLOSE_WRITE, which comes from those who look on, too.
    constexpr std::uint32_t CHANGES = IN_MODIFY | IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF | IN_DONT_FOLLOW;
    if (m_descriptor >= 0 && ::inotify_add_watch(m_descriptor, path.c_str(), CHANGES) < 0)
        ::close(std::exchange(m_descriptor, -1));
}

FileWatch::~FileWatch()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

void FileWatch::wait(std::chrono::milliseconds limit) const
{
    constexpr std::chrono::milliseconds BETWEEN_LOOKS{10};
    const bool canWatch = m_descriptor >= 0;
    pollfd change = {m_descriptor, POLLIN, 0};
    const auto time = canWatch ? limit : std::min(limit, BETWEEN_LOOKS);
    ::poll(&change, canWatch ? 1 : 0, static_cast<int>(time.count())); // a signal may end it, too
}

void adviseHugePages(char* memory, std::size_t size)
{
    constexpr std::uintptr_t HUGE_PAGE = std::uintptr_t{2} * 1024 * 1024;
    const auto address = reinterpret_cast<std::uintptr_t>(memory);
    const std::uintptr_t begin = (address + HUGE_PAGE - 1) & ~(HUGE_PAGE - 1);
    const std::uintptr_t end = (address + size) & ~(HUGE_PAGE - 1);
    if (begin < end)
        static_cast<void>(::madvise(memory + (begin - address), end - begin, MADV_HUGEPAGE));
}

} // namespace TEKLUVA::System
