#pragma once

#include "globals/MeasurementManager.h"
#include "globals/widgets/globals_widgets_export.h"

#include <QComboBox>

namespace TEKLUVA {

/// What the user prefers a unit for; each is a setting of its own.
enum E_UnitUse : int {
    E_UU_NONE = 0,         ///< no setting: the box is only a choice
    E_UU_CONSTRUCTION = 1, ///< MeasurementManager::getPrefferedConstructionUnit()
    E_UU_ARRANGEMENT = 2,  ///< MeasurementManager::getPrefferedArrangementUnit()
};

/// Lets \p box, filled by MeasurementManager::fillMeasurementComboBox(), show \p unit. A foot, which is not
/// offered but may be stored, gets an entry at the end. A number that is no unit counts as centimetre.
GLOBALS_WIDGETS_EXPORT void selectUnit(QComboBox* box, E_MeasurementUnit unit);
/// The unit that \p box shows; E_MU_UNDEFINED for an empty box.
[[nodiscard]] GLOBALS_WIDGETS_EXPORT E_MeasurementUnit selectedUnit(const QComboBox* box);

/// A choice of the unit of lengths, in the user's language. With a use it shows what is stored, also after
/// another part of the program has stored another unit, and stores what the user chooses.
///
///     form->addRow(tr("&Unit"), new UnitBox(E_UU_CONSTRUCTION));
///
/// Main thread only. The settings are read when the box is made and after each signal of MeasurementManager:
/// what another process stores, or a reset, which has no signal, does not show.
class GLOBALS_WIDGETS_EXPORT UnitBox : public QComboBox
{
    Q_OBJECT

public:
    explicit UnitBox(QWidget* parent = nullptr);
    explicit UnitBox(E_UnitUse use, QWidget* parent = nullptr);

    E_MeasurementUnit getUnit() const;
    /// Shows \p unit, as selectUnit() does, and stores it if the box has a use.
    void setUnit(E_MeasurementUnit unit);

Q_SIGNALS:
    /// The box shows another unit, whoever has changed it.
    void unitChanged(TEKLUVA::E_MeasurementUnit unit);

protected:
    void changeEvent(QEvent* event) override;
};

} // namespace TEKLUVA

Q_DECLARE_METATYPE(TEKLUVA::E_MeasurementUnit)
