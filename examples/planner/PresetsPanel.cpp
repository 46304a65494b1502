#include "PresetsPanel.h"

#include "Panel.h"

#include "globals/PresetManager.h"

#include <QtWidgets>

using namespace TEKLUVA;

QWidget* makePresetsPanel()
{
    auto* panel = new Panel(QT_TRANSLATE_NOOP("Panel", "Presets"));
    auto* table =
        panel->addTable({QT_TRANSLATE_NOOP("Panel", "Key"), QT_TRANSLATE_NOOP("Panel", "Type"),
                         QT_TRANSLATE_NOOP("Panel", "Value"), QT_TRANSLATE_NOOP("Panel", "Bounds")});
    for (const PresetDescription& preset : PresetManager::describePresets())
        new QTreeWidgetItem(table, {preset.key, preset.type,
                                    PresetManager::getPreset(preset.value).toString(), preset.bounds});
    return panel;
}
