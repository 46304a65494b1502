#include "support/Suggestion.h"

#include <QVector>

#include <algorithm>
#include <numeric>

namespace globalsctl {

namespace {

/// How many characters must be changed, added or left out to make \p a of \p b.
int editDistance(const QString& a, const QString& b)
{
    QVector<int> row(b.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    for (const QChar character : a) {
        int diagonal = row[0]++;
        for (int j = 0; j < b.size(); ++j) {
            const int replaced = diagonal + (character == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.last();
}

} // namespace

QString closestTo(const QString& word, const QStringList& known)
{
    // A third of the characters may be wrong, and one of a short word.
    auto best = qMax<QString::size_type>(1, word.size() / 3) + 1;
    QString closest;
    for (const QString& candidate : known) {
        if (qAbs(word.size() - candidate.size()) >= best)
            continue; // so many must be added or left out
        const int distance = editDistance(word.toLower(), candidate.toLower());
        if (distance < best) {
            best = distance;
            closest = candidate;
        }
    }
    return closest;
}

QString suggestion(const QString& word, const QStringList& known)
{
    const QString closest = closestTo(word, known);
    return closest.isEmpty() ? QString() : QStringLiteral(" (did you mean \"%1\"?)").arg(closest);
}

} // namespace globalsctl
