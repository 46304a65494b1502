#include "globals/system/Folder_p.h"

#include "globals/system/Calls_unix_p.h"

#include <cerrno>
#include <cstring>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace TEKLUVA::System {

namespace {

EntryKind entryKindOf(mode_t mode)
{
    if (S_ISREG(mode))
        return EntryKind::File;
    if (S_ISDIR(mode))
        return EntryKind::Folder;
    return S_ISLNK(mode) ? EntryKind::Link : EntryKind::Other;
}

/// Not every file system tells the kind with the name.
EntryKind entryKindOf(const dirent& entry, int folder)
{
    if (entry.d_type != DT_UNKNOWN)
        return entryKindOf(static_cast<mode_t>(DTTOIF(entry.d_type)));
    struct stat status = {};
    const bool isKnown = ::fstatat(folder, &entry.d_name[0], &status, AT_SYMLINK_NOFOLLOW) == 0;
    return isKnown ? entryKindOf(status.st_mode) : EntryKind::Other;
}

/// The folder itself and the one above are no entries.
bool isEntry(const char* name)
{
    return std::strcmp(name, ".") != 0 && std::strcmp(name, "..") != 0;
}

DIR* streamOf(void* stream)
{
    return static_cast<DIR*>(stream);
}

int descriptorOf(void* stream)
{
    return stream ? ::dirfd(streamOf(stream)) : -1;
}

} // namespace

void Folder::Close::operator()(void* stream) const
{
    ::closedir(streamOf(stream));
}

Folder Folder::open(const Path& path, std::error_code& error)
{
    Folder folder;
    folder.m_stream.reset(::opendir(path.c_str()));
    error = folder.m_stream ? std::error_code() : lastError();
    return folder;
}

Folder Folder::openInside(const Path& name, std::error_code& error) const
{
    Folder folder;
    const int outer = descriptorOf(m_stream.get());
    const int inner = retryOnEintr(
        [&] { return ::openat(outer, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC); });
    if (inner >= 0)
        folder.m_stream.reset(::fdopendir(inner));
    error = folder.m_stream ? std::error_code() : lastError();
    if (inner >= 0 && error)
        ::close(inner);
    return folder;
}

std::vector<FolderEntry> Folder::entries(std::error_code& error) const
{
    error = m_stream ? std::error_code() : std::make_error_code(std::errc::bad_file_descriptor);
    if (error)
        return {};
    std::vector<FolderEntry> entries;
    DIR* stream = streamOf(m_stream.get());
    ::rewinddir(stream);
    while (!error) {
        errno = 0;
        const dirent* entry = ::readdir(stream); // NOLINT(concurrency-mt-unsafe): nobody else reads from it
        if (!entry && errno == 0)
            return entries;
        if (!entry)
            error = lastError();
        else if (isEntry(&entry->d_name[0]))
            entries.push_back({&entry->d_name[0], entryKindOf(*entry, ::dirfd(stream))});
    }
    return {};
}

FileStatus Folder::statusOf(const Path& name, std::error_code& error) const
{
    struct stat status = {};
    error = errorOf(::fstatat(descriptorOf(m_stream.get()), name.c_str(), &status, 0));
    return error ? FileStatus() : statusFrom(status);
}

std::error_code Folder::remove(const FolderEntry& entry) const
{
    const int flags = entry.kind == EntryKind::Folder ? AT_REMOVEDIR : 0;
    return errorOf(::unlinkat(descriptorOf(m_stream.get()), entry.name.c_str(), flags));
}

} // namespace TEKLUVA::System
