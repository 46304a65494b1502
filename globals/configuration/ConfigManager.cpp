#include "globals/configuration/ConfigManager_p.h"

#include "globals/SettingsKeys.h"
#include "globals/foundation/Misuse_p.h"
#include "globals/system/StandardLocations_p.h"

#include <QCoreApplication>

namespace TEKLUVA {

std::atomic<ConfigManager*> ConfigManager::__instance{nullptr};

namespace {

void checkFirstCall()
{
    if (!QCoreApplication::instance())
        Misuse::warn("ConfigManager::getInstance() was called before the application object was made.");
    Misuse::checkMainThread("The first ConfigManager::getInstance() was not called on the main thread.");
    if (QCoreApplication::organizationName().isEmpty() || StandardLocations::applicationName().isEmpty())
        Misuse::warn(
            "ConfigManager::getInstance() was called before the names of organisation and application "
            "were set: all folders lack them.");
}

} // namespace

StartOptions& startOptions()
{
    static StartOptions options;
    return options;
}

void ConfigManager::setRecordsRun(bool records)
{
    startOptions().recordsRun = records;
}

void ConfigManager::setMovesOlderData(bool moves)
{
    startOptions().movesOlderData = moves;
}

ConfigManager* ConfigManager::getInstance()
{
    if (!__instance) {
        checkFirstCall();
        try {
            new ConfigManager; // which makes itself known, and belongs to the application object
        } catch (...) {
            __instance = nullptr;
            throw;
        }
    }
    return __instance;
}

bool ConfigManager::hasInstance()
{
    return __instance != nullptr;
}

ConfigManager::ConfigManager()
    : QObject(QCoreApplication::instance())
    , d(std::make_unique<Private>())
{
    // Known from here on, although it is not complete: an error logged below asks for the time of its entry,
    // and must not create a second configuration manager. What the entry needs, the values in memory, exists.
    __instance = this;
    d->data.setAutoSaveIntervall(60000);

    // Before the settings file exists: its absence is the sign of a first start.
    if (startOptions().movesOlderData)
        checkAndClean();
    d->settings.openSettingsFile(getPath(E_PT_SETTINGS) + SettingsKeys::FILE_NAME, QSettings::IniFormat,
                                 this);
    d->settings.whenPendingChanges([this](bool hasPending) { Q_EMIT pendingSettingsChanged(hasPending); });
}

ConfigManager::~ConfigManager()
{
    // While an error entry still finds this object for its time.
    d->settings.flushPendingChanges();
    d->settings.whenPendingChanges({});
    __instance = nullptr;
}

QVariant ConfigManager::getSetting(const QString& group, const QString& key) const
{
    return d->settings.getSetting(group, key);
}

bool ConfigManager::hasSetting(const QString& group, const QString& key) const
{
    return d->settings.hasSetting(group, key);
}

bool ConfigManager::hasSettingGroup(const QString& group) const
{
    return d->settings.hasSettingGroup(group);
}

void ConfigManager::setSetting(const QString& group, const QString& key, const QVariant& value)
{
    d->settings.setSetting(group, key, value);
}

void ConfigManager::removeSetting(const QString& group, const QString& key)
{
    d->settings.removeSetting(group, key);
}

void ConfigManager::removeSettingGroup(const QString& group)
{
    d->settings.removeSettingGroup(group);
}

void ConfigManager::clearSettings()
{
    d->settings.clearSettings();
}

bool ConfigManager::hasPendingSettings() const
{
    return d->settings.hasPendingChanges();
}

unsigned int ConfigManager::getAutosaveInterval() const
{
    return d->data.getAutoSaveIntervall();
}

void ConfigManager::setAutosaveInterval(const unsigned int& milliseconds)
{
    d->data.setAutoSaveIntervall(milliseconds);
    Q_EMIT autosaveIntervalChanged(milliseconds);
}

bool ConfigManager::forceNavigation() const
{
    return d->data.getForceNaviationState();
}

void ConfigManager::setForceNavigation(const bool& force)
{
    d->data.setForceNavigationState(force);
    Q_EMIT navigationForceChanged(force);
}

} // namespace TEKLUVA
