#include "globals/settings/IniText_p.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace TEKLUVA::IniText {

namespace {

bool isDigit(ushort c, int base)
{
    const ushort letter = c | 0x20;
    return (c >= '0' && c < '0' + std::min(base, 10)) || (base == 16 && letter >= 'a' && letter <= 'f');
}

struct Escape
{
    char name;
    char character;
};

/// Those that are written, then those that are read only.
constexpr Escape ESCAPES[] = {{'a', '\a'}, {'b', '\b'}, {'f', '\f'},  {'n', '\n'}, {'r', '\r'}, {'t', '\t'},
                              {'v', '\v'}, {'"', '"'},  {'\\', '\\'}, {'?', '?'},  {'\'', '\''}};
constexpr int WRITTEN_ESCAPES = 9;

bool isPlainInKeys(ushort c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '-'
           || c == '.';
}

/// The position after the blanks at \p at.
Position skipBlanks(const QByteArray& bytes, Position at)
{
    while (at < bytes.size() && isBlank(bytes[at]))
        ++at;
    return at;
}

/// Adds the character that the digits at \p at stand for, as many as there are; the position after them.
Position readCode(const QByteArray& bytes, Position at, int base, QString& text)
{
    uint code = 0;
    for (; at < bytes.size() && isDigit(static_cast<uchar>(bytes[at]), base); ++at) {
        const uint c = static_cast<uchar>(bytes[at]);
        code = code * static_cast<uint>(base) + (c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10);
    }
    text += QChar(static_cast<ushort>(code));
    return at;
}

/// Adds what the escape stands for that has its name at \p at, and nothing for an unknown one; the position
/// after it.
Position readEscape(const QByteArray& bytes, Position at, QString& text)
{
    if (at == bytes.size())
        return at;
    const char name = bytes[at];
    if (isDigit(static_cast<uchar>(name), 8))
        return readCode(bytes, at, 8, text);
    if (name == 'x' && at + 1 < bytes.size() && isDigit(static_cast<uchar>(bytes[at + 1]), 16))
        return readCode(bytes, at + 1, 16, text);
    const auto* known = std::find_if(std::begin(ESCAPES), std::end(ESCAPES),
                                     [name](const Escape& escape) { return escape.name == name; });
    if (known != std::end(ESCAPES))
        text += QLatin1Char(known->character);
    return at + (isPairOfLineEnds(bytes, at) ? 2 : 1);
}

/// Adds what needs no escape; the position after it.
Position readPlain(const QByteArray& bytes, Position at, bool keepsBlanks, bool isUtf8, QString& text)
{
    const auto isSpecial = [](char c) { return c == '\\' || c == '"' || c == ','; };
    const char* begin = bytes.constData() + at;
    const char* end = std::find_if(begin + 1, bytes.constEnd(), isSpecial);
    const auto size = static_cast<Position>(end - begin);
    auto kept = size;
    const bool isLast = end == bytes.constEnd() || *end == ',';
    while (isLast && !keepsBlanks && kept > 0 && isBlank(begin[kept - 1]))
        --kept;
    text += isUtf8 ? QString::fromUtf8(begin, kept) : QString::fromLatin1(begin, kept);
    return at + size;
}

/// Adds the character that "%41" or "%U20ac" at \p at stands for; the position after it, or \p at where there
/// is no such number.
Position readKeyCode(const QByteArray& bytes, Position at, QString& key)
{
    if (bytes[at] != '%') // most characters
        return at;
    const bool isLong = at + 1 < bytes.size() && bytes[at + 1] == 'U';
    const Position begin = at + (isLong ? 2 : 1);
    const Position end = begin + (isLong ? 4 : 2);
    bool isNumber = false;
    const int code = bytes.mid(begin, end - begin).toInt(&isNumber, 16);
    if (end > bytes.size() || !isNumber)
        return at;
    key += QChar(static_cast<ushort>(code));
    return end;
}

} // namespace

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

bool isLineEnd(char c)
{
    return c == '\n' || c == '\r';
}

bool isPairOfLineEnds(const QByteArray& bytes, Position at)
{
    return at + 1 < bytes.size() && isLineEnd(bytes[at]) && isLineEnd(bytes[at + 1])
           && bytes[at] != bytes[at + 1];
}

QByteArray escapedKey(const QString& key)
{
    QByteArray escaped;
    escaped.reserve(key.size());
    for (QString::size_type i = 0; i < key.size(); ++i) {
        const ushort code = key[i].unicode();
        const int digits = code > 0xff ? 4 : 2;
        if (isPlainInKeys(code))
            escaped += static_cast<char>(code);
        else if (key[i] == SEPARATOR && i + 1 < key.size()) // at the end it would escape the equals sign
            escaped += '\\';
        else
            escaped += (code > 0xff ? "%U" : "%")
                       + QByteArray::number(code, 16).toUpper().rightJustified(digits, '0');
    }
    return escaped;
}

QString unescapedKey(const QByteArray& bytes)
{
    QString key;
    key.reserve(bytes.size());
    for (Position at = 0; at < bytes.size();) {
        const Position end = readKeyCode(bytes, at, key);
        if (end == at)
            key += bytes[at] == '\\' ? SEPARATOR : QLatin1Char(bytes[at]);
        at = end == at ? at + 1 : end;
    }
    return key;
}

QStringList unescapedTexts(const QByteArray& bytes, bool isUtf8)
{
    QStringList texts;
    QString text;
    bool isQuoted = false;
    bool wasQuoted = false; // somewhere in this text, whose blanks are its own then
    Position at = skipBlanks(bytes, 0);
    while (at < bytes.size()) {
        if (bytes[at] == '\\') {
            at = readEscape(bytes, at + 1, text);
        } else if (bytes[at] == '"') {
            wasQuoted = true;
            isQuoted = !isQuoted;
            at = isQuoted ? at + 1 : skipBlanks(bytes, at + 1);
        } else if (bytes[at] == ',' && !isQuoted) {
            texts << std::exchange(text, QString());
            wasQuoted = false;
            at = skipBlanks(bytes, at + 1);
        } else {
            at = readPlain(bytes, at, wasQuoted, isUtf8, text);
        }
    }
    return texts << text;
}

void appendEscaped(QByteArray& line, const QString& text)
{
    const auto begin = line.size();
    bool needsQuotes = text.startsWith(QLatin1Char(' ')) || text.endsWith(QLatin1Char(' '));
    bool isCodeOpen = false; // a digit would belong to it
    for (const QChar character : text) {
        const ushort code = character.unicode();
        const auto* const known =
            std::find_if(ESCAPES, ESCAPES + WRITTEN_ESCAPES, [code](const Escape& escape) {
                return escape.character == static_cast<char>(code) && code < 0x80;
            });
        needsQuotes |= code == ';' || code == ',' || code == '=';
        const bool isCode = code < 0x20 || code >= 0x7f || (isCodeOpen && isDigit(code, 16));
        if (known != ESCAPES + WRITTEN_ESCAPES)
            (line += '\\') += known->name;
        else if (code == 0)
            line += "\\0";
        else if (isCode)
            line += "\\x" + QByteArray::number(code, 16);
        else
            line += static_cast<char>(code);
        isCodeOpen = isCode && known == ESCAPES + WRITTEN_ESCAPES;
    }
    if (needsQuotes)
        line.insert(begin, '"').append('"');
}

} // namespace TEKLUVA::IniText
