#pragma once

#include <QList>
#include <QMap>
#include <QSettings>
#include <QVariant>

#include <array>
#include <optional>

namespace TEKLUVA {

/// A value set, or removed where it has none. An empty key stands for the whole group, an empty group for the
/// whole file.
struct SettingsChange
{
    QString group;
    QString key;
    std::optional<QVariant> value;
};

/// What is different whenever a file has been written, replaced, removed or given other permissions: device,
/// inode, size, and the times of the last change of content and inode in nanoseconds. All 0 for no file.
using FileStamp = std::array<qint64, 5>;

/// A settings file in which a change is either on disk or kept here, pending, and never half way: QSettings
/// gets to know a change only when there is room to write it. What QSettings knows it may write at any time,
/// also from another object over the same file, and on a full disk it would ruin the file (see
/// SettingsGuard).
///
/// Not thread-safe: Settings serialises its use. Qt's own write in the event loop, which would come from the
/// main thread without that lock, is switched off.
class SettingsFile : public QSettings
{
    Q_DISABLE_COPY(SettingsFile)

public:
    SettingsFile(const QString& path, QSettings::Format format, QObject* parent);
    /// Tries once more to write what is pending.
    ~SettingsFile() override;

    /// Writes \p changes, with whatever is pending, to disk at once. False when all of that stays pending.
    bool change(const QList<SettingsChange>& changes);
    bool isPending() const { return !m_pending.isEmpty(); }

    /// Tries for the last time to write what is pending and forgets it, so that it cannot overwrite what a
    /// later store writes.
    void letGo();

    /// Takes over what other processes have written, and tries again to write what is pending. As long as
    /// nobody has touched the file this costs one look at its inode.
    void refresh();

    /// \name Queries
    /// The state with all changes, pending ones included.
    /// @{
    QVariant valueOf(const QString& group, const QString& key);
    bool hasKey(const QString& group, const QString& key);
    QVariantMap valuesOf(const QString& group);
    QStringList keysOf(const QString& group);
    QStringList groupsOf(const QString& group);
    /// @}

protected:
    bool event(QEvent* event) override;

private:
    using Values = QMap<QString, QVariant>; ///< by full key

    void keepPending(const SettingsChange& change);
    bool writePending();
    /// Lets QSettings take over what has changed in the file; false for one that cannot be read.
    bool reload();
    bool writeToFile();
    /// Leaves out of the file what must not be written again, see SettingsGuard::isSound().
    void dropUnsound();
    bool stillFails() const;
    /// The value of \p key in the current group; invalid for one that cannot be used.
    QVariant soundValue(const QString& key) const;
    void apply(const SettingsChange& change);
    Values withPending() const;

    QList<SettingsChange> m_pending;
    const QByteArray m_path; ///< in the local 8-bit encoding
    FileStamp m_seen;        ///< the file before it was last synced
};

} // namespace TEKLUVA
