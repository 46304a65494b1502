#pragma once

#include <QString>
#include <QtGlobal>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <system_error>

QT_BEGIN_NAMESPACE
class QFile;
QT_END_NAMESPACE

/// What the library asks of the operating system beyond Qt and std::filesystem. System_unix.cpp and
/// System_windows.cpp do it, System_linux.cpp with what only Linux has; what is the same everywhere is in
/// System.cpp.
///
/// All functions are reentrant. A call that a signal has interrupted is made again.
namespace TEKLUVA::System {

using Path = std::filesystem::path;

/// \name Names
/// A Path keeps names that are no text; as QString they may not lead back to their file.
/// @{
Path nativePath(const QString& path);
QString textOf(const Path& path);

/// The bytes of a name in files that go from system to system: those of the file system, or UTF-8 where that
/// has none.
QByteArray encodedName(const QString& name);
QString decodedName(const QByteArray& name);
/// @}

/// The line end of text files, as Qt writes it into INI files, too.
extern const char* const LINE_END;
/// Whether the native format of QSettings is no file.
extern const bool HAS_REGISTRY;
/// Whether FileHandle::syncFileSystem() waits for anything. Otherwise each file is to be waited for.
extern const bool CAN_SYNC_FILE_SYSTEMS;

enum class FileKind {
    Regular,
    Folder,
    Other, ///< a pipe, a socket or a device, which might never end
};

/// What the system knows of a file beside its content. Windows has no permissions, owner and group.
struct FileStatus
{
    FileKind kind = FileKind::Other;
    quint64 device = 0;
    quint64 inode = 0;
    qint64 size = 0;
    qint64 modified = 0; ///< the last change of the content, in nanoseconds since the epoch
    qint64 changed = 0;  ///< the last change of content, name or permissions, likewise
    quint32 permissions = 0;
    quint32 owner = 0;
    quint32 group = 0;

    /// Whether both are of one file, maybe at different times.
    bool isSameFile(const FileStatus& other) const { return device == other.device && inode == other.inode; }
    bool operator==(const FileStatus& other) const;
    bool operator!=(const FileStatus& other) const { return !(*this == other); }
};

/// Of the file that \p path leads to, through links.
FileStatus statusOf(const Path& path, std::error_code& error);

/// Of an open file.
FileStatus statusOf(int descriptor, std::error_code& error);

/// Of \p path itself, a link too.
FileStatus linkStatusOf(const Path& path, std::error_code& error);

/// Whether \p path is a link itself, whatever it leads to; on Windows also another volume in that place.
bool isLink(const Path& path);

/// Gives the file \p from the name \p to, also where that is another file's. Not across file systems.
std::error_code replace(const Path& from, const Path& to);

/// \name Places
/// Where links and other spellings of a name lead: equal for the same file. With weaklyCanonical() the last
/// parts of the path need not exist.
/// @{
Path canonical(const Path& path, std::error_code& error);
Path weaklyCanonical(const Path& path, std::error_code& error);
/// @}

/// Whether \p path leads to a file that can be read to its end.
bool isRegularFile(const Path& path);

/// Whether a later change of the file must show in its times: the clock behind these ticks a few
/// milliseconds.
bool isSettled(const FileStatus& status);

/// Sets the time of the last change of the content, in nanoseconds since the epoch.
std::error_code setModified(const Path& path, qint64 modified);

/// Opens the file \p name to append to it, unbuffered. Each piece goes to the end that the file has then,
/// also when several write, and the file can be renamed and removed meanwhile. \p file need not know its name
/// afterwards.
bool openToAppend(const QString& name, QFile& file);

/// An open file, closed with its scope. Child processes do not inherit it.
class FileHandle
{
public:
    FileHandle() = default;
    FileHandle(FileHandle&& other) noexcept;
    FileHandle& operator=(FileHandle&& other) noexcept;
    ~FileHandle();

    /// \name Opening
    /// A handle that is not open, with the reason in \p error, on failure.
    /// @{

    /// Does not wait for the writer of a pipe.
    static FileHandle openForReading(const Path& path, std::error_code& error);
    /// To read and write. Fails for a link.
    static FileHandle openForUpdate(const Path& path, std::error_code& error);
    /// A new file with the permissions of any new file. Fails where something exists.
    static FileHandle create(const Path& path, std::error_code& error);
    /// A new file in \p folder without a name, which the system removes with the handle. Fails where the
    /// system or the file system has no such files.
    static FileHandle createUnnamed(const Path& folder, std::error_code& error);
    /// @}

    bool isOpen() const { return m_descriptor >= 0; }

    FileStatus status(std::error_code& error) const;
    /// Reads up to \p size bytes; fewer only at the end of the file and on failure.
    qint64 readAt(char* target, qint64 size, qint64 position, std::error_code& error) const;
    /// Writes all of it, or part of it on failure.
    std::error_code writeAt(const char* bytes, qint64 size, qint64 position) const;
    /// Copies the content of \p source to the beginning of this file, inside the system where it can.
    std::error_code copyFrom(const FileHandle& source) const;
    std::error_code setPermissions(quint32 permissions) const;
    /// Gives the file owner, group and permissions of \p other, as far as the file system has them and the
    /// process may give them. What another group was allowed is not allowed to that of this file.
    void takeAttributes(const FileStatus& other) const;
    std::error_code setSize(qint64 size) const;
    /// Locks the file against other handles that ask for it, also those of this process, until it is closed.
    /// operation_would_block when another one has it.
    std::error_code tryLock() const;
    /// Gives an unnamed file the name \p path. Fails where something exists.
    std::error_code linkTo(const Path& path) const;
    /// Waits until content and size are on disk.
    std::error_code sync() const;
    /// Waits until all that was written to the file's file system is on disk. One wait for many files takes a
    /// fraction of the time that a wait for each of them does.
    std::error_code syncFileSystem() const;
    /// A failure tells that what was written may not have arrived.
    std::error_code close();

    /// A C stream that writes to the same file, with a descriptor of its own; null on failure.
    std::FILE* openStream(std::error_code& error) const;

private:
    explicit FileHandle(int descriptor)
        : m_descriptor(descriptor)
    {
    }

    /// Copies what \p source has from \p position on.
    std::error_code copyPieces(const FileHandle& source, qint64 position) const;

    int m_descriptor = -1;
};

/// Waits for changes of one file: of its content, permissions or name, or its removal.
class FileWatch
{
    Q_DISABLE_COPY(FileWatch)

public:
    /// Watches from here on.
    explicit FileWatch(const Path& path);
    ~FileWatch();

    /// Returns after a change since the constructor, or after \p limit. Where the system cannot watch files
    /// it returns after 10 milliseconds.
    void wait(std::chrono::milliseconds limit) const;

private:
    int m_descriptor = -1;
};

/// The words of the system for \p error.
QString messageOf(const std::error_code& error);

/// Asks for huge pages below \p size bytes at \p memory. A wish: nothing depends on it.
void adviseHugePages(char* memory, std::size_t size);

} // namespace TEKLUVA::System
