#pragma once

#include "globals/globals.h"
#include "globals/globals_export.h"

#include <QObject>
#include <QPair>
#include <QString>

class QComboBox;

namespace TEKLUVA {

/// Converts lengths, areas and volumes between centimetres (cm, cm², cm³), in which the application holds all
/// geometry, and the units that the user sees; keeps the user's preferred units; writes measured values.
///
///     auto* units = MeasurementManager::getInstance();
///     const E_MeasurementUnit unit = units->getPrefferedConstructionUnit();
///     label->setText(units->createMeasurementString(E_MD_LINEAR, unit, wallLength, true)); // "1,234 m"
///
/// Any number that is no unit is taken for centimetre. Areas and volumes have one unit in each system: square
/// and cubic feet for inch and foot, square and cubic metres for all others, and so 1 m² for 10000 cm² even
/// in millimetre. A number that is no dimension converts nothing. No function fails.
///
/// Threads: main thread only. Conversions, precision and step are pure functions without allocation.
///
/// Ownership: made by the first getInstance(), without a parent; nothing in the library destroys it.
class GLOBALS_EXPORT MeasurementManager : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(MeasurementManager)

public:
    static MeasurementManager* getInstance();
    ~MeasurementManager() override;

    /// \name Conversion
    /// "to" takes cm, cm² or cm³ and answers in the unit's scale, "from" the other way round.
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

    /// The number of decimals shown.
    unsigned int getLinearMeasurementUnitPrecision(E_MeasurementUnit unit) const;
    unsigned int getMeasurementUnitPrecision(E_MeasurementDimension dimension, E_MeasurementUnit unit) const;
    /// What one click in a spin box adds, in the unit itself.
    double getLinearMeasurementUnitStep(E_MeasurementUnit unit) const;
    double getMeasurementUnitStep(E_MeasurementDimension dimension, E_MeasurementUnit unit) const;
    /// @}

    /// \name Preferred units
    /// One while rooms are constructed and one while furniture is arranged, kept as abbreviations in the
    /// group "Locale" of the settings and read from there each time: nothing for inner loops.
    /// @{

    /// Centimetre when nothing, or no known abbreviation, is stored.
    E_MeasurementUnit getPrefferedConstructionUnit() const;
    E_MeasurementUnit getPrefferedArrangementUnit() const;
    /// Stores \p unit, then emits the signal of the preference once. Does nothing when the getter answers
    /// \p unit already.
    void setPrefferedConstructionUnit(const E_MeasurementUnit& unit);
    void setPrefferedArrangementUnit(const E_MeasurementUnit& unit);
    /// Removes what is stored. Emits nothing on purpose, although the unit may change.
    void resetPrefferedConstructionUnit();
    void resetPrefferedArrangementUnit();
    /// @}

    /// \name Names and abbreviations
    /// Empty for a number that is no dimension.
    /// @{

    /// "Quadratmeter", translated.
    QString getMeasurementUnitName(E_MeasurementDimension dimension, E_MeasurementUnit unit) const;
    /// "mm", "cm", "m", "in" or "ft", in every language.
    QString getLinearMeasurementUnitAbbrevation(E_MeasurementUnit unit) const;
    /// "m²" or "sq ft".
    QString getSquaredMeasurementUnitAbbrevation(E_MeasurementUnit unit) const;
    /// "m³" or "cft".
    QString getCubicMeasurementUnitAbbrevation(E_MeasurementUnit unit) const;
    QString getMeasurementUnitAbbrevation(E_MeasurementDimension dimension, E_MeasurementUnit unit) const;
    /// The dimension and the unit that \p abbreviation stands for, in any case but without blanks around it.
    /// Linear centimetre for any other text, "m³" and "cft" among them.
    QPair<E_MeasurementDimension, E_MeasurementUnit>
    getMeasurementFromAbbrevation(QString abbreviation) const;
    /// @}

    /// \name Measured values as text
    /// Values in cm, cm² or cm³. The decimal separator is a comma in every locale; trailing zeros are left
    /// out.
    /// @{

    /// "1,23 m", or "1,23" without the unit. Rounded to \p precision decimals, but never to more than
    /// getMeasurementUnitPrecision(). Lengths in inch and foot are createFeetMeasurementString().
    QString createMeasurementString(E_MeasurementDimension dimension, E_MeasurementUnit unit, double value,
                                    unsigned int precision, bool withUnit) const;
    /// The same with all of the unit's decimals. Do not pass a precision here: it would be taken for
    /// \p withUnit.
    QString createMeasurementString(E_MeasurementDimension dimension, E_MeasurementUnit unit, double value,
                                    bool withUnit) const;
    /// A length as feet and inches, 5' 6". \p withUnit changes nothing: without its marks this could not be
    /// read. Rounded inches are not carried (5' 12"), and both parts have the sign (-1' -6").
    QString createFeetMeasurementString(double value, bool withUnit) const;
    /// The family of the font that measurements are drawn in.
    static QString getMeasurementFontName();
    /// @}

    /// \name Choice of the unit
    /// The items of a combo box have their E_MeasurementUnit as user data. Foot is not offered.
    /// @{

    /// Appends the items for millimetre, centimetre, metre and inch, then sets their texts.
    void fillMeasurementComboBox(QComboBox* box) const;
    /// Sets the texts in the current language, each for the first item of its unit.
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
