#pragma once

#include "globals/globals.h"

#include <QString>

#include <functional>

namespace TEKLUVA {

/// The settings group and, per path type, the key under which users override a folder.
inline constexpr const char* USER_PATHS_GROUP = "User_Pathes";

/// Answers the value of a key in USER_PATHS_GROUP, empty when it is not set.
using PathOverrides = std::function<QString(const QString& key)>;

/// Walks to the folder of \p type, making what is missing on the way. Each step that fails logs its error,
/// and the walk goes on with what it has. The result ends in "/"; it is empty for a type that is not handled.
QString resolvePath(E_PathType type, const PathOverrides& overrides);

/// The settings key that overrides \p type, empty when users cannot override it.
QString overrideKey(E_PathType type);

/// The fixed folder name of \p type, empty for a type that has none.
QString fixedDirName(E_PathType type);

} // namespace TEKLUVA
