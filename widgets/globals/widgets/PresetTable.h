#pragma once

#include "globals/PresetValue.h"
#include "globals/widgets/globals_widgets_export.h"

#include <QTreeView>

namespace TEKLUVA {

/// Shows all presets by number, with their types, values and bounds. The titles are in the user's language,
/// the rest is as in a preset file. The user can change nothing.
///
/// Main thread only. The values are those of PresetManager at the last refresh(), of which the constructor
/// makes the first: fill the manager before.
class GLOBALS_WIDGETS_EXPORT PresetTable : public QTreeView
{
    Q_OBJECT

public:
    enum E_Column : int { E_PC_KEY = 0, E_PC_TYPE = 1, E_PC_VALUE = 2, E_PC_BOUNDS = 3 };

    explicit PresetTable(QWidget* parent = nullptr);

    /// The preset of a row of model(), E_PV_NONE for an invalid index.
    E_PresetValue getPresetAt(const QModelIndex& index) const;

public Q_SLOTS:
    /// Shows the values that are in force now.
    void refresh();

protected:
    void changeEvent(QEvent* event) override;

private:
    void setTitles();
};

} // namespace TEKLUVA
