#include "globals/settings/IniText_p.h"

#include <algorithm>
#include <iterator>

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

/// Reads the texts of one value, from left to right.
class TextReader
{
public:
    TextReader(const QByteArray& bytes, bool isUtf8)
        : m_bytes(bytes)
        , m_isUtf8(isUtf8)
    {
    }

    QStringList read()
    {
        skipBlanks();
        while (m_at < m_bytes.size()) {
            switch (m_bytes[m_at]) {
            case '\\':
                ++m_at;
                readEscape();
                break;
            case '"':
                ++m_at;
                readQuote();
                break;
            case ',':
                readComma();
                break;
            default:
                readPlain();
            }
        }
        finishText();
        return m_texts;
    }

private:
    void skipBlanks()
    {
        while (m_at < m_bytes.size() && isBlank(m_bytes[m_at]))
            ++m_at;
    }

    void finishText()
    {
        m_texts << m_text;
        m_text = QString();
        m_wasQuoted = false;
    }

    void readQuote()
    {
        m_wasQuoted = true;
        m_isQuoted = !m_isQuoted;
        if (!m_isQuoted)
            skipBlanks();
    }

    void readComma()
    {
        if (m_isQuoted) {
            readPlain();
            return;
        }
        ++m_at;
        finishText();
        skipBlanks();
    }

    void readPlain()
    {
        const auto isSpecial = [](char c) { return c == '\\' || c == '"' || c == ','; };
        const char* begin = m_bytes.constData() + m_at;
        const char* end = std::find_if(begin + 1, m_bytes.constEnd(), isSpecial);
        m_at += static_cast<int>(end - begin);
        const bool isLast = end == m_bytes.constEnd() || *end == ',';
        while (isLast && !m_wasQuoted && end > begin && isBlank(end[-1]))
            --end;
        const int size = static_cast<int>(end - begin);
        m_text += m_isUtf8 ? QString::fromUtf8(begin, size) : QString::fromLatin1(begin, size);
    }

    /// One of an unknown name is nothing.
    void readEscape()
    {
        if (m_at == m_bytes.size())
            return;
        const char name = m_bytes[m_at];
        const auto* known = std::find_if(std::begin(ESCAPES), std::end(ESCAPES),
                                         [name](const Escape& escape) { return escape.name == name; });
        if (isDigit(static_cast<uchar>(name), 8)) {
            readCode(8);
            return;
        }
        m_at += isPairOfLineEnds(m_bytes, m_at) ? 2 : 1;
        if (known != std::end(ESCAPES))
            m_text += QLatin1Char(known->character);
        else if (name == 'x' && m_at < m_bytes.size() && isDigit(static_cast<uchar>(m_bytes[m_at]), 16))
            readCode(16);
    }

    /// As many digits as there are.
    void readCode(int base)
    {
        uint code = 0;
        for (; m_at < m_bytes.size() && isDigit(static_cast<uchar>(m_bytes[m_at]), base); ++m_at) {
            const auto c = static_cast<uint>(m_bytes[m_at]);
            code = code * static_cast<uint>(base) + (c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10);
        }
        m_text += QChar(static_cast<ushort>(code));
    }

    const QByteArray m_bytes;
    const bool m_isUtf8;
    int m_at = 0;
    bool m_isQuoted = false;
    bool m_wasQuoted = false; ///< somewhere in this text, whose blanks are its own then
    QString m_text;
    QStringList m_texts;
};

} // namespace

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

bool isLineEnd(char c)
{
    return c == '\n' || c == '\r';
}

bool isPairOfLineEnds(const QByteArray& bytes, int at)
{
    return at + 1 < bytes.size() && isLineEnd(bytes[at]) && isLineEnd(bytes[at + 1])
           && bytes[at] != bytes[at + 1];
}

QByteArray escapedKey(const QString& key)
{
    QByteArray escaped;
    escaped.reserve(key.size());
    for (const QChar character : key) {
        const ushort code = character.unicode();
        const int digits = code > 0xff ? 4 : 2;
        if (isPlainInKeys(code))
            escaped += static_cast<char>(code);
        else if (character == SEPARATOR)
            escaped += '\\';
        else
            escaped += (code > 0xff ? "%U" : "%")
                       + QByteArray::number(code, 16).toUpper().rightJustified(digits, '0');
    }
    return escaped;
}

QString unescapedKey(const QByteArray& text)
{
    QString key;
    key.reserve(text.size());
    for (int i = 0; i < text.size(); ++i) {
        if (text[i] == '%' && i + 1 < text.size()) {
            const bool isLong = text[i + 1] == 'U';
            const int begin = i + (isLong ? 2 : 1);
            const int end = begin + (isLong ? 4 : 2);
            bool isNumber = false;
            const int code = end <= text.size() ? text.mid(begin, end - begin).toInt(&isNumber, 16) : 0;
            if (isNumber) {
                key += QChar(static_cast<ushort>(code));
                i = end - 1;
                continue;
            }
        }
        key += text[i] == '\\' ? SEPARATOR : QLatin1Char(text[i]);
    }
    return key;
}

QStringList unescapedTexts(const QByteArray& bytes, bool isUtf8)
{
    return TextReader(bytes, isUtf8).read();
}

void appendEscaped(QByteArray& line, const QString& text)
{
    const int begin = line.size();
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
