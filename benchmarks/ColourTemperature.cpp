#include "Bench.h"

#include "globals/Colour.h"

#include <array>
#include <cmath>
#include <cstring>

using namespace TEKLUVA;

namespace {

constexpr std::size_t WAVELENGTHS = std::size(cie_colour_match);
constexpr int COLDEST = 1000;
constexpr int HOTTEST = 12000;
constexpr int STEP = 500;

struct Rgb
{
    float r = 0;
    float g = 0;
    float b = 0;
};

Rgb withUs(double kelvin)
{
    Rgb colour;
    temperaturToColor(kelvin, colour.r, colour.g, colour.b);
    return colour;
}

double written(double wavelength, double kelvin)
{
    const double metres = wavelength * 1e-9;
    return (3.74183e-16 * std::pow(metres, -5.0)) / (std::exp(1.4388e-2 / (metres * kelvin)) - 1.0);
}

/// The formula as books have it, with a power and an exponential for each wavelength.
Rgb withFormula(double kelvin)
{
    Rgb sum;
    float wavelength = CIE_FIRST_WAVELENGTH;
    for (const auto& match : cie_colour_match) {
        const auto intensity = static_cast<float>(written(static_cast<double>(wavelength), kelvin));
        sum.r += intensity * match[0];
        sum.g += intensity * match[1];
        sum.b += intensity * match[2];
        wavelength += CIE_WAVELENGTH_STEP;
    }
    const float all = sum.r + sum.g + sum.b;
    colourSystem system = Rec709system;
    Rgb colour;
    xyz_to_rgb(&system, sum.r / all, sum.g / all, sum.b / all, colour.r, colour.g, colour.b);
    norm_rgb(colour.r, colour.g, colour.b);
    return colour;
}

/// Nothing but the exponentials of one colour, which no way of computing it can do without.
double withExponentials(double kelvin)
{
    static const auto EXPONENTS = [] {
        std::array<double, WAVELENGTHS> exponents{};
        for (std::size_t i = 0; i < WAVELENGTHS; ++i)
            exponents[i] = 1.4388e-2 / ((380.0 + 5.0 * static_cast<double>(i)) * 1e-9);
        return exponents;
    }();
    const double inverse = 1 / kelvin;
    double sum = 0;
    for (const double exponent : EXPONENTS)
        sum += std::exp(exponent * inverse);
    return sum;
}

void checkBits()
{
    for (int kelvin = COLDEST; kelvin < HOTTEST; ++kelvin) {
        const Rgb ours = withUs(kelvin);
        const Rgb formula = withFormula(kelvin);
        // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison,cert-*): the bits are meant
        Bench::require(std::memcmp(&ours, &formula, sizeof(Rgb)) == 0, "a colour differs from the formula");
    }
}

template <typename Colour>
void addSide(const std::string& side, Colour colour)
{
    Bench::add("temperature to RGB/81 wavelengths/" + side, [colour] {
        return [colour, kelvin = COLDEST]() mutable {
            kelvin = kelvin < HOTTEST ? kelvin + STEP : COLDEST;
            return colour(kelvin);
        };
    });
}

} // namespace

void Bench::addColourTemperature()
{
    checkBits();
    addSide("ours", &withUs);
    addSide("81 exponentials", &withExponentials);
    addSide("formula", &withFormula);
}
