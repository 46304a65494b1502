#include "globals/MeasurementManager.h"

#include "globals/ConfigManager.h"
#include "globals/SettingsKeys.h"
#include "globals/configuration/MeasurementFont_p.h"
#include "globals/measurement/DecimalText_p.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QIcon>
#include <QStringView>

#include <cmath>
#include <iterator>
#include <limits>

namespace TEKLUVA {

MeasurementManager* MeasurementManager::__instance = nullptr;

namespace {

constexpr double CM_PER_FOOT = 30.48;
constexpr double INCHES_PER_FOOT = 12.0;

/// How a factor leads from the internal unit to the one displayed.
enum Scale {
    InternalPerUnit, ///< divided by
    UnitPerInternal, ///< multiplied with; its reciprocal would round twice
};

struct UnitRow
{
    Scale scale = InternalPerUnit;
    double factor = 1.0;
    unsigned int precision = 0; ///< decimals shown
    double step = 0.0;          ///< in the unit itself
    const char* name = nullptr; ///< to be translated in the context of the class
    QStringView abbreviation;
};

/// In the order of E_MeasurementUnit. The foot has the step of the centimetre on purpose.
constexpr UnitRow LENGTHS[] = {
    {UnitPerInternal, 10.0, 0, 5.0, QT_TRANSLATE_NOOP("TEKLUVA::MeasurementManager", "Millimeter"), u"mm"},
    {InternalPerUnit, 1.0, 1, 0.5, QT_TRANSLATE_NOOP("TEKLUVA::MeasurementManager", "Zentimeter"), u"cm"},
    {InternalPerUnit, 100.0, 3, 0.005, QT_TRANSLATE_NOOP("TEKLUVA::MeasurementManager", "Meter"), u"m"},
    {InternalPerUnit, 2.54, 2, 0.2, QT_TRANSLATE_NOOP("TEKLUVA::MeasurementManager", "Inch"), u"in"},
    {InternalPerUnit, CM_PER_FOOT, 3, 0.5, QT_TRANSLATE_NOOP("TEKLUVA::MeasurementManager", "Fuß"), u"ft"},
};
static_assert(std::size(LENGTHS) == E_MU_FOOT, "a row for each unit");

/// A dimension that knows the two systems only.
struct SystemsRow
{
    UnitRow metric;
    UnitRow imperial;
};

constexpr SystemsRow AREAS = {
    {InternalPerUnit, 10000.0, 3, 0.5, QT_TRANSLATE_NOOP("TEKLUVA::MeasurementManager", "Quadratmeter"),
     u"m²"},
    {InternalPerUnit, 929.0304, 3, 0.5, QT_TRANSLATE_NOOP("TEKLUVA::MeasurementManager", "Quadratfuß"),
     u"sq ft"},
};
constexpr SystemsRow VOLUMES = {
    {InternalPerUnit, 1000000.0, 3, 0.5, QT_TRANSLATE_NOOP("TEKLUVA::MeasurementManager", "Kubikmeter"),
     u"m³"},
    {InternalPerUnit, 28316.846592, 3, 0.5, QT_TRANSLATE_NOOP("TEKLUVA::MeasurementManager", "Kubikfuß"),
     u"cft"},
};
constexpr UnitRow NO_DIMENSION = {InternalPerUnit, 1.0, 1, 0.5, nullptr, {}};

const UnitRow& lengthOf(E_MeasurementUnit unit)
{
    const bool known = unit >= E_MU_MILLIMETER && unit <= E_MU_FOOT;
    return LENGTHS[(known ? unit : E_MU_CENTIMETER) - E_MU_MILLIMETER];
}

bool isImperial(E_MeasurementUnit unit)
{
    return unit == E_MU_INCH || unit == E_MU_FOOT;
}

const UnitRow& rowOf(E_MeasurementDimension dimension, E_MeasurementUnit unit)
{
    switch (dimension) {
    case E_MD_LINEAR:
        return lengthOf(unit);
    case E_MD_SQUARED:
        return isImperial(unit) ? AREAS.imperial : AREAS.metric;
    case E_MD_CUBIC:
        return isImperial(unit) ? VOLUMES.imperial : VOLUMES.metric;
    }
    return NO_DIMENSION;
}

struct AbbreviationRow
{
    QStringView text;
    E_MeasurementDimension dimension = E_MD_LINEAR;
    E_MeasurementUnit unit = E_MU_CENTIMETER;
};

/// What can be read back. Centimetre is what any other text is taken for; volumes are left out on purpose,
/// as these texts stand for a preferred unit.
constexpr AbbreviationRow ABBREVIATIONS[] = {
    {u"mm", E_MD_LINEAR, E_MU_MILLIMETER}, {u"m", E_MD_LINEAR, E_MU_METER},
    {u"in", E_MD_LINEAR, E_MU_INCH},       {u"m²", E_MD_SQUARED, E_MU_METER},
    {u"sq ft", E_MD_SQUARED, E_MU_FOOT},   {u"ft", E_MD_LINEAR, E_MU_FOOT},
};

struct ChoiceRow
{
    E_MeasurementUnit unit;
    const char* text; ///< to be translated
};

constexpr const char* CHOICE_CONTEXT = "QObject";
constexpr ChoiceRow CHOICES[] = {
    {E_MU_MILLIMETER, QT_TRANSLATE_NOOP("QObject", "mm - Millimeter")},
    {E_MU_CENTIMETER, QT_TRANSLATE_NOOP("QObject", "cm - Zentimeter")},
    {E_MU_METER, QT_TRANSLATE_NOOP("QObject", "m - Meter")},
    {E_MU_INCH, QT_TRANSLATE_NOOP("QObject", "in - Zoll (US/GB)")},
};

/// An absent value reads as an empty text, which is no abbreviation.
E_MeasurementUnit storedUnit(const MeasurementManager& manager, const QString& key)
{
    const QVariant stored = ConfigManager::getInstance()->getSetting(SettingsKeys::LOCALE, key);
    return manager.getMeasurementFromAbbrevation(stored.toString()).second;
}

/// False when \p unit is what is in force already.
bool storeUnit(const MeasurementManager& manager, const QString& key, E_MeasurementUnit unit)
{
    if (storedUnit(manager, key) == unit)
        return false;
    ConfigManager::getInstance()->setSetting(SettingsKeys::LOCALE, key,
                                             manager.getLinearMeasurementUnitAbbrevation(unit));
    return true;
}

/// \p value without its decimals; the nearest int for what is beyond, whose rest is then shown as inches.
int truncated(double value)
{
    using Limits = std::numeric_limits<int>;
    if (std::isnan(value))
        return 0;
    return static_cast<int>(qBound<double>(Limits::min(), value, Limits::max()));
}

} // namespace

MeasurementManager* MeasurementManager::getInstance()
{
    if (!__instance)
        __instance = new MeasurementManager;
    return __instance;
}

MeasurementManager::~MeasurementManager()
{
    __instance = nullptr;
}

double MeasurementManager::toLinearMeasurementUnit(E_MeasurementUnit unit, double cm) const
{
    return toMeasurementUnit(E_MD_LINEAR, unit, cm);
}

double MeasurementManager::fromLinearMeasurementUnit(E_MeasurementUnit unit, double value) const
{
    return fromMeasurementUnit(E_MD_LINEAR, unit, value);
}

double MeasurementManager::toSquaredMeasurementUnit(E_MeasurementUnit unit, double cm2) const
{
    return toMeasurementUnit(E_MD_SQUARED, unit, cm2);
}

double MeasurementManager::fromSquaredMeasurementUnit(E_MeasurementUnit unit, double value) const
{
    return fromMeasurementUnit(E_MD_SQUARED, unit, value);
}

double MeasurementManager::toCubicMeasurementUnit(E_MeasurementUnit unit, double cm3) const
{
    return toMeasurementUnit(E_MD_CUBIC, unit, cm3);
}

double MeasurementManager::fromCubicMeasurementUnit(E_MeasurementUnit unit, double value) const
{
    return fromMeasurementUnit(E_MD_CUBIC, unit, value);
}

double MeasurementManager::toMeasurementUnit(E_MeasurementDimension dimension, E_MeasurementUnit unit,
                                             double value) const
{
    const UnitRow& row = rowOf(dimension, unit);
    return row.scale == UnitPerInternal ? value * row.factor : value / row.factor;
}

double MeasurementManager::fromMeasurementUnit(E_MeasurementDimension dimension, E_MeasurementUnit unit,
                                               double value) const
{
    const UnitRow& row = rowOf(dimension, unit);
    return row.scale == UnitPerInternal ? value / row.factor : value * row.factor;
}

unsigned int MeasurementManager::getLinearMeasurementUnitPrecision(E_MeasurementUnit unit) const
{
    return lengthOf(unit).precision;
}

unsigned int MeasurementManager::getMeasurementUnitPrecision(E_MeasurementDimension dimension,
                                                             E_MeasurementUnit unit) const
{
    return rowOf(dimension, unit).precision;
}

double MeasurementManager::getLinearMeasurementUnitStep(E_MeasurementUnit unit) const
{
    return lengthOf(unit).step;
}

double MeasurementManager::getMeasurementUnitStep(E_MeasurementDimension dimension,
                                                  E_MeasurementUnit unit) const
{
    return rowOf(dimension, unit).step;
}

E_MeasurementUnit MeasurementManager::getPrefferedConstructionUnit() const
{
    return storedUnit(*this, SettingsKeys::CONSTRUCTION_UNIT);
}

E_MeasurementUnit MeasurementManager::getPrefferedArrangementUnit() const
{
    return storedUnit(*this, SettingsKeys::ARRANGEMENT_UNIT);
}

void MeasurementManager::setPrefferedConstructionUnit(const E_MeasurementUnit& unit)
{
    if (storeUnit(*this, SettingsKeys::CONSTRUCTION_UNIT, unit))
        Q_EMIT constructionMeasurementUnitChanged();
}

void MeasurementManager::setPrefferedArrangementUnit(const E_MeasurementUnit& unit)
{
    if (storeUnit(*this, SettingsKeys::ARRANGEMENT_UNIT, unit))
        Q_EMIT arrangementMeasurementUnitChanged();
}

void MeasurementManager::resetPrefferedConstructionUnit()
{
    ConfigManager::getInstance()->removeSetting(SettingsKeys::LOCALE, SettingsKeys::CONSTRUCTION_UNIT);
}

void MeasurementManager::resetPrefferedArrangementUnit()
{
    ConfigManager::getInstance()->removeSetting(SettingsKeys::LOCALE, SettingsKeys::ARRANGEMENT_UNIT);
}

QString MeasurementManager::getMeasurementUnitName(E_MeasurementDimension dimension,
                                                   E_MeasurementUnit unit) const
{
    return tr(rowOf(dimension, unit).name);
}

QString MeasurementManager::getLinearMeasurementUnitAbbrevation(E_MeasurementUnit unit) const
{
    return getMeasurementUnitAbbrevation(E_MD_LINEAR, unit);
}

QString MeasurementManager::getSquaredMeasurementUnitAbbrevation(E_MeasurementUnit unit) const
{
    return getMeasurementUnitAbbrevation(E_MD_SQUARED, unit);
}

QString MeasurementManager::getCubicMeasurementUnitAbbrevation(E_MeasurementUnit unit) const
{
    return getMeasurementUnitAbbrevation(E_MD_CUBIC, unit);
}

QString MeasurementManager::getMeasurementUnitAbbrevation(E_MeasurementDimension dimension,
                                                          E_MeasurementUnit unit) const
{
    return rowOf(dimension, unit).abbreviation.toString();
}

QPair<E_MeasurementDimension, E_MeasurementUnit>
MeasurementManager::getMeasurementFromAbbrevation(QString abbreviation) const
{
    for (const AbbreviationRow& row : ABBREVIATIONS) {
        if (row.text.compare(abbreviation, Qt::CaseInsensitive) == 0)
            return {row.dimension, row.unit};
    }
    return {E_MD_LINEAR, E_MU_CENTIMETER};
}

QString MeasurementManager::createMeasurementString(E_MeasurementDimension dimension, E_MeasurementUnit unit,
                                                    double value, unsigned int precision, bool withUnit) const
{
    if (dimension == E_MD_LINEAR && isImperial(unit))
        return createFeetMeasurementString(value, withUnit);
    const UnitRow& row = rowOf(dimension, unit);
    return decimalText(toMeasurementUnit(dimension, unit, value), qMin(precision, row.precision),
                       withUnit ? std::make_optional(row.abbreviation) : std::nullopt);
}

QString MeasurementManager::createMeasurementString(E_MeasurementDimension dimension, E_MeasurementUnit unit,
                                                    double value, bool withUnit) const
{
    return createMeasurementString(dimension, unit, value, getMeasurementUnitPrecision(dimension, unit),
                                   withUnit);
}

QString MeasurementManager::createFeetMeasurementString(double value, bool /*withUnit*/) const
{
    const double length = value / CM_PER_FOOT;
    const int feet = truncated(length);
    const double inches = (length - feet) * INCHES_PER_FOOT;
    QString text;
    if (feet != 0)
        text = QString::number(feet) + QLatin1Char('\'');
    if (feet != 0 && inches == 0.0)
        return text;
    if (feet != 0)
        text += QLatin1Char(' ');
    // No inches at all are 0", and not -0" for a zero with a sign.
    text += inches == 0.0 ? QStringLiteral("0") : decimalText(inches, 2);
    return text += QLatin1Char('"');
}

QString MeasurementManager::getMeasurementFontName()
{
    return MEASUREMENT_FONT;
}

void MeasurementManager::fillMeasurementComboBox(QComboBox* box) const
{
    for (const ChoiceRow& choice : CHOICES)
        box->insertItem(box->count(), QIcon(), QString(), int(choice.unit));
    updateMeasurementComboBoxLanguage(box);
}

void MeasurementManager::updateMeasurementComboBoxLanguage(QComboBox* box) const
{
    for (const ChoiceRow& choice : CHOICES) {
        const int item =
            box->findData(int(choice.unit), Qt::UserRole, Qt::MatchExactly | Qt::MatchCaseSensitive);
        if (item >= 0)
            box->setItemText(item, QCoreApplication::translate(CHOICE_CONTEXT, choice.text));
    }
}

} // namespace TEKLUVA
