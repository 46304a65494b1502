#pragma once

/// \file
/// The common header: the enumerations that several classes share, the names of the scene states and two
/// small helpers. Everything in it may be used from any thread.

#include "globals/globals_export.h"

#include <array>
#include <string>

/// The namespace of the whole library.
namespace TEKLUVA {

/// Severity of a log entry. The values are single bits, so that a viewer can filter with a mask.
enum E_LogLevel : int {
    E_LL_DEBUG = 1024,
    E_LL_INFO = 2048,
    E_LL_WARNING = 4096,
    E_LL_ERROR = 8192,
};

/// The folders that ConfigManager::getPath() returns. The numbers are the contract with the application; 13
/// and 27 have no folder.
enum E_PathType : int {
    E_PT_APPLICATION = 1,
    E_PT_STORAGE_PROJECTS = 2,
    E_PT_STORAGE = 3,        ///< the user's data
    E_PT_STORAGE_COMMON = 4, ///< the same as E_PT_STORAGE
    E_PT_WORKING_TEMP = 5,
    E_PT_STORAGE_USER = 6, ///< the same as E_PT_STORAGE
    E_PT_WORKING = 7,
    E_PT_DATA = 8,
    E_PT_DOWNLOAD = 9, ///< pictures that the user downloads
    E_PT_ENVIRONMENT_CACHE = 10,
    E_PT_FONTS = 11,
    E_PT_INSTALLER = 12,
    E_PT_KMZ_CACHE = 14,
    E_PT_LAUNCHER = 15,
    E_PT_LOGS = 16,
    E_PT_MATERIAL_ADDS = 17,
    E_PT_MATERIAL_CACHE = 18,
    E_PT_MODEL_ADDS = 19,
    E_PT_MODEL_CACHE = 20,
    E_PT_OBJECT_MEDIA = 21,
    E_PT_PROGRAM = 22,
    E_PT_SCRIPTS = 23,
    E_PT_SETTINGS = 24, ///< the same as E_PT_STORAGE
    E_PT_SHADERS = 25,
    E_PT_STATIC_MEDIA = 26,
    E_PT_TEXTURES = 28,
    E_PT_TEMP_CACHE = 29,
    E_PT_DOWNLOADS_FOLDER = 30, ///< beside the applications of the desktop
    E_PT_PACKAGES = 31,
    E_PT_UPLOAD = 32,
    E_PT_USER_MODELS_GERMAN = 33,
    E_PT_USER_MODELS = 34,
    E_PT_USER_IMAGES = 35,
    E_PT_USER_PROJECTS = 36,
    E_PT_USER_SCREENSHOT = 37,
    E_PT_WEB_CACHE = 38,
};

/// How far a run of the application has come, or how it ended.
enum E_RuntimeState : int {
    E_RS_INITIALIZING = 1, ///< the start has begun
    E_RS_STARTED = 2,      ///< the application is in use
    E_RS_CLOSING = 3,      ///< the end has begun
    E_RS_CRASHING = 4,     ///< the application is ending by a failure
    E_RS_SHUTDOWN = 5,     ///< a clean end
    E_RS_CRASHED = 6,      ///< ended by a failure; any unknown word in the settings reads as this, too
    E_RS_UPDATING = 7,     ///< an update had begun and did not end
    E_RS_FIRST_START = 8,  ///< nothing is recorded
    E_RS_RESTART = 9,      ///< ended to start again
};

/// The result of ConfigManager::compareVersion().
enum E_VersionComparison : int {
    E_VC_LOWER = 1,
    E_VC_EQUAL = 2,
    E_VC_HIGHER = 3,         ///< the first version is the newer one
    E_VC_FIRST_INVALID = 4,  ///< a compared part of the first version is no number
    E_VC_SECOND_INVALID = 5, ///< a compared part of the second version is no number
};

/// The images that a cube map is rendered into.
enum E_OffscreenImage : int {
    E_OI_COLOR = 1,
    E_OI_DEPTH = 2,
    E_OI_NORMAL = 3,
    E_OI_ID = 4, ///< the id of the object seen at each pixel
};

/// The application's own kinds of documents.
enum E_FileSuffixType : int {
    E_FST_RGM = 1,  ///< a project
    E_FST_ARGM = 2, ///< an auto-saved project
};

/// The fonts that the application draws with.
enum E_FontType : int {
    E_FT_MEASUREMENT = 1,
};

/// The units of display. Inside the application all geometry is in centimetres.
enum E_MeasurementUnit : int {
    E_MU_UNDEFINED = 0, ///< behaves exactly like centimetre everywhere
    E_MU_MILLIMETER = 1,
    E_MU_CENTIMETER = 2,
    E_MU_METER = 3,
    E_MU_INCH = 4,
    E_MU_FOOT = 5,
};

/// Whether a measured value is a length, an area or a volume.
enum E_MeasurementDimension : int {
    E_MD_LINEAR = 1,  ///< a length
    E_MD_SQUARED = 2, ///< an area
    E_MD_CUBIC = 3,   ///< a volume
};

/// The kind of a status message. The library passes it through unchanged and uses E_ST_NONE only. An
/// application may define kinds of its own, with any numbers, instead of the other names.
enum E_StateType : int {
    E_ST_NONE = 0, ///< there is no message
    E_ST_INFORMATION = 1,
    E_ST_WARNING = 2,
    E_ST_ERROR = 3,
};

/// The names of the application's scene states, in the order of the scene code's numbers. The library itself
/// does not read them.
inline constexpr std::array<const char*, 6> SCENE_STATE_NAMES = {
    "MOVE_STATE",         "STILL_STATE", "AO_STILL_STATE", "PHOTO_STATE", "WALL_CONSTRUCTION_STATE",
    "POLYGON_VIEW_STATE",
};

/// True when both texts are equal up to their first zero byte. With \p caseSensitive false both are
/// lower-cased first, byte by byte in the current C locale, so letters outside ASCII keep their case.
[[nodiscard]] GLOBALS_EXPORT bool cmp(std::string a, std::string b, bool caseSensitive);

/// \name Wrapping into the half-open range [min, max)
/// The width of the range is added or subtracted at most once: a value more than one width outside stays
/// outside. \p max itself maps to \p min. The int form wraps around in 32 bits instead of overflowing.
/// @{
[[nodiscard]] GLOBALS_EXPORT double wrapToRange(double value, double min, double max);
[[nodiscard]] GLOBALS_EXPORT float wrapToRange(float value, float min, float max);
[[nodiscard]] GLOBALS_EXPORT int wrapToRange(int value, int min, int max);
/// @}

} // namespace TEKLUVA
