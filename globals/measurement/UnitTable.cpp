#include "globals/measurement/UnitTable_p.h"

#include "globals/measurement/DecimalText_p.h"

#include <QtGlobal>

#include <algorithm>
#include <iterator>

namespace TEKLUVA {

namespace {

constexpr auto METRIC = UnitSystem::Metric;
constexpr auto IMPERIAL = UnitSystem::Imperial;
constexpr auto DECIMAL = LengthText::Decimal;
constexpr auto FEET_AND_INCHES = LengthText::FeetAndInches;

constexpr Conversion dividedBy(double factor)
{
    return {factor, false};
}

constexpr Conversion multipliedBy(double factor)
{
    return {factor, true};
}

// clang-format off
// A row per unit: system, form of the text, conversion from centimetres, decimals, step, abbreviation; name and, when
// it is offered, choice. The foot has the step of the centimetre: that is meant.
constexpr UnitRow UNITS[] = {
    {E_MU_MILLIMETER, METRIC,   DECIMAL,         {multipliedBy(10.0),     0, 5.0,   u"mm",
     QT_TRANSLATE_NOOP("TEKLUVA::MeasurementManager", "Millimeter")}, QT_TRANSLATE_NOOP("QObject", "mm - Millimeter")},
    {E_MU_CENTIMETER, METRIC,   DECIMAL,         {dividedBy(1.0),         1, 0.5,   u"cm",
     QT_TRANSLATE_NOOP("TEKLUVA::MeasurementManager", "Zentimeter")}, QT_TRANSLATE_NOOP("QObject", "cm - Zentimeter")},
    {E_MU_METER,      METRIC,   DECIMAL,         {dividedBy(100.0),       3, 0.005, u"m",
     QT_TRANSLATE_NOOP("TEKLUVA::MeasurementManager", "Meter")},      QT_TRANSLATE_NOOP("QObject", "m - Meter")},
    {E_MU_INCH,       IMPERIAL, FEET_AND_INCHES, {dividedBy(2.54),        2, 0.2,   u"in",
     QT_TRANSLATE_NOOP("TEKLUVA::MeasurementManager", "Inch")},       QT_TRANSLATE_NOOP("QObject", "in - Zoll (US/GB)")},
    {E_MU_FOOT,       IMPERIAL, FEET_AND_INCHES, {dividedBy(CM_PER_FOOT), 3, 0.5,   u"ft",
     QT_TRANSLATE_NOOP("TEKLUVA::MeasurementManager", "Fuß")},        nullptr},
};

// A row per system: its area and its volume. The unit is that of the area's sides.
constexpr SystemRow SYSTEMS[] = {
    {METRIC, E_MU_METER,
     {dividedBy(10000.0),      3, 0.5, u"m²",    QT_TRANSLATE_NOOP("TEKLUVA::MeasurementManager", "Quadratmeter")},
     {dividedBy(1000000.0),    3, 0.5, u"m³",    QT_TRANSLATE_NOOP("TEKLUVA::MeasurementManager", "Kubikmeter")}},
    {IMPERIAL, E_MU_FOOT,
     {dividedBy(929.0304),     3, 0.5, u"sq ft", QT_TRANSLATE_NOOP("TEKLUVA::MeasurementManager", "Quadratfuß")},
     {dividedBy(28316.846592), 3, 0.5, u"cft",   QT_TRANSLATE_NOOP("TEKLUVA::MeasurementManager", "Kubikfuß")}},
};
// clang-format on

constexpr Scale NO_DIMENSION = {dividedBy(1.0), 1, 0.5, {}, nullptr};

constexpr qsizetype longestAbbreviation()
{
    qsizetype longest = 0;
    for (const UnitRow& row : UNITS)
        longest = std::max(longest, row.length.abbreviation.size());
    for (const SystemRow& row : SYSTEMS)
        longest = std::max({longest, row.area.abbreviation.size(), row.volume.abbreviation.size()});
    return longest;
}
static_assert(longestAbbreviation() <= LONGEST_UNIT, "decimalText() has room for each abbreviation");

constexpr bool unitsAreInOrder()
{
    int expected = E_MU_UNDEFINED;
    for (const UnitRow& row : UNITS) {
        if (row.unit != ++expected)
            return false;
    }
    return true;
}
static_assert(unitsAreInOrder(), "one row for each unit, so that a unit is an index");
static_assert(SYSTEMS[int(METRIC)].system == METRIC && SYSTEMS[int(IMPERIAL)].system == IMPERIAL,
              "one row for each system, so that a system is an index");

const SystemRow& systemRow(UnitSystem system)
{
    return SYSTEMS[static_cast<int>(system)];
}

} // namespace

Rows<UnitRow> unitRows()
{
    return Rows(UNITS);
}

Rows<SystemRow> systemRows()
{
    return Rows(SYSTEMS);
}

const UnitRow& unitRow(E_MeasurementUnit unit)
{
    constexpr int FIRST = E_MU_UNDEFINED + 1;
    const bool isKnown = unit >= FIRST && unit <= static_cast<int>(std::size(UNITS));
    return UNITS[(isKnown ? unit : E_MU_CENTIMETER) - FIRST];
}

const Scale& scaleOf(E_MeasurementDimension dimension, E_MeasurementUnit unit)
{
    switch (dimension) {
    case E_MD_LINEAR:
        return unitRow(unit).length;
    case E_MD_SQUARED:
        return systemRow(unitRow(unit).system).area;
    case E_MD_CUBIC:
        return systemRow(unitRow(unit).system).volume;
    }
    return NO_DIMENSION;
}

} // namespace TEKLUVA
