#pragma once

#include "globals/ConfigManagerData.h" // this one, LastRun.h and Settings.h for programs that include only this header
#include "globals/LastRun.h"
#include "globals/MigrationReport.h"
#include "globals/Settings.h"
#include "globals/globals.h"

#include <QDateTime>
#include <QFont>
#include <QMap>
#include <QObject>
#include <QStringList>
#include <QVariant>

#include <atomic>
#include <memory>

namespace TEKLUVA {

/// \name Clean-up after an update
/// The groups of the settings file that survive handleQtVersionChanged(), and the keys that its group
/// "Application" loses, each list separated by ";".
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
/// Threads: the first getInstance() must be called on the main thread, when the application object exists.
/// From then on everything may be called from any thread, except where a group below says otherwise. Signals
/// are emitted in the calling thread.
///
/// Ownership: a child of the application object, destroyed with it.
class GLOBALS_EXPORT ConfigManager : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(ConfigManager)

public:
    static ConfigManager* getInstance();
    /// False before the first getInstance(), and after the application object has deleted the manager.
    static bool hasInstance();
    ~ConfigManager() override;

    /// \name Before the first getInstance()
    /// @{

    /// With false this process leaves the record of the last run alone: setRuntimeState(),
    /// setPotentialError(), updateLifeTime() and setAutosaveSessionState() write nothing. For a companion of
    /// an application of the same name, whose record it would replace. May be called later as well, after
    /// isOtherRunning().
    static void setRecordsRun(bool records);
    /// With false the constructor leaves the folders of older installations alone, see checkAndClean(). For
    /// any other application than the planner.
    static void setMovesOlderData(bool moves);
    /// @}

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
    /// Whether changes could not be written, for want of room for example, and are kept in memory. An
    /// application may ask the user for room before it quits.
    bool hasPendingSettings() const;
    /// Why nothing can be saved in the folder of the settings, a sentence in the user's language, which ends
    /// in the system's words; empty when all is well. Writes and removes a file without a name. For the
    /// start: in a home folder that cannot be written each start would look like the first one.
    QString storageProblem() const;
    /// @}

    /// \name Folders
    /// @{

    /// The folder of \p type, ending in "/". Missing folders of the user are made on the way; each step that
    /// fails writes one error entry to the active log, and the path reached so far is returned. Empty for a
    /// number that is no path type.
    QString getPath(const E_PathType& type) const;
    /// Overrides the rule for E_PT_DATA, E_PT_DOWNLOAD, E_PT_UPLOAD or E_PT_USER_SCREENSHOT by \p path; an
    /// empty one restores the rule. False, with an error entry, for other types. True, with a warning entry,
    /// for a relative \p path, whose meaning depends on the working directory, and for a missing one if the
    /// rule applies until it exists.
    bool setPath(const E_PathType& type, const QString& path);
    /// Restores the rule for one of these four types. An error entry for other types.
    void resetPath(const E_PathType& type);
    /// The fixed folder name of a cache or user folder, for example "model". Empty for the types that have
    /// none; their folder is made as by getPath().
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
    /// The same moment in milliseconds since the epoch, without the cost of a local QDateTime, which asks the
    /// system for its time zone.
    qint64 getCurrentServerMSecs() const;
    /// \p time plus the difference, 0 until one is known.
    QDateTime syncToServerTime(const QDateTime& time) const;
    /// Stores the difference to the server's clock and records a sign of life. If the difference changes by
    /// 121 seconds or more, the active log is renamed to "tekluva-3D_" followed by the server's time. An
    /// invalid time is an error entry and changes nothing.
    void setCurrentServerTime(const QDateTime& serverTime);
    /// @}

    /// \name The last run
    /// Tells a clean exit from a crash at the next start, see LastRun. Each setter writes its values in one
    /// piece: a process that is killed meanwhile leaves the old ones or the new ones.
    /// @{

    /// Records how far the run has come, the error code that goes with it and a sign of life.
    /// E_RS_FIRST_START removes the state; a number that is no state does nothing.
    void setRuntimeState(const E_RuntimeState& state);
    E_RuntimeState getLastRuntimeState() const;
    /// What the record means, see runVerdict(). E_RV_RUNNING also for a run of this process.
    E_RunVerdict getLastRunVerdict() const;
    /// Whether the record is of a run that goes on in another process. Ask before setRuntimeState(), which
    /// replaces the record.
    bool isOtherRunning() const;
    /// Records what has gone wrong if nothing else is recorded later, and a sign of life.
    void setPotentialError(const unsigned int& code);
    unsigned int getLastPotentialError() const;
    /// The last sign of life, by the server's clock once that is known; invalid for a first start.
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

    /// The first \p parts numbers of the application's version, for example "1.6" for 2; all of them if there
    /// are no more. That of the planner, "1.6.0.4184", until setCurrentVersion().
    QString getCurrentVersion(const unsigned int& parts) const;
    /// The version of another application, numbers with points between them. An empty text restores the
    /// planner's.
    void setCurrentVersion(const QString& version);
    /// The first four numbers.
    QString getCurrentDisplayVersion() const;
    /// Compares at most \p depth parts as numbers. A version equals each version that begins with its parts.
    E_VersionComparison compareVersion(const QString& first, const QString& second,
                                       const unsigned short& depth) const;
    /// Cleans the settings file after Qt itself was updated, see __groups_to_keep.
    void handleQtVersionChanged();
    /// Moves the user's data from the folders of older installations, unless this one has a settings file.
    /// Runs in the constructor. Silent. If something in an old folder cannot be copied, that folder stays
    /// complete. The settings are moved last, so that after a killed start the next one goes on.
    void checkAndClean();
    /// What the last checkAndClean() has done. Not while another thread calls that.
    MigrationReport migrationReport() const;
    /// @}

    /// \name Stored versions of an item
    /// Remove the item's files and the folder of its additional files. Its files are those whose name up to
    /// the first "." is \p name, ignoring case. Silent.
    /// @{
    void removeEnvironmentVersions(const QString& name);
    void removeModelVersions(const QString& name);
    void removeMaterialVersions(const QString& name);
    /// @}

    /// \name Directories and files
    /// Failures never throw. Those of reading and writing whole files are also error entries.
    /// @{

    /// Copies the files of the folder \p source into the folder \p target. Both must exist, and \p target
    /// must not lie in \p source. With \p recursive sub-folders are copied as well; a link to a folder is
    /// copied as a link if the copy resolves to the same folder or to its copy. \p suffixes (without dots)
    /// selects files; an empty list selects all. With \p removeSource each file is removed after it was
    /// copied. If a file exists already, a message box asks the user. It stays as it is where nobody can be
    /// asked: without a QApplication, or outside its thread. False when something could not be copied or
    /// nobody could be asked; the rest is copied all the same.
    bool copyDirectory(const QString& source, const QString& target, bool recursive, bool removeSource,
                       const QStringList& suffixes);
    /// Deletes \p path with all in it. Links are deleted, not followed. False when something is left. A
    /// folder is held open for each level: what lies deeper than the process may open files is left.
    bool deleteDirectory(const QString& path);
    /// Bytes of the file, or of all files below the folder \p path; 0 if it does not exist. Folders that
    /// cannot be read, or lie too deep for deleteDirectory(), count as 0.
    qint64 getDirectoryContentSize(const QString& path) const;
    /// Makes \p path and its parents unless something exists there. False when that failed.
    bool createDirectory(const QString& path);
    /// The whole file, below 2 GiB. \p ok tells whether it was read. A missing file is not logged.
    QByteArray readDataFromFile(const QString& filename, bool& ok);
    /// Writes \p data, which must not be empty. Without \p append the file is replaced when all is on disk,
    /// see AtomicFile; a failure leaves the old content as it was. A file that may be written but not
    /// replaced (in a folder that is not writable or that is sticky, or at a mount point) is itself
    /// overwritten, and a failure loses its old content.
    bool writeDataToFile(const QString& filename, const QByteArray& data, bool append);
    /// \p name with ".rgm", always appended.
    QString getProjectFilename(const QString& name) const;
    /// The translated name of a new project.
    QString getStdProjectName() const;
    /// The path of the auto-save of \p user. An empty user, "Gast" and "Guest" are the guest. With
    /// \p fallBackToGuest the file must exist: otherwise the path is that of the guest's auto-save, and empty
    /// if that does not exist either.
    QString getAutosaveFilepath(const QString& user, const bool& fallBackToGuest) const;
    /// Whether an auto-save of \p user exists, as "USER", "USER_1" or "USER_2", or one of the guest.
    bool existAutoSave(const QString& user) const;
    /// The absolute paths of what lies in the add-on folder \p folder, each followed by a line feed.
    QString getListOfObjectAddFiles(const QString& folder) const;
    /// @}

    /// \name Fonts
    /// The register holds the families that the application has loaded from its own files, with the id that
    /// Qt's font database gave them. addFontFamily() and removeFont(), which unloads in the calling thread,
    /// may be called from any thread; getFonts() and getFont() only on the main thread of a QGuiApplication.
    /// @{
    QMap<QString, QStringList> getFonts() const; ///< all families of the font database with their styles
    /// Registers \p family. False when it is registered already; it keeps its id then.
    bool addFontFamily(const QString& family, const int& id);
    /// Removes the families of \p id from the register and unloads the font. False when there are none, or
    /// when the font could not be unloaded.
    bool removeFont(const int& id);
    /// A font of \p size points. If the family is missing, the default font; if the style is missing, the
    /// family's first style; both with a warning in the active log.
    QFont getFont(const QString& family, const QString& style, const int& size) const;
    /// For E_FT_MEASUREMENT the font that measurements are drawn in, in \p size points. For other numbers the
    /// default font in 8 points, whatever \p size is.
    QFont getFont(const E_FontType& type, const int& size) const;
    /// @}

    /// \name Offscreen images and the system
    /// The getters always return built-in values. The setters store overrides in the group
    /// "cube_map_settings", for those who read them there. A number that is no image has no values: its
    /// getters return 0 or an empty text, and its setters store nothing.
    /// @{
    unsigned int getCubeMapRenderSize(const E_OffscreenImage& image) const; ///< pixels along an edge
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
    /// Records a sign of life ("last_life_time", "time_sync"). For a timer of the application.
    void updateLifeTime();

Q_SIGNALS:
    /// Emitted once by each setAutosaveInterval(), also when the value stays the same.
    void autosaveIntervalChanged(unsigned int milliseconds);
    /// Emitted once by each setForceNavigation(), also when the value stays the same.
    void navigationForceChanged(bool force);
    /// Emitted when hasPendingSettings() has changed, by the call that could not write or now could.
    void pendingSettingsChanged(bool hasPending);

private:
    ConfigManager();

    static std::atomic<ConfigManager*> __instance; ///< any thread may ask whether there is one

    class Private;
    const std::unique_ptr<Private> d;
};

} // namespace TEKLUVA
