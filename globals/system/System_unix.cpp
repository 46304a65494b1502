#include "globals/system/LastError_p.h"
#include "globals/system/System_p.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <string>
#include <utility>

#include <ctime>
#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#ifdef __linux__
#include <sys/inotify.h>
#endif
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

static_assert(sizeof(off_t) == sizeof(qint64), "files of more than 2 GiB need _FILE_OFFSET_BITS=64");

namespace TEKLUVA::System {

const char* const LINE_END = "\n";
const bool HAS_REGISTRY = false;
const bool CAN_SYNC_FILE_SYSTEMS = true;

namespace {

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
std::error_code errorOf(int result)
{
    return result < 0 ? lastError() : std::error_code();
}

int openFile(const Path& path, int flags)
{
    constexpr mode_t NEW_FILE = 0666; // less the umask
    return retryOnEintr([&] { return ::open(path.c_str(), flags | O_CLOEXEC, NEW_FILE); });
}

qint64 nanoseconds(const timespec& time)
{
    constexpr qint64 SECOND = 1000000000;
    return time.tv_sec * SECOND + time.tv_nsec;
}

FileKind kindOf(mode_t mode)
{
    if (S_ISREG(mode))
        return FileKind::Regular;
    return S_ISDIR(mode) ? FileKind::Folder : FileKind::Other;
}

FileStatus statusFrom(const struct stat& status)
{
#ifdef __APPLE__
    const timespec modified = status.st_mtimespec;
    const timespec changed = status.st_ctimespec;
#else
    const timespec modified = status.st_mtim;
    const timespec changed = status.st_ctim;
#endif
    constexpr mode_t PERMISSIONS = 07777;
    FileStatus result;
    result.kind = kindOf(status.st_mode);
    result.device = static_cast<quint64>(status.st_dev);
    result.inode = static_cast<quint64>(status.st_ino);
    result.size = status.st_size;
    result.modified = nanoseconds(modified);
    result.changed = nanoseconds(changed);
    result.permissions = static_cast<quint32>(status.st_mode & PERMISSIONS);
    result.owner = status.st_uid;
    result.group = status.st_gid;
    return result;
}

/// Whether the process may not write a file of \p size bytes. The system would end it by SIGXFSZ.
bool exceedsSizeLimit(qint64 size)
{
    rlimit limit = {};
    return ::getrlimit(RLIMIT_FSIZE, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY
           && static_cast<rlim_t>(size) > limit.rlim_cur;
}

#ifdef O_TMPFILE
/// The name under which the system lets an open file be found; it needs /proc.
std::string nameOfDescriptor(int descriptor)
{
    return "/proc/self/fd/" + std::to_string(descriptor);
}
#endif

} // namespace

Path nativePath(const QString& path)
{
    return QFile::encodeName(path).toStdString();
}

QString textOf(const Path& path)
{
    return QFile::decodeName(path.c_str());
}

QByteArray encodedName(const QString& name)
{
    return QFile::encodeName(name);
}

QString decodedName(const QByteArray& name)
{
    return QFile::decodeName(name);
}

FileStatus statusOf(const Path& path, std::error_code& error)
{
    struct stat status = {};
    error = errorOf(::stat(path.c_str(), &status));
    return error ? FileStatus() : statusFrom(status);
}

FileStatus statusOf(int descriptor, std::error_code& error)
{
    struct stat status = {};
    error = errorOf(::fstat(descriptor, &status));
    return error ? FileStatus() : statusFrom(status);
}

FileStatus linkStatusOf(const Path& path, std::error_code& error)
{
    struct stat status = {};
    error = errorOf(::lstat(path.c_str(), &status));
    return error ? FileStatus() : statusFrom(status);
}

bool isSettled(const FileStatus& status)
{
#ifdef CLOCK_REALTIME_COARSE
    constexpr clockid_t FILE_CLOCK = CLOCK_REALTIME_COARSE;
#else
    constexpr clockid_t FILE_CLOCK = CLOCK_REALTIME;
#endif
    timespec now = {};
    timespec tick = {};
    const bool isKnown = ::clock_gettime(FILE_CLOCK, &now) == 0 && ::clock_getres(FILE_CLOCK, &tick) == 0;
    return isKnown && status.changed + 2 * nanoseconds(tick) < nanoseconds(now);
}

std::error_code setModified(const Path& path, qint64 modified)
{
    constexpr qint64 SECOND = 1'000'000'000;
    const timespec times[] = {{0, UTIME_OMIT},
                              {static_cast<time_t>(modified / SECOND), static_cast<long>(modified % SECOND)}};
    return errorOf(::utimensat(AT_FDCWD, path.c_str(), times,
                               0)); // NOLINT(cppcoreguidelines-pro-bounds-array-to-pointer-decay)
}

bool isLink(const Path& path)
{
    std::error_code error;
    return std::filesystem::is_symlink(std::filesystem::symlink_status(path, error));
}

std::error_code replace(const Path& from, const Path& to)
{
    std::error_code error;
    std::filesystem::rename(from, to, error);
    return error;
}

Path canonical(const Path& path, std::error_code& error)
{
    return std::filesystem::canonical(path, error);
}

Path weaklyCanonical(const Path& path, std::error_code& error)
{
    return std::filesystem::weakly_canonical(path, error);
}

FileHandle FileHandle::openForReading(const Path& path, std::error_code& error)
{
    FileHandle file(openFile(path, O_RDONLY | O_NONBLOCK));
    error = errorOf(file.m_descriptor);
    return file;
}

FileHandle FileHandle::openForUpdate(const Path& path, std::error_code& error)
{
    FileHandle file(openFile(path, O_RDWR | O_NOFOLLOW | O_NONBLOCK));
    error = errorOf(file.m_descriptor);
    return file;
}

FileHandle FileHandle::create(const Path& path, std::error_code& error)
{
    FileHandle file(openFile(path, O_RDWR | O_CREAT | O_EXCL));
    error = errorOf(file.m_descriptor);
    return file;
}

FileHandle FileHandle::createUnnamed(const Path& folder, std::error_code& error)
{
#ifdef O_TMPFILE
    static const bool CAN_GET_A_NAME = ::access("/proc/self/fd", X_OK) == 0;
    if (CAN_GET_A_NAME) {
        FileHandle file(openFile(folder, O_RDWR | O_TMPFILE));
        error = errorOf(file.m_descriptor);
        return file;
    }
#else
    Q_UNUSED(folder)
#endif
    error = std::make_error_code(std::errc::not_supported);
    return {};
}

qint64 FileHandle::readAt(char* target, qint64 size, qint64 position, std::error_code& error) const
{
    error.clear();
    qint64 done = 0;
    while (done < size) {
        const auto count = retryOnEintr([&] {
            return ::pread(m_descriptor, target + done, static_cast<std::size_t>(size - done),
                           position + done);
        });
        if (count < 0)
            error = lastError();
        if (count <= 0)
            break;
        done += count;
    }
    return done;
}

std::error_code FileHandle::writeAt(const char* bytes, qint64 size, qint64 position) const
{
    if (exceedsSizeLimit(position + size))
        return std::make_error_code(std::errc::file_too_large);
    qint64 done = 0;
    while (done < size) {
        const auto count = retryOnEintr([&] {
            return ::pwrite(m_descriptor, bytes + done, static_cast<std::size_t>(size - done),
                            position + done);
        });
        if (count < 0)
            return lastError();
        done += count;
    }
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
#ifdef __linux__
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
#endif
    return copyPieces(source, position);
}

std::error_code FileHandle::setPermissions(quint32 permissions) const
{
    return errorOf(::fchmod(m_descriptor, permissions));
}

std::error_code FileHandle::setOwner(quint32 owner, quint32 group) const
{
    if (owner == ::geteuid() && group == ::getegid())
        return {};
    return errorOf(::fchown(m_descriptor, owner, group));
}

std::error_code FileHandle::linkTo(const Path& path) const
{
#ifdef O_TMPFILE
    const std::string name = nameOfDescriptor(m_descriptor);
    return errorOf(::linkat(AT_FDCWD, name.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW));
#else
    Q_UNUSED(path)
    return std::make_error_code(std::errc::not_supported);
#endif
}

std::error_code FileHandle::setSize(qint64 size) const
{
    return errorOf(retryOnEintr([&] { return ::ftruncate(m_descriptor, size); }));
}

std::error_code FileHandle::tryLock() const
{
    return errorOf(retryOnEintr([this] { return ::flock(m_descriptor, LOCK_EX | LOCK_NB); }));
}

std::error_code FileHandle::sync() const
{
#ifdef __linux__
    const std::error_code error = errorOf(retryOnEintr([this] { return ::fdatasync(m_descriptor); }));
#else
    const std::error_code error = errorOf(retryOnEintr([this] { return ::fsync(m_descriptor); }));
#endif
    // Some file systems cannot wait for one file.
    return error == std::errc::invalid_argument ? std::error_code() : error;
}

std::error_code FileHandle::close()
{
    const int descriptor = std::exchange(m_descriptor, -1);
    if (descriptor < 0)
        return {};
    // After EINTR the descriptor is gone on Linux, and a second call might close somebody else's.
    return ::close(descriptor) == 0 || errno == EINTR ? std::error_code() : lastError();
}

std::FILE* FileHandle::openStream(std::error_code& error) const
{
    FileHandle own(retryOnEintr([this] { return ::fcntl(m_descriptor, F_DUPFD_CLOEXEC, 0); }));
    error = errorOf(own.m_descriptor);
    if (error)
        return nullptr;
    std::FILE* stream = ::fdopen(own.m_descriptor, "r+b");
    if (stream)
        own.m_descriptor = -1; // closed with the stream
    else
        error = lastError();
    return stream;
}

std::error_code FileHandle::syncFileSystem() const
{
#ifdef __linux__
    return errorOf(::syncfs(m_descriptor));
#else
    ::sync();
    return {};
#endif
}

#ifdef __linux__
FileWatch::FileWatch(const Path& path)
    : m_descriptor(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK))
{
    // IN_ATTRIB comes when the name is removed. Not IN_CLOSE_WRITE, which comes from those who look on, too.
    constexpr std::uint32_t CHANGES = IN_MODIFY | IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF | IN_DONT_FOLLOW;
    if (m_descriptor >= 0 && ::inotify_add_watch(m_descriptor, path.c_str(), CHANGES) < 0)
        ::close(std::exchange(m_descriptor, -1));
}
#else
FileWatch::FileWatch(const Path&)
{
}
#endif

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

QString messageOf(const std::error_code& error)
{
    return QString::fromLocal8Bit(error.message().c_str());
}

void adviseHugePages(char* memory, std::size_t size)
{
#ifdef MADV_HUGEPAGE
    constexpr std::uintptr_t HUGE_PAGE = std::uintptr_t{2} * 1024 * 1024;
    const auto address = reinterpret_cast<std::uintptr_t>(memory);
    const std::uintptr_t begin = (address + HUGE_PAGE - 1) & ~(HUGE_PAGE - 1);
    const std::uintptr_t end = (address + size) & ~(HUGE_PAGE - 1);
    if (begin < end)
        static_cast<void>(::madvise(memory + (begin - address), end - begin, MADV_HUGEPAGE));
#else
    Q_UNUSED(memory)
    Q_UNUSED(size)
#endif
}

} // namespace TEKLUVA::System
