#pragma once

#include <QString>
#include <QVariant>

/// Faults of Qt's INI files, measured on real machines, and what keeps our users' settings from inheriting
/// them. hasRoom() and removeAbandonedLock() belong right before a QSettings::sync() that has something to
/// write.
namespace TEKLUVA::SettingsGuard {

/// On a full disk QSettings puts an empty or cut file in the place of the good one and reports success,
/// because its commit ignores the failed flush. So room for the whole new file is reserved beside the old one
/// and given back before Qt writes. Somebody else may still fill the disk in between; that gap is some
/// microseconds wide.
///
/// \p addedBytes is what the changes take at most, see sizeInFile(). In doubt the answer is yes: other
/// failures, such as a folder that may not be written, are met by Qt without harm to the file.
[[nodiscard]] bool hasRoom(const QString& settingsFile, qint64 addedBytes);

/// The most bytes that \p group, \p key and \p value can take in the file.
qint64 sizeInFile(const QString& group, const QString& key, const QVariant& value);

/// A process killed while it writes leaves its lock file behind. One that names a dead process Qt removes
/// itself, but one without content makes the next writer wait for half a minute. So a lock file is removed
/// that nobody holds and that has no content.
void removeAbandonedLock(const QString& settingsFile);

/// Whether \p value, as Qt has read it, can be used. A damaged date becomes one in a time zone that is none,
/// and whoever compares or writes it ends the process. Dates in lists are stored without a zone.
[[nodiscard]] bool isSound(const QVariant& value);

} // namespace TEKLUVA::SettingsGuard
