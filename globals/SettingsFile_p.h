#pragma once

#include <QSettings>

namespace TEKLUVA {

/// A QSettings that cannot lose the user's file.
///
/// Qt's own writer for INI files has two faults that were measured on real machines:
///
/// - On a full disk it puts an empty or cut file in the place of the good one and reports success, because
/// its
///   commit ignores the failed flush. Here room for the whole file is reserved and given back before each
///   sync that writes. Without room nothing is written: the file stays whole, the change stays pending in
///   memory and is tried again with the next access. Somebody else may still fill the disk between the test
///   and the write; that gap is some microseconds wide.
/// - A process killed while it writes leaves its lock file behind, and a lock file without content blocks the
///   next writer for half a minute. Here one that nobody holds and that is empty or names a dead process is
///   removed first.
///
/// Qt also writes unasked: when control returns to the event loop and in the destructor. The first is
/// switched off, since Settings flushes each change itself, in the caller's thread and under its lock. Before
/// the second a store whose changes do not fit is set aside, see release().
///
/// Not thread-safe: Settings serialises its use.
class SettingsFile : public QSettings
{
    Q_DISABLE_COPY(SettingsFile)

public:
    SettingsFile(const QString& path, QSettings::Format format, QObject* parent);

    /// Flushes changes to disk that make the file at most \p addedBytes longer. False when they stay pending.
    bool writeBack(qint64 addedBytes);

    /// Takes over what other processes have written; first flushes what is still pending, if it fits.
    void refresh();

    /// Lets the store go with deleteLater(). When changes are pending that do not fit on the disk it is kept
    /// until the process ends instead, because its destructor would write them, over the good file.
    static void release(SettingsFile* store);

    /// The most bytes that \p group, \p key and \p value can take in the file.
    static qint64 sizeInFile(const QString& group, const QString& key, const QVariant& value);

protected:
    bool event(QEvent* event) override;

private:
    bool stillFails() const;
    bool setAsideUnlessWritten();

    bool m_pending = false;
    qint64 m_pendingBytes = 0;
};

} // namespace TEKLUVA
