#include "globals/PathRegistry.h"

#include "globals/Settings.h"
#include "globals/SettingsKeys.h"
#include "globals/configuration/PathRegistry_p.h"
#include "globals/logs/ActiveLog_p.h"
#include "globals/system/StandardLocations_p.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QObject>
#include <QStringList>

#include <algorithm>

namespace TEKLUVA {

namespace {

/// A folder that the desktop, the program or the process names.
struct Base
{
    QString (*folder)();
    const char* name;
};

constexpr Base APPLICATION = {&QCoreApplication::applicationDirPath, "application folder"};
constexpr Base WORKING = {&QDir::currentPath, "working directory"};
constexpr Base DATA = {&StandardLocations::data, "data location"};
constexpr Base HOME = {&StandardLocations::home, "home"};
constexpr Base PICTURES = {&StandardLocations::pictures, "pictures location"};
constexpr Base CACHE = {&StandardLocations::cache, "cache location"};
constexpr Base APPLICATIONS = {&StandardLocations::applications, "applications location"};

/// Where a walk starts: in a base folder or where another path type leads.
struct Start
{
    const Base* base = nullptr;
    const char* cannotCreate = nullptr; ///< null for a base that is not made
    E_PathType type = E_PathType(0);

    constexpr bool leadsSomewhere() const { return base != nullptr || type != E_PathType(0); }
};

constexpr Start NOWHERE = {};
constexpr Start IN_APPLICATION = {&APPLICATION};
constexpr Start IN_WORKING = {&WORKING};
constexpr Start IN_STORAGE = {&DATA, "Could not create storage path."};
constexpr Start IN_HOME = {&HOME, "Could not create user path."};
constexpr Start IN_HOME_FOR_PICTURES = {&HOME, "Could not create picture path."};
constexpr Start IN_PICTURES = {&PICTURES, "Could not create picture path."};
constexpr Start IN_CACHE = {&CACHE, "Could not create cache path."};
constexpr Start IN_APPLICATIONS = {&APPLICATIONS, "Could not create user path."};

constexpr Start under(E_PathType type)
{
    return {nullptr, nullptr, type};
}

/// One step down. A folder without messages belongs to the installed program or to nobody: it is named, but
/// not made.
struct Folder
{
    const char* name = nullptr; ///< null for no folder at all
    const char* cannotCreate = nullptr;
    const char* cannotEnter = nullptr;
    bool onlyIfNotNamedBefore = false; ///< left out when the path already holds the name, in any case
};

/// Stands for the name that the application has set.
constexpr const char* APPLICATION_NAME = "";

constexpr Folder TMP = {"tmp", "Could not create tmp directory", "Could not browse into tmp directory"};
constexpr Folder PROJECTS = {"projects", "Could not create projects directory",
                             "Could not browse into projects directory"};
constexpr Folder USER_PROJECTS = {"Meine Projekte", "Could not create projects directory",
                                  "Could not browse into projects directory"};
constexpr Folder DATA_FOLDER = {"data", "Could not create data directory",
                                "Could not browse into data directory"};
// The texts say model for environments, too.
constexpr Folder ENVIRONMENTS = {"environments", "Could not create model cache directory",
                                 "Could not browse into model cache directory"};
constexpr Folder MODEL = {"model", "Could not create model cache directory",
                          "Could not browse into model cache directory"};
constexpr Folder MATERIALS = {"materials", "Could not create material cache directory",
                              "Could not browse into material cache directory"};
constexpr Folder KMZ = {"kmz", "Could not create kmz cache directory",
                        "Could not browse into kmz cache directory"};
constexpr Folder TEMP_CACHE = {"tmp", "Could not create temp cache directory",
                               "Could not browse into temp cache directory"};
constexpr Folder LOGS = {"logs", "Could not create logs directory", "Could not browse into logs directory"};
constexpr Folder ADDS = {"adds", "Could not create adds directory", "Could not browse into adds directory"};
constexpr Folder USER_MODEL_ADDS = {"adds", "Could not create usermodel adds directory",
                                    "Could not browse into usermodel  adds directory"};
constexpr Folder USER_MODELS_GERMAN = {"Meine Modelle", "Could not create usermodel directory",
                                       "Could not browse into usermodel directory"};
constexpr Folder USER_MODELS = {"My models", "Could not create usermodel directory",
                                "Could not browse into usermodel directory"};
constexpr Folder USER_IMAGES = {"userimages", "Could not create user plot images directory",
                                "Could not browse into user plot images directory"};
constexpr Folder DOWNLOADS = {"Downloads", "Could not create download directory",
                              "Could not browse into download directory"};
constexpr Folder PACKAGES = {"packages", "Could not create packages directory",
                             "Could not browse into packages directory"};
constexpr Folder WEB_CACHE = {"tekluva", "Could not create web cache directory",
                              "Could not browse into web cache directory", true};
// The texts spell the product with a double n where pictures are kept, with one where models and projects
// are.
constexpr Folder PLANNER = {APPLICATION_NAME, "Could not create \"tekluva 3D-Planner\" directory",
                            "Could not browse into \"tekluva 3D-Planner\" directory"};
constexpr Folder PLANER = {APPLICATION_NAME, "Could not create \"tekluva 3D-Planer\" directory",
                           "Could not browse into \"tekluva 3D-Planer\" directory"};

/// When a folder that the user has set takes the place of the rule.
enum class Precedence {
    Made,       ///< always, and it is made when missing
    IfExisting, ///< otherwise the rule holds
    AsGiven,    ///< always, whether it exists or not
};

struct Override
{
    const char* key = nullptr; ///< null for a type that users cannot override
    Precedence precedence = Precedence::AsGiven;
};

constexpr Override FIXED = {};

/// Whether the last folder's name is the fixed folder name of the type.
enum DirName : bool { UNNAMED = false, NAMED = true };

struct PathRow
{
    E_PathType type = E_PathType(0);
    const char* role = nullptr;
    Start start;
    std::array<Folder, 3> folders;
    DirName dirName = UNNAMED;
    Override override = FIXED;
};

// A row per type, to be read like the table in a manual.
// clang-format off
constexpr PathRow PATHS[] = {
    {E_PT_APPLICATION,        "application directory",   IN_APPLICATION, {}},
    {E_PT_STORAGE_PROJECTS,   "storage projects",        IN_STORAGE, {PROJECTS}},
    {E_PT_STORAGE,            "storage root",            IN_STORAGE, {}},
    {E_PT_STORAGE_COMMON,     "storage root",            IN_STORAGE, {}},
    {E_PT_WORKING_TEMP,       "working temp folder",     IN_WORKING, {TMP}},
    {E_PT_STORAGE_USER,       "storage root",            IN_STORAGE, {}},
    {E_PT_WORKING,            "working directory",       IN_WORKING, {}},
    {E_PT_DATA,               "data root",               IN_STORAGE, {DATA_FOLDER}, NAMED, {"E_PT_DATA", Precedence::Made}},
    {E_PT_DOWNLOAD,           "picture download folder", IN_HOME_FOR_PICTURES, {PLANNER}, UNNAMED, {"E_PT_DOWNLOAD", Precedence::IfExisting}},
    {E_PT_ENVIRONMENT_CACHE,  "environment cache",       under(E_PT_DATA), {ENVIRONMENTS}, NAMED},
    {E_PT_FONTS,              "fonts",                   IN_APPLICATION, {Folder{"media/fonts"}}},
    {E_PT_INSTALLER,          "installer folder",        under(E_PT_WORKING), {Folder{"installer"}}},
    {E_PathType(13),          "none",                    NOWHERE, {}},
    {E_PT_KMZ_CACHE,          "kmz cache",               under(E_PT_DATA), {KMZ}, NAMED},
    {E_PT_LAUNCHER,           "launcher folder",         under(E_PT_WORKING), {Folder{"launcher"}}},
    {E_PT_LOGS,               "logs",                    IN_STORAGE, {LOGS}},
    {E_PT_MATERIAL_ADDS,      "material add-ons",        under(E_PT_MATERIAL_CACHE), {ADDS}, NAMED},
    {E_PT_MATERIAL_CACHE,     "material cache",          under(E_PT_DATA), {MATERIALS}, NAMED},
    {E_PT_MODEL_ADDS,         "model add-ons",           under(E_PT_MODEL_CACHE), {ADDS}, NAMED},
    {E_PT_MODEL_CACHE,        "model cache",             under(E_PT_DATA), {MODEL}, NAMED},
    {E_PT_OBJECT_MEDIA,       "object media",            IN_APPLICATION, {Folder{"media/objects"}}},
    {E_PT_PROGRAM,            "program folder",          under(E_PT_WORKING), {Folder{"tekluva"}}},
    {E_PT_SCRIPTS,            "scripts",                 IN_APPLICATION, {Folder{"media/scripts"}}},
    {E_PT_SETTINGS,           "settings folder",         IN_STORAGE, {}},
    {E_PT_SHADERS,            "shaders",                 IN_APPLICATION, {Folder{"media/shader"}}},
    {E_PT_STATIC_MEDIA,       "static media",            IN_APPLICATION, {Folder{"media/static"}}},
    {E_PathType(27),          "none",                    NOWHERE, {}},
    {E_PT_TEXTURES,           "textures",                IN_APPLICATION, {Folder{"media/textures"}}},
    {E_PT_TEMP_CACHE,         "temp cache",              under(E_PT_DATA), {TEMP_CACHE}, NAMED},
    {E_PT_DOWNLOADS_FOLDER,   "downloads",               IN_APPLICATIONS, {DOWNLOADS}},
    {E_PT_PACKAGES,           "packages",                IN_WORKING, {PACKAGES}},
    {E_PT_UPLOAD,             "upload folder",           IN_WORKING, {}, UNNAMED, {"E_PT_UPLOAD"}},
    {E_PT_USER_MODELS_GERMAN, "user models, German",     IN_HOME, {PLANER, USER_MODELS_GERMAN, USER_MODEL_ADDS}, NAMED},
    {E_PT_USER_MODELS,        "user models",             IN_HOME, {PLANER, USER_MODELS}, NAMED},
    {E_PT_USER_IMAGES,        "user images",             under(E_PT_DATA), {USER_IMAGES}, NAMED},
    {E_PT_USER_PROJECTS,      "user projects",           IN_HOME, {PLANER, USER_PROJECTS}},
    {E_PT_USER_SCREENSHOT,    "screenshots",             IN_PICTURES, {PLANNER}, UNNAMED, {"E_PT_USER_SCREENSHOT"}},
    {E_PT_WEB_CACHE,          "web cache",               IN_CACHE, {WEB_CACHE}, NAMED},
};
// clang-format on

constexpr bool standInOrder()
{
    int expected = 0;
    for (const PathRow& row : PATHS) {
        if (row.type != ++expected)
            return false;
    }
    return expected == E_PT_WEB_CACHE;
}
static_assert(standInOrder(), "one row per path type, so that a type is an index");

const PathRow* rowOf(E_PathType type)
{
    return type >= E_PT_APPLICATION && type <= E_PT_WEB_CACHE ? &PATHS[type - 1] : nullptr;
}

/// Empty for no folder, and for an application that has not set its name.
QString nameOf(const Folder& folder)
{
    return folder.name == APPLICATION_NAME ? StandardLocations::applicationName()
                                           : QString::fromUtf8(folder.name);
}

/// What a walk does on the disk: the real one makes and enters folders, the other only looks at the map.
class Walk
{
public:
    Walk(const PathOverrides& overrides, bool makes)
        : m_overrides(overrides)
        , m_makes(makes)
    {
    }

    QString to(const PathRow& row) const
    {
        QString chosen = overriding(row);
        if (!chosen.isEmpty())
            return chosen;
        QDir folder(row.start.base ? base(row.start) : to(PATHS[row.start.type - 1]));
        for (const Folder& step : row.folders)
            descend(folder, step);
        return folder.absolutePath();
    }

    /// The folder that the user has set for \p row, when it decides; otherwise empty.
    QString overriding(const PathRow& row) const
    {
        if (!row.override.key)
            return QString();
        const QString chosen = m_overrides(QString::fromLatin1(row.override.key));
        const Precedence precedence = row.override.precedence;
        if (chosen.isEmpty() || (precedence == Precedence::IfExisting && !QFileInfo::exists(chosen)))
            return QString();
        if (precedence == Precedence::Made)
            make(chosen, row.folders.front().cannotCreate);
        return QDir(chosen).absolutePath();
    }

private:
    QString base(const Start& start) const
    {
        // Without names set, a location ends in separators.
        QString folder = QDir::cleanPath(start.base->folder());
        if (start.cannotCreate)
            make(folder, start.cannotCreate);
        return folder;
    }

    void make(const QString& folder, const char* cannotCreate) const
    {
        if (m_makes && !QDir().mkpath(folder))
            logError(cannotCreate);
    }

    void descend(QDir& folder, const Folder& step) const
    {
        const QString name = nameOf(step);
        const bool named =
            step.onlyIfNotNamedBefore && folder.absolutePath().contains(name, Qt::CaseInsensitive);
        if (name.isEmpty() || named)
            return;
        if (!m_makes || !step.cannotCreate) {
            folder.setPath(folder.absoluteFilePath(name));
            return;
        }
        // Looked for again, because somebody else may have made it in between.
        if (!folder.exists(name) && !folder.mkdir(name) && !folder.exists(name))
            logError(step.cannotCreate);
        if (!folder.cd(name))
            logError(step.cannotEnter);
    }

    const PathOverrides& m_overrides;
    const bool m_makes;
};

QString ruleOf(const PathRow& row)
{
    if (!row.start.leadsSomewhere())
        return QString();
    QStringList words;
    words << (row.start.base ? QString::fromLatin1(row.start.base->name)
                             : QStringLiteral("type %1").arg(row.start.type));
    for (const Folder& step : row.folders) {
        if (step.name == APPLICATION_NAME)
            words << QStringLiteral("then the application's name");
        else if (step.name)
            words << QStringLiteral("then \"%1\"").arg(QString::fromUtf8(step.name));
        if (step.onlyIfNotNamedBefore)
            words << QStringLiteral("unless the path holds that word already");
    }
    return words.join(QStringLiteral(", "));
}

PathDescription describe(const PathRow& row, const Walk& walk)
{
    const QString path = row.start.leadsSomewhere() ? walk.to(row) + QLatin1Char('/') : QString();
    return {row.type,
            QString::fromLatin1(row.role),
            ruleOf(row),
            QString::fromLatin1(row.override.key),
            !walk.overriding(row).isEmpty(),
            path,
            !path.isEmpty() && QFileInfo::exists(path)};
}

} // namespace

QString resolvePath(E_PathType type, const PathOverrides& overrides)
{
    const PathRow* row = rowOf(type);
    if (!row || !row->start.leadsSomewhere())
        return QString();
    return Walk(overrides, true).to(*row) + QLatin1Char('/');
}

QString overrideKey(E_PathType type)
{
    const PathRow* row = rowOf(type);
    return row ? QString::fromLatin1(row->override.key) : QString();
}

QString fixedDirName(E_PathType type)
{
    const PathRow* row = rowOf(type);
    if (!row || row->dirName == UNNAMED)
        return QString();
    const auto last = std::find_if(row->folders.rbegin(), row->folders.rend(),
                                   [](const Folder& folder) { return folder.name != nullptr; });
    return QString::fromUtf8(last->name);
}

QList<PathDescription> describePaths()
{
    const PathOverrides none = [](const QString&) { return QString(); };
    const QString settingsFile =
        Walk(none, false).to(*rowOf(E_PT_SETTINGS)) + QLatin1Char('/') + SettingsKeys::FILE_NAME;
    QObject owner; // deletes the store with this scope, also in a thread without an event loop
    const Settings settings(settingsFile, QSettings::IniFormat, &owner);
    const PathOverrides overrides = [&settings](const QString& key) {
        return settings.getSetting(SettingsKeys::USER_PATHS, key).toString();
    };
    const Walk walk(overrides, false);
    QList<PathDescription> descriptions;
    for (const PathRow& row : PATHS)
        descriptions << describe(row, walk);
    return descriptions;
}

} // namespace TEKLUVA
