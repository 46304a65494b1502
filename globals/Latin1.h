#pragma once

#include <QLatin1String>

namespace TEKLUVA {

/// \p text as a constant, with any compiler: the constructor of QLatin1String that measures the text calls
/// strlen(), which is a constant expression with some compilers only.
///
///     inline constexpr QLatin1String GROUP = latin1("Application");
template <int SIZE>
constexpr QLatin1String latin1(const char (&text)[SIZE]) // NOLINT(cppcoreguidelines-avoid-c-arrays)
{
    return QLatin1String(text, SIZE - 1);
}

} // namespace TEKLUVA
