#include "globals/system/Calls_unix_p.h"
#include "globals/system/System_p.h"

#include <QFile>

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#ifdef __APPLE__
#define st_mtim st_mtimespec
#define st_ctim st_ctimespec
#endif

static_assert(sizeof(off_t) == sizeof(qint64), "files of more than 2 GiB need _FILE_OFFSET_BITS=64");

namespace TEKLUVA::System {

const char* const LINE_END = "\n";
const bool HAS_REGISTRY = false;
const bool CAN_SYNC_FILE_SYSTEMS = true;

namespace {

FileKind kindOf(mode_t mode)
{
    if (S_ISREG(mode))
        return FileKind::Regular;
    return S_ISDIR(mode) ? FileKind::Folder : FileKind::Other;
}

/// Gives a file the owner and the group of \p other, or the group alone, which users may give who are in it.
void giveTo(int descriptor, const FileStatus& other)
{
    constexpr auto SAME_OWNER = static_cast<uid_t>(-1);
    int result = ::fchown(descriptor, other.owner, other.group);
    if (result < 0)
        result = ::fchown(descriptor, SAME_OWNER, other.group);
    static_cast<void>(result); // the file's status tells
}

/// The permissions of \p other for the file \p own: another group may do what all others may, and another
/// owner lends nobody his rights.
quint32 permissionsOf(const FileStatus& other, const FileStatus& own)
{
    constexpr int FROM_OTHERS_TO_GROUP = 3;
    quint32 permissions = other.permissions;
    if (own.owner != other.owner)
        permissions &= ~quint32{S_ISUID};
    if (own.group != other.group)
        permissions = (permissions & ~quint32{S_ISGID | S_IRWXG})
                      | (permissions & quint32{S_IRWXO}) << FROM_OTHERS_TO_GROUP;
    return permissions;
}

} // namespace

FileStatus statusFrom(const struct stat& status)
{
    constexpr mode_t PERMISSIONS = 07777;
    FileStatus result;
    result.kind = kindOf(status.st_mode);
    result.device = static_cast<quint64>(status.st_dev);
    result.inode = static_cast<quint64>(status.st_ino);
    result.size = status.st_size;
    result.modified = nanoseconds(status.st_mtim);
    result.changed = nanoseconds(status.st_ctim);
    result.permissions = static_cast<quint32>(status.st_mode & PERMISSIONS);
    result.owner = status.st_uid;
    result.group = status.st_gid;
    return result;
}

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

bool openToAppend(const QString& name, QFile& file)
{
    file.setFileName(name);
    return file.open(QIODevice::Append | QIODevice::Unbuffered);
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
    // It would leave a path relative of which nothing exists.
    const Path whole = std::filesystem::absolute(path, error);
    return error ? Path() : std::filesystem::weakly_canonical(whole, error);
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

std::error_code FileHandle::setPermissions(quint32 permissions) const
{
    return errorOf(::fchmod(m_descriptor, permissions));
}

void FileHandle::takeAttributes(const FileStatus& other) const
{
    std::error_code unknown;
    FileStatus own = status(unknown);
    if (own.owner != other.owner || own.group != other.group) {
        giveTo(m_descriptor, other);
        own = status(unknown);
    }
    // Last, because a new owner takes permissions away.
    static_cast<void>(setPermissions(permissionsOf(other, own)));
}

std::error_code FileHandle::setSize(qint64 size) const
{
    return errorOf(retryOnEintr([&] { return ::ftruncate(m_descriptor, size); }));
}

std::error_code FileHandle::tryLock() const
{
    return errorOf(retryOnEintr([this] { return ::flock(m_descriptor, LOCK_EX | LOCK_NB); }));
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

QString messageOf(const std::error_code& error)
{
    return QString::fromLocal8Bit(error.message().c_str());
}

} // namespace TEKLUVA::System
