#include "Bench.h"

#include "globals/MeasurementManager.h"

#include <KUnitConversion/Converter>
#include <KUnitConversion/Value>

#include <QLocale>

#include <array>
#include <cmath>
#include <cstdio>
#include <vector>

using namespace TEKLUVA;

namespace {

constexpr int DECIMALS = 3;
constexpr double CM_PER_METRE = 100;

const MeasurementManager& manager()
{
    return *MeasurementManager::getInstance();
}

/// Lengths as they occur in rooms, in centimetres.
const std::vector<double>& lengths()
{
    static const std::vector<double> LENGTHS = [] {
        constexpr int COUNT = 1024;
        std::vector<double> lengths;
        for (int i = 0; i < COUNT; ++i)
            lengths.push_back(std::fmod(i * 97.31, 1500));
        return lengths;
    }();
    return LENGTHS;
}

QString withUs(double length)
{
    return manager().createMeasurementString(E_MD_LINEAR, E_MU_METER, length, true);
}

QString withQLocale(double length)
{
    static const QLocale LOCALE(QLocale::German);
    return LOCALE.toString(length / CM_PER_METRE, 'f', DECIMALS) + QStringLiteral(" m");
}

/// Without the trailing zeros, as ours.
QString withSnprintf(double length)
{
    std::array<char, 64> text{};
    int size = std::snprintf(text.data(), text.size(), "%.*f", DECIMALS, length / CM_PER_METRE);
    text[static_cast<std::size_t>(size - DECIMALS - 1)] = ',';
    while (text[static_cast<std::size_t>(size - 1)] == '0')
        --size;
    if (text[static_cast<std::size_t>(size - 1)] == ',')
        --size;
    return QString::fromLatin1(text.data(), size) + QStringLiteral(" m");
}

QString withKUnitConversion(double length)
{
    using namespace KUnitConversion;
    return Value(length, Centimeter).convertTo(Meter).toSymbolString();
}

struct Side
{
    const char* name;
    QString (*write)(double length);
};
constexpr Side SIDES[] = {
    {"ours", &withUs},
    {"QLocale", &withQLocale},
    {"snprintf", &withSnprintf},
    {"KUnitConversion", &withKUnitConversion},
};

/// What Qt writes, with a comma and without trailing zeros.
QString asQtHasIt(double value, int decimals)
{
    QString text = QString::number(value, 'f', decimals).replace(QLatin1Char('.'), QLatin1Char(','));
    if (decimals == 0)
        return text;
    while (text.endsWith(QLatin1Char('0')))
        text.chop(1);
    return text.endsWith(QLatin1Char(',')) ? text.chopped(1) : text;
}

void checkDigits(double value)
{
    for (const E_MeasurementUnit unit : {E_MU_MILLIMETER, E_MU_CENTIMETER, E_MU_METER}) {
        const double converted = manager().toLinearMeasurementUnit(unit, value);
        const auto decimals = static_cast<int>(manager().getLinearMeasurementUnitPrecision(unit));
        Bench::require(manager().createMeasurementString(E_MD_LINEAR, unit, value, false)
                           == asQtHasIt(converted, decimals),
                       "a measurement has other digits than Qt's");
    }
}

/// A million texts: ties between two roundings (sixteenths of a metre, quarters of a centimetre and of a
/// millimetre), values beside them, large ones, and what rounds to 0 from below.
void checkAllDigits()
{
    constexpr int ROUNDS = 66667;
    for (const double special : {0.0, -0.0, -1e-9, 1e-300, 1e15, -1e21, 1e300, double(INFINITY), double(NAN)})
        checkDigits(special);
    double random = 1;
    for (int i = 0; i < ROUNDS; ++i) {
        random = std::fmod(random * 16807, 2147483647);
        for (const double value : {i * CM_PER_METRE / 16, -i / 4.0, i / 40.0, random / 1e4, -random / 1e9})
            checkDigits(value);
    }
}

auto writerOf(const Side& side)
{
    static const bool IS_CHECKED = (checkAllDigits(), true);
    Q_UNUSED(IS_CHECKED)
    return [write = side.write, i = std::size_t(0)]() mutable {
        return write(lengths()[++i % lengths().size()]);
    };
}

} // namespace

void Bench::addMeasurement()
{
    for (const Side& side : SIDES)
        add(std::string("measurement string/metres/") + side.name, [side] { return writerOf(side); });
}
