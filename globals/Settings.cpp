#include "globals/Settings.h"

#include "globals/ActiveLog_p.h"
#include "globals/SettingsFile_p.h"

#include <QMutexLocker>

namespace TEKLUVA {

namespace {

QPointer<SettingsFile> storeOf(const QPointer<SettingsFile>& store, QMutex& lock)
{
    const QMutexLocker locked(&lock);
    return store;
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
    if (!m_store)
        return QVariant();
    const QMutexLocker lock(&m_lock);
    m_store->refresh();
    return m_store->valueOf(group, key);
}

bool Settings::hasSetting(const QString& group, const QString& key) const
{
    if (!m_store)
        return false;
    const QMutexLocker lock(&m_lock);
    return m_store->hasKey(group, key);
}

void Settings::setSetting(const QString& group, const QString& key, const QVariant& value)
{
    change({group, key, value});
}

void Settings::removeSetting(const QString& group, const QString& key)
{
    if (!key.isEmpty())
        change({group, key, std::nullopt});
}

void Settings::removeSettingGroup(const QString& group)
{
    change({group, QString(), std::nullopt});
}

void Settings::clearSettings()
{
    change({QString(), QString(), std::nullopt});
}

bool Settings::hasSettingGroup(const QString& group) const
{
    return !getAllGroupMembers(group).isEmpty();
}

QStringList Settings::getAllGroups() const
{
    if (!m_store)
        return QStringList();
    const QMutexLocker lock(&m_lock);
    return m_store->groupsOf(QString());
}

QStringList Settings::getAllGroupMembers(const QString& group) const
{
    if (!m_store)
        return QStringList();
    const QMutexLocker lock(&m_lock);
    return m_store->keysOf(group);
}

void Settings::change(const SettingsChange& change)
{
    if (!m_store)
        return;
    bool written = false;
    QString file;
    {
        const QMutexLocker lock(&m_lock);
        written = m_store->change(change);
        file = m_store->fileName();
    }
    // Reported after the lock is free, because whoever shows the log may ask for settings.
    if (!written)
        logError(
            QStringLiteral("Could not write the settings file %1. The change is kept in memory.").arg(file));
}

void Settings::release()
{
    if (m_store)
        m_store->deleteLater();
}

} // namespace TEKLUVA
