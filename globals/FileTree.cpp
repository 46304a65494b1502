#include "globals/FileTree_p.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>
#include <filesystem>
#include <optional>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace TEKLUVA::FileTree {

namespace fs = std::filesystem;

namespace {

fs::path nativePath(const QString& path)
{
    return QFile::encodeName(path).toStdString();
}

using Entries = std::vector<fs::directory_entry>;

/// All entries of a folder, hidden ones and broken links included; nothing when it cannot be read to its end,
/// which Qt's iterator takes for its end. A list, because the folder changes meanwhile.
std::optional<Entries> entriesOf(const fs::path& folder)
{
    std::error_code error;
    fs::directory_iterator walk(folder, error);
    Entries entries;
    for (; !error && walk != fs::directory_iterator(); walk.increment(error))
        entries.push_back(*walk);
    return error ? std::nullopt : std::make_optional(entries);
}

/// Known from reading the folder above: no look at the entry itself.
bool isRealFolder(const fs::directory_entry& entry)
{
    std::error_code error;
    return !entry.is_symlink(error) && entry.is_directory(error);
}

/// Makes whole copies in one folder: each is written under another name, in a folder of its own, until it is
/// complete.
class CopiesInto
{
public:
    explicit CopiesInto(const QString& folder)
        : m_beside(folder + QLatin1String("/copy-XXXXXX"))
        , m_copy(m_beside.filePath(QStringLiteral("copy")))
    {
    }

    /// Does not wait for the disk, as QFile::copy() does for each file.
    bool copy(const QString& source, const QString& target) const
    {
        std::error_code error;
        return m_beside.isValid()
               && place(fs::copy_file(nativePath(source), nativePath(m_copy), error), target);
    }

    /// The older file stays until the new one is on disk.
    bool replace(const QString& source, const QString& target) const
    {
        return m_beside.isValid() && place(QFile::copy(source, m_copy), target);
    }

private:
    bool place(bool isCopied, const QString& target) const
    {
        const bool isPlaced =
            isCopied && std::rename(nativePath(m_copy).c_str(), nativePath(target).c_str()) == 0;
        if (!isPlaced)
            QFile::remove(m_copy); // the next copy would find what there is of this one
        return isPlaced;
    }

    const QTemporaryDir m_beside;
    const QString m_copy;
};

/// What a copy of a tree has to do.
struct Walk
{
    const CopyRules& rules;
    QStringList copied; ///< sources that are to be removed
};

/// Broken links included.
bool exists(const QString& path)
{
    std::error_code error;
    return fs::exists(fs::symlink_status(nativePath(path), error));
}

bool copyFile(const QString& source, const QString& target, const CopiesInto& folder, Walk& walk)
{
    const bool replaces = exists(target);
    if (replaces && !walk.rules.mayReplace(target))
        return true;
    if (!(replaces ? folder.replace(source, target) : folder.copy(source, target)))
        return false;
    walk.copied << source;
    return true;
}

/// Empty for what is no link.
QByteArray textOfLink(const QString& path)
{
    QByteArray text(4096, '\0');
    const auto length = ::readlink(QFile::encodeName(path).constData(), text.data(),
                                   static_cast<std::size_t>(text.size() - 1));
    return text.left(static_cast<int>(qMax<ssize_t>(length, 0)));
}

/// The link itself, with the text it has: a relative one within the folder leads to the copies.
bool copyLink(const QString& source, const QString& target, Walk& walk)
{
    const QByteArray text = textOfLink(source);
    const bool isThere = !text.isEmpty() && textOfLink(target) == text;
    if (!isThere && ::symlink(text.constData(), QFile::encodeName(target).constData()) != 0)
        return false;
    walk.copied << source;
    return true;
}

bool copyEntries(const QString& source, const QString& target, Walk& walk);

bool copyFolder(const QFileInfo& entry, const QString& target, Walk& walk)
{
    if (!walk.rules.recursive)
        return true;
    if (entry.isSymLink())
        return copyLink(entry.filePath(), target, walk);
    return (QFileInfo(target).isDir() || QDir().mkdir(target)) && copyEntries(entry.filePath(), target, walk);
}

bool copyEntry(const QFileInfo& entry, const QString& target, const CopiesInto& folder, Walk& walk)
{
    if (entry.isDir())
        return copyFolder(entry, target, walk);
    if (!walk.rules.suffixes.isEmpty() && !walk.rules.suffixes.contains(entry.suffix()))
        return true;
    if (entry.isSymLink() && !entry.exists())
        return copyLink(entry.filePath(), target, walk);
    // A pipe or a device has no content to copy, and opening it might never end.
    return entry.isFile() && copyFile(entry.filePath(), target, folder, walk);
}

bool copyEntries(const QString& source, const QString& target, Walk& walk)
{
    const auto entries = entriesOf(nativePath(source)); // before the new folder, which may lie among them
    const CopiesInto folder(target);
    bool whole = entries.has_value();
    for (const fs::directory_entry& found : entries.value_or(Entries())) {
        const QFileInfo entry(QFile::decodeName(found.path().c_str()));
        whole = copyEntry(entry, target + QLatin1Char('/') + entry.fileName(), folder, walk) && whole;
    }
    return whole;
}

bool removeFolder(const fs::path& folder)
{
    const auto entries = entriesOf(folder);
    if (!entries)
        return false; // and what is no folder stays
    bool whole = true;
    std::error_code error;
    for (const fs::directory_entry& entry : *entries) {
        const bool isRemoved =
            isRealFolder(entry) ? removeFolder(entry.path()) : fs::remove(entry.path(), error);
        whole = isRemoved && whole;
    }
    return fs::remove(folder, error) && whole;
}

bool removeAll(const QStringList& files)
{
    bool whole = true;
    for (const QString& file : files)
        whole = QFile::remove(file) && whole;
    return whole;
}

} // namespace

bool copy(const QString& source, const QString& target, const CopyRules& rules)
{
    if (!QFileInfo(source).isDir() || !QFileInfo(target).isDir())
        return false;
    // Into itself a copy would never end, and onto itself it would replace each file by nothing.
    if (rules.recursive ? isWithin(target, source) : QFileInfo(target) == QFileInfo(source))
        return false;
    Walk walk{rules, {}};
    const bool whole = copyEntries(QDir(source).absolutePath(), QDir(target).absolutePath(), walk);
    if (!rules.removeSource || walk.copied.isEmpty())
        return whole;
    return waitForDisk(target) && removeAll(walk.copied) && whole;
}

bool waitForDisk(const QString& folder)
{
    const int descriptor = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return false;
    const bool isDone = ::syncfs(descriptor) == 0;
    ::close(descriptor);
    return isDone;
}

bool remove(const QString& path)
{
    if (path.isEmpty())
        return false; // would be the working directory
    const QString folder = QDir(path).absolutePath();
    if (QFileInfo(folder).isSymLink())
        return QFile::remove(folder);
    return removeFolder(nativePath(folder));
}

qint64 size(const QString& path)
{
    const QFileInfo info(path);
    if (!info.isDir())
        return info.isFile() ? info.size() : 0;
    qint64 sum = 0;
    QDirIterator files(path, QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        files.next();
        sum += files.fileInfo().size();
    }
    return sum;
}

bool isWithin(const QString& path, const QString& folder)
{
    const QString inner = QFileInfo(path).canonicalFilePath() + QLatin1Char('/');
    return inner.startsWith(QFileInfo(folder).canonicalFilePath() + QLatin1Char('/'));
}

} // namespace TEKLUVA::FileTree
