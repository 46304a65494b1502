#pragma once

#include <QtGlobal>

#include <utility>

class QFile;
class QString;

/// Which file a path leads to: a file that was renamed is still the same.
namespace globalsctl::FileIdentity {

/// Equal for the same file; both numbers are 0 for what is not there.
using Identity = std::pair<quint64, quint64>;

Identity of(const QString& path);
Identity of(const QFile& openFile);

} // namespace globalsctl::FileIdentity
