#pragma once

#include "globals/globals_export.h"

#include <QString>

#include <filesystem>

namespace TEKLUVA {

/// Whether \p path is the folder \p folder or lies below it, once the links on the way are resolved. The
/// folder must exist; of the path, what does not exist yet counts as it is named. False also when that cannot
/// be told. Reentrant.
GLOBALS_EXPORT bool isWithin(const std::filesystem::path& path, const std::filesystem::path& folder);
GLOBALS_EXPORT bool isWithin(const QString& path, const QString& folder);

} // namespace TEKLUVA
