#include "globals/settings/IniCodec_p.h"

#include "globals/settings/IniText_p.h"
#include "globals/system/System_p.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace TEKLUVA::IniCodec {

using IniText::escapedKey;
using IniText::isBlank;
using IniText::isLineEnd;
using IniText::isPairOfLineEnds;
using IniText::Position;
using IniText::SEPARATOR;
using IniText::unescapedKey;

namespace {

constexpr const char* GENERAL = "General";        ///< the section of the keys without a group
constexpr const char* GENERAL_GROUP = "%General"; ///< the section of the group with that name

/// Of the names of sections before all keys.
constexpr QString::size_type MOST_SECTION_CHARACTERS = 64'000'000;

/// Finds the lines and what they say.
class LineReader
{
public:
    explicit LineReader(const QByteArray& content)
        : m_content(content)
        , m_isUtf8(content.startsWith("\xef\xbb\xbf"))
        , m_end(m_isUtf8 ? 3 : 0)
    {
    }

    std::optional<std::vector<Line>> read()
    {
        std::vector<Line> lines;
        QString::size_type characters = 0;
        while (findLine()) {
            Line line = at(m_begin) == '[' ? readSection() : readEntry();
            characters += line.sectionLength;
            if (characters > MOST_SECTION_CHARACTERS)
                return std::nullopt;
            if (line.isEntry || line.isDamaged)
                lines.push_back(std::move(line));
        }
        return lines;
    }

private:
    char at(Position position) const { return m_content[position]; }

    /// Past blank lines and comments, to the next line; false at the end of the file.
    bool findLine()
    {
        m_begin = m_end;
        skipSpace();
        while (m_begin < m_content.size() && at(m_begin) == ';') {
            while (m_begin < m_content.size() && !isLineEnd(at(m_begin)))
                ++m_begin;
            skipSpace();
        }
        findEnd();
        return m_begin < m_content.size();
    }

    void skipSpace()
    {
        while (m_begin < m_content.size() && (isBlank(at(m_begin)) || isLineEnd(at(m_begin))))
            ++m_begin;
    }

    /// To the line end or comment that no quotes are around and no backslash is before, and past the first
    /// equals sign.
    void findEnd()
    {
        bool isQuoted = false;
        m_equals = -1;
        for (m_end = m_begin; m_end < m_content.size(); ++m_end) {
            const char c = at(m_end);
            if (c == '"')
                isQuoted = !isQuoted;
            else if (c == '\\')
                m_end += isPairOfLineEnds(m_content, m_end + 1) ? 2 : 1;
            else if (c == '=' && !isQuoted && m_equals < 0)
                m_equals = m_end;
            else if ((c == ';' || isLineEnd(c)) && !isQuoted)
                break;
        }
        m_end = std::min(m_end, m_content.size());
    }

    QByteArray part(Position begin, Position end) const { return m_content.mid(begin, end - begin); }

    Line readSection()
    {
        Line line;
        line.begin = m_begin;
        const QByteArray head = part(m_begin + 1, m_end);
        const auto bracket = head.indexOf(']');
        line.isDamaged = bracket < 0;
        const QByteArray name = head.mid(0, bracket).trimmed(); // all of it without a bracket
        if (name.compare(GENERAL, Qt::CaseInsensitive) == 0)
            m_section.clear();
        else if (name.compare(GENERAL_GROUP, Qt::CaseInsensitive) == 0)
            m_section = QString::fromLatin1(name.mid(1)) + SEPARATOR;
        else
            m_section = unescapedKey(name) + SEPARATOR;
        return line;
    }

    Line readEntry()
    {
        Line line;
        line.begin = m_begin;
        line.isEntry = m_equals >= 0;
        // Zeros are written as escapes. A file that has any is a binary one, or in another encoding.
        const char* const begin = m_content.constData() + m_begin;
        const char* const end = m_content.constData() + m_end;
        line.isDamaged = !line.isEntry || std::find(begin, end, '\0') != end;
        if (!line.isEntry)
            return line;
        Position keyEnd = m_equals;
        while (keyEnd > m_begin && isBlank(at(keyEnd - 1)))
            --keyEnd;
        line.key = m_section + unescapedKey(part(m_begin, keyEnd));
        line.value = IniValue(part(m_equals + 1, m_end), m_isUtf8);
        line.sectionLength = m_section.size();
        return line;
    }

    const QByteArray m_content;
    const bool m_isUtf8;
    Position m_begin = 0;   ///< of the line
    Position m_equals = -1; ///< its first equals sign
    Position m_end;
    QString m_section; ///< what stands before its keys
};

QByteArray headOf(const QString& section)
{
    QByteArray name = section.isEmpty() ? QByteArray(GENERAL) : escapedKey(section);
    if (!section.isEmpty() && name.compare(GENERAL, Qt::CaseInsensitive) == 0)
        name.prepend('%');
    return '[' + name + ']' + System::LINE_END;
}

void appendEntry(QByteArray& content, const QString& key, const IniValue& value)
{
    content += escapedKey(key) + '=';
    const char* separator = "";
    for (const QString& text : value.texts()) {
        content += separator;
        IniText::appendEscaped(content, text);
        separator = ", ";
    }
    content += System::LINE_END;
}

} // namespace

std::optional<std::vector<Line>> read(const QByteArray& content)
{
    auto lines = LineReader(content).read();
    // "[General] a\b=1" and "[a] b=2" have the same key. QSettings reads section by section.
    const auto hasGroup = [](const Line& line) {
        return line.key.indexOf(SEPARATOR, line.sectionLength) >= 0;
    };
    if (lines && std::any_of(lines->begin(), lines->end(), hasGroup)) {
        std::stable_sort(lines->begin(), lines->end(), [](const Line& line, const Line& other) {
            return line.sectionLength < other.sectionLength;
        });
    }
    return lines;
}

QList<int> lineNumbers(const QByteArray& content, const std::vector<Position>& positions)
{
    QList<int> numbers;
    const char* seen = content.constData();
    auto number = std::ptrdiff_t{1};
    for (const Position position : positions) {
        number += std::count(seen, content.constData() + position, '\n');
        seen = content.constData() + position;
        numbers << static_cast<int>(number);
    }
    return numbers;
}

std::optional<QByteArray> write(const IniValues& values)
{
    QString::size_type characters = 0;
    // The order of the keys is not that of the sections: "a b/c" comes before "a/c". And "/a" is "a" in a
    // file.
    QMap<QString, QMap<QString, const IniValue*>> sections;
    for (auto value = values.begin(); value != values.end(); ++value) {
        const auto separator = std::max<QString::size_type>(value.key().indexOf(SEPARATOR), 0);
        characters += separator + 1;
        sections[value.key().left(separator)].insert(value.key().mid(separator > 0 ? separator + 1 : 0),
                                                     &*value);
    }
    if (characters > MOST_SECTION_CHARACTERS)
        return std::nullopt;
    QByteArray content;
    for (auto section = sections.begin(); section != sections.end(); ++section) {
        content += (content.isEmpty() ? "" : System::LINE_END) + headOf(section.key());
        for (auto value = section->begin(); value != section->end(); ++value)
            appendEntry(content, value.key(), **value);
    }
    return content;
}

} // namespace TEKLUVA::IniCodec
