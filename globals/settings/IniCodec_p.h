#pragma once

#include "globals/settings/IniValue_p.h"

#include <QByteArray>
#include <QList>

#include <optional>
#include <vector>

/// The dialect of INI files that QSettings writes, read and written byte for byte as Qt 5.15 does.
///
/// The name of a section stands before each of its keys in memory, but once in a file: 100 KB can stand for
/// gigabytes. Where these names take more than 64 million characters, a file is neither read nor written.
namespace TEKLUVA::IniCodec {

/// A line with a key and a value, or one that is damaged, or both. It may go over several lines of the file,
/// by line ends in quotes or after a backslash.
struct Line
{
    QByteArray::size_type begin = 0; ///< its position in the content
    bool isDamaged = false;
    bool isEntry = false; ///< has what follows
    QString key;          ///< with the section, "Group/key"
    QString::size_type sectionLength = 0;
    IniValue value;
};

/// All but section heads, empty lines and comments. Where two lines have the same key the later one counts.
std::optional<std::vector<Line>> read(const QByteArray& content);

/// The numbers, from 1, of the lines of \p content in which \p positions are, which ascend.
QList<int> lineNumbers(const QByteArray& content, const std::vector<QByteArray::size_type>& positions);

/// Sections and keys come in the order of their characters.
std::optional<QByteArray> write(const IniValues& values);

} // namespace TEKLUVA::IniCodec
