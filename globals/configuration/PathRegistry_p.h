#pragma once

#include "globals/globals.h"

#include <QString>

#include <functional>

namespace TEKLUVA {

/// Returns the value of a key in the group SettingsKeys::USER_PATHS, empty when it is not set.
using PathOverrides = std::function<QString(const QString& key)>;

/// The folder of \p type. Missing folders are created on the way; a step that fails logs its error, and the
/// next step starts from the folder reached. The result ends in "/"; it is empty for a type that has no path.
QString resolvePath(E_PathType type, const PathOverrides& overrides);

/// The settings key that overrides \p type, empty when users cannot override it.
QString overrideKey(E_PathType type);

/// Why \p path, set as the folder of \p type, may not be used as it stands; empty when it is.
QString overrideDoubt(E_PathType type, const QString& path);

/// The fixed folder name of \p type, empty for a type that has none.
QString fixedDirName(E_PathType type);

} // namespace TEKLUVA
