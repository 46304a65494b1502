#pragma once

#include "globals/globals_export.h"

#include <QByteArray>
#include <QString>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

namespace TEKLUVA {

/// A file that is written beside its place and takes that place when it is complete. Whatever goes wrong
/// before, an older file stays as it was, and nothing is left of the new one.
///
///     AtomicFile file(path);
///     if (!file.write(content) || !file.commit())
///         report(file.error());
///
/// The new file has the permissions of the one that it replaces, or those of any new file, and its owner and
/// group if the process may give them; otherwise the group may do what all others may. What a replacement
/// cannot keep: other names (hard links) of the old file keep the old content, and access lists and extended
/// attributes are lost. What is no regular file is not replaced.
///
/// A process that is killed leaves nothing visible: until the file has its name it has none, or, where the
/// file system cannot do that, a hidden one (".globals-", 16 digits, ".tmp"), which the next writer into that
/// folder removes after an hour.
///
/// Reentrant. Functions of one object belong to one thread at a time.
class GLOBALS_EXPORT AtomicFile
{
    Q_DISABLE_COPY(AtomicFile)

public:
    /// What becomes of a link in the file's place.
    enum class Link {
        Followed, ///< what it leads to is replaced, or made
        Replaced,
    };

    /// When commit() returns.
    enum class Durability {
        OnDisk, ///< when the content is on disk; the name it replaces stays until then
        Later,  ///< at once, for many files with one wait for all
    };

    /// In a file name a path keeps bytes that are no text. A failure shows in write() and error().
    explicit AtomicFile(const std::filesystem::path& target, Link link = Link::Followed);
    explicit AtomicFile(const QString& target, Link link = Link::Followed);
    /// For a caller that alone writes \p target, under a lock: before the file takes that place it is called
    /// \p hiddenName, in the same folder, and what a killed process has left there is removed first.
    AtomicFile(const QString& target, const QString& hiddenName);
    /// Discards what was not committed.
    ~AtomicFile();

    /// \name Steps
    /// False, with a reason in error(), when the file is not going to be complete; every later step fails
    /// then.
    /// @{
    bool write(const QByteArray& bytes);
    /// Takes content and permissions of another file.
    bool copyFrom(const std::filesystem::path& source);
    /// A stream to write with, for libraries that need one; null on failure. The caller closes it before
    /// commit() and looks at the result of that.
    std::FILE* openStream();
    /// Gives the file its name. A second commit fails.
    bool commit(Durability durability = Durability::OnDisk);
    /// @}

    /// Waits until the content is on disk; commit() need not wait then.
    bool sync();

    /// The reason of the first failure, in the words of the system; empty before.
    QString error() const;
    /// The same as a code, to be compared with those of std::errc.
    std::error_code errorCode() const;

private:
    class Private;
    const std::unique_ptr<Private> d;
};

} // namespace TEKLUVA
