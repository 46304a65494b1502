#include "globals/Colour.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <iterator>
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

/// The chromaticity (x, y, z), whose coordinates add up to 1.
Vector chromaticity(double x, double y)
{
    const auto xc = static_cast<float>(x);
    const auto yc = static_cast<float>(y);
    return {xc, yc, 1 - (xc + yc)};
}

/// One RGB component of \p colour. \p row is that of the inverse of the primaries' matrix, which still has to
/// be scaled to the white point.
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

/// \name The opto-electronic transfer function of ITU-R BT.709, item 1.2
/// @{
constexpr double REC709_LINEAR_BELOW = 0.018; ///< from here on it is a power law

double rec709PowerLaw(double c)
{
    return 1.099 * std::pow(c, 0.45) - 0.099;
}
/// @}

/// The chromaticity of a spectrum. \p intensityAt is called once for each wavelength of the observer's table,
/// in rising order.
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

/// The radiation constants of Planck's law: 2 pi h c^2 as in CODATA 1973, and h c / k as in the temperature
/// scale of 1968, in which D65 has 6504 kelvin. Newer values would change colours.
constexpr double FIRST_RADIATION_CONSTANT = 3.74183e-16; ///< W m^2
constexpr double SECOND_RADIATION_CONSTANT = 0.014388;   ///< m K

/// The part of Planck's law that depends on the wavelength only.
struct PlanckTerm
{
    double metres;    ///< the wavelength
    double numerator; ///< of the law
};

PlanckTerm planckTermAt(double nanometres)
{
    const double metres = nanometres * 1e-9;
    return {metres, FIRST_RADIATION_CONSTANT * std::pow(metres, -5.0)};
}

/// In W m^-3: per area and wavelength.
double radiantExitance(const PlanckTerm& term, double kelvin)
{
    return term.numerator / (std::exp(SECOND_RADIATION_CONSTANT / (term.metres * kelvin)) - 1);
}

using PlanckTerms = std::array<PlanckTerm, CIE_WAVELENGTHS>;

PlanckTerms planckTermsOfObserver()
{
    PlanckTerms terms = {};
    float wavelength = CIE_FIRST_WAVELENGTH;
    for (PlanckTerm& term : terms) {
        term = planckTermAt(static_cast<double>(wavelength));
        wavelength += CIE_WAVELENGTH_STEP;
    }
    return terms;
}

/// The result of spectrum_to_xyz() for bb_spectrum(), bit for bit. The terms are computed once, because they
/// do not depend on the temperature.
Vector blackBodyChromaticity(double kelvin)
{
    static const PlanckTerms TERMS = planckTermsOfObserver();
    const PlanckTerm* term = TERMS.data();
    return chromaticityOf([&term, kelvin](double) { return radiantExitance(*term++, kelvin); });
}

constexpr float DEGREES_PER_SECTOR = 60;
constexpr float FULL_CIRCLE = 360;
constexpr unsigned SECTORS = 6;

/// The number of the hue's sector. Negative numbers wrap around like those of an unsigned integer. The
/// greatest number for a hue that is out of range or NaN.
unsigned sectorOf(float sectors)
{
    const float whole = std::floor(sectors);
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
    return radiantExitance(planckTermAt(wavelength), _bbTemp);
}

void temperaturToColor(const double& kelvin, float& r, float& g, float& b)
{
    _bbTemp = kelvin;
    toRgb(Rec709system, blackBodyChromaticity(kelvin), r, g, b);
    norm_rgb(r, g, b);
}

QColor colourOf(double kelvin)
{
    float light[3] = {};
    toRgb(Rec709system, blackBodyChromaticity(kelvin), light[0], light[1], light[2]);
    norm_rgb(light[0], light[1], light[2]);
    for (float& component : light) {
        if (std::isnan(component))
            return {};
        double signal = qBound(0.0F, component, 1.0F);
        gamma_correct(&Rec709system, signal);
        component = static_cast<float>(signal);
    }
    return QColor::fromRgbF(light[0], light[1], light[2]);
}

void gamma_correct(const colourSystem* cs, double& c)
{
    if (cs->gamma != 0)
        c = std::pow(c, 1 / cs->gamma);
    else if (c < REC709_LINEAR_BELOW)
        c = c * rec709PowerLaw(REC709_LINEAR_BELOW) / REC709_LINEAR_BELOW;
    else
        c = rec709PowerLaw(c);
}

void gamma_correct_rgb(const colourSystem* cs, double& r, double& g, double& b)
{
    gamma_correct(cs, r);
    gamma_correct(cs, g);
    gamma_correct(cs, b);
}

void RGBtoHSV(const float& r, const float& g, const float& b, float& h, float& s, float& v)
{
    // Results may be references to arguments: all arguments are read before the first result is written.
    const float greatest = std::max({r, g, b});
    const float delta = greatest - std::min({r, g, b});
    if (r == g && g == b) {
        s = 0;
        v = greatest;
        return;
    }
    float sectors = 4 + (r - g) / delta;
    if (r == greatest)
        sectors = (g - b) / delta;
    else if (g == greatest)
        sectors = 2 + (b - r) / delta;
    const float degrees = sectors * DEGREES_PER_SECTOR;
    h = degrees < 0 ? degrees + FULL_CIRCLE : degrees;
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
    const float sectors = h / DEGREES_PER_SECTOR;
    // 360 degrees are the end of the last sector, where red is, and not the beginning of one beyond it.
    const unsigned sector = h == FULL_CIRCLE ? SECTORS - 1 : sectorOf(sectors);
    const float f = sectors - static_cast<float>(sector);
    const float p = value * (1 - s);
    const float q = value * (1 - s * f);
    const float t = value * (1 - s * (1 - f));
    // The last row is also for a number beyond it.
    const Vector colours[] = {{value, t, p}, {q, value, p}, {p, value, t},
                              {p, q, value}, {t, p, value}, {value, p, q}};
    const Vector& colour = colours[std::min<std::size_t>(sector, std::size(colours) - 1)];
    r = colour.x;
    g = colour.y;
    b = colour.z;
}

} // namespace TEKLUVA
