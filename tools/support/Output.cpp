#include "support/Output.h"

#include "support/Console.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QVector>

#include <algorithm>
#include <cerrno>
#include <cstdio>

namespace globalsctl {

namespace {

/// Of the last write that failed.
int writeError = 0;

void write(std::FILE* stream, const QByteArray& bytes)
{
    // A failure stays with the stream until flushResults() asks.
    const auto size = static_cast<std::size_t>(bytes.size());
    if (std::fwrite(bytes.constData(), 1, size, stream) < size)
        writeError = errno;
}

bool isControl(QChar c)
{
    return c.category() == QChar::Other_Control;
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
    QString shown;
    for (const QChar c : text)
        shown += isBad(c) ? escape.arg(c.unicode(), digits, 16, QLatin1Char('0')) : QString(c);
    return shown;
}

QString printableLines(const QString& text)
{
    return withEscapes(text, &isControlInLine, QStringLiteral("\\x%1"), 2);
}

QString textOf(const QJsonDocument& document)
{
    // Qt leaves the upper control characters of names as they are.
    const QString text = QString::fromUtf8(document.toJson(QJsonDocument::Indented)).trimmed();
    return withEscapes(text, &isUpperControl, QStringLiteral("\\u%1"), 4);
}

QVector<int> columnWidths(const QList<QStringList>& rows)
{
    QVector<int> widths;
    for (const QStringList& row : rows) {
        widths.resize(qMax(widths.size(), row.size()));
        for (int column = 0; column < row.size(); ++column)
            widths[column] = qMax(widths[column], row[column].size());
    }
    return widths;
}

} // namespace

void printResult(const QString& text)
{
    write(stdout, (isTerminal(StandardStream::Output) ? printableLines(text) : text).toUtf8() + '\n');
}

void printResult(const QJsonArray& array)
{
    printResult(textOf(QJsonDocument(array)));
}

void printResult(const QJsonObject& object)
{
    printResult(textOf(QJsonDocument(object)));
}

void printBytes(const QByteArray& bytes)
{
    write(stdout, bytes);
}

bool flushResults()
{
    if (std::fflush(stdout) != 0)
        writeError = errno;
    return std::ferror(stdout) == 0;
}

QString reasonOfResults()
{
    return qt_error_string(writeError);
}

void printNote(const QString& text)
{
    write(stderr, printableLines(text).toUtf8() + '\n');
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

QString aligned(const QList<QStringList>& rows)
{
    const QVector<int> widths = columnWidths(rows);
    QStringList lines;
    for (QStringList row : rows) {
        for (int column = 0; column < row.size() - 1; ++column)
            row[column] = row[column].leftJustified(widths[column]);
        lines << row.join(QStringLiteral("  "));
    }
    return lines.join(QLatin1Char('\n'));
}

} // namespace globalsctl
