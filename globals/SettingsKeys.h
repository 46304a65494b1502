#pragma once

#include "globals/Latin1.h"

/// The names of the library's own groups and keys in the user's settings, for programs that read the file
/// without a ConfigManager. The spelling is what users' files have; it does not change.
namespace TEKLUVA::SettingsKeys {

/// The settings file, in the folder E_PT_SETTINGS.
inline constexpr QLatin1String FILE_NAME = latin1("settings.ini");

/// \name What is recorded of a run
/// lastRunFrom() reads it.
/// @{
inline constexpr QLatin1String APPLICATION = latin1("Application"); ///< the group
inline constexpr QLatin1String STATE = latin1("last_runtime_state");
inline constexpr QLatin1String ERROR_CODE = latin1("pec");
inline constexpr QLatin1String LIFE_TIME = latin1("last_life_time");
inline constexpr QLatin1String TIME_SYNC = latin1("time_sync");
inline constexpr QLatin1String AUTO_SAVE = latin1("ass");
/// Who recorded the state. Up to version 2.0 these are neither written nor removed.
inline constexpr QLatin1String PROCESS = latin1("run_pid");
inline constexpr QLatin1String PROCESS_START = latin1("run_start");
inline constexpr QLatin1String BOOT = latin1("run_boot");
/// @}

/// \name How values are shown
/// @{
inline constexpr QLatin1String LOCALE = latin1("Locale"); ///< the group
inline constexpr QLatin1String LANGUAGE = latin1("Language");
inline constexpr QLatin1String CONSTRUCTION_UNIT = latin1("const_unit");
inline constexpr QLatin1String ARRANGEMENT_UNIT = latin1("arrange_unit");
/// @}

/// The group in which users override folders, by PathDescription::overrideKey.
inline constexpr QLatin1String USER_PATHS = latin1("User_Pathes");

} // namespace TEKLUVA::SettingsKeys
