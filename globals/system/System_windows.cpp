#include "globals/system/Handle_windows_p.h"
#include "globals/system/LastError_p.h"
#include "globals/system/System_p.h"

#include <QFile>
#include <QThread>

#include <algorithm>
#include <string>
#include <utility>

#include <fcntl.h>
#include <io.h>

namespace TEKLUVA::System {

const char* const LINE_END = "\r\n";
const bool HAS_REGISTRY = true;
const bool CAN_SYNC_FILE_SYSTEMS = false; // an administrator could

namespace {

/// An open file can be renamed and removed meanwhile, as on other systems.
constexpr DWORD SHARED = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD READ = GENERIC_READ;
/// Without DELETE, because Qt opens no file that is open with it.
constexpr DWORD UPDATE = GENERIC_READ | GENERIC_WRITE;

HANDLE handleOf(int descriptor)
{
    return reinterpret_cast<HANDLE>(::_get_osfhandle(descriptor));
}

HANDLE openHandle(const Path& path, DWORD access, DWORD disposition, DWORD flags = 0)
{
    // Without the flag folders could not be opened.
    return ::CreateFileW(path.c_str(), access, SHARED, nullptr, disposition,
                         FILE_ATTRIBUTE_NORMAL | FILE_FLAG_BACKUP_SEMANTICS | flags, nullptr);
}

/// A descriptor that closes \p handle; a negative one for no handle.
int descriptorFor(HANDLE handle, std::error_code& error, int flags = 0)
{
    error = handle == INVALID_HANDLE_VALUE ? lastSystemError() : std::error_code();
    if (error)
        return -1;
    const int descriptor =
        ::_open_osfhandle(reinterpret_cast<std::intptr_t>(handle), _O_BINARY | _O_NOINHERIT | flags);
    if (descriptor < 0) {
        error = lastError();
        ::CloseHandle(handle);
    }
    return descriptor;
}

/// Whether another process has the file \p path removed, which stays until all have closed it.
bool isVanishing(const Path& path)
{
    return ::GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES
           && ::GetLastError() == ERROR_ACCESS_DENIED;
}

/// Of nanoseconds since the epoch, and back. The system counts 100 nanoseconds, from 1601 on.
constexpr qint64 UNIT = 100;
constexpr qint64 EPOCH = 116'444'736'000'000'000;

qint64 nanoseconds(const LARGE_INTEGER& time)
{
    return (time.QuadPart - EPOCH) * UNIT;
}

FILETIME fileTime(qint64 nanoseconds)
{
    ULARGE_INTEGER time = {};
    time.QuadPart = static_cast<ULONGLONG>(nanoseconds / UNIT + EPOCH);
    return {time.LowPart, time.HighPart};
}

FileKind kindOf(DWORD attributes)
{
    return attributes & FILE_ATTRIBUTE_DIRECTORY ? FileKind::Folder : FileKind::Regular;
}

FileStatus statusFrom(const BY_HANDLE_FILE_INFORMATION& info, const FILE_BASIC_INFO& times)
{
    constexpr int HALF = 32;
    FileStatus result;
    result.kind = kindOf(info.dwFileAttributes);
    result.device = info.dwVolumeSerialNumber;
    result.inode = quint64{info.nFileIndexHigh} << HALF | info.nFileIndexLow;
    result.size = static_cast<qint64>(quint64{info.nFileSizeHigh} << HALF | info.nFileSizeLow);
    result.modified = nanoseconds(times.LastWriteTime);
    result.changed = nanoseconds(times.ChangeTime);
    return result;
}

FileStatus statusOf(HANDLE handle, std::error_code& error)
{
    error.clear();
    if (::GetFileType(handle) != FILE_TYPE_DISK)
        return {};
    BY_HANDLE_FILE_INFORMATION info = {};
    FILE_BASIC_INFO times = {};
    const bool isKnown = ::GetFileInformationByHandle(handle, &info)
                         && ::GetFileInformationByHandleEx(handle, FileBasicInfo, &times, sizeof times);
    if (!isKnown)
        error = lastSystemError();
    return isKnown ? statusFrom(info, times) : FileStatus();
}

FileStatus statusOf(const Path& path, DWORD flags, std::error_code& error)
{
    const Handle file(openHandle(path, FILE_READ_ATTRIBUTES, OPEN_EXISTING, flags));
    error = file.isOpen() ? std::error_code() : lastSystemError();
    return error ? FileStatus() : statusOf(file.get(), error);
}

OVERLAPPED placeAt(qint64 position)
{
    ULARGE_INTEGER offset = {};
    offset.QuadPart = static_cast<ULONGLONG>(position);
    OVERLAPPED place = {};
    place.Offset = offset.LowPart;
    place.OffsetHigh = offset.HighPart;
    return place;
}

/// As much as one call takes.
DWORD pieceOf(qint64 size)
{
    constexpr qint64 LARGEST = qint64{1} << 30;
    return static_cast<DWORD>(std::min(size, LARGEST));
}

} // namespace

Path nativePath(const QString& path)
{
    return path.toStdWString();
}

QString textOf(const Path& path)
{
    return QString::fromStdWString(path.generic_wstring());
}

QByteArray encodedName(const QString& name)
{
    return name.toUtf8();
}

QString decodedName(const QByteArray& name)
{
    return QString::fromUtf8(name);
}

FileStatus statusOf(const Path& path, std::error_code& error)
{
    return statusOf(path, 0, error);
}

FileStatus statusOf(int descriptor, std::error_code& error)
{
    return statusOf(handleOf(descriptor), error);
}

FileStatus linkStatusOf(const Path& path, std::error_code& error)
{
    return statusOf(path, FILE_FLAG_OPEN_REPARSE_POINT, error);
}

bool isSettled(const FileStatus& status)
{
    constexpr qint64 TICK = 2'000'000'000; // of FAT; that of NTFS is a hundredth of it
    FILETIME now = {};
    ::GetSystemTimeAsFileTime(&now);
    const qint64 changed = std::max(status.changed, status.modified); // FAT has only the latter
    return changed + 2 * TICK < nanoseconds({{now.dwLowDateTime, static_cast<LONG>(now.dwHighDateTime)}});
}

std::error_code setModified(const Path& path, qint64 modified)
{
    const Handle file(openHandle(path, FILE_WRITE_ATTRIBUTES, OPEN_EXISTING));
    const FILETIME time = fileTime(modified);
    return resultOf(file.isOpen() && ::SetFileTime(file.get(), nullptr, nullptr, &time));
}

bool isLink(const Path& path)
{
    const Handle file(openHandle(path, FILE_READ_ATTRIBUTES, OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT));
    FILE_ATTRIBUTE_TAG_INFO info = {};
    return file.isOpen()
           && ::GetFileInformationByHandleEx(file.get(), FileAttributeTagInfo, &info, sizeof info)
           && (info.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT)
           && IsReparseTagNameSurrogate(info.ReparseTag);
}

std::error_code replace(const Path& from, const Path& to)
{
    // Other programs keep a file open for a moment, such as those that look for viruses, and share it with
    // nobody.
    constexpr int MOST_TRIES = 50;
    constexpr unsigned long MILLISECONDS = 10;
    std::error_code error;
    for (int i = 0; i < MOST_TRIES; ++i) {
        error = resultOf(::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING));
        const bool isInUse = error.value() == ERROR_SHARING_VIOLATION || error.value() == ERROR_ACCESS_DENIED;
        if (!isInUse)
            break;
        QThread::msleep(MILLISECONDS);
    }
    return error;
}

Path canonical(const Path& path, std::error_code& error)
{
    const Handle file(openHandle(path, 0, OPEN_EXISTING));
    error = file.isOpen() ? std::error_code() : lastSystemError();
    if (error)
        return {};
    const DWORD size = ::GetFinalPathNameByHandleW(file.get(), nullptr, 0, 0); // the zero at its end included
    std::wstring name(size, L'\0');
    const DWORD length = ::GetFinalPathNameByHandleW(file.get(), name.data(), size, 0);
    if (length == 0 || length >= size)
        error = lastSystemError();
    name.resize(error ? 0 : length);
    return name;
}

Path weaklyCanonical(const Path& path, std::error_code& error)
{
    Path known = std::filesystem::absolute(path, error).lexically_normal();
    Path rest;
    while (!error) {
        Path found = System::canonical(known, error);
        const bool isMissing = error.value() == ERROR_FILE_NOT_FOUND || error.value() == ERROR_PATH_NOT_FOUND;
        if (!error)
            return rest.empty() ? found : found / rest;
        if (!isMissing || !known.has_relative_path())
            return {};
        error.clear();
        rest = rest.empty() ? known.filename() : known.filename() / rest;
        known = known.parent_path();
    }
    return {};
}

bool openToAppend(const QString& name, QFile& file)
{
    // Qt would keep the position of the end that it once saw, and let nobody rename the file.
    constexpr DWORD APPEND = FILE_APPEND_DATA | FILE_READ_ATTRIBUTES | SYNCHRONIZE;
    std::error_code error;
    const HANDLE handle = openHandle(nativePath(name), APPEND, OPEN_ALWAYS);
    const int descriptor = descriptorFor(handle, error, _O_APPEND);
    return descriptor >= 0
           && file.open(descriptor, QIODevice::Append | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle);
}

FileHandle FileHandle::openForReading(const Path& path, std::error_code& error)
{
    return FileHandle(descriptorFor(openHandle(path, READ, OPEN_EXISTING), error));
}

FileHandle FileHandle::openForUpdate(const Path& path, std::error_code& error)
{
    // A link itself would be opened, and is no regular file then.
    return FileHandle(
        descriptorFor(openHandle(path, UPDATE, OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT), error));
}

FileHandle FileHandle::create(const Path& path, std::error_code& error)
{
    FileHandle file(descriptorFor(openHandle(path, UPDATE, CREATE_NEW), error));
    if (error.value() == ERROR_ACCESS_DENIED && isVanishing(path))
        error = std::make_error_code(std::errc::file_exists);
    return file;
}

qint64 FileHandle::readAt(char* target, qint64 size, qint64 position, std::error_code& error) const
{
    error.clear();
    qint64 done = 0;
    while (done < size) {
        OVERLAPPED place = placeAt(position + done);
        DWORD count = 0;
        if (!::ReadFile(handleOf(m_descriptor), target + done, pieceOf(size - done), &count, &place)
            && ::GetLastError() != ERROR_HANDLE_EOF)
            error = lastSystemError();
        if (count == 0)
            break;
        done += count;
    }
    return done;
}

std::error_code FileHandle::writeAt(const char* bytes, qint64 size, qint64 position) const
{
    for (qint64 done = 0; done < size;) {
        OVERLAPPED place = placeAt(position + done);
        DWORD count = 0;
        if (!::WriteFile(handleOf(m_descriptor), bytes + done, pieceOf(size - done), &count, &place))
            return lastSystemError();
        done += count;
    }
    return {};
}

std::error_code FileHandle::setPermissions(quint32 /*permissions*/) const
{
    return {}; // those of the folder hold for a new file
}

void FileHandle::takeAttributes(const FileStatus& /*other*/) const
{
}

std::error_code FileHandle::setSize(qint64 size) const
{
    FILE_END_OF_FILE_INFO end = {};
    end.EndOfFile.QuadPart = size;
    return resultOf(
        ::SetFileInformationByHandle(handleOf(m_descriptor), FileEndOfFileInfo, &end, sizeof end));
}

std::error_code FileHandle::tryLock() const
{
    // Of one byte far behind the end: what is locked nobody else can read.
    constexpr qint64 PLACE = qint64{1} << 62;
    OVERLAPPED place = placeAt(PLACE);
    HANDLE file = handleOf(m_descriptor);
    ::UnlockFileEx(file, 0, 1, 0, &place); // a second lock of the same handle would fail
    const std::error_code error =
        resultOf(::LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place));
    const bool isHeld = error.value() == ERROR_LOCK_VIOLATION || error.value() == ERROR_IO_PENDING;
    return isHeld ? std::make_error_code(std::errc::operation_would_block) : error;
}

std::error_code FileHandle::sync() const
{
    return resultOf(::FlushFileBuffers(handleOf(m_descriptor)));
}

std::error_code FileHandle::syncFileSystem() const
{
    return {}; // each file was waited for
}

std::error_code FileHandle::close()
{
    const int descriptor = std::exchange(m_descriptor, -1);
    return descriptor < 0 || ::_close(descriptor) == 0 ? std::error_code() : lastError();
}

std::FILE* FileHandle::openStream(std::error_code& error) const
{
    FileHandle own(::_dup(m_descriptor));
    error = own.isOpen() ? std::error_code() : lastError();
    if (error)
        return nullptr;
    std::FILE* stream = ::_fdopen(own.m_descriptor, "r+b");
    if (!stream) {
        error = lastError();
        return nullptr;
    }
    own.m_descriptor = -1; // closed with the stream
    std::rewind(stream);   // writeAt() has moved the position that both share
    return stream;
}

QString messageOf(const std::error_code& error)
{
    if (error.category() == std::system_category())
        return qt_error_string(error.value());
    return QString::fromLocal8Bit(error.message().c_str());
}

} // namespace TEKLUVA::System
