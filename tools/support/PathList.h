#pragma once

#include <QList>
#include <QStringList>

class QJsonArray;

namespace globalsctl {

/// \name The folders of the application
/// After useFoldersOf(). The library takes the folder of this program for that of the application's; \p
/// program is that one, or empty when it is not known.
/// @{

/// A row for each path type, below one with headings.
QList<QStringList> rowsOfPaths(const QString& program);
QJsonArray arrayOfPaths(const QString& program);
/// @}

} // namespace globalsctl
