// Measurements as the user types them.

#include "globals/MeasurementManager.h"

#include <QRegularExpression>

#include <cmath>

namespace TEKLUVA {

namespace {

constexpr E_MeasurementUnit TYPED_UNITS[] = {E_MU_MILLIMETER, E_MU_CENTIMETER, E_MU_METER, E_MU_INCH,
                                             E_MU_FOOT};

/// What stands for a unit beside its abbreviation.
struct UnitSign
{
    E_MeasurementDimension dimension = E_MD_LINEAR;
    QStringView text;
    E_MeasurementUnit unit = E_MU_CENTIMETER;
};

constexpr UnitSign UNIT_SIGNS[] = {
    {E_MD_LINEAR, u"'", E_MU_FOOT},      {E_MD_LINEAR, u"\u2032", E_MU_FOOT}, {E_MD_LINEAR, u"\"", E_MU_INCH},
    {E_MD_LINEAR, u"\u2033", E_MU_INCH}, {E_MD_SQUARED, u"m2", E_MU_METER},   {E_MD_CUBIC, u"m3", E_MU_METER},
};

/// An expression for text whose %1 are numbers, each with its sign and its digits.
QRegularExpression expressionOf(const QString& form)
{
    const QString number = QStringLiteral("([-+\u2212]?)\\s*(\\d+(?:[.,]\\d*)?|[.,]\\d+)");
    return QRegularExpression(form.arg(number), QRegularExpression::CaseInsensitiveOption);
}

double numberIn(const QString& digits)
{
    return QString(digits).replace(QLatin1Char(','), QLatin1Char('.')).toDouble();
}

/// Nothing for a number of too many digits.
std::optional<double> ifFinite(double value)
{
    return std::isfinite(value) ? std::make_optional(value) : std::nullopt;
}

bool isMinus(const QString& sign)
{
    return !sign.isEmpty() && sign != QLatin1String("+");
}

/// Feet and inches in cm. A sign before the feet is that of both; a second one may repeat it.
std::optional<double> feetAndInches(const MeasurementManager& units, const QString& text)
{
    static const QRegularExpression FORM =
        expressionOf(QStringLiteral("^%1\\s*(?:['\u2032]|ft)\\s*%1\\s*(?:[\"\u2033]|in)$"));
    const auto match = FORM.match(text);
    const bool hasOtherSign =
        !match.captured(3).isEmpty() && isMinus(match.captured(3)) != isMinus(match.captured(1));
    if (!match.hasMatch() || hasOtherSign)
        return std::nullopt;
    const double length = units.fromLinearMeasurementUnit(E_MU_FOOT, numberIn(match.captured(2)))
                          + units.fromLinearMeasurementUnit(E_MU_INCH, numberIn(match.captured(4)));
    return isMinus(match.captured(1)) ? -length : length;
}

std::optional<E_MeasurementUnit> unitOf(const MeasurementManager& units, E_MeasurementDimension dimension,
                                        const QString& text)
{
    for (const E_MeasurementUnit unit : TYPED_UNITS) {
        if (text.compare(units.getMeasurementUnitAbbrevation(dimension, unit), Qt::CaseInsensitive) == 0)
            return unit;
    }
    for (const UnitSign& sign : UNIT_SIGNS) {
        if (sign.dimension == dimension && text.compare(sign.text, Qt::CaseInsensitive) == 0)
            return sign.unit;
    }
    return std::nullopt;
}

} // namespace

std::optional<double> MeasurementManager::parseMeasurement(E_MeasurementDimension dimension,
                                                           E_MeasurementUnit unit, const QString& text) const
{
    static const QRegularExpression FORM = expressionOf(QStringLiteral("^%1\\s*(\\S.*)?$"));
    const QString trimmed = text.trimmed();
    if (dimension == E_MD_LINEAR) {
        if (const auto length = feetAndInches(*this, trimmed))
            return ifFinite(*length);
    }
    const auto match = FORM.match(trimmed);
    const QString typed = match.captured(3);
    const auto typedUnit = typed.isEmpty() ? unit : unitOf(*this, dimension, typed);
    if (!match.hasMatch() || !typedUnit)
        return std::nullopt;
    const double number =
        isMinus(match.captured(1)) ? -numberIn(match.captured(2)) : numberIn(match.captured(2));
    return ifFinite(fromMeasurementUnit(dimension, *typedUnit, number));
}

std::optional<double> MeasurementManager::parseMeasurement(const QString& text) const
{
    return parseMeasurement(E_MD_LINEAR, E_MU_CENTIMETER, text);
}

} // namespace TEKLUVA
