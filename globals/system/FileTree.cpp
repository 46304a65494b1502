#include "globals/system/FileTree_p.h"

#include "globals/system/Descriptor_p.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <new>
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

    /// An older file stays until the new one is on disk.
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

/// A link that was copied.
struct Link
{
    QString source;
    QString target;
    bool isNew; ///< was not there before
};

/// What a copy of a tree has to do.
struct Walk
{
    const CopyRules& rules;
    const QString source; ///< canonical
    const QString target;
    QStringList copied = {}; ///< sources that are to be removed
    std::vector<Link> links = {};
};

QString canonical(const QString& path)
{
    return QFileInfo(path).canonicalFilePath();
}

bool isWithinOneOf(const QString& path, const QStringList& folders)
{
    return std::any_of(folders.begin(), folders.end(),
                       [&path](const QString& folder) { return isWithin(path, folder); });
}

/// Broken links included.
bool exists(const QString& path)
{
    std::error_code error;
    return fs::exists(fs::symlink_status(nativePath(path), error));
}

/// Whether \p target is to be written; nothing when nobody could answer.
std::optional<bool> mayWrite(const QString& source, const QString& target, const CopyRules& rules)
{
    return exists(target) ? rules.mayReplace(source, target) : true;
}

bool copyFile(const QString& source, const QString& target, const CopiesInto& folder, Walk& walk)
{
    const bool replaces = exists(target);
    const std::optional<bool> isMeant = mayWrite(source, target, walk.rules);
    if (!isMeant.value_or(false))
        return isMeant.has_value();
    if (!(replaces ? folder.replace(source, target) : folder.copy(source, target)))
        return false;
    walk.copied << source;
    return true;
}

/// The link itself, with the text it has: a relative one within the folder leads to the copies. Whether it
/// does can be told when they are there.
bool copyLink(const QString& source, const QString& target, Walk& walk)
{
    std::error_code error;
    const fs::path text = fs::read_symlink(nativePath(source), error);
    const bool isThere =
        !text.empty() && fs::read_symlink(nativePath(target), error).native() == text.native();
    if (!isThere)
        fs::create_symlink(text, nativePath(target), error);
    if (error)
        return false;
    walk.links.push_back({source, target, !isThere});
    return true;
}

/// Whether one of \p folders is on the way to the existing \p path, at whichever of its links: without that
/// folder nothing would be found there.
bool leadsThrough(const fs::path& path, const QStringList& folders)
{
    std::error_code error;
    fs::path here; // has no links in it
    for (const fs::path& name : path) {
        const fs::path step = here / name;
        const fs::path text = fs::read_symlink(step, error);
        if (!text.empty() && leadsThrough(here / text, folders))
            return true;
        here = fs::canonical(step, error);
        if (isWithinOneOf(QFile::decodeName(here.c_str()), folders))
            return true;
    }
    return false;
}

/// Whether the copy leads where the link does, or to the copy of that, and still will when the sources are
/// gone. One that led nowhere is as good as it was.
bool leadsOn(const Link& link, const Walk& walk)
{
    const QString place = canonical(link.source);
    if (place.isEmpty())
        return true;
    QStringList gone = walk.rules.deletedLater;
    if (walk.rules.removeSource)
        gone << walk.source;
    const QString reached = canonical(link.target);
    const QString copy =
        isWithin(place, walk.source) ? canonical(walk.target + place.mid(walk.source.size())) : place;
    return !reached.isEmpty() && (reached == place || reached == copy)
           && !leadsThrough(nativePath(link.target), gone);
}

/// Behind all copies, so that their order does not matter. A link that leads astray is taken back.
bool finishLinks(Walk& walk)
{
    const auto astray = std::stable_partition(walk.links.begin(), walk.links.end(),
                                              [&walk](const Link& link) { return leadsOn(link, walk); });
    std::for_each(walk.links.begin(), astray, [&walk](const Link& link) { walk.copied << link.source; });
    std::for_each(astray, walk.links.end(), [](const Link& link) {
        if (link.isNew)
            QFile::remove(link.target);
    });
    return astray == walk.links.end();
}

bool copyEntries(const QString& source, const QString& target, Walk& walk);

bool copyFolder(const QFileInfo& entry, const QString& target, Walk& walk)
{
    if (!walk.rules.recursive)
        return true;
    if (entry.isSymLink())
        return copyLink(entry.filePath(), target, walk);
    // What is there may be a link into the source, in which a copy would never end.
    const bool isMeant = QFileInfo(target).isDir()
                             ? !isWithinOneOf(target, QStringList(walk.source) + walk.rules.deletedLater)
                             : QDir().mkdir(target);
    return isMeant && copyEntries(entry.filePath(), target, walk);
}

bool copyEntry(const QFileInfo& entry, const QString& target, const CopiesInto& folder, Walk& walk)
{
    if (entry.isDir())
        return copyFolder(entry, target, walk);
    if (!walk.rules.suffixes.isEmpty() && !walk.rules.suffixes.contains(entry.suffix()))
        return true;
    if (entry.isSymLink() && !entry.exists())
        return copyLink(entry.filePath(), target, walk);
    if (entry.filePath() == walk.rules.leftOut)
        return true;
    // A pipe or a device has no content to copy, and opening it might never end.
    return entry.isFile() && copyFile(entry.filePath(), target, folder, walk);
}

bool copyEntries(const QString& source, const QString& target, Walk& walk)
{
    // Also where a folder is mounted twice: each file would replace itself and then be removed as its source.
    std::error_code error;
    if (fs::equivalent(nativePath(source), nativePath(target), error))
        return false;
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
    if (rules.recursive && isWithin(target, source))
        return false; // would never end
    Walk walk{rules, canonical(source), QDir(target).absolutePath()};
    bool whole = copyEntries(QDir(source).absolutePath(), walk.target, walk);
    whole = finishLinks(walk) && whole;
    if (!rules.removeSource || walk.copied.isEmpty())
        return whole;
    return waitForDisk(target) && removeAll(walk.copied) && whole;
}

bool copyFile(const QString& source, const QString& target, const CopyRules& rules)
{
    const std::optional<bool> isMeant = mayWrite(source, target, rules);
    if (!isMeant.value_or(false))
        return isMeant.has_value();
    return CopiesInto(QFileInfo(target).path()).replace(source, target);
}

std::optional<QByteArray> contentOf(const QString& path)
{
    // A QByteArray keeps a header and an end beside its bytes. Of a larger file readAll() would return
    // nothing, without an error.
    constexpr qint64 LARGEST = std::numeric_limits<int>::max() - 64;
    QFile file(path);
    const bool isFile = QFileInfo(path).isFile(); // a device might never end
    if (!isFile || !file.open(QIODevice::ReadOnly) || file.size() > LARGEST)
        return std::nullopt;
    try {
        const QByteArray content = file.readAll();
        return file.error() == QFileDevice::NoError ? std::make_optional(content) : std::nullopt;
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

bool waitForDisk(const QString& folder)
{
    const Descriptor descriptor(
        ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return descriptor.isOpen() && ::syncfs(descriptor.get()) == 0;
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
    return (canonical(path) + QLatin1Char('/')).startsWith(canonical(folder) + QLatin1Char('/'));
}

} // namespace TEKLUVA::FileTree
