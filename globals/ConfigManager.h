#pragma once

#include "globals/ConfigManagerData.h"
#include "globals/Settings.h"
#include "globals/globals.h"

#include <QDateTime>
#include <QObject>

namespace TEKLUVA {

/// The configuration of the process: the settings in "settings.ini", the folders of everything the
/// application keeps on disk, and a few values that live in memory only.
///
///     ConfigManager* config = ConfigManager::getInstance();            // first, on the main thread
///     const QString models = config->getPath(E_PT_MODEL_CACHE);        // made if missing, ends in "/"
///     config->setSetting("Locale", "Language", "de");                  // on disk when the call returns
///
/// Threads: getInstance() must be called on the main thread first, and after the application object was made;
/// from then on everything may be called from any thread. Signals are emitted in the caller's thread.
///
/// Ownership: a child of the application object, destroyed with it.
class GLOBALS_EXPORT ConfigManager : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(ConfigManager)

public:
    static ConfigManager* getInstance();
    ~ConfigManager() override;

    /// \name Settings
    /// Values of "settings.ini" by group and key, see Settings.
    /// @{
    QVariant getSetting(const QString& group, const QString& key) const;
    bool hasSetting(const QString& group, const QString& key) const;
    bool hasSettingGroup(const QString& group) const;
    void setSetting(const QString& group, const QString& key, const QVariant& value);
    void removeSetting(const QString& group, const QString& key);
    void removeSettingGroup(const QString& group);
    void clearSettings();
    /// @}

    /// \name Folders
    /// @{
    /// The folder of \p type, ending in "/". Missing folders of the user are made on the way; each step that
    /// fails writes one error entry to the active log, and the path reached so far is returned. Empty for a
    /// number that is no path type.
    QString getPath(const E_PathType& type) const;
    /// Lets the user's \p path take the place of the rule for E_PT_DATA, E_PT_DOWNLOAD, E_PT_UPLOAD or
    /// E_PT_USER_SCREENSHOT; an empty one restores the rule. False, with an error entry, for other types.
    bool setPath(const E_PathType& type, const QString& path);
    /// Restores the rule for one of these four types. An error entry for other types.
    void resetPath(const E_PathType& type);
    /// The fixed folder name of a cache or user folder, "model"; empty for the types that have none.
    QString getDirName(const E_PathType& type) const;
    /// @}

    /// \name Values in memory
    /// @{
    /// Milliseconds between two automatic saves, 60000 at start.
    unsigned int getAutosaveInterval() const;
    void setAutosaveInterval(const unsigned int& milliseconds);
    bool forceNavigation() const;
    void setForceNavigation(const bool& force);
    /// @}

    /// \name Server time
    /// @{
    /// The local time, corrected by the difference to the server's clock once that is known.
    QDateTime getCurrentServerTime() const;
    /// The same moment in milliseconds since the epoch. A hundred times cheaper: a local QDateTime asks the
    /// file system for the time zone several times.
    qint64 getCurrentServerMSecs() const;
    /// \p time plus the difference, 0 until one is known.
    QDateTime syncToServerTime(const QDateTime& time) const;
    /// @}

public Q_SLOTS:
    /// Records that the application is alive: "last_life_time" and "time_sync" in the group "Application".
    /// For a timer of the application.
    void updateLifeTime();

Q_SIGNALS:
    /// Emitted once by each setAutosaveInterval(), also when the value stays the same.
    void autosaveIntervalChanged(unsigned int milliseconds);
    /// Emitted once by each setForceNavigation(), also when the value stays the same.
    void navigationForceChanged(bool force);

private:
    ConfigManager();

    static ConfigManager* __instance;

    ConfigManagerData m_data;
    Settings m_settings;
};

} // namespace TEKLUVA
