#include "support/PresetBounds.h"

#include "support/PresetTypes.h"

#include <algorithm>

namespace globalsctl {

using namespace TEKLUVA;

namespace {

double numberOf(E_PresetValue preset)
{
    return PresetManager::getPreset(preset).toDouble();
}

/// A \p preset as a bound, or else the \p number.
PresetBound boundOf(E_PresetValue preset, double number)
{
    return preset == E_PV_NONE ? PresetBound{preset, number} : PresetBound{preset, numberOf(preset)};
}

void addIfOutside(QList<OutOfBounds>& found, const PresetDescription& preset, const PresetBounds& bounds)
{
    const double value = numberOf(preset.value);
    const PresetBound lower = boundOf(bounds.lower, bounds.min);
    const PresetBound upper = boundOf(bounds.upper, bounds.max);
    if (value < lower.value)
        found << OutOfBounds{preset, lower, true};
    if (value > upper.value)
        found << OutOfBounds{preset, upper, false};
}

} // namespace

QString OutOfBounds::words() const
{
    const QString value = inWords(presetType(preset.type).normal(PresetManager::getPreset(preset.value)));
    const QString limit = inWords(QJsonValue(bound.value));
    const QString key = keyOf(bound.preset);
    return QStringLiteral("%1 is %2, %3 %4")
        .arg(preset.key, value, isBelow ? QStringLiteral("below") : QStringLiteral("above"),
             key.isEmpty() ? limit : QStringLiteral("%1 (%2)").arg(key, limit));
}

QList<OutOfBounds> valuesOutOfBounds()
{
    QList<OutOfBounds> found;
    for (const PresetDescription& preset : PresetManager::describePresets()) {
        PresetBounds bounds = PresetManager::boundsOf(preset.value);
        // A minimum is to be below its maximum, though nothing clamps it.
        if (bounds.maximum != E_PV_NONE)
            bounds.upper = bounds.maximum;
        addIfOutside(found, preset, bounds);
    }
    return found;
}

QString keyOf(E_PresetValue preset)
{
    const QList<PresetDescription> presets = PresetManager::describePresets();
    const auto found =
        std::find_if(presets.begin(), presets.end(),
                     [preset](const PresetDescription& candidate) { return candidate.value == preset; });
    return found == presets.end() ? QString() : found->key;
}

QString partnerOf(E_PresetValue preset)
{
    const PresetBounds bounds = PresetManager::boundsOf(preset);
    return keyOf(bounds.maximum != E_PV_NONE ? bounds.maximum : bounds.minimum);
}

} // namespace globalsctl
