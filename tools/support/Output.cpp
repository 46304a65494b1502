#include "support/Output.h"

#include "support/Console.h"
#include "support/Table.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <limits>
#include <utility>

namespace globalsctl {

namespace {

/// Of the last write that failed.
int writeError = 0;

/// A failure is kept until flushResults() asks.
void print(StandardStream stream, const QByteArray& bytes)
{
    if (!write(stream, bytes))
        writeError = errno;
}

/// As Unicode counts them. Millions of characters are asked about.
bool isControl(QChar c)
{
    const ushort code = c.unicode();
    return code < 0x20 || (code >= 0x7f && code < 0xa0);
}

bool isUpperControl(QChar c)
{
    return isControl(c) && c >= QLatin1Char('\x7f');
}

bool isControlInLine(QChar c)
{
    return isControl(c) && c != QLatin1Char('\n') && c != QLatin1Char('\t');
}

/// \p text with an \p escape in place of each character for which \p isBad holds. "%1" in the escape becomes
/// the character's code, with \p digits hexadecimal digits.
QString withEscapes(const QString& text, bool (*isBad)(QChar), const QString& escape, int digits)
{
    if (std::none_of(text.begin(), text.end(), isBad))
        return text;
    QString shown;
    for (const QChar c : text)
        shown += isBad(c) ? escape.arg(c.unicode(), digits, 16, QLatin1Char('0')) : QString(c);
    return shown;
}

QString printableLines(const QString& text)
{
    return withEscapes(text, &isControlInLine, QStringLiteral("\\x%1"), 2);
}

/// The version of what docs/json.md describes. A member more is no new version.
constexpr int SCHEMA = 1;

QString jsonOf(QJsonObject answer, QJsonDocument::JsonFormat format)
{
    answer.insert(QStringLiteral("schema"), SCHEMA);
    // Qt leaves the upper control characters of names as they are.
    const QString text = QString::fromUtf8(QJsonDocument(answer).toJson(format)).trimmed();
    return withEscapes(text, &isUpperControl, QStringLiteral("\\u%1"), 4);
}

/// Asked for each line, of which there may be millions.
bool isResultOnTerminal()
{
    static const bool isOnTerminal = isTerminal(StandardStream::Output);
    return isOnTerminal;
}

} // namespace

void printResult(const QString& text)
{
    print(StandardStream::Output, (isResultOnTerminal() ? printableLines(text) : text).toUtf8() + '\n');
}

void printAnswer(QJsonObject answer)
{
    printResult(jsonOf(std::move(answer), QJsonDocument::Indented));
}

void printAnswerInLine(QJsonObject answer)
{
    printResult(jsonOf(std::move(answer), QJsonDocument::Compact));
}

void printTable(const QList<QStringList>& rows)
{
    printResult(aligned(rows, resultColumns()));
}

void printBytes(const QByteArray& bytes)
{
    print(StandardStream::Output, bytes);
}

bool flushResults()
{
    if (std::fflush(stdout) != 0)
        writeError = errno;
    return std::ferror(stdout) == 0;
}

QString reasonOfResults()
{
    return reasonOf(writeError);
}

void printNote(const QString& text)
{
    print(StandardStream::Error, printableLines(text).toUtf8() + '\n');
}

void printError(const QString& message)
{
    printNote(QStringLiteral("globalsctl: ") + printable(message));
}

QString printable(const QString& text)
{
    return withEscapes(text, &isControl, QStringLiteral("\\x%1"), 2);
}

bool isReadableText(const QString& text)
{
    return std::none_of(text.begin(), text.end(),
                        [](QChar c) { return isControl(c) && !QStringLiteral("\t\r\n\f").contains(c); });
}

bool isReadableText(const QByteArray& bytes)
{
    const QString text = QString::fromUtf8(bytes.constData(), bytes.size());
    return text.toUtf8() == bytes && isReadableText(text);
}

int resultColumns()
{
    return isResultOnTerminal() ? terminalColumns(StandardStream::Output) : std::numeric_limits<int>::max();
}

} // namespace globalsctl
