#pragma once

#include "globals/foundation/Latin1_p.h"

/// Names in the user's settings. Data is lost where two places spell them differently.
namespace TEKLUVA::SettingsKeys {

/// In the folder E_PT_SETTINGS.
inline constexpr QLatin1String FILE_NAME = latin1("settings.ini");

/// \name What is recorded of a run
/// @{
inline constexpr QLatin1String APPLICATION = latin1("Application"); ///< the group
inline constexpr QLatin1String STATE = latin1("last_runtime_state");
inline constexpr QLatin1String ERROR_CODE = latin1("pec");
inline constexpr QLatin1String LIFE_TIME = latin1("last_life_time");
inline constexpr QLatin1String TIME_SYNC = latin1("time_sync");
inline constexpr QLatin1String AUTO_SAVE = latin1("ass");
/// @}

/// \name How values are shown
/// @{
inline constexpr QLatin1String LOCALE = latin1("Locale"); ///< the group
inline constexpr QLatin1String LANGUAGE = latin1("Language");
inline constexpr QLatin1String CONSTRUCTION_UNIT = latin1("const_unit");
inline constexpr QLatin1String ARRANGEMENT_UNIT = latin1("arrange_unit");
/// @}

/// The group in which users override folders, by the keys of the path registry.
inline constexpr QLatin1String USER_PATHS = latin1("User_Pathes");

} // namespace TEKLUVA::SettingsKeys
