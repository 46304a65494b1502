#pragma once

#include "globals/globals.h"
#include "globals/globals_export.h"

#include <QList>
#include <QObject>
#include <QPair>
#include <QString>

#include <optional>

class QComboBox;

namespace TEKLUVA {

/// Converts lengths, areas and volumes between centimetres (cm, cm², cm³), in which the application holds all
/// geometry, and the units that the user sees; keeps the user's preferred units; writes measured values.
///
///     auto* units = MeasurementManager::getInstance();
///     const E_MeasurementUnit unit = units->getPrefferedConstructionUnit();
///     label->setText(units->createMeasurementString(E_MD_LINEAR, unit, wallLength, true)); // "1,234 m"
///
/// A number that is no unit is treated as centimetre. Areas and volumes have one unit in each system: square
/// and cubic feet in the imperial one, square and cubic metres in the metric one. An area of 10000 cm² is 1
/// m² also in millimetre. For a number that is no dimension nothing is converted. No function fails.
///
/// Threads: main thread only. Conversions, precision and step are pure functions and allocate nothing.
///
/// Ownership: made by the first getInstance(), without a parent; nothing in the library deletes it.
class GLOBALS_EXPORT MeasurementManager : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(MeasurementManager)

public:
    static MeasurementManager* getInstance();
    ~MeasurementManager() override;

    /// All units but E_MU_UNDEFINED, in the order of their numbers.
    static QList<E_MeasurementUnit> getMeasurementUnits();

    /// \name Conversion
    /// "to" converts from cm, cm² or cm³ to the unit, "from" back.
    /// @{
    double toLinearMeasurementUnit(E_MeasurementUnit unit, double cm) const;
    double fromLinearMeasurementUnit(E_MeasurementUnit unit, double value) const;
    double toSquaredMeasurementUnit(E_MeasurementUnit unit, double cm2) const;
    double fromSquaredMeasurementUnit(E_MeasurementUnit unit, double value) const;
    double toCubicMeasurementUnit(E_MeasurementUnit unit, double cm3) const;
    double fromCubicMeasurementUnit(E_MeasurementUnit unit, double value) const;
    double toMeasurementUnit(E_MeasurementDimension dimension, E_MeasurementUnit unit, double value) const;
    double fromMeasurementUnit(E_MeasurementDimension dimension, E_MeasurementUnit unit, double value) const;
    /// @}

    /// \name Precision and step
    /// @{

    /// The number of decimals that are shown.
    unsigned int getLinearMeasurementUnitPrecision(E_MeasurementUnit unit) const;
    unsigned int getMeasurementUnitPrecision(E_MeasurementDimension dimension, E_MeasurementUnit unit) const;
    /// The step of a spin box, in the unit.
    double getLinearMeasurementUnitStep(E_MeasurementUnit unit) const;
    double getMeasurementUnitStep(E_MeasurementDimension dimension, E_MeasurementUnit unit) const;
    /// @}

    /// \name Preferred units
    /// One for constructing rooms and one for arranging furniture. Stored as abbreviations in the group
    /// "Locale" of the settings. Each call reads the settings file: not for inner loops.
    /// @{

    /// Centimetre when nothing, or no known abbreviation, is stored.
    E_MeasurementUnit getPrefferedConstructionUnit() const;
    E_MeasurementUnit getPrefferedArrangementUnit() const;
    /// Stores \p unit, then emits the preference's signal once. Does nothing when the getter returns \p unit
    /// already.
    void setPrefferedConstructionUnit(const E_MeasurementUnit& unit);
    void setPrefferedArrangementUnit(const E_MeasurementUnit& unit);
    /// Removes the stored unit. Emits no signal, although the unit may change: that is meant.
    void resetPrefferedConstructionUnit();
    void resetPrefferedArrangementUnit();
    /// @}

    /// \name Names and abbreviations
    /// Empty for a number that is no dimension.
    /// @{

    /// "Quadratmeter", translated.
    QString getMeasurementUnitName(E_MeasurementDimension dimension, E_MeasurementUnit unit) const;
    /// "mm", the same in every language.
    QString getLinearMeasurementUnitAbbrevation(E_MeasurementUnit unit) const;
    /// "m²" or "sq ft".
    QString getSquaredMeasurementUnitAbbrevation(E_MeasurementUnit unit) const;
    /// "m³" or "cft".
    QString getCubicMeasurementUnitAbbrevation(E_MeasurementUnit unit) const;
    QString getMeasurementUnitAbbrevation(E_MeasurementDimension dimension, E_MeasurementUnit unit) const;
    /// The dimension and the unit of \p abbreviation, which may be in upper and lower case, but without
    /// blanks around it. Linear centimetre for any other text, such as the abbreviations of volumes.
    QPair<E_MeasurementDimension, E_MeasurementUnit>
    getMeasurementFromAbbrevation(QString abbreviation) const;
    /// @}

    /// \name Measured values as text
    /// Values are in cm, cm² or cm³. The decimal separator is a comma in every locale; trailing zeros are
    /// dropped.
    /// @{

    /// "1,23 m", or "1,23" without the unit. Rounded to \p precision decimals, but never to more than
    /// getMeasurementUnitPrecision(). Lengths in inch and foot are written by createFeetMeasurementString().
    QString createMeasurementString(E_MeasurementDimension dimension, E_MeasurementUnit unit, double value,
                                    unsigned int precision, bool withUnit) const;
    /// The same with all decimals of the unit. Do not pass a precision here: it would be converted to
    /// \p withUnit.
    QString createMeasurementString(E_MeasurementDimension dimension, E_MeasurementUnit unit, double value,
                                    bool withUnit) const;
    /// What the user has typed, in cm, cm² or cm³: a number with comma or point, without separators between
    /// its digits, and any unit of \p dimension by its abbreviation, in upper or lower case; \p unit is that
    /// of a number alone. Feet are 5' or 5 ft, inches 6" or 6 in, both 5' 6". "m2" and "m3" are accepted,
    /// too. Nothing for any other text. Reads what createMeasurementString() writes.
    std::optional<double> parseMeasurement(E_MeasurementDimension dimension, E_MeasurementUnit unit,
                                           const QString& text) const;
    /// A length; a number alone is in centimetres.
    std::optional<double> parseMeasurement(const QString& text) const;
    /// A length in feet and inches, 5' 6". The marks are always written; \p withUnit has no effect. Rounded
    /// inches are not carried (5' 12"), and both parts have the sign (-1' -6").
    QString createFeetMeasurementString(double value, bool withUnit) const;
    /// The family of the font that measurements are drawn in.
    static QString getMeasurementFontName();
    /// @}

    /// \name Choice of the unit
    /// Each item of the combo box has its E_MeasurementUnit as user data. Foot is not offered.
    /// @{

    /// Appends an item for each unit that is offered, then calls updateMeasurementComboBoxLanguage().
    void fillMeasurementComboBox(QComboBox* box) const;
    /// Sets the texts in the current language. Of several items of one unit only the first gets its text.
    void updateMeasurementComboBoxLanguage(QComboBox* box) const;
    /// @}

Q_SIGNALS:
    void constructionMeasurementUnitChanged();
    void arrangementMeasurementUnitChanged();

private:
    MeasurementManager() = default;

    static MeasurementManager* __instance;
};

} // namespace TEKLUVA
