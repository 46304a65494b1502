#include "globals/globals.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstring>

namespace TEKLUVA {

namespace {

void lowerCase(std::string& text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
}

template <typename Real>
Real wrapOnce(Real value, Real min, Real max)
{
    if (value < min)
        return value + (max - min);
    if (value >= max)
        return value - (max - min);
    return value;
}

} // namespace

bool cmp(std::string a, std::string b, bool caseSensitive)
{
    if (!caseSensitive) {
        lowerCase(a);
        lowerCase(b);
    }
    return std::strcmp(a.c_str(), b.c_str()) == 0;
}

double wrapToRange(double value, double min, double max)
{
    return wrapOnce(value, min, max);
}

float wrapToRange(float value, float min, float max)
{
    return wrapOnce(value, min, max);
}

int wrapToRange(int value, int min, int max)
{
    // Unsigned: near the ends of int an intermediate result may exceed 32 bits, and then it must wrap around.
    const auto v = static_cast<std::uint32_t>(value);
    const auto low = static_cast<std::uint32_t>(min);
    const auto high = static_cast<std::uint32_t>(max);
    if (value < min)
        return static_cast<int>((v - low) + high);
    if (value >= max)
        return static_cast<int>((low + v) - high);
    return value;
}

} // namespace TEKLUVA
