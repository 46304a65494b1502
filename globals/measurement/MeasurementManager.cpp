#include "globals/MeasurementManager.h"

#include "globals/ConfigManager.h"
#include "globals/SettingsKeys.h"
#include "globals/configuration/MeasurementFont_p.h"
#include "globals/foundation/Misuse_p.h"
#include "globals/measurement/DecimalText_p.h"
#include "globals/measurement/UnitTable_p.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QIcon>

#include <cmath>
#include <limits>

namespace TEKLUVA {

MeasurementManager* MeasurementManager::__instance = nullptr;

namespace {

constexpr double INCHES_PER_FOOT = 12.0;
constexpr unsigned int INCH_DECIMALS = 2;

/// A precision above that of every unit.
constexpr unsigned int ALL_DECIMALS = std::numeric_limits<unsigned int>::max();

/// A preference that is not stored is an empty text, which is no abbreviation.
E_MeasurementUnit storedUnit(const MeasurementManager& manager, const QString& key)
{
    const QVariant stored = ConfigManager::getInstance()->getSetting(SettingsKeys::LOCALE, key);
    return manager.getMeasurementFromAbbrevation(stored.toString()).second;
}

/// Stores \p unit under \p key unless it is the preferred unit already. Returns whether it was stored.
bool storeUnit(const MeasurementManager& manager, const QString& key, E_MeasurementUnit unit)
{
    if (storedUnit(manager, key) == unit)
        return false;
    ConfigManager::getInstance()->setSetting(SettingsKeys::LOCALE, key,
                                             manager.getLinearMeasurementUnitAbbrevation(unit));
    return true;
}

/// \p value truncated towards zero; the nearest int for a number out of range, 0 for NaN.
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
    if (!__instance) {
        Misuse::checkMainThread(
            "The first MeasurementManager::getInstance() was not called on the main thread.");
        __instance = new MeasurementManager;
    }
    return __instance;
}

MeasurementManager::~MeasurementManager()
{
    __instance = nullptr;
}

QList<E_MeasurementUnit> MeasurementManager::getMeasurementUnits()
{
    QList<E_MeasurementUnit> units;
    for (const UnitRow& row : unitRows())
        units << row.unit;
    return units;
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
    return scaleOf(dimension, unit).conversion.toUnit(value);
}

double MeasurementManager::fromMeasurementUnit(E_MeasurementDimension dimension, E_MeasurementUnit unit,
                                               double value) const
{
    return scaleOf(dimension, unit).conversion.fromUnit(value);
}

unsigned int MeasurementManager::getLinearMeasurementUnitPrecision(E_MeasurementUnit unit) const
{
    return unitRow(unit).length.decimals;
}

unsigned int MeasurementManager::getMeasurementUnitPrecision(E_MeasurementDimension dimension,
                                                             E_MeasurementUnit unit) const
{
    return scaleOf(dimension, unit).decimals;
}

double MeasurementManager::getLinearMeasurementUnitStep(E_MeasurementUnit unit) const
{
    return unitRow(unit).length.step;
}

double MeasurementManager::getMeasurementUnitStep(E_MeasurementDimension dimension,
                                                  E_MeasurementUnit unit) const
{
    return scaleOf(dimension, unit).step;
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
    return tr(scaleOf(dimension, unit).name);
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
    return scaleOf(dimension, unit).abbreviation.toString();
}

QPair<E_MeasurementDimension, E_MeasurementUnit>
MeasurementManager::getMeasurementFromAbbrevation(QString abbreviation) const
{
    // No two abbreviations are equal in any case. Those of volumes are left out: that is meant.
    const auto is = [&abbreviation](const Scale& scale) {
        return scale.abbreviation.compare(abbreviation, Qt::CaseInsensitive) == 0;
    };
    for (const UnitRow& row : unitRows()) {
        if (is(row.length))
            return {E_MD_LINEAR, row.unit};
    }
    for (const SystemRow& row : systemRows()) {
        if (is(row.area))
            return {E_MD_SQUARED, row.unit};
    }
    return {E_MD_LINEAR, E_MU_CENTIMETER};
}

QString MeasurementManager::createMeasurementString(E_MeasurementDimension dimension, E_MeasurementUnit unit,
                                                    double value, unsigned int precision, bool withUnit) const
{
    if (dimension == E_MD_LINEAR && unitRow(unit).text == LengthText::FeetAndInches)
        return createFeetMeasurementString(value, withUnit);
    const Scale& scale = scaleOf(dimension, unit);
    return decimalText(scale.conversion.toUnit(value), qMin(precision, scale.decimals),
                       withUnit ? std::make_optional(scale.abbreviation) : std::nullopt);
}

QString MeasurementManager::createMeasurementString(E_MeasurementDimension dimension, E_MeasurementUnit unit,
                                                    double value, bool withUnit) const
{
    return createMeasurementString(dimension, unit, value, ALL_DECIMALS, withUnit);
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
    return text + decimalText(inches, INCH_DECIMALS) + QLatin1Char('"');
}

QString MeasurementManager::getMeasurementFontName()
{
    return MEASUREMENT_FONT;
}

void MeasurementManager::fillMeasurementComboBox(QComboBox* box) const
{
    for (const UnitRow& row : unitRows()) {
        if (row.choice)
            box->insertItem(box->count(), QIcon(), QString(), int(row.unit));
    }
    updateMeasurementComboBoxLanguage(box);
}

void MeasurementManager::updateMeasurementComboBoxLanguage(QComboBox* box) const
{
    for (const UnitRow& row : unitRows()) {
        if (!row.choice)
            continue;
        const int item =
            box->findData(int(row.unit), Qt::UserRole, Qt::MatchExactly | Qt::MatchCaseSensitive);
        if (item >= 0)
            box->setItemText(item, QCoreApplication::translate(CHOICE_CONTEXT, row.choice));
    }
}

} // namespace TEKLUVA
