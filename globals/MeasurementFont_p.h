#pragma once

#include <QLatin1String>

namespace TEKLUVA {

/// The family of the font that measurements are drawn in.
inline constexpr QLatin1String MEASUREMENT_FONT{"OpenSansSemibold"};

} // namespace TEKLUVA
