#pragma once

#include "globals/ConfigManagerData.h"
#include "globals/LastRun.h"
#include "globals/Settings.h"
#include "globals/globals.h"

#include <QDateTime>
#include <QFont>
#include <QMap>
#include <QObject>
#include <QStringList>

namespace TEKLUVA {

/// \name Clean-up after an update
/// The groups of the settings file that survive handleQtVersionChanged(), and the keys that its group
/// "Application" loses, with ";" between them.
/// @{
inline constexpr const char* __groups_to_keep = "Application;Server_Config;EnvironmentSettings;User_Pathes";
inline constexpr const char* __app_keys_to_remove = "last_life_time;time_sync";
/// @}

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
    /// The fixed folder name of a cache or user folder, "model"; empty for the types that have none, whose
    /// folder is made as by getPath().
    QString getDirName(const E_PathType& type) const;
    /// @}

    /// \name Values in memory
    /// @{
    unsigned int getAutosaveInterval() const; ///< milliseconds between two automatic saves, 60000 at start
    void setAutosaveInterval(const unsigned int& milliseconds);
    bool forceNavigation() const;
    void setForceNavigation(const bool& force);
    /// @}

    /// \name Server time
    /// @{
    QDateTime getCurrentServerTime() const; ///< the local time until setCurrentServerTime()
    /// The same moment in milliseconds since the epoch. A hundred times cheaper: a local QDateTime asks the
    /// file system for the time zone several times.
    qint64 getCurrentServerMSecs() const;
    /// \p time plus the difference, 0 until one is known.
    QDateTime syncToServerTime(const QDateTime& time) const;
    /// Takes over the server's clock and records a sign of life. A correction of 121 seconds or more renames
    /// the active log to "tekluva-3D_" and the server's time. An invalid time is an error entry only.
    void setCurrentServerTime(const QDateTime& serverTime);
    /// @}

    /// \name The last run
    /// What tells a clean exit from a crash at the next start, see LastRun. Each setter writes one record at
    /// once: a process killed on the way leaves the old record or the new one.
    /// @{

    /// Records how far the run has come, the error code that goes with it and a sign of life.
    /// E_RS_FIRST_START removes the state; a number that is no state does nothing.
    void setRuntimeState(const E_RuntimeState& state);
    E_RuntimeState getLastRuntimeState() const;
    /// Records what goes wrong if nothing is recorded after it, and a sign of life.
    void setPotentialError(const unsigned int& code);
    unsigned int getLastPotentialError() const;
    /// When last alive, by the server's clock once that is known; invalid for a first start.
    QDateTime getLastLifeTime() const;
    bool getAutosaveSessionState() const;
    void setAutosaveSessionState(const bool& active);
    /// "en" or "de": as stored, otherwise "de" for a German system and "en" for any other.
    QString getPrefferedLang() const;
    /// Stores \p language as it is.
    void setPrefferedLang(const QString& language);
    /// @}

    /// \name Versions and clean-up
    /// @{

    /// The first \p parts numbers of the application's version, "1.6" for 2; all four from 4 on.
    QString getCurrentVersion(const unsigned int& parts) const;
    QString getCurrentDisplayVersion() const;
    /// Compares at most \p depth parts as numbers. A version that is the beginning of the other one is equal
    /// to it.
    E_VersionComparison compareVersion(const QString& first, const QString& second,
                                       const unsigned short& depth) const;
    /// Cleans the settings file after Qt itself was updated, see __groups_to_keep.
    void handleQtVersionChanged();
    /// Moves the user's data from the folders of older installations unless this one has a settings file.
    /// Runs in the constructor. Silent. A folder of which something cannot be copied stays with all that is
    /// in it. The settings come last, so that the start after one that was killed goes on.
    void checkAndClean();
    /// @}

    /// \name Stored versions of an item
    /// Remove its files, those whose name up to the first "." is \p name in any case, and the folder of its
    /// additional files. Silent.
    /// @{
    void removeEnvironmentVersions(const QString& name);
    void removeModelVersions(const QString& name);
    void removeMaterialVersions(const QString& name);
    /// @}

    /// \name Directories and files
    /// Failures are error entries where a message is named below, never exceptions.
    /// @{

    /// Copies the files of the folder \p source into the folder \p target; both must exist, and \p target not
    /// lie in \p source. With \p recursive sub-folders as well; links to folders are copied as links if they
    /// lead to the same folder from there, or to its copy. \p suffixes (without dots) selects files, none
    /// selects all. \p removeSource removes each file that was copied. For a file that exists the user is
    /// asked in a message box; where nobody can be asked (no QApplication, or not its thread) it stays. False
    /// when something could not be copied or nobody could be asked; the walk goes on all the same.
    bool copyDirectory(const QString& source, const QString& target, bool recursive, bool removeSource,
                       const QStringList& suffixes);
    /// Deletes \p path with all in it. Links are deleted, not followed. False when something is left.
    bool deleteDirectory(const QString& path);
    /// Bytes of the file, or of all files below the folder \p path; 0 if it does not exist.
    qint64 getDirectoryContentSize(const QString& path) const;
    /// Makes \p path and its parents unless something exists there. False when that failed.
    bool createDirectory(const QString& path);
    /// The whole file, below 2 GiB. \p ok tells whether it was read; a missing file is no error entry.
    QByteArray readDataFromFile(const QString& filename, bool& ok);
    /// Writes \p data, which must not be empty. A file that is not appended to is replaced when all is on
    /// disk, see AtomicFile; a failure leaves the old content as it was. But where the file may be written
    /// and not be replaced (in a folder that may not be written, a sticky one, over a mount point), the file
    /// itself is overwritten, and a failure loses its old content.
    bool writeDataToFile(const QString& filename, const QByteArray& data, bool append);
    /// \p name with ".rgm", always appended.
    QString getProjectFilename(const QString& name) const;
    /// The translated name of a new project.
    QString getStdProjectName() const;
    /// Where the auto-save of \p user lies; of the guest for an empty user, "Gast" and "Guest". With
    /// \p fallBackToGuest only an existing file is named, that of the guest if need be; empty for none.
    QString getAutosaveFilepath(const QString& user, const bool& fallBackToGuest) const;
    /// Whether an auto-save of \p user exists, under the names "USER", "USER_1" or "USER_2", or one of the
    /// guest.
    bool existAutoSave(const QString& user) const;
    /// The absolute paths of what lies in the add-on folder \p folder, each with a line feed behind it.
    QString getListOfObjectAddFiles(const QString& folder) const;
    /// @}

    /// \name Fonts
    /// The register knows the families that the application has loaded from its own files, by the id that
    /// Qt's font database gave them. addFontFamily() and removeFont(), which unloads in the calling thread,
    /// are for any thread; what asks the font database belongs on the main thread of a QGuiApplication.
    /// @{
    QMap<QString, QStringList> getFonts() const; ///< all families of the font database with their styles
    /// Registers \p family. False when it is registered already; it keeps its id then.
    bool addFontFamily(const QString& family, const int& id);
    /// Takes the families of \p id out of the register and unloads the font. False when there are none, or
    /// when it could not be unloaded.
    bool removeFont(const int& id);
    /// A font of \p size points. For a missing family the default font and for a missing style the family's
    /// first one, with a warning in the active log.
    QFont getFont(const QString& family, const QString& style, const int& size) const;
    /// The font that measurements are drawn in, in \p size points. The default font for other numbers, in 8
    /// points whatever \p size is.
    QFont getFont(const E_FontType& type, const int& size) const;
    /// @}

    /// \name Offscreen images and the system
    /// The getters answer built-in values, always. The setters store overrides in the group
    /// "cube_map_settings" for those who read them there. Numbers that are no image have no values and store
    /// nothing.
    /// @{
    unsigned int getCubeMapRenderSize(const E_OffscreenImage& image) const; ///< pixels at an edge
    /// 0 to 100; 0 for the lossless formats.
    unsigned int getCubeMapImageQuality(const E_OffscreenImage& image) const;
    /// "JPG" or "PNG".
    QString getCubeMapFormat(const E_OffscreenImage& image) const;
    /// ".jpg" or ".png"; "." alone for a number that is no image.
    QString getCubeMapFormatSuffix(const E_OffscreenImage& image) const;
    void setCubeMapRenderSize(const E_OffscreenImage& image, const unsigned int& pixels);
    /// More than 100 becomes 100.
    void setCubeMapImageQuality(const E_OffscreenImage& image, const unsigned int& quality);
    void setCubeMapFormat(const E_OffscreenImage& image, const QString& format);
    /// ".rgm" or ".argm"; empty for other numbers.
    QString getFileSuffix(const E_FileSuffixType& type) const;
    /// "Mac10_3" to "Mac10_9" on those systems, "Mac" on any other.
    QString getOSVersion() const;
    /// The architecture code of the build: 3, 64-bit Intel.
    int getSystemArch() const;
    /// @}

public Q_SLOTS:
    /// Records a sign of life: "last_life_time" and "time_sync" in the group "Application". For a timer of
    /// the application.
    void updateLifeTime();

Q_SIGNALS:
    /// Emitted once by each setAutosaveInterval(), also when the value stays the same.
    void autosaveIntervalChanged(unsigned int milliseconds);
    /// Emitted once by each setForceNavigation(), also when the value stays the same.
    void navigationForceChanged(bool force);

private:
    ConfigManager();

    void startLogOfServerTime() const;
    LastRun lastRun() const;
    QVariantMap lifeTimeRecord() const;
    QVariantMap errorRecord(unsigned int code) const;
    void removeFilesOf(const QString& name, E_PathType type) const;
    void removeAddsOf(const QString& name, E_PathType type);

    static ConfigManager* __instance;

    ConfigManagerData m_data;
    Settings m_settings;
};

} // namespace TEKLUVA
