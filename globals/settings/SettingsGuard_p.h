#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <optional>

/// Faults of Qt's INI files, measured on real machines, and what keeps our users' settings from inheriting
/// them. hasRoom() and removeAbandonedLock() belong right before a QSettings::sync() that has something to
/// write.
namespace TEKLUVA::SettingsGuard {

/// On a full disk QSettings puts an empty or cut file in the place of the good one and reports success,
/// because its commit ignores the failed flush. So room for the whole new file is reserved beside the old one
/// and given back before Qt writes. Somebody else may still fill the disk in between; that gap is some
/// microseconds wide.
///
/// \p addedBytes is what the changes take at most, see sizeInFile(). The answer is no for a full and for a
/// failing disk; in doubt it is yes: other failures, such as a folder that may not be written, are met by Qt
/// without harm to the file.
[[nodiscard]] bool hasRoom(const QString& settingsFile, qint64 addedBytes);

/// The most bytes that \p group, \p key and \p value can take in the file.
qint64 sizeInFile(const QString& group, const QString& key, const QVariant& value);

/// A process killed while it writes leaves its lock file behind. One that names a dead process Qt removes
/// itself, but one without content makes the next writer wait for half a minute. So a lock file is removed
/// that nobody holds and that has no content.
void removeAbandonedLock(const QString& settingsFile);

/// Whether \p value can be used. A date that is damaged in the file becomes one in a time zone that is none,
/// as does one in a zone that the system does not know, and whoever compares or writes it ends the process.
/// So does a list or map that holds it.
[[nodiscard]] bool isSound(const QVariant& value);

/// The bytes of the file, none where there is none. Nothing when it cannot be read: QSettings takes such a
/// file for an empty one, and would write it as one.
[[nodiscard]] std::optional<QByteArray> contentOf(const QString& settingsFile);

/// Whether \p content, of a settings file, has a key.
[[nodiscard]] bool hasKeys(const QByteArray& content);

/// Makes QSettings read the file again, which it does when the file's time has changed.
void makeNewer(const QString& settingsFile);

} // namespace TEKLUVA::SettingsGuard
