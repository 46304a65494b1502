#pragma once

/// Where the settings file keeps what is recorded of a run.
namespace TEKLUVA::RuntimeKeys {

inline constexpr const char* APPLICATION = "Application";
inline constexpr const char* STATE = "last_runtime_state";
inline constexpr const char* ERROR_CODE = "pec";
inline constexpr const char* LIFE_TIME = "last_life_time";
inline constexpr const char* TIME_SYNC = "time_sync";
inline constexpr const char* AUTO_SAVE = "ass";

inline constexpr const char* LOCALE = "Locale";
inline constexpr const char* LANGUAGE = "Language";

} // namespace TEKLUVA::RuntimeKeys
