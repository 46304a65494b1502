#include "globals/Settings.h"

#include "globals/logs/ActiveLog_p.h"
#include "globals/settings/SettingsFile_p.h"
#include "globals/settings/SettingsGuard_p.h"

#include <QMutexLocker>

#include <new>

namespace TEKLUVA {

namespace {

/// As QSettings sees it, which skips separators; to it an empty key is the whole group.
bool isEmptyKey(const QString& key)
{
    return key.count(QLatin1Char('/')) == key.size();
}

/// Without what must not be stored, which is logged.
QList<SettingsChange> soundOnes(const QList<SettingsChange>& changes)
{
    QList<SettingsChange> sound;
    for (const SettingsChange& change : changes) {
        if (!change.value || SettingsGuard::isSound(*change.value))
            sound << change;
        else
            logError(
                QStringLiteral(
                    "The setting %1 in the group %2 has a time in an unknown time zone. It was not stored.")
                    .arg(change.key, change.group));
    }
    return sound;
}

QPointer<SettingsFile> storeOf(const QPointer<SettingsFile>& store, QMutex& lock)
{
    const QMutexLocker locked(&lock);
    return store;
}

/// What \p query answers about the store, under its lock. Empty without a store.
template <typename Query>
auto ask(const QPointer<SettingsFile>& store, QMutex& lock, Query&& query) -> decltype(query(*store))
{
    if (!store)
        return {};
    const QMutexLocker locked(&lock);
    try {
        return query(*store);
    } catch (const std::bad_alloc&) {
        return {}; // what a damaged value in the file claims to need
    }
}

} // namespace

Settings::Settings(const QString& path, QSettings::Format format, QObject* parent)
{
    openSettingsFile(path, format, parent);
}

Settings::Settings(const Settings& other)
    : m_store(storeOf(other.m_store, other.m_lock))
{
}

Settings::~Settings()
{
    release();
}

void Settings::openSettingsFile(const QString& path, QSettings::Format format, QObject* parent)
{
    release();
    m_store = new SettingsFile(path, format, parent);
}

QVariant Settings::getSetting(const QString& group, const QString& key) const
{
    return ask(m_store, m_lock, [&](SettingsFile& store) {
        store.refresh();
        return store.valueOf(group, key);
    });
}

QVariantMap Settings::getSettings(const QString& group) const
{
    return ask(m_store, m_lock, [&](SettingsFile& store) {
        store.refresh();
        return store.valuesOf(group);
    });
}

bool Settings::hasSetting(const QString& group, const QString& key) const
{
    return ask(m_store, m_lock, [&](SettingsFile& store) { return store.hasKey(group, key); });
}

void Settings::setSetting(const QString& group, const QString& key, const QVariant& value)
{
    change({{group, key, value}});
}

void Settings::setSettings(const QString& group, const QVariantMap& values)
{
    QList<SettingsChange> changes;
    for (auto value = values.begin(); value != values.end(); ++value) {
        if (value->isValid())
            changes << SettingsChange{group, value.key(), *value};
        else if (!isEmptyKey(value.key()))
            changes << SettingsChange{group, value.key(), std::nullopt};
    }
    change(changes);
}

void Settings::removeSetting(const QString& group, const QString& key)
{
    if (!isEmptyKey(key))
        change({{group, key, std::nullopt}});
}

void Settings::removeSettingGroup(const QString& group)
{
    change({{group, QString(), std::nullopt}});
}

void Settings::clearSettings()
{
    change({{QString(), QString(), std::nullopt}});
}

bool Settings::hasSettingGroup(const QString& group) const
{
    return !getAllGroupMembers(group).isEmpty();
}

QStringList Settings::getAllGroups() const
{
    return ask(m_store, m_lock, [](SettingsFile& store) { return store.groupsOf(QString()); });
}

QStringList Settings::getAllGroupMembers(const QString& group) const
{
    return ask(m_store, m_lock, [&group](SettingsFile& store) { return store.keysOf(group); });
}

bool Settings::hasPendingChanges() const
{
    return ask(m_store, m_lock, [](SettingsFile& store) { return store.isPending(); });
}

void Settings::change(const QList<SettingsChange>& changes)
{
    if (!m_store)
        return;
    const QList<SettingsChange> sound = soundOnes(changes);
    bool written = false;
    QString file;
    {
        const QMutexLocker lock(&m_lock);
        written = m_store->change(sound);
        file = m_store->fileName();
    }
    // Reported after the lock is free, because whoever shows the log may ask for settings.
    if (!written)
        logError(
            QStringLiteral("Could not write the settings file %1. The change is kept in memory.").arg(file));
}

void Settings::release()
{
    if (!m_store)
        return;
    const QMutexLocker lock(&m_lock);
    m_store->letGo();
    m_store->deleteLater();
}

} // namespace TEKLUVA
