#pragma once

#include "globals/Latin1.h"

namespace TEKLUVA {

/// The family of the font that measurements are drawn in.
inline constexpr QLatin1String MEASUREMENT_FONT = latin1("OpenSansSemibold");

} // namespace TEKLUVA
