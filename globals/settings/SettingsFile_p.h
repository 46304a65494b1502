#pragma once

#include "globals/Settings.h"
#include "globals/settings/IniCodec_p.h"
#include "globals/system/System_p.h"

#include <QList>
#include <QSet>
#include <QSettings>

#include <chrono>
#include <optional>
#include <vector>

namespace TEKLUVA {

/// A settings file in which a change is either on disk or kept here, pending, and never half way. The file is
/// read and written here, as a whole, with every error seen. QSettings, which sees none, and which would wait
/// for ever for the writer of a pipe, only gets to know the files of formats that are registered with it.
///
/// Not thread-safe: Settings serialises its use.
class SettingsFile : public QSettings
{
    Q_DISABLE_COPY(SettingsFile)

public:
    SettingsFile(const QString& path, QSettings::Format format, QObject* parent);
    /// Tries once more to write what is pending, and logs it as lost when that fails.
    ~SettingsFile() override;

    /// Writes \p changes, with whatever is pending, to disk at once. False when all of that stays pending.
    bool change(const QList<SettingsChange>& changes);
    bool isPending() const { return !m_pending.removals.isEmpty() || !m_pending.values.isEmpty(); }

    /// Tries for the last time to write what is pending and forgets it, so that it cannot overwrite what a
    /// later store writes. False when it is lost.
    bool letGo();

    /// Takes over what other processes have written, and tries to write what is pending, but does not wait
    /// for that. As long as nobody has touched the file this costs one look at its inode.
    void refresh();

    /// Whether the file could be read when that was last tried. If not, the values are those from before.
    bool isReadable() const { return m_isReadable; }

    /// Empty where nothing is wrong.
    QString lastError() const { return m_isReadable && !isPending() ? QString() : m_reason; }

    /// \name Messages
    /// Of the last failure, with its reason. The \p outcome of a change is "lost", say.
    /// @{
    QString failureToWrite(const QString& outcome) const;
    QString failureToRead() const;
    /// @}

    /// \name Queries
    /// The state with all changes, pending ones included.
    /// @{
    QVariant valueOf(const QString& group, const QString& key) const;
    bool hasKey(const QString& group, const QString& key) const;
    QVariantMap valuesOf(const QString& group) const;
    QStringList keysOf(const QString& group) const;
    QStringList groupsOf(const QString& group) const;
    /// Of the group and its sub-groups, by full key.
    QVariantMap valuesBelow(const QString& group) const;
    /// @}

    /// The numbers of the lines in the file, as it is now, that are damaged or hold a value of an unknown
    /// type.
    QList<int> damagedLines();

private:
    /// Changes that are not on disk. The removals come first: a value that was set before one of them is not
    /// kept.
    struct Pending
    {
        QSet<QString> removals; ///< of these paths and all below them
        IniValues values;

        void add(const SettingsChange& change);
    };

    bool writePending(std::chrono::milliseconds patience);
    bool writeToFile(std::chrono::milliseconds patience);
    bool keepAside();
    template <typename Fill>
    bool replaceFile(const QString& path, Fill&& fill);
    void makeNewerThan(const System::FileStatus& before);
    bool mayBeReplaced();
    bool writeWithQt();
    bool reload();
    bool reloadWithQt();
    bool take(const QByteArray& content);
    bool fail(const QString& reason);
    bool failAsTooLarge();
    IniValues withPending() const;

    const bool m_isIni;
    const QString m_path;
    const System::Path m_place; ///< the same in the system's form
    QByteArray m_content;       ///< of the file, as last read or written
    bool m_isDamaged = false;   ///< some of it would be missing if the values were written
    /// The lines of the content of which only a closer look can tell whether they are damaged; none for
    /// content that was not read but written.
    std::optional<std::vector<IniCodec::Line>> m_doubtful;
    IniValues m_values; ///< those in it
    /// The file that has this content; none when it might have changed with the same times.
    std::optional<System::FileStatus> m_seen;
    Pending m_pending;
    bool m_isReadable = true;
    QString m_reason; ///< of the last failure
};

} // namespace TEKLUVA
