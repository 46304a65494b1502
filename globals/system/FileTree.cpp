#include "globals/system/FileTree_p.h"

#include "globals/AtomicFile.h"
#include "globals/Containment.h"
#include "globals/system/Folder_p.h"
#include "globals/system/LinkRules_p.h"
#include "globals/system/System_p.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <map>
#include <vector>

namespace TEKLUVA::FileTree {

namespace fs = std::filesystem;
using LinkRules::CopiedLink;
using System::nativePath;

namespace {

/// Dangling links included.
bool exists(const QString& path)
{
    std::error_code error;
    return fs::exists(fs::symlink_status(nativePath(path), error));
}

/// A link in the place of \p target is replaced, not followed: it may lead back to the source.
bool copyContent(const QString& source, const QString& target, AtomicFile::Durability durability)
{
    AtomicFile copy(target, AtomicFile::Link::Replaced);
    return copy.copyFrom(nativePath(source)) && copy.commit(durability);
}

/// The copy of one tree.
class TreeCopy
{
public:
    TreeCopy(const QString& source, const QString& target, const CopyRules& rules)
        : m_rules(rules)
        , m_tree{QFileInfo(source).canonicalFilePath(), QDir(target).absolutePath(), rules.deletedLater}
    {
        if (rules.removeSource)
            m_tree.deletedLater << m_tree.source;
    }

    /// Copies what is in the folder \p source into the folder \p target.
    bool copyEntries(const QString& source, const QString& target);
    /// Takes back the links that lead astray. After all copies, so that their order does not matter.
    bool checkLinks();
    /// Waits until all copies are on disk.
    bool sync() const;
    bool removeSources() const;

    bool hasSources() const { return !m_copied.isEmpty(); }

private:
    bool copyEntry(const QFileInfo& entry, System::EntryKind kind, const QString& target);
    bool copyChosenFile(const QString& source, const QString& target);
    bool copyFile(const QString& source, const QString& target);
    bool copyLink(const QString& source, const QString& target);
    bool copyFolder(const QFileInfo& entry, bool isLink, const QString& target);
    /// By its suffix.
    bool isChosen(const QString& source) const;
    bool isUsableFolder(const QString& target) const;

    const CopyRules& m_rules;
    LinkRules::CopiedTree m_tree;
    QStringList m_copied; ///< sources that are to be removed
    /// By device, a folder on each file system that was written to: folders of the target may lie on others.
    std::map<quint64, QString> m_fileSystems;
    std::vector<CopiedLink> m_links;
};

bool TreeCopy::copyEntries(const QString& source, const QString& target)
{
    // Also where a folder is mounted twice: each file would replace itself and then be removed as its source.
    std::error_code error;
    if (fs::equivalent(nativePath(source), nativePath(target), error))
        return false;
    m_fileSystems.emplace(System::statusOf(nativePath(target), error).device, target);
    const auto entries = System::entriesOf(nativePath(source), error);
    bool isWhole = !error;
    for (const System::FolderEntry& found : entries) {
        const QString name = QLatin1Char('/') + System::textOf(found.name);
        const bool isCopied = found.kind == System::EntryKind::File
                                  ? copyChosenFile(source + name, target + name)
                                  : copyEntry(QFileInfo(source + name), found.kind, target + name);
        isWhole = isCopied && isWhole;
    }
    return isWhole;
}

bool TreeCopy::isChosen(const QString& source) const
{
    return m_rules.suffixes.isEmpty() || m_rules.suffixes.contains(QFileInfo(source).suffix());
}

bool TreeCopy::copyEntry(const QFileInfo& entry, System::EntryKind kind, const QString& target)
{
    // Not QFileInfo::isSymLink(), which is true of shortcuts on Windows and not of all its links.
    const bool isLink = kind == System::EntryKind::Link;
    if (entry.isDir())
        return copyFolder(entry, isLink, target);
    if (kind == System::EntryKind::Folder)
        return !m_rules.recursive; // its name is no text, or nobody may look at it
    if (isLink && !entry.exists())
        return !isChosen(entry.filePath()) || copyLink(entry.filePath(), target);
    // A pipe or a device has no content to copy, and opening it might never end.
    if (!entry.isFile())
        return !isChosen(entry.filePath());
    return copyChosenFile(entry.filePath(), target);
}

bool TreeCopy::copyChosenFile(const QString& source, const QString& target)
{
    return !isChosen(source) || source == m_rules.leftOut || copyFile(source, target);
}

bool TreeCopy::copyFile(const QString& source, const QString& target)
{
    auto durability = AtomicFile::Durability::Later;
    if (!System::CAN_SYNC_FILE_SYSTEMS)
        durability = AtomicFile::Durability::OnDisk;
    if (exists(target)) {
        const Overwrite overwrite = m_rules.onExisting(source, target);
        if (overwrite != Overwrite::Replace)
            return overwrite == Overwrite::Keep;
        durability = AtomicFile::Durability::OnDisk; // the older file stays until the new one is
    }
    if (!copyContent(source, target, durability))
        return false;
    m_copied << source;
    return true;
}

bool TreeCopy::copyLink(const QString& source, const QString& target)
{
    CopiedLink link{source, target, false};
    if (!LinkRules::copyText(source, target, link.isNew))
        return false;
    m_links.push_back(link);
    return true;
}

bool TreeCopy::copyFolder(const QFileInfo& entry, bool isLink, const QString& target)
{
    if (!m_rules.recursive)
        return true;
    if (isLink)
        return copyLink(entry.filePath(), target);
    return isUsableFolder(target) && copyEntries(entry.filePath(), target);
}

/// Makes the folder \p target if need be.
bool TreeCopy::isUsableFolder(const QString& target) const
{
    if (!QFileInfo(target).isDir() && QDir().mkdir(target))
        return true;
    if (!QFileInfo(target).isDir()) // another process may just have made it
        return false;
    // It may be a link into the source, in which a copy would never end, or into what is going to be deleted.
    const auto holdsTarget = [&target](const QString& folder) { return isWithin(target, folder); };
    return !isWithin(target, m_tree.source)
           && std::none_of(m_tree.deletedLater.begin(), m_tree.deletedLater.end(), holdsTarget);
}

bool TreeCopy::checkLinks()
{
    bool isWhole = true;
    for (const CopiedLink& link : m_links) {
        if (LinkRules::stillResolves(link, m_tree)) {
            m_copied << link.source;
            continue;
        }
        isWhole = false;
        if (link.isNew)
            QFile::remove(link.target);
    }
    return isWhole;
}

bool TreeCopy::sync() const
{
    return std::all_of(m_fileSystems.begin(), m_fileSystems.end(),
                       [](const auto& fileSystem) { return syncFolder(fileSystem.second); });
}

bool TreeCopy::removeSources() const
{
    bool isWhole = true;
    for (const QString& file : m_copied) {
        const bool isRemoved = QFile::remove(file);
        isWhole = isRemoved && isWhole;
    }
    return isWhole;
}

/// Removes what is in \p folder, as far as possible. What stays keeps the folder from being removed.
void removeEntries(const System::Folder& folder)
{
    std::error_code error;
    for (const System::FolderEntry& entry : folder.entries(error)) {
        if (entry.kind == System::EntryKind::Folder)
            removeEntries(folder.openInside(entry.name, error));
        static_cast<void>(folder.remove(entry));
    }
}

bool removeFolder(const fs::path& path)
{
    std::error_code error;
    const System::Folder folder = System::Folder::open(path, error);
    if (error)
        return false; // and what is no folder stays
    removeEntries(folder);
    return fs::remove(path, error);
}

/// What a link leads to counts.
qint64 sizeOfFile(const System::Folder& folder, const fs::path& name)
{
    std::error_code error;
    const System::FileStatus status = folder.statusOf(name, error);
    return !error && status.kind == System::FileKind::Regular ? status.size : 0;
}

/// 0 for a folder that cannot be read.
qint64 sizeOfEntries(const System::Folder& folder)
{
    std::error_code error;
    qint64 sum = 0;
    for (const System::FolderEntry& entry : folder.entries(error)) {
        const bool isFolder = entry.kind == System::EntryKind::Folder;
        sum +=
            isFolder ? sizeOfEntries(folder.openInside(entry.name, error)) : sizeOfFile(folder, entry.name);
    }
    return sum;
}

} // namespace

bool copy(const QString& source, const QString& target, const CopyRules& rules)
{
    if (!QFileInfo(source).isDir() || !QFileInfo(target).isDir())
        return false;
    if (rules.recursive && isWithin(target, source))
        return false; // would never end
    TreeCopy tree(source, target, rules);
    const bool isCopied = tree.copyEntries(QDir(source).absolutePath(), QDir(target).absolutePath());
    const bool isWhole = tree.checkLinks() && isCopied;
    const bool willSourcesGo = (rules.removeSource && tree.hasSources()) || !rules.deletedLater.isEmpty();
    if (willSourcesGo && !tree.sync())
        return false;
    const bool isRemoved = !rules.removeSource || tree.removeSources();
    return isRemoved && isWhole;
}

bool copyFile(const QString& source, const QString& target, const CopyRules& rules)
{
    const Overwrite overwrite = exists(target) ? rules.onExisting(source, target) : Overwrite::Replace;
    if (overwrite != Overwrite::Replace)
        return overwrite == Overwrite::Keep;
    return copyContent(source, target, AtomicFile::Durability::OnDisk);
}

bool syncFolder(const QString& folder)
{
    std::error_code error;
    const auto handle = System::FileHandle::openForReading(nativePath(folder), error);
    return !error && !handle.syncFileSystem();
}

bool remove(const QString& path)
{
    if (path.isEmpty())
        return false; // would be the working directory
    const fs::path folder = nativePath(QDir(path).absolutePath());
    std::error_code error;
    return System::isLink(folder) ? fs::remove(folder, error) : removeFolder(folder);
}

qint64 size(const QString& path)
{
    const QFileInfo info(path);
    if (!info.isDir())
        return info.isFile() ? info.size() : 0;
    std::error_code error;
    return sizeOfEntries(System::Folder::open(nativePath(path), error));
}

} // namespace TEKLUVA::FileTree
