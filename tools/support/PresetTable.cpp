#include "support/PresetTable.h"

#include "support/PresetTypes.h"

#include <QJsonArray>
#include <QJsonObject>

namespace globalsctl {

using namespace TEKLUVA;

QList<ShownPreset> presetsAfter(const PresetFile& file, PresetChoice choice)
{
    QList<ShownPreset> presets;
    for (const PresetDescription& preset : PresetManager::describePresets()) {
        const PresetType& type = presetType(preset.type);
        const ShownPreset shown = {preset, type.normal(file.builtIn(preset.value)),
                                   type.normal(PresetManager::getPreset(preset.value))};
        if (shown.isChanged() || choice == PresetChoice::All)
            presets << shown;
    }
    return presets;
}

QList<QStringList> rowsOf(const QList<ShownPreset>& presets)
{
    QList<QStringList> rows = {{QStringLiteral("KEY"), QStringLiteral("TYPE"), QStringLiteral("DEFAULT"),
                                QStringLiteral("CURRENT"), QStringLiteral("BOUNDS")}};
    for (const ShownPreset& shown : presets) {
        rows << QStringList{shown.preset.key, shown.preset.type, inWords(shown.builtIn),
                            inWords(shown.inForce), shown.preset.bounds};
    }
    return rows;
}

QJsonArray arrayOf(const QList<ShownPreset>& presets)
{
    QJsonArray array;
    for (const ShownPreset& shown : presets) {
        array << QJsonObject{
            {QStringLiteral("value"), shown.preset.value}, {QStringLiteral("key"), shown.preset.key},
            {QStringLiteral("type"), shown.preset.type},   {QStringLiteral("default"), shown.builtIn},
            {QStringLiteral("current"), shown.inForce},    {QStringLiteral("bounds"), shown.preset.bounds},
            {QStringLiteral("changed"), shown.isChanged()}};
    }
    return array;
}

QString valueInForce(const PresetDescription& preset)
{
    return inWords(presetType(preset.type).normal(PresetManager::getPreset(preset.value)));
}

QStringList valuesInForce()
{
    QStringList values;
    for (const PresetDescription& preset : PresetManager::describePresets())
        values << valueInForce(preset);
    return values;
}

QStringList builtInValues()
{
    const PresetFile builtIn;
    return valuesInForce();
}

} // namespace globalsctl
