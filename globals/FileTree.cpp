#include "globals/FileTree_p.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <cstdio>
#include <unistd.h>

namespace TEKLUVA::FileTree {

namespace {

/// All entries of a folder, hidden ones and broken links included. A list, because the folder changes
/// meanwhile.
QList<QFileInfo> entriesOf(const QString& folder)
{
    QList<QFileInfo> entries;
    QDirIterator walk(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    while (walk.hasNext()) {
        walk.next();
        entries << walk.fileInfo();
    }
    return entries;
}

bool isRealFolder(const QFileInfo& entry)
{
    return entry.isDir() && !entry.isSymLink();
}

/// A link whose content cannot be copied in its place.
bool isFolderLink(const QFileInfo& entry)
{
    return entry.isSymLink() && !entry.isFile();
}

/// Qt's copy overlooks a disk that fills up with the last bytes, so the sizes are compared.
bool copyWhole(const QString& source, const QString& target)
{
    if (!QFile::copy(source, target))
        return false;
    if (QFileInfo(target).size() == QFileInfo(source).size())
        return true;
    QFile::remove(target);
    return false;
}

/// The old target stays until the new one is whole.
bool replaceWhole(const QString& source, const QString& target)
{
    const QString beside = target + QLatin1String(".new");
    QFile::remove(beside);
    if (!copyWhole(source, beside))
        return false;
    if (std::rename(QFile::encodeName(beside).constData(), QFile::encodeName(target).constData()) == 0)
        return true;
    QFile::remove(beside);
    return false;
}

bool exists(const QString& path)
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

bool copyFile(const QString& source, const QString& target, const CopyRules& rules)
{
    const bool replaces = exists(target);
    if (replaces && !rules.mayReplace(target))
        return true;
    if (!(replaces ? replaceWhole(source, target) : copyWhole(source, target)))
        return false;
    return !rules.removeSource || QFile::remove(source);
}

/// The link itself, with the text it has: a relative one within the folder leads to the copies.
bool copyLink(const QString& source, const QString& target, const CopyRules& rules)
{
    QByteArray text(4096, '\0');
    const auto length = ::readlink(QFile::encodeName(source).constData(), text.data(),
                                   static_cast<std::size_t>(text.size() - 1));
    if (length < 0 || exists(target)
        || ::symlink(text.constData(), QFile::encodeName(target).constData()) != 0)
        return false;
    return !rules.removeSource || QFile::remove(source);
}

bool copyEntries(const QString& source, const QString& target, const CopyRules& rules);

bool copyEntry(const QFileInfo& entry, const QString& target, const CopyRules& rules)
{
    const QString source = entry.filePath();
    if (isFolderLink(entry))
        return !rules.recursive || copyLink(source, target, rules);
    if (entry.isDir()) {
        if (!rules.recursive)
            return true;
        return (QFileInfo(target).isDir() || QDir().mkdir(target)) && copyEntries(source, target, rules);
    }
    if (!rules.suffixes.isEmpty() && !rules.suffixes.contains(entry.suffix()))
        return true;
    // A pipe or a device has no content to copy, and opening it might never end.
    return entry.isFile() && copyFile(source, target, rules);
}

bool copyEntries(const QString& source, const QString& target, const CopyRules& rules)
{
    bool whole = true;
    for (const QFileInfo& entry : entriesOf(source))
        whole = copyEntry(entry, target + QLatin1Char('/') + entry.fileName(), rules) && whole;
    return whole;
}

} // namespace

bool copy(const QString& source, const QString& target, const CopyRules& rules)
{
    // Into itself a copy would never end, and onto itself it would replace each file by nothing.
    if (!QFileInfo(source).isDir() || !QFileInfo(target).isDir() || isWithin(target, source))
        return false;
    return copyEntries(QDir(source).absolutePath(), QDir(target).absolutePath(), rules);
}

bool remove(const QString& path)
{
    if (path.isEmpty())
        return false; // would be the working directory
    const QString folder = QDir(path).absolutePath();
    if (QFileInfo(folder).isSymLink())
        return QFile::remove(folder);
    bool whole = true;
    for (const QFileInfo& entry : entriesOf(folder)) {
        const bool removed = isRealFolder(entry) ? remove(entry.filePath()) : QFile::remove(entry.filePath());
        whole = removed && whole;
    }
    return QDir().rmdir(folder) && whole;
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
