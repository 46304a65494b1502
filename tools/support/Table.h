#pragma once

#include <QList>
#include <QStringList>

#include <limits>

namespace globalsctl {

/// A line for each of \p rows, with its cells in columns that are two blanks apart. Where the lines would be
/// longer than \p width characters, the widest columns are narrowed and their cells go over several lines.
QString aligned(const QList<QStringList>& rows, int width = std::numeric_limits<int>::max());

} // namespace globalsctl
