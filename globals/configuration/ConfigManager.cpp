#include "globals/ConfigManager.h"

#include "globals/SettingsKeys.h"

#include <QCoreApplication>

namespace TEKLUVA {

ConfigManager* ConfigManager::__instance = nullptr;

ConfigManager* ConfigManager::getInstance()
{
    if (!__instance)
        new ConfigManager;
    return __instance;
}

ConfigManager::ConfigManager()
    : QObject(QCoreApplication::instance())
{
    // Known from here on, half built as it is: an error logged below asks for the time of its entry, and must
    // not start a second configuration manager for it. What such an entry needs, the values in memory, is
    // there.
    __instance = this;
    m_data.setAutoSaveIntervall(60000);
    m_data.setForceNavigationState(false);
    m_data.setServerTimeDiff(0);
    m_data.setServerTimeState(false);

    // Before the settings file exists: a missing one is how a first start is known.
    checkAndClean();
    m_settings.openSettingsFile(getPath(E_PT_SETTINGS) + SettingsKeys::FILE_NAME, QSettings::IniFormat, this);
}

ConfigManager::~ConfigManager()
{
    __instance = nullptr;
}

QVariant ConfigManager::getSetting(const QString& group, const QString& key) const
{
    return m_settings.getSetting(group, key);
}

bool ConfigManager::hasSetting(const QString& group, const QString& key) const
{
    return m_settings.hasSetting(group, key);
}

bool ConfigManager::hasSettingGroup(const QString& group) const
{
    return m_settings.hasSettingGroup(group);
}

void ConfigManager::setSetting(const QString& group, const QString& key, const QVariant& value)
{
    m_settings.setSetting(group, key, value);
}

void ConfigManager::removeSetting(const QString& group, const QString& key)
{
    m_settings.removeSetting(group, key);
}

void ConfigManager::removeSettingGroup(const QString& group)
{
    m_settings.removeSettingGroup(group);
}

void ConfigManager::clearSettings()
{
    m_settings.clearSettings();
}

unsigned int ConfigManager::getAutosaveInterval() const
{
    return m_data.getAutoSaveIntervall();
}

void ConfigManager::setAutosaveInterval(const unsigned int& milliseconds)
{
    m_data.setAutoSaveIntervall(milliseconds);
    Q_EMIT autosaveIntervalChanged(milliseconds);
}

bool ConfigManager::forceNavigation() const
{
    return m_data.getForceNaviationState();
}

void ConfigManager::setForceNavigation(const bool& force)
{
    m_data.setForceNavigationState(force);
    Q_EMIT navigationForceChanged(force);
}

} // namespace TEKLUVA
