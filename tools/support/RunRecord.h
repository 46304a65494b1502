#pragma once

#include <QList>
#include <QStringList>

class QJsonObject;

namespace globalsctl {

/// \name What a settings file says of the last run
/// The verdict, the error code and what both mean, and when the application was last alive. A file that is
/// not there has no run recorded.
/// @{
QList<QStringList> rowsOfLastRun(const QString& settingsFile);
QJsonObject objectOfLastRun(const QString& settingsFile);
/// @}

} // namespace globalsctl
