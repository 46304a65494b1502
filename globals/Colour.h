#pragma once

/// \file
/// Colours of light: from a colour temperature to RGB, between chromaticities and RGB colour systems, and
/// between RGB and HSV.
///
/// temperaturToColor() and bb_spectrum() share _bbTemp and are for one thread; all other functions are
/// reentrant. No result is clamped: a colour outside the gamut of the colour system has components below 0,
/// and the caller decides what to do with them.
///
///     float r = 0, g = 0, b = 0;
///     TEKLUVA::temperaturToColor(3000, r, g, b); // a warm lamp: 1.00, 0.48, 0.15

#include "globals/globals_export.h"

#include <QColor>

#include <string>

namespace TEKLUVA {

/// An RGB colour system: the CIE 1931 chromaticities of its primaries and of its white point, and its
/// transfer function.
struct colourSystem
{
    std::string name;
    double xRed, yRed;
    double xGreen, yGreen;
    double xBlue, yBlue;
    double xWhite, yWhite;
    double whiteTemperature; ///< in kelvin, for information only
    double gamma;            ///< exponent of the transfer function; 0 for that of Rec. 709
};

/// \name The colour systems
/// The white point is illuminant C for NTSC, E (equal energy) for CIE, and D65 for the others. The blue
/// primary of AppleRGB differs from the published one: that is meant, because the application's colours must
/// not change.
/// @{
// clang-format off
//                                       name                 red             green           blue            white                   kelvin gamma
static const colourSystem NTSCsystem   = {"NTSC",              0.67,   0.33,   0.21,   0.71,   0.14,   0.08,   0.3101,     0.3162,     6774, 0};
static const colourSystem EBUsystem    = {"EBU PAL AND SECAM", 0.64,   0.33,   0.29,   0.60,   0.15,   0.06,   0.3127,     0.3291,     6504, 0};
static const colourSystem SMPTEsystem  = {"SMPTE",             0.63,   0.34,   0.31,   0.595,  0.155,  0.07,   0.3127,     0.3291,     6504, 0};
static const colourSystem HDTVsystem   = {"HDTV",              0.67,   0.33,   0.21,   0.71,   0.15,   0.06,   0.3127,     0.3291,     6504, 0};
static const colourSystem CIEsystem    = {"CIE",               0.7355, 0.2645, 0.2658, 0.7243, 0.1669, 0.0085, 0.33333333, 0.33333333, 5454, 0};
static const colourSystem Rec709system = {"CIE REC 709",       0.64,   0.33,   0.30,   0.60,   0.15,   0.06,   0.3127,     0.3291,     6504, 0};
static const colourSystem AdobeRGB98   = {"Adobe RGB 98",      0.64,   0.33,   0.21,   0.71,   0.15,   0.06,   0.3127,     0.3291,     6504, 0};
static const colourSystem AppleRGB     = {"Apple RGB",         0.625,  0.34,   0.28,   0.595,  0.155,  0.155,  0.3127,     0.3291,     6504, 0};
// clang-format on
/// @}

/// The temperature of bb_spectrum(), in kelvin. It starts at 5000.
extern GLOBALS_EXPORT double _bbTemp;

/// \name The colour matching functions of the CIE 1931 2 degree standard observer
/// A row holds the weights of one wavelength in X, Y and Z.
/// @{
constexpr int CIE_WAVELENGTHS = 81;
constexpr float CIE_FIRST_WAVELENGTH = 380; ///< nanometres
constexpr float CIE_WAVELENGTH_STEP = 5;    ///< nanometres from row to row, to 780
extern GLOBALS_EXPORT const float cie_colour_match[CIE_WAVELENGTHS][3];
/// @}

/// \name Chromaticities of CIE 1976 (u', v') and of CIE 1931 (x, y)
/// @{
GLOBALS_EXPORT void upvp_to_xy(const double& up, const double& vp, double& x, double& y);
GLOBALS_EXPORT void xy_to_upvp(const double& x, const double& y, double& up, double& vp);
/// @}

/// The chromaticity \p xc, \p yc, \p zc as linear RGB of \p cs, scaled so that the white point has three
/// equal components. Computed in single precision. \p cs is only read; the second form is for an
/// application's colour systems that are not constant.
GLOBALS_EXPORT void xyz_to_rgb(const colourSystem* cs, const float& xc, const float& yc, const float& zc,
                               float& r, float& g, float& b);
GLOBALS_EXPORT void xyz_to_rgb(colourSystem* cs, const float& xc, const float& yc, const float& zc, float& r,
                               float& g, float& b);

/// True when no component is below 0: the colour is inside the gamut.
[[nodiscard]] GLOBALS_EXPORT bool inside_gamut(const double& r, const double& g, const double& b);

/// Adds white until the lowest component is 0. Returns false and changes nothing when no component is below
/// 0.
GLOBALS_EXPORT bool constrain_rgb(double& r, double& g, double& b);

/// Scales the greatest component to 1. Changes nothing when none is above 0.
GLOBALS_EXPORT void norm_rgb(float& r, float& g, float& b);

/// The chromaticity of a spectrum for the CIE 1931 2 degree observer. \p spec_intens returns the intensity at
/// a wavelength, in any unit; it is called for each 5 nanometres from 380 to 780. For a spectrum without
/// light the results are NaN.
GLOBALS_EXPORT void spectrum_to_xyz(double (*spec_intens)(const double&), float& x, float& y, float& z);

/// Planck's law: the spectral radiant exitance of a black body of _bbTemp kelvin at \p wavelength nanometres,
/// in watts per square metre and metre of wavelength.
[[nodiscard]] GLOBALS_EXPORT double bb_spectrum(const double& wavelength);

/// The colour of a black body of \p kelvin, in linear RGB of Rec709system, scaled as by norm_rgb(): the
/// greatest component is one. Below about 1900 kelvin blue is negative, at the lowest temperatures green too.
/// Below about 150 kelvin and at extremely high temperatures the sums leave the range of single precision,
/// and the components are NaN. Stores \p kelvin in _bbTemp.
GLOBALS_EXPORT void temperaturToColor(const double& kelvin, float& r, float& g, float& b);

/// The same as a screen shows it: negative components are 0, and the transfer function of Rec709system is
/// applied. Invalid where temperaturToColor() has no numbers. Reentrant: _bbTemp stays as it is.
[[nodiscard]] GLOBALS_EXPORT QColor colourOf(double kelvin);

/// \name The transfer function: from linear light to the signal of the colour system, for one component or
/// three
/// @{
GLOBALS_EXPORT void gamma_correct(const colourSystem* cs, double& c);
GLOBALS_EXPORT void gamma_correct_rgb(const colourSystem* cs, double& r, double& g, double& b);
/// @}

/// \p h is in degrees from 0 to 360, \p s from 0 to 1, \p v in the range of the components. A grey has no
/// hue: \p h stays as it was.
GLOBALS_EXPORT void RGBtoHSV(const float& r, const float& g, const float& b, float& h, float& s, float& v);

/// The inverse, for hues from 0 to 360; 360 is red, as 0 is. Other hues do not wrap around: beyond 360 the
/// colour is computed as in the last of the six sectors, and below 0, too, but with one component far out of
/// range.
GLOBALS_EXPORT void HSVtoRGB(float& r, float& g, float& b, const float& h, const float& s, const float& v);

} // namespace TEKLUVA
