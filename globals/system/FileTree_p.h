#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

/// Whole folders: copied, deleted, measured; and whole files. Symbolic links to folders are never followed:
/// what lies behind them belongs to somebody else, and one that leads to a folder above would never end.
namespace TEKLUVA::FileTree {

struct CopyRules
{
    bool recursive = false;
    bool removeSource = false;
    /// The suffixes of the files to copy, without dots; empty for all files.
    QStringList suffixes;
    /// Asked whether the file \p target, which exists, may be replaced by \p source. No answer is a failure.
    std::function<std::optional<bool>(const QString& source, const QString& target)> mayReplace;
    /// A source file that is not copied.
    QString leftOut;
    /// Folders, all of them there, that will be deleted: nothing is copied into them, and no copied link may
    /// need them.
    QStringList deletedLater;
};

/// Copies what is in the folder \p source into the folder \p target; both must exist. Goes on behind a
/// failure and is false then. A copy is whole or not there at all, and so is what it replaces. Sources are
/// removed when all is copied and on disk. A link to a folder is copied with the text it has, and only if it
/// leads to the same folder from its new place, or to the copy of that folder.
bool copy(const QString& source, const QString& target, const CopyRules& rules);

/// Copies one file by the same rules; it is on disk before it gets its name.
bool copyFile(const QString& source, const QString& target, const CopyRules& rules);

/// The whole content of a file. Nothing for what is no file, cannot be read to its end, is 2 GiB or larger,
/// or has no room in memory.
std::optional<QByteArray> contentOf(const QString& path);

/// Waits until all that was written to the file system of \p folder is on disk. One wait for many files takes
/// a fraction of the time that a wait for each of them does.
bool waitForDisk(const QString& folder);

/// Deletes the folder \p path with all in it; a link is deleted itself. Goes on behind a failure and is false
/// then.
bool remove(const QString& path);

/// The bytes of the file \p path or of all files below the folder \p path; 0 if there is none.
qint64 size(const QString& path);

/// Whether the folder \p path is \p folder or lies below it. Both must exist.
bool isWithin(const QString& path, const QString& folder);

} // namespace TEKLUVA::FileTree
