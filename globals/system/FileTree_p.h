#pragma once

#include <QString>
#include <QStringList>

#include <functional>

/// Whole folders: copied, deleted, measured. Symbolic links to folders are never followed: what they lead to
/// belongs to somebody else, and one that leads to a folder above would never end. Deleting and measuring
/// hold a folder open for each level.
namespace TEKLUVA::FileTree {

/// What to do about a file that exists in the place of a copy.
enum class Overwrite {
    Replace,
    Keep, ///< which is no failure; the source is not removed
    Fail,
};

struct CopyRules
{
    bool recursive = false;
    bool removeSource = false;
    /// The suffixes of the files to copy, without dots; empty for all files.
    QStringList suffixes;
    /// Asked when the file \p target exists already.
    std::function<Overwrite(const QString& source, const QString& target)> onExisting;
    /// A source file that is not copied.
    QString leftOut;
    /// Folders, all of them there, that will be deleted: nothing is copied into them, no copied link may need
    /// them, and all copies are on disk before.
    QStringList deletedLater;
};

/// Copies what is in the folder \p source into the folder \p target; both must exist. Goes on after a failure
/// and is false then. A copy is whole or not there at all, and so is what it replaces. Sources are removed
/// when all is copied and on disk, also where folders of the target lie on other disks. For links see
/// LinkRules.
bool copy(const QString& source, const QString& target, const CopyRules& rules);

/// Copies one file by the same rules; it is on disk before it gets its name.
bool copyFile(const QString& source, const QString& target, const CopyRules& rules);

/// Waits until all that was written to the file system of \p folder is on disk.
bool syncFolder(const QString& folder);

/// Deletes the folder \p path with all in it; a link is deleted itself. Goes on after a failure and is false
/// then.
bool remove(const QString& path);

/// The bytes of the file \p path or of all files below the folder \p path; 0 if there is none.
qint64 size(const QString& path);

} // namespace TEKLUVA::FileTree
