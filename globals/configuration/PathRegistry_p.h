#pragma once

#include "globals/globals.h"

#include <QString>

#include <functional>

namespace TEKLUVA {

/// Answers the value of a key in the group SettingsKeys::USER_PATHS, empty when it is not set.
using PathOverrides = std::function<QString(const QString& key)>;

/// Walks to the folder of \p type, making what is missing on the way. Each step that fails logs its error,
/// and the walk goes on with what it has. The result ends in "/"; it is empty for a type that is not handled.
QString resolvePath(E_PathType type, const PathOverrides& overrides);

/// The settings key that overrides \p type, empty when users cannot override it.
QString overrideKey(E_PathType type);

/// The fixed folder name of \p type, empty for a type that has none.
QString fixedDirName(E_PathType type);

} // namespace TEKLUVA
