#pragma once

/// \file
/// Colours of light: from a colour temperature to RGB, between chromaticities and the RGB systems of
/// television and print, and between RGB and HSV.
///
/// All functions but temperaturToColor(), and bb_spectrum() beside it, are reentrant; those two share _bbTemp
/// and belong to one thread. No result is clamped: colours that an RGB system cannot show have components
/// below 0, and the caller decides what becomes of them.
///
///     float r = 0, g = 0, b = 0;
///     TEKLUVA::temperaturToColor(3000, r, g, b); // a warm lamp: 1.00, 0.48, 0.15

#include "globals/globals_export.h"

#include <string>

namespace TEKLUVA {

/// A system of RGB colours: CIE 1931 chromaticities of its primaries and of its white, and its transfer
/// curve.
struct colourSystem
{
    std::string name;
    double xRed, yRed;
    double xGreen, yGreen;
    double xBlue, yBlue;
    double xWhite, yWhite;
    double whiteTemperature; ///< in kelvin, for information only
    double gamma;            ///< exponent of the transfer curve; 0 for the curve of Rec. 709
};

/// \name The colour systems
/// White is illuminant C for NTSC, equal energy for CIE, and D65 for the others. The blue of AppleRGB is not
/// the published one: it is meant as it stands, because colours must not change under the application.
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

/// The temperature that bb_spectrum() is for, in kelvin; 5000 at first.
extern GLOBALS_EXPORT double _bbTemp;

/// \name Chromaticities of CIE 1976 (u', v') and of CIE 1931 (x, y)
/// @{
GLOBALS_EXPORT void upvp_to_xy(const double& up, const double& vp, double& x, double& y);
GLOBALS_EXPORT void xy_to_upvp(const double& x, const double& y, double& up, double& vp);
/// @}

/// The chromaticity \p xc, \p yc, \p zc as linear RGB of \p cs, scaled so that the system's white has three
/// equal components. Computed in single precision. \p cs is only read; the second form is for the colour
/// systems of an application that are not constant.
GLOBALS_EXPORT void xyz_to_rgb(const colourSystem* cs, const float& xc, const float& yc, const float& zc,
                               float& r, float& g, float& b);
GLOBALS_EXPORT void xyz_to_rgb(colourSystem* cs, const float& xc, const float& yc, const float& zc, float& r,
                               float& g, float& b);

/// True when no component is below 0: the colour system can show the colour.
[[nodiscard]] GLOBALS_EXPORT bool inside_gamut(const double& r, const double& g, const double& b);

/// Adds as much white as lifts the lowest component to 0. False, with nothing changed, for a colour without
/// components below 0.
GLOBALS_EXPORT bool constrain_rgb(double& r, double& g, double& b);

/// Scales the greatest component to 1, unless none is above 0.
GLOBALS_EXPORT void norm_rgb(float& r, float& g, float& b);

/// The chromaticity of a spectrum, seen by the CIE 1931 2 degree observer. \p spec_intens is called for each
/// 5 nanometres from 380 to 780 and answers the intensity there, in any unit. A spectrum without light has no
/// chromaticity: the results are not numbers then.
GLOBALS_EXPORT void spectrum_to_xyz(double (*spec_intens)(const double&), float& x, float& y, float& z);

/// Planck's law: what a black body of _bbTemp kelvin emits at \p wavelength nanometres, in watts per square
/// metre and metre of wavelength.
[[nodiscard]] GLOBALS_EXPORT double bb_spectrum(const double& wavelength);

/// The colour of a black body of \p kelvin, in linear RGB of Rec709system, with 1 for the greatest component.
/// Below some 1900 kelvin blue is below 0, and in the weakest glow green is. Below some 150 kelvin, and far
/// above all stars, single precision knows no light or too much of it, and the components are not numbers.
/// Leaves \p kelvin in _bbTemp.
GLOBALS_EXPORT void temperaturToColor(const double& kelvin, float& r, float& g, float& b);

/// \name From linear light to what a screen of the colour system is sent, for one component or three
/// @{
GLOBALS_EXPORT void gamma_correct(const colourSystem* cs, double& c);
GLOBALS_EXPORT void gamma_correct_rgb(const colourSystem* cs, double& r, double& g, double& b);
/// @}

/// Hue in degrees, from 0 to 360; saturation from 0 to 1; \p v in the range of the components. A grey
/// has no hue and leaves \p h as it was.
GLOBALS_EXPORT void RGBtoHSV(const float& r, const float& g, const float& b, float& h, float& s, float& v);

/// The way back, for hues from 0 up to 360. Greater ones are not taken back to 0: by their whole number of
/// sixths they fall into the last sector, so that 360 itself is not red but magenta. So do hues below 0, but
/// with a third component far out of range.
GLOBALS_EXPORT void HSVtoRGB(float& r, float& g, float& b, const float& h, const float& s, const float& v);

} // namespace TEKLUVA
