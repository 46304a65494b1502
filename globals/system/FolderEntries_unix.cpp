#include "globals/system/LastError_p.h"
#include "globals/system/System_p.h"

#include <cerrno>
#include <cstring>
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace TEKLUVA::System {

namespace {

struct CloseFolder
{
    void operator()(DIR* folder) const { ::closedir(folder); }
};
using OpenFolder = std::unique_ptr<DIR, CloseFolder>;

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

} // namespace

std::vector<FolderEntry> entriesOf(const Path& folder, std::error_code& error)
{
    const OpenFolder open(::opendir(folder.c_str()));
    error = open ? std::error_code() : lastError();
    std::vector<FolderEntry> entries;
    while (!error) {
        errno = 0;
        const dirent* entry = ::readdir(open.get()); // NOLINT(concurrency-mt-unsafe): a stream of its own
        if (!entry && errno == 0)
            return entries;
        if (!entry)
            error = lastError();
        else if (isEntry(&entry->d_name[0]))
            entries.push_back({&entry->d_name[0], entryKindOf(*entry, ::dirfd(open.get()))});
    }
    return {};
}

} // namespace TEKLUVA::System
