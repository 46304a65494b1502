#pragma once

#include "globals/system/System_p.h"

#include <memory>
#include <system_error>
#include <vector>

namespace TEKLUVA::System {

enum class EntryKind {
    File,
    Folder,
    Link, ///< whatever it leads to
    Other,
};

struct FolderEntry
{
    Path name;
    EntryKind kind;
};

/// A folder that is held open, closed with its scope. What is done to its entries is done in this folder,
/// also when somebody puts another one, or a link, in its place meanwhile. Windows goes by the path.
///
/// All functions are reentrant.
class Folder
{
public:
    /// Not open, with the reason in \p error, on failure. A link is followed.
    static Folder open(const Path& path, std::error_code& error);
    /// Opens the folder \p name in this one. Fails for a link.
    Folder openInside(const Path& name, std::error_code& error) const;

    /// All entries, hidden ones and dangling links included, in no order. None when the folder is not open or
    /// cannot be read to its end.
    ///
    /// std::filesystem's iterator ends the process where it finds no memory, and Qt's takes a failure for the
    /// end.
    std::vector<FolderEntry> entries(std::error_code& error) const;

    /// Of what \p name leads to, through links.
    FileStatus statusOf(const Path& name, std::error_code& error) const;
    /// A folder has to be empty. A link is removed, not what it leads to.
    std::error_code remove(const FolderEntry& entry) const;

private:
    struct Close
    {
        void operator()(void* stream) const;
    };

    std::unique_ptr<void, Close> m_stream; ///< on Unix
    Path m_path;                           ///< on Windows
};

/// The entries of the folder \p path, as Folder::entries() tells them.
std::vector<FolderEntry> entriesOf(const Path& path, std::error_code& error);

} // namespace TEKLUVA::System
