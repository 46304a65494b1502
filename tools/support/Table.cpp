#include "support/Table.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace globalsctl {

namespace {

const auto GAP = QStringLiteral("  ");

/// In characters, one for each column.
using Widths = std::vector<int>;

int sizeOf(const QString& text)
{
    return static_cast<int>(text.size());
}

Widths naturalWidths(const QList<QStringList>& rows)
{
    Widths widths;
    for (const QStringList& row : rows) {
        widths.resize(std::max(widths.size(), static_cast<std::size_t>(row.size())));
        for (int column = 0; column < row.size(); ++column)
            widths[std::size_t(column)] = std::max(widths[std::size_t(column)], sizeOf(row[column]));
    }
    return widths;
}

/// Takes from the widest columns what a line of \p total characters has no room for.
void narrow(Widths& widths, int total)
{
    constexpr int NARROWEST = 8;
    const int gaps = sizeOf(GAP) * (static_cast<int>(widths.size()) - 1);
    qint64 excess = std::accumulate(widths.begin(), widths.end(), qint64{gaps}) - total;
    while (excess-- > 0) {
        const auto widest = std::max_element(widths.begin(), widths.end());
        if (*widest <= NARROWEST)
            return;
        --*widest;
    }
}

int firstWord(const QString& text)
{
    int at = 0;
    while (at < text.size() && text[at] == QLatin1Char(' '))
        ++at;
    return at;
}

/// Where a line of \p text that begins at \p begin ends: at a blank, or after a "/", or in the middle of what
/// is longer than a line.
int lineEnd(const QString& text, int begin, int width)
{
    const int wordBegin = begin == 0 ? firstWord(text) : begin;
    const int blank = static_cast<int>(text.lastIndexOf(QLatin1Char(' '), begin + width));
    if (blank > wordBegin)
        return blank;
    const int separator = static_cast<int>(text.lastIndexOf(QLatin1Char('/'), begin + width - 1));
    return separator > wordBegin ? separator + 1 : begin + width;
}

QStringList wrapped(const QString& text, int width)
{
    QStringList lines;
    int begin = 0;
    while (sizeOf(text) - begin > width) {
        const int end = lineEnd(text, begin, width);
        lines << text.mid(begin, end - begin);
        begin = end < text.size() && text[end] == QLatin1Char(' ') ? end + 1 : end;
    }
    return lines << text.mid(begin);
}

/// The lines of one row.
QStringList linesOf(const QStringList& row, const Widths& widths)
{
    std::vector<QStringList> cells;
    int count = 1;
    for (int column = 0; column < row.size(); ++column) {
        cells.push_back(wrapped(row[column], widths[std::size_t(column)]));
        count = std::max(count, static_cast<int>(cells.back().size()));
    }
    QStringList lines;
    for (int i = 0; i < count; ++i) {
        QString line;
        for (std::size_t column = 0; column + 1 < cells.size(); ++column)
            line += cells[column].value(i).leftJustified(widths[column]) + GAP;
        lines << (cells.empty() ? line : line + cells.back().value(i));
    }
    return lines;
}

} // namespace

QString aligned(const QList<QStringList>& rows, int width)
{
    Widths widths = naturalWidths(rows);
    narrow(widths, width);
    QStringList lines;
    for (const QStringList& row : rows)
        lines << linesOf(row, widths);
    return lines.join(QLatin1Char('\n'));
}

} // namespace globalsctl
