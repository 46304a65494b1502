#pragma once

#include "TestPlatform.h"

#include <QDir>
#include <QMap>

#include <filesystem>
#include <fstream>

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
        : path(TestPlatform::pathOf(text))
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
    std::ofstream file(static_cast<const std::filesystem::path&>(path), std::ios::binary);
    return bool(file.write(content.constData(), content.size()).flush());
}

/// The content of a file; nothing if it cannot be read, or is larger than what Qt 5 can read.
inline QByteArray contentOf(const Path& path)
{
    QFile file(TestPlatform::textOf(path));
    const bool isReadable = file.open(QIODevice::ReadOnly) && file.size() < qint64{1} << 31;
    return isReadable ? file.readAll() : QByteArray();
}

/// The same with the line ends of Unix, on all systems.
inline QByteArray textOf(const Path& path)
{
    return contentOf(path).replace("\r\n", "\n");
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
    return TestPlatform::makePipe(path);
}

/// What lies below a folder, by path.
using Tree = QMap<QByteArray, QByteArray>;

/// All that lies below a folder: "=" and the content of a file, "@" and the text of a link, "~" for
/// a pipe or a device. The path of a folder ends in "/".
inline Tree treeBelow(const Path& folder = ".")
{
    Tree tree;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        const auto path =
            QByteArray::fromStdString(entry.path().lexically_relative(folder).generic_u8string());
        if (entry.is_symlink())
            tree[path] =
                '@' + QByteArray::fromStdString(std::filesystem::read_symlink(entry).generic_u8string());
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
