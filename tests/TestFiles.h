#pragma once

#include <QDir>
#include <QMap>

#include <filesystem>
#include <fstream>
#include <sys/stat.h>

/// Files as tests make and look at them, without the library.
namespace TestFiles {

/// A path as tests have it: a text of Qt, or one of the standard library.
class Path : public std::filesystem::path
{
public:
    using path::path;
    Path(path standard)
        : path(std::move(standard))
    {
    }
    Path(const QString& text)
        : path(QFile::encodeName(text).toStdString())
    {
    }
};

/// Writes a whole file, in a folder that is made if it is missing. An older file is removed and not cut to
/// nothing, after which ext4 would wait for the disk.
[[nodiscard]] inline bool write(const Path& path, const QByteArray& content)
{
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
    std::filesystem::create_directories(path.parent_path(), ignored);
    std::ofstream file(path, std::ios::binary);
    return bool(file.write(content.constData(), content.size()).flush());
}

/// The content of a file; nothing if it cannot be read, or is larger than what Qt 5 can read.
inline QByteArray contentOf(const Path& path)
{
    QFile file(QFile::decodeName(path.c_str()));
    const bool isReadable = file.open(QIODevice::ReadOnly) && file.size() < qint64{1} << 31;
    return isReadable ? file.readAll() : QByteArray();
}

/// All names in a folder, in their order.
inline QStringList names(const QString& folder = QStringLiteral("."))
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                  QDir::Name);
}

/// Leaves nothing in the working folder.
inline void removeAll()
{
    for (const auto& entry : std::filesystem::directory_iterator("."))
        std::filesystem::remove_all(entry);
}

/// Makes a pipe, unless there is one.
[[nodiscard]] inline bool makePipe(const Path& path)
{
    return std::filesystem::is_fifo(path) || mkfifo(path.c_str(), 0600) == 0;
}

/// The files that this process holds open.
inline int openDescriptors()
{
    return static_cast<int>(
        QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::AllEntries | QDir::System).size());
}

/// What lies below a folder, by path.
using Tree = QMap<QByteArray, QByteArray>;

/// All that lies below a folder: "=" and the content of a file, "@" and the text of a link, "~" for
/// a pipe or a device. The path of a folder ends in "/".
inline Tree treeBelow(const Path& folder = ".")
{
    Tree tree;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        const QByteArray path = entry.path().lexically_relative(folder).c_str();
        if (entry.is_symlink())
            tree[path] = QByteArray("@") + std::filesystem::read_symlink(entry).c_str();
        else if (entry.is_directory())
            tree[path + '/'] = QByteArray();
        else
            tree[path] = entry.is_regular_file() ? '=' + contentOf(entry.path()) : "~";
    }
    return tree;
}

/// What is new or differs; "-" stands before what is gone.
inline Tree changes(const Tree& before, Tree after)
{
    for (auto entry = before.begin(); entry != before.end(); ++entry) {
        if (!after.contains(entry.key()))
            after['-' + entry.key()] = QByteArray();
        else if (after[entry.key()] == *entry)
            after.remove(entry.key());
    }
    return after;
}

} // namespace TestFiles
