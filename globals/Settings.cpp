#include "globals/Settings.h"

#include "globals/ActiveLog_p.h"
#include "globals/SettingsFile_p.h"

#include <QMutexLocker>

namespace TEKLUVA {

namespace {

class GroupScope
{
    Q_DISABLE_COPY(GroupScope)

public:
    GroupScope(QSettings& store, const QString& group)
        : m_store(store)
    {
        m_store.beginGroup(group);
    }
    ~GroupScope() { m_store.endGroup(); }

private:
    QSettings& m_store;
};

QPointer<SettingsFile> storeOf(const QPointer<SettingsFile>& store, QMutex& lock)
{
    const QMutexLocker locked(&lock);
    return store;
}

} // namespace

template <typename Query>
auto Settings::query(const QString& group, Query&& ask) const
{
    using Result = decltype(ask(*m_store));
    if (!m_store)
        return Result();
    const QMutexLocker lock(&m_lock);
    const GroupScope scope(*m_store, group);
    return ask(*m_store);
}

template <typename Change>
void Settings::change(const QString& group, qint64 addedBytes, Change&& apply)
{
    if (!m_store)
        return;
    bool written = false;
    QString file;
    {
        const QMutexLocker lock(&m_lock);
        {
            const GroupScope scope(*m_store, group);
            apply(*m_store);
        }
        written = m_store->writeBack(addedBytes);
        file = m_store->fileName();
    }
    // Reported after the lock is free, because whoever shows the log may ask for settings.
    if (!written)
        logError(
            QStringLiteral("Could not write the settings file %1. The change is kept in memory.").arg(file));
}

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
    const GroupScope scope(*m_store, group);
    return m_store->value(key);
}

bool Settings::hasSetting(const QString& group, const QString& key) const
{
    return query(group, [&key](const QSettings& store) { return store.contains(key); });
}

void Settings::setSetting(const QString& group, const QString& key, const QVariant& value)
{
    change(group, SettingsFile::sizeInFile(group, key, value),
           [&](QSettings& store) { store.setValue(key, value); });
}

void Settings::removeSetting(const QString& group, const QString& key)
{
    if (!key.isEmpty())
        change(group, 0, [&key](QSettings& store) { store.remove(key); });
}

void Settings::removeSettingGroup(const QString& group)
{
    change(group, 0, [](QSettings& store) { store.remove(QString()); });
}

void Settings::clearSettings()
{
    change(QString(), 0, [](QSettings& store) { store.clear(); });
}

bool Settings::hasSettingGroup(const QString& group) const
{
    return query(group, [](const QSettings& store) { return !store.childKeys().isEmpty(); });
}

QStringList Settings::getAllGroups() const
{
    return query(QString(), [](const QSettings& store) { return store.childGroups(); });
}

QStringList Settings::getAllGroupMembers(const QString& group) const
{
    return query(group, [](const QSettings& store) { return store.childKeys(); });
}

void Settings::release()
{
    if (m_store)
        SettingsFile::release(m_store);
}

} // namespace TEKLUVA
