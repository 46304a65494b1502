#pragma once

#include <QLatin1String>

namespace TEKLUVA {

/// \p text as a constant. QLatin1String measures it with strlen(), which is no constant for every compiler.
template <int SIZE>
constexpr QLatin1String latin1(const char (&text)[SIZE]) // NOLINT(cppcoreguidelines-avoid-c-arrays)
{
    return QLatin1String(text, SIZE - 1);
}

} // namespace TEKLUVA
