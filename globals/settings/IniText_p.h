#pragma once

#include <QByteArray>
#include <QLatin1Char>
#include <QStringList>

/// The escapes of Qt's INI files: how keys and the texts of a value stand in a line.
namespace TEKLUVA::IniText {

/// In the bytes of a file.
using Position = QByteArray::size_type;

/// Between groups and keys. In the file it is a backslash.
constexpr QLatin1Char SEPARATOR('/');

bool isBlank(char c);
bool isLineEnd(char c);
/// "\r\n" or "\n\r", which are one line end.
bool isPairOfLineEnds(const QByteArray& bytes, Position at);

QByteArray escapedKey(const QString& key);
QString unescapedKey(const QByteArray& bytes);

/// Adds \p text to \p line, in quotes where it needs them.
void appendEscaped(QByteArray& line, const QString& text);
/// The text, or those between commas, that \p bytes stand for. Without UTF-8 each byte is a character.
QStringList unescapedTexts(const QByteArray& bytes, bool isUtf8);

} // namespace TEKLUVA::IniText
