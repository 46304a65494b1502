#include "globals/configuration/PathTable_p.h"

#include "globals/system/StandardLocations_p.h"

#include <QCoreApplication>
#include <QDir>

#include <iterator>

namespace TEKLUVA {

namespace {

constexpr BaseFolder APPLICATION = {&QCoreApplication::applicationDirPath, "application folder"};
constexpr BaseFolder WORKING = {&QDir::currentPath, "working directory"};
constexpr BaseFolder DATA = {&StandardLocations::data, "data location"};
constexpr BaseFolder HOME = {&StandardLocations::home, "home"};
constexpr BaseFolder PICTURES = {&StandardLocations::pictures, "pictures location"};
constexpr BaseFolder CACHE = {&StandardLocations::cache, "cache location"};
constexpr BaseFolder APPLICATIONS = {&StandardLocations::applications, "applications location"};

constexpr PathStart NONE = {};
constexpr PathStart IN_APPLICATION = {&APPLICATION};
constexpr PathStart IN_WORKING = {&WORKING};
constexpr PathStart IN_STORAGE = {&DATA, "Could not create storage path."};
constexpr PathStart IN_HOME = {&HOME, "Could not create user path."};
constexpr PathStart IN_HOME_FOR_PICTURES = {&HOME, "Could not create picture path."};
constexpr PathStart IN_PICTURES = {&PICTURES, "Could not create picture path."};
constexpr PathStart IN_CACHE = {&CACHE, "Could not create cache path."};
constexpr PathStart IN_APPLICATIONS = {&APPLICATIONS, "Could not create user path."};

constexpr PathStart under(E_PathType type)
{
    return {nullptr, nullptr, type};
}

/// Stands for the name that the application has set.
constexpr const char* APPLICATION_NAME = "";

constexpr PathStep TMP = {"tmp", "Could not create tmp directory", "Could not browse into tmp directory"};
constexpr PathStep PROJECTS = {"projects", "Could not create projects directory",
                               "Could not browse into projects directory"};
constexpr PathStep USER_PROJECTS = {"Meine Projekte", "Could not create projects directory",
                                    "Could not browse into projects directory"};
constexpr PathStep DATA_FOLDER = {"data", "Could not create data directory",
                                  "Could not browse into data directory"};
// The messages name the model cache: that is meant.
constexpr PathStep ENVIRONMENTS = {"environments", "Could not create model cache directory",
                                   "Could not browse into model cache directory"};
constexpr PathStep MODEL = {"model", "Could not create model cache directory",
                            "Could not browse into model cache directory"};
constexpr PathStep MATERIALS = {"materials", "Could not create material cache directory",
                                "Could not browse into material cache directory"};
constexpr PathStep KMZ = {"kmz", "Could not create kmz cache directory",
                          "Could not browse into kmz cache directory"};
constexpr PathStep TEMP_CACHE = {"tmp", "Could not create temp cache directory",
                                 "Could not browse into temp cache directory"};
constexpr PathStep LOGS = {"logs", "Could not create logs directory", "Could not browse into logs directory"};
constexpr PathStep ADDS = {"adds", "Could not create adds directory", "Could not browse into adds directory"};
constexpr PathStep USER_MODEL_ADDS = {"adds", "Could not create usermodel adds directory",
                                      "Could not browse into usermodel  adds directory"};
constexpr PathStep USER_MODELS_GERMAN = {"Meine Modelle", "Could not create usermodel directory",
                                         "Could not browse into usermodel directory"};
constexpr PathStep USER_MODELS = {"My models", "Could not create usermodel directory",
                                  "Could not browse into usermodel directory"};
constexpr PathStep USER_IMAGES = {"userimages", "Could not create user plot images directory",
                                  "Could not browse into user plot images directory"};
constexpr PathStep DOWNLOADS = {"Downloads", "Could not create download directory",
                                "Could not browse into download directory"};
constexpr PathStep PACKAGES = {"packages", "Could not create packages directory",
                               "Could not browse into packages directory"};
constexpr PathStep WEB_CACHE = {"tekluva", "Could not create web cache directory",
                                "Could not browse into web cache directory", true};
// The messages spell the product with a double n for pictures, and with one n for models and projects: that
// is meant.
constexpr PathStep PLANNER = {APPLICATION_NAME, "Could not create \"tekluva 3D-Planner\" directory",
                              "Could not browse into \"tekluva 3D-Planner\" directory"};
constexpr PathStep PLANER = {APPLICATION_NAME, "Could not create \"tekluva 3D-Planer\" directory",
                             "Could not browse into \"tekluva 3D-Planer\" directory"};

constexpr auto NAMED = DirName::LastStep;
constexpr auto UNNAMED = DirName::None;

// A row per type: role, start, steps, folder name, override.
// clang-format off
constexpr PathRow PATHS[] = {
    {E_PT_APPLICATION,        "application directory",   IN_APPLICATION, {}},
    {E_PT_STORAGE_PROJECTS,   "storage projects",        IN_STORAGE, {PROJECTS}},
    {E_PT_STORAGE,            "storage root",            IN_STORAGE, {}},
    {E_PT_STORAGE_COMMON,     "storage root",            IN_STORAGE, {}},
    {E_PT_WORKING_TEMP,       "working temp folder",     IN_WORKING, {TMP}},
    {E_PT_STORAGE_USER,       "storage root",            IN_STORAGE, {}},
    {E_PT_WORKING,            "working directory",       IN_WORKING, {}},
    {E_PT_DATA,               "data root",               IN_STORAGE, {DATA_FOLDER}, NAMED, {"E_PT_DATA", Precedence::AlwaysCreated}},
    {E_PT_DOWNLOAD,           "picture download folder", IN_HOME_FOR_PICTURES, {PLANNER}, UNNAMED, {"E_PT_DOWNLOAD", Precedence::IfExisting}},
    {E_PT_ENVIRONMENT_CACHE,  "environment cache",       under(E_PT_DATA), {ENVIRONMENTS}, NAMED},
    {E_PT_FONTS,              "fonts",                   IN_APPLICATION, {PathStep{"media/fonts"}}},
    {E_PT_INSTALLER,          "installer folder",        under(E_PT_WORKING), {PathStep{"installer"}}},
    {E_PathType(13),          "none",                    NONE, {}},
    {E_PT_KMZ_CACHE,          "kmz cache",               under(E_PT_DATA), {KMZ}, NAMED},
    {E_PT_LAUNCHER,           "launcher folder",         under(E_PT_WORKING), {PathStep{"launcher"}}},
    {E_PT_LOGS,               "logs",                    IN_STORAGE, {LOGS}},
    {E_PT_MATERIAL_ADDS,      "material add-ons",        under(E_PT_MATERIAL_CACHE), {ADDS}, NAMED},
    {E_PT_MATERIAL_CACHE,     "material cache",          under(E_PT_DATA), {MATERIALS}, NAMED},
    {E_PT_MODEL_ADDS,         "model add-ons",           under(E_PT_MODEL_CACHE), {ADDS}, NAMED},
    {E_PT_MODEL_CACHE,        "model cache",             under(E_PT_DATA), {MODEL}, NAMED},
    {E_PT_OBJECT_MEDIA,       "object media",            IN_APPLICATION, {PathStep{"media/objects"}}},
    {E_PT_PROGRAM,            "program folder",          under(E_PT_WORKING), {PathStep{"tekluva"}}},
    {E_PT_SCRIPTS,            "scripts",                 IN_APPLICATION, {PathStep{"media/scripts"}}},
    {E_PT_SETTINGS,           "settings folder",         IN_STORAGE, {}},
    {E_PT_SHADERS,            "shaders",                 IN_APPLICATION, {PathStep{"media/shader"}}},
    {E_PT_STATIC_MEDIA,       "static media",            IN_APPLICATION, {PathStep{"media/static"}}},
    {E_PathType(27),          "none",                    NONE, {}},
    {E_PT_TEXTURES,           "textures",                IN_APPLICATION, {PathStep{"media/textures"}}},
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

constexpr bool typesAreInOrder()
{
    int expected = 0;
    for (const PathRow& row : PATHS) {
        if (row.type != ++expected)
            return false;
    }
    return true;
}
static_assert(typesAreInOrder(), "one row for each path type, so that a type is an index");

} // namespace

Rows<PathRow> pathRows()
{
    return Rows(PATHS);
}

const PathRow* pathRow(E_PathType type)
{
    const bool isKnown = type > 0 && type <= static_cast<int>(std::size(PATHS));
    return isKnown ? &PATHS[type - 1] : nullptr;
}

} // namespace TEKLUVA
