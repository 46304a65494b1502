#include "support/LightColour.h"

#include "support/Failure.h"

#include "globals/Colour.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace globalsctl {

namespace {

constexpr float FULL = 255;

/// With a largest component of 1, as colourOf() has them.
Components atFullBrightness(Components rgb)
{
    TEKLUVA::norm_rgb(rgb[0], rgb[1], rgb[2]);
    return rgb;
}

/// The nearest one of the temperatures from \p first to \p last, \p step apart.
int nearestOf(int first, int last, int step, const Components& rgb)
{
    int nearest = first;
    float best = distanceTo(first, rgb);
    for (int kelvin = first + step; kelvin <= last; kelvin += step) {
        const float distance = distanceTo(kelvin, rgb);
        if (distance < best) {
            best = distance;
            nearest = kelvin;
        }
    }
    return nearest;
}

} // namespace

Components colourOf(double kelvin)
{
    Components rgb = {};
    TEKLUVA::temperaturToColor(kelvin, rgb[0], rgb[1], rgb[2]);
    if (!std::all_of(rgb.begin(), rgb.end(), [](float component) { return std::isfinite(component); }))
        throw Failure(
            QStringLiteral("the light of %1 kelvins is too weak or too strong to compute its colour")
                .arg(kelvin));
    return rgb;
}

Components clamped(Components rgb)
{
    for (float& component : rgb)
        component = std::clamp(component, 0.0F, 1.0F);
    return rgb;
}

Components hsvOf(const Components& rgb)
{
    Components hsv = {};
    TEKLUVA::RGBtoHSV(rgb[0], rgb[1], rgb[2], hsv[0], hsv[1], hsv[2]);
    return hsv;
}

int byteOf(float component)
{
    return static_cast<int>(std::lround(component * FULL));
}

QString hexOf(const Components& rgb)
{
    QString hex(QLatin1Char('#'));
    for (const float component : rgb)
        hex += QStringLiteral("%1").arg(byteOf(component), 2, 16, QLatin1Char('0'));
    return hex;
}

std::optional<Components> colourFromHex(const QString& text)
{
    static const QRegularExpression FORM(QStringLiteral("\\A#?([0-9a-fA-F]{6})\\z"));
    const uint code = FORM.match(text).captured(1).toUInt(nullptr, 16);
    if (code == 0)
        return std::nullopt;
    constexpr uint BYTE = 0xff;
    return Components{static_cast<float>(code >> 16U) / FULL, static_cast<float>((code >> 8U) & BYTE) / FULL,
                      static_cast<float>(code & BYTE) / FULL};
}

int nearestTemperature(const Components& rgb)
{
    constexpr int COARSE = 50;
    const int near = nearestOf(COLDEST, HOTTEST, COARSE, rgb);
    return nearestOf(std::max(near - COARSE, COLDEST), std::min(near + COARSE, HOTTEST), 1, rgb);
}

float distanceTo(double kelvin, const Components& rgb)
{
    const Components given = atFullBrightness(rgb);
    const Components light = clamped(colourOf(kelvin));
    return std::hypot(given[0] - light[0], given[1] - light[1], given[2] - light[2]);
}

} // namespace globalsctl
