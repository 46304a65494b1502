#pragma once

#include <QLatin1String>

/// Names in the user's settings. Data is lost where two places spell them differently.
namespace TEKLUVA::SettingsKeys {

/// In the folder E_PT_SETTINGS.
inline constexpr QLatin1String FILE_NAME{"settings.ini"};

/// \name What is recorded of a run
/// @{
inline constexpr QLatin1String APPLICATION{"Application"}; ///< the group
inline constexpr QLatin1String STATE{"last_runtime_state"};
inline constexpr QLatin1String ERROR_CODE{"pec"};
inline constexpr QLatin1String LIFE_TIME{"last_life_time"};
inline constexpr QLatin1String TIME_SYNC{"time_sync"};
inline constexpr QLatin1String AUTO_SAVE{"ass"};
/// @}

/// \name How values are shown
/// @{
inline constexpr QLatin1String LOCALE{"Locale"}; ///< the group
inline constexpr QLatin1String LANGUAGE{"Language"};
inline constexpr QLatin1String CONSTRUCTION_UNIT{"const_unit"};
inline constexpr QLatin1String ARRANGEMENT_UNIT{"arrange_unit"};
/// @}

/// The group in which users override folders, by the keys of the path registry.
inline constexpr QLatin1String USER_PATHS{"User_Pathes"};

} // namespace TEKLUVA::SettingsKeys
