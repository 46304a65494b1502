#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

class QFile;

/// What the tool asks of the operating system's files beyond Qt and std::filesystem.
namespace globalsctl::FileSystem {

/// Which file a path leads to: a file that was renamed is still the same. Equal for the same file; both
/// numbers are 0 for what is not there.
using Identity = std::pair<quint64, quint64>;

Identity identityOf(const QString& path);
Identity identityOf(const QFile& openFile);

/// Whether other users can read the file. False where its permissions do not tell.
bool isReadableByOthers(const QFile& file);

std::filesystem::path nativePath(const QString& path);

/// \name Entries of archives
/// Their names are bytes.
/// @{
QByteArray entryName(const QString& text);
QString textOfEntry(const QByteArray& name);
/// A relative path for a name in which faultOfEntry() finds nothing.
std::filesystem::path pathOfEntry(const std::string& name);
/// Why no file of this system can have the \p name, to be put after it; empty for a good one.
QString faultOfEntry(const std::string& name);
/// @}

/// Whether \p reason is that the disk, or a share of it, has no room.
bool isWantOfRoom(const std::error_code& reason);

} // namespace globalsctl::FileSystem
