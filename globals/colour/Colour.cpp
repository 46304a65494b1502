#include "globals/Colour.h"

#include "globals/colour/CieColourMatch_p.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace TEKLUVA {

double _bbTemp = 5000;

namespace {

struct Vector
{
    float x, y, z;
};

Vector cross(const Vector& a, const Vector& b)
{
    return {a.y * b.z - b.y * a.z, b.x * a.z - a.x * b.z, a.x * b.y - b.x * a.y};
}

float dot(const Vector& a, const Vector& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

/// The third coordinate of a chromaticity follows from the others.
Vector chromaticity(double x, double y)
{
    const auto xc = static_cast<float>(x);
    const auto yc = static_cast<float>(y);
    return {xc, yc, 1 - (xc + yc)};
}

/// One component of \p colour: \p row of the inverse of the primaries' matrix, scaled to the white.
float component(Vector row, const Vector& white, const Vector& colour)
{
    const float scale = dot(row, white) / white.y;
    row = {row.x / scale, row.y / scale, row.z / scale};
    return dot(row, colour);
}

void toRgb(const colourSystem& system, const Vector& colour, float& r, float& g, float& b)
{
    const Vector red = chromaticity(system.xRed, system.yRed);
    const Vector green = chromaticity(system.xGreen, system.yGreen);
    const Vector blue = chromaticity(system.xBlue, system.yBlue);
    const Vector white = chromaticity(system.xWhite, system.yWhite);
    r = component(cross(green, blue), white, colour);
    g = component(cross(blue, red), white, colour);
    b = component(cross(red, green), white, colour);
}

/// Below this the transfer curve of Rec. 709 is a straight line.
constexpr double REC709_LINEAR_BELOW = 0.018;

double rec709Curve(double c)
{
    return 1.099 * std::pow(c, 0.45) - 0.099;
}

/// The chromaticity of a spectrum, whose \p intensityAt is called for the wavelengths in rising order.
template <typename Intensity>
Vector chromaticityOf(Intensity intensityAt)
{
    Vector sum = {0, 0, 0};
    float wavelength = CIE_FIRST_WAVELENGTH;
    for (const auto& match : cie_colour_match) {
        const auto intensity = static_cast<float>(intensityAt(static_cast<double>(wavelength)));
        sum.x += intensity * match[0];
        sum.y += intensity * match[1];
        sum.z += intensity * match[2];
        wavelength += CIE_WAVELENGTH_STEP;
    }
    const float all = sum.x + sum.y + sum.z;
    return {sum.x / all, sum.y / all, sum.z / all};
}

/// What Planck's law needs of a wavelength, whatever the temperature is.
struct Emitter
{
    double metres;
    double factor;
};

Emitter emitterAt(double nanometres)
{
    constexpr double FIRST_RADIATION = 3.74183e-16; // W m^2, 2 pi h c^2
    const double metres = nanometres * 1e-9;
    return {metres, FIRST_RADIATION * std::pow(metres, -5.0)};
}

double emission(const Emitter& emitter, double kelvin)
{
    constexpr double SECOND_RADIATION = 0.014388; // m K, h c / k
    return emitter.factor / (std::exp(SECOND_RADIATION / (emitter.metres * kelvin)) - 1);
}

using Emitters = std::array<Emitter, std::size(cie_colour_match)>;

Emitters emittersOfObserver()
{
    Emitters emitters = {};
    float wavelength = CIE_FIRST_WAVELENGTH;
    for (Emitter& emitter : emitters) {
        emitter = emitterAt(static_cast<double>(wavelength));
        wavelength += CIE_WAVELENGTH_STEP;
    }
    return emitters;
}

/// As spectrum_to_xyz() has it for bb_spectrum(), bit for bit, but a power costs twice an exponential, and
/// these powers are always the same.
Vector blackBodyChromaticity(double kelvin)
{
    static const Emitters EMITTERS = emittersOfObserver();
    const Emitter* emitter = EMITTERS.data();
    return chromaticityOf([&emitter, kelvin](double) { return emission(*emitter++, kelvin); });
}

/// The sector of 60 degrees that a hue is in. Numbers below 0 wrap around, as those of an unsigned integer
/// do; for what is out of its range, or no number, the greatest one stands.
unsigned sectorOf(float sixths)
{
    const float whole = std::floor(sixths);
    if (std::abs(whole) < 0x1p32F)
        return static_cast<unsigned>(static_cast<long long>(whole));
    return std::numeric_limits<unsigned>::max();
}

} // namespace

void upvp_to_xy(const double& up, const double& vp, double& x, double& y)
{
    const double divisor = 6 * up - 16 * vp + 12;
    x = 9 * up / divisor;
    y = 4 * vp / divisor;
}

void xy_to_upvp(const double& x, const double& y, double& up, double& vp)
{
    const double divisor = -2 * x + 12 * y + 3;
    up = 4 * x / divisor;
    vp = 9 * y / divisor;
}

void xyz_to_rgb(const colourSystem* cs, const float& xc, const float& yc, const float& zc, float& r, float& g,
                float& b)
{
    toRgb(*cs, {xc, yc, zc}, r, g, b);
}

void xyz_to_rgb(colourSystem* cs, const float& xc, const float& yc, const float& zc, float& r, float& g,
                float& b)
{
    toRgb(*cs, {xc, yc, zc}, r, g, b);
}

bool inside_gamut(const double& r, const double& g, const double& b)
{
    return r >= 0 && g >= 0 && b >= 0;
}

bool constrain_rgb(double& r, double& g, double& b)
{
    const double lowest = std::min({0.0, r, g, b});
    if (!(-lowest > 0))
        return false;
    r -= lowest;
    g -= lowest;
    b -= lowest;
    return true;
}

void norm_rgb(float& r, float& g, float& b)
{
    const float greatest = std::max({r, g, b});
    if (greatest > 0) {
        r /= greatest;
        g /= greatest;
        b /= greatest;
    }
}

void spectrum_to_xyz(double (*spec_intens)(const double&), float& x, float& y, float& z)
{
    const Vector colour = chromaticityOf(spec_intens);
    x = colour.x;
    y = colour.y;
    z = colour.z;
}

double bb_spectrum(const double& wavelength)
{
    return emission(emitterAt(wavelength), _bbTemp);
}

void temperaturToColor(const double& kelvin, float& r, float& g, float& b)
{
    _bbTemp = kelvin;
    toRgb(Rec709system, blackBodyChromaticity(kelvin), r, g, b);
    norm_rgb(r, g, b);
}

void gamma_correct(const colourSystem* cs, double& c)
{
    if (cs->gamma != 0)
        c = std::pow(c, 1 / cs->gamma);
    else if (c < REC709_LINEAR_BELOW)
        c = c * rec709Curve(REC709_LINEAR_BELOW) / REC709_LINEAR_BELOW;
    else
        c = rec709Curve(c);
}

void gamma_correct_rgb(const colourSystem* cs, double& r, double& g, double& b)
{
    gamma_correct(cs, r);
    gamma_correct(cs, g);
    gamma_correct(cs, b);
}

void RGBtoHSV(const float& r, const float& g, const float& b, float& h, float& s, float& v)
{
    // The results may be written over the arguments, so these are read to the end first.
    const float greatest = std::max({r, g, b});
    const float delta = greatest - std::min({r, g, b});
    if (r == g && g == b) {
        s = 0;
        v = greatest;
        return;
    }
    float sixths = 4 + (r - g) / delta;
    if (r == greatest)
        sixths = (g - b) / delta;
    else if (g == greatest)
        sixths = 2 + (b - r) / delta;
    const float degrees = sixths * 60;
    h = degrees < 0 ? degrees + 360 : degrees;
    s = greatest != 0 ? delta / greatest : 0;
    v = greatest;
}

void HSVtoRGB(float& r, float& g, float& b, const float& h, const float& s, const float& v)
{
    const float value = v;
    if (s == 0) {
        r = g = b = value;
        return;
    }
    const float sixths = h / 60;
    const unsigned sector = sectorOf(sixths);
    const float f = sixths - static_cast<float>(sector);
    const float p = value * (1 - s);
    const float q = value * (1 - s * f);
    const float t = value * (1 - s * (1 - f));
    // The last row is for all sectors that are not one of the six, too.
    const Vector sectors[] = {{value, t, p}, {q, value, p}, {p, value, t},
                              {p, q, value}, {t, p, value}, {value, p, q}};
    const Vector& colour = sectors[std::min(sector, 5U)];
    r = colour.x;
    g = colour.y;
    b = colour.z;
}

} // namespace TEKLUVA
