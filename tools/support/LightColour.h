#pragma once

#include <QString>

#include <array>
#include <optional>

/// The colours of black bodies, as linear light.
namespace globalsctl {

/// Red, green and blue, or hue, saturation and value.
using Components = std::array<float, 3>;

/// \name The temperatures, in kelvin, that lamps and skies have
/// @{
constexpr int COLDEST = 1000;
constexpr int HOTTEST = 12000;
/// @}

/// Throws Failure for a temperature whose light is too weak or too strong to compute.
Components colourOf(double kelvin);
/// What a screen can show of \p rgb.
Components clamped(Components rgb);
Components hsvOf(const Components& rgb);
int byteOf(float component);

/// "#ff7927".
QString hexOf(const Components& rgb);
/// The colour that \p text stands for, with or without "#". Nothing for other text, and for black, which has
/// no colour.
std::optional<Components> colourFromHex(const QString& text);

/// The temperature from COLDEST to HOTTEST whose colour is the nearest to \p rgb at the same brightness.
int nearestTemperature(const Components& rgb);
/// How far \p rgb is from the colour of \p kelvin at the same brightness: 0 for the same.
float distanceTo(double kelvin, const Components& rgb);

} // namespace globalsctl
