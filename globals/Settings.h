#pragma once

#include "globals/globals_export.h"

#include <QMutex>
#include <QPointer>
#include <QSettings>
#include <QStringList>
#include <QVariant>

namespace TEKLUVA {

class SettingsFile;
struct SettingsChange;

/// A thread-safe store of values by group and key, over one QSettings.
///
/// Each change is on disk when the call returns. On a disk without room the file stays whole, an error goes
/// to the active log, and the change stays pending: it is seen by reads of this process and written with the
/// next access that finds room. A single value is read after taking over what other processes have written;
/// the other queries answer from memory. A file with a damaged value that claims more memory than there is
/// reads as empty and stays as it is, with all changes pending.
///
/// Thread-safe, except openSettingsFile(). Receivers of the active log's contentChanged() may use the store.
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
    Settings() = default;
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

    /// True when the group itself holds a key; one with nothing but sub-groups counts as absent.
    bool hasSettingGroup(const QString& group) const;
    QStringList getAllGroups() const;
    /// The keys of \p group, without those of its sub-groups.
    QStringList getAllGroupMembers(const QString& group) const;
    /// Whether changes could not be written and are kept in memory.
    bool hasPendingChanges() const;

private:
    void change(const QList<SettingsChange>& changes);
    void release();

    /// Null until a file is opened, and again once the store's parent has destroyed it.
    QPointer<SettingsFile> m_store;
    /// Held for a whole operation, so that nobody sees or changes the group prefix in between.
    mutable QMutex m_lock;
};

} // namespace TEKLUVA
