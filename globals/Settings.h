#pragma once

#include "globals/globals_export.h"

#include <QList>
#include <QSettings>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <memory>
#include <optional>

namespace TEKLUVA {

/// A value set, or removed where it has none. An empty key stands for the whole group with its sub-groups, an
/// empty group for the top level; a change of both removes everything.
struct SettingsChange
{
    QString group;
    QString key;
    std::optional<QVariant> value;
};

/// A thread-safe store of values by group and key, in a file of Qt's INI format that other programs may read
/// and write by QSettings at the same time.
///
/// Each change is on disk when the call returns, or the file stays as it was: an error with the reason goes
/// to the active log, and the change stays pending. It is seen by reads of this process and written with the
/// next access that can. What is still pending when the store ends is lost, with another error. A change
/// waits up to five seconds for another process that writes; a process that was killed while it wrote holds
/// nobody up for more than a second.
///
/// A single value is read after taking over what other processes have written; the other queries answer from
/// memory.
///
/// Nothing in the file can do harm. A value that is damaged, or of a type that is read at the reader's risk
/// (a pen, an image), reads as invalid and stays in the file. Lines that are none, and files in other
/// encodings, are kept whole as "<file>.damaged", the next ones with a number, before the first change is
/// written. A file of more than 64 MiB is neither read nor written, nor one whose keys, each with its group,
/// would take gigabytes.
///
/// Formats that were registered with QSettings are read and written by it, without these promises.
///
/// Thread-safe, except openSettingsFile() and whenPendingChanges(). Receivers of the active log's
/// contentChanged() may use the store. The functions of registered formats, and the stream operators of the
/// application's own types, must not: they run under its lock.
///
/// Use one object per file and process: one with pending changes writes them later, over what another has
/// written.
///
/// Ownership: the store belongs to its Qt parent and to this object, whichever ends first; without an open
/// store, and after the parent has gone, every operation does nothing and returns the empty value of its
/// type.
class GLOBALS_EXPORT Settings
{
public:
    Settings();
    Settings(const QString& path, QSettings::Format format, QObject* parent);
    /// Shares the other object's store but not its lock: the two do not exclude each other. The store ends
    /// with the first of them to end, and the other does nothing from then on.
    Settings(const Settings& other);
    Settings& operator=(const Settings&) = delete;
    ~Settings();

    /// Opens \p path in the place of any store open before.
    void openSettingsFile(const QString& path, QSettings::Format format, QObject* parent);

    /// An invalid QVariant when there is no such key.
    QVariant getSetting(const QString& group, const QString& key) const;
    bool hasSetting(const QString& group, const QString& key) const;
    /// The values of all keys of \p group itself, as they stand in the file at one moment.
    QVariantMap getSettings(const QString& group) const;
    /// The values of \p group and of its sub-groups by their keys from the top, "Group/sub/key", as they
    /// stand in the file at one moment. The empty group is the whole file.
    QVariantMap getSettingsBelow(const QString& group) const;
    /// A time in a zone that the system does not know, alone or in a list or map, is not stored but logged.
    void setSetting(const QString& group, const QString& key, const QVariant& value);
    /// Sets several keys of \p group in one write, so that a file never holds some of them without the
    /// others. An invalid value removes its key.
    void setSettings(const QString& group, const QVariantMap& values);
    /// Does nothing for an empty \p key.
    void removeSetting(const QString& group, const QString& key);
    /// Removes the group with its sub-groups. The empty group is the whole file.
    void removeSettingGroup(const QString& group);
    void clearSettings();
    /// Makes all \p changes, in their order, in one write.
    void changeSettings(const QList<SettingsChange>& changes);

    /// True when the group itself holds a key; one with nothing but sub-groups counts as absent.
    bool hasSettingGroup(const QString& group) const;
    QStringList getAllGroups() const;
    /// The keys of \p group, without those of its sub-groups.
    QStringList getAllGroupMembers(const QString& group) const;

    /// \name For support
    /// @{

    /// Whether changes could not be written and are kept in memory.
    bool hasPendingChanges() const;
    /// Why the file could not be read, or changes are pending; empty when neither is so. For people.
    QString lastError() const;
    /// Tries for the last time to write these, and gives up with an error entry.
    void flushPendingChanges();
    /// Calls \p observer whenever hasPendingChanges() has changed, in the thread whose operation did it. It
    /// may use the store.
    void whenPendingChanges(std::function<void(bool hasPending)> observer);
    /// The lines of the file, as it is now, that cannot be read or hold a value that cannot, counted from 1.
    QList<int> damagedLines() const;
    /// @}

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace TEKLUVA
