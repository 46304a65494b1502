#include "globals/FileTree_p.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>
#include <filesystem>
#include <optional>
#include <unistd.h>

namespace TEKLUVA::FileTree {

namespace {

/// All entries of a folder, hidden ones and broken links included; nothing when it cannot be read to its end,
/// which Qt's iterator takes for its end. A list, because the folder changes meanwhile.
std::optional<QList<QFileInfo>> entriesOf(const QString& folder)
{
    std::error_code error;
    std::filesystem::directory_iterator walk(QFile::encodeName(folder).toStdString(), error);
    QList<QFileInfo> entries;
    for (; !error && walk != std::filesystem::directory_iterator(); walk.increment(error))
        entries << QFileInfo(QFile::decodeName(walk->path().c_str()));
    return error ? std::nullopt : std::make_optional(entries);
}

bool isRealFolder(const QFileInfo& entry)
{
    return entry.isDir() && !entry.isSymLink();
}

/// The old target stays until the new one is whole, which is made in a folder of its own beside it.
bool replaceWhole(const QString& source, const QString& target)
{
    const QTemporaryDir beside(QFileInfo(target).path() + QLatin1String("/copy-XXXXXX"));
    const QString copy = beside.filePath(QStringLiteral("copy"));
    return beside.isValid() && QFile::copy(source, copy)
           && std::rename(QFile::encodeName(copy).constData(), QFile::encodeName(target).constData()) == 0;
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
    if (!(replaces ? replaceWhole(source, target) : QFile::copy(source, target)))
        return false;
    return !rules.removeSource || QFile::remove(source);
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
bool copyLink(const QString& source, const QString& target, const CopyRules& rules)
{
    const QByteArray text = textOfLink(source);
    const bool isThere = !text.isEmpty() && textOfLink(target) == text;
    if (!isThere && ::symlink(text.constData(), QFile::encodeName(target).constData()) != 0)
        return false;
    return !rules.removeSource || QFile::remove(source);
}

bool copyEntries(const QString& source, const QString& target, const CopyRules& rules);

bool copyFolder(const QFileInfo& entry, const QString& target, const CopyRules& rules)
{
    if (!rules.recursive)
        return true;
    if (entry.isSymLink())
        return copyLink(entry.filePath(), target, rules);
    return (QFileInfo(target).isDir() || QDir().mkdir(target))
           && copyEntries(entry.filePath(), target, rules);
}

bool copyEntry(const QFileInfo& entry, const QString& target, const CopyRules& rules)
{
    if (entry.isDir())
        return copyFolder(entry, target, rules);
    if (!rules.suffixes.isEmpty() && !rules.suffixes.contains(entry.suffix()))
        return true;
    if (entry.isSymLink() && !entry.exists())
        return copyLink(entry.filePath(), target, rules);
    // A pipe or a device has no content to copy, and opening it might never end.
    return entry.isFile() && copyFile(entry.filePath(), target, rules);
}

bool copyEntries(const QString& source, const QString& target, const CopyRules& rules)
{
    const auto entries = entriesOf(source);
    bool whole = entries.has_value();
    for (const QFileInfo& entry : entries.value_or(QList<QFileInfo>()))
        whole = copyEntry(entry, target + QLatin1Char('/') + entry.fileName(), rules) && whole;
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
    return copyEntries(QDir(source).absolutePath(), QDir(target).absolutePath(), rules);
}

bool remove(const QString& path)
{
    if (path.isEmpty())
        return false; // would be the working directory
    const QString folder = QDir(path).absolutePath();
    if (QFileInfo(folder).isSymLink())
        return QFile::remove(folder);
    const auto entries = entriesOf(folder);
    bool whole = entries.has_value();
    for (const QFileInfo& entry : entries.value_or(QList<QFileInfo>())) {
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
