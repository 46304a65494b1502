#pragma once

#include "globals/foundation/Rows_p.h"
#include "globals/globals.h"

#include <QStringView>

namespace TEKLUVA {

inline constexpr double CM_PER_FOOT = 30.48;

/// How a value in cm, cm² or cm³ becomes one in the unit.
struct Conversion
{
    double factor = 1;
    bool multiplies = false; ///< by the factor; otherwise divides by it. A reciprocal would round twice.

    constexpr double toUnit(double value) const { return multiplies ? value * factor : value / factor; }
    constexpr double fromUnit(double value) const { return multiplies ? value / factor : value * factor; }
};

/// How values of one dimension are converted and shown.
struct Scale
{
    Conversion conversion;
    unsigned int decimals = 0;
    double step = 0; ///< in the unit
    QStringView abbreviation;
    const char* name = nullptr; ///< to be translated in the context of MeasurementManager; null for none
};

/// Each system has one unit for areas and one for volumes.
enum class UnitSystem { Metric, Imperial };

/// How a length is written.
enum class LengthText { Decimal, FeetAndInches };

struct UnitRow
{
    E_MeasurementUnit unit = E_MU_UNDEFINED;
    UnitSystem system = UnitSystem::Metric;
    LengthText text = LengthText::Decimal;
    Scale length;
    const char* choice =
        nullptr; ///< in the combo box, to be translated in CHOICE_CONTEXT; null when not offered
};

inline constexpr const char* CHOICE_CONTEXT = "QObject";

struct SystemRow
{
    UnitSystem system = UnitSystem::Metric;
    E_MeasurementUnit unit = E_MU_UNDEFINED; ///< that the abbreviation of the area is read back as
    Scale area;
    Scale volume;
};

/// All units, in the order of their numbers.
Rows<UnitRow> unitRows();
Rows<SystemRow> systemRows();

/// The row of \p unit; that of centimetre for a number that is no unit.
const UnitRow& unitRow(E_MeasurementUnit unit);

/// The scale of \p dimension in \p unit; one that converts nothing for a number that is no dimension.
const Scale& scaleOf(E_MeasurementDimension dimension, E_MeasurementUnit unit);

} // namespace TEKLUVA
