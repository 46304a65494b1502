#include "Fuzz.h"

#include "globals/Exception.h"
#include "globals/PresetManager.h"

using namespace TEKLUVA;

/// The text of a preset file.
void fuzz(const QByteArray& input)
{
    const QString text = textOf(input);
    PresetManager& presets = *PresetManager::getInstance();
    presets.fillNameMap();
    presets.setInitialPresets();
    try {
        const auto line = PresetManager::parseLine(text);
        require(!line || line->key + QLatin1Char('=') + line->value == text.trimmed());
        presets.readText(text);
    } catch (const Exception& e) {
        require(e.getExceptionType() == E_ET_FATAL && e.exitApp());
    }
    for (const PresetDescription& preset : PresetManager::describePresets())
        require(PresetManager::getPreset(preset.value).isValid());
    delete &presets;
}
