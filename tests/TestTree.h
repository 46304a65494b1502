#pragma once

#include "TestFiles.h"

#include <QTest>

#include <algorithm>

/// What lies on the disk, in one notation, with blanks between the entries: "folder/file=content",
/// "empty-folder/", "link@text-of-the-link", "pipe~", "file-of-zeros*size". In names, contents and arguments
/// "+" is a blank, %E4 a byte and HERE the folder that all is in; "-" alone is an empty argument.
namespace TestTree {

inline QByteArrayList wordsIn(const QString& text)
{
    QByteArrayList words;
    const QString there = QString(text).replace(QLatin1String("HERE"), QDir::currentPath());
    for (const QString& word : there.split(QLatin1Char(' '), Qt::SkipEmptyParts))
        words << QByteArray::fromPercentEncoding(
            word == QLatin1String("-") ? "" : word.toUtf8().replace('+', ' '));
    return words;
}

inline QByteArray sorted(QByteArrayList words)
{
    std::sort(words.begin(), words.end());
    return words.join(' ');
}

/// Makes what is missing of \p tree in the working folder, on Windows without links and pipes.
inline void make(const QString& tree)
{
    namespace fs = std::filesystem;
    for (const QByteArray& word : wordsIn(tree)) {
        const std::string entry = word.toStdString();
        const std::size_t end = entry.find_first_of("=@~*");
        const char kind = end == std::string::npos ? '/' : entry[end];
        const fs::path path = fs::absolute(fs::u8path(entry.substr(0, end)));
        fs::create_directories(path.parent_path());
        if (kind == '=')
            QVERIFY(TestFiles::write(path, word.mid(int(end) + 1)));
        else if (kind == '@' && TestPlatform::IS_UNIX)
            fs::create_symlink(fs::u8path(entry.substr(end + 1)), path);
        else if (kind == '*')
            std::ofstream(path).seekp(std::stoll(entry.substr(end + 1)) - 1).put(0);
        else if (kind == '~' && TestPlatform::IS_UNIX)
            QVERIFY(TestFiles::makePipe(path));
    }
}

/// All that lies in the working folder; folders only where they are empty.
inline QByteArray tree()
{
    QByteArrayList words;
    const TestFiles::Tree entries = TestFiles::treeBelow();
    for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
        const bool isFolder = entry.key().endsWith('/');
        if (!isFolder || std::next(entry) == entries.end() || !std::next(entry).key().startsWith(entry.key()))
            words << entry.key() + *entry;
    }
    return sorted(words);
}

} // namespace TestTree
