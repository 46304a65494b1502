#include "globals/presets/PresetRules_p.h"

#include "globals/logs/ActiveLog_p.h"

#include <QRegExp>

namespace TEKLUVA::PresetRules {

namespace {

float number(E_PresetValue key)
{
    return PresetManager::getPreset(key).toFloat();
}

bool isTooCloseAboveRoom(const QVariant& value)
{
    return PresetManager::hasPreset(E_PV_MAX_ROOM_HEIGHT) && value.toFloat() < aboveHighestRoom();
}

/// Sets the values along an axis again, so that they are clamped to the new extent of the box.
void fitIntoBox(PresetManager& presets, const NavigationValues& dependents)
{
    for (const E_PresetValue key : dependents) {
        if (!PresetManager::hasPreset(key))
            continue;
        const QVariant current = PresetManager::getPreset(key);
        presets.setPreset(key, current);
    }
}

/// Lifts \p key when the room's ceiling would lie more than the space above it. A plain write: as a maximum
/// it would only go down.
void keepAbove(PresetManager& presets, E_PresetValue key, const QVariant& ceiling)
{
    if (PresetManager::hasPreset(key) && ceiling.toFloat() > number(key) + SPACE_ABOVE_ROOM)
        presets.setValue(key, ceiling.toFloat() + SPACE_ABOVE_ROOM);
}

bool isRatio(const QString& text)
{
    // Anchored at both ends, a line break at the end included.
    return QRegExp(QStringLiteral("^\\d{1,3}:\\d{1,3}$")).exactMatch(text);
}

void warnOfFormat(E_PresetValue key, const QVariant& value, const QString& alternative)
{
    logWarning(QStringLiteral("Preset value: ") + value.toString() + QStringLiteral(" for Preset: ")
               + QString::fromLatin1(presetRow(key)->key)
               + QStringLiteral(" has the wrong format. Please use <max 3 digit number>:<max 3 digit number>")
               + alternative);
}

} // namespace

float aboveHighestRoom()
{
    return number(E_PV_MAX_ROOM_HEIGHT) + SPACE_ABOVE_ROOM;
}

void writeAsIs(PresetManager& presets, E_PresetValue key, const PresetConstraint& /*constraint*/,
               const QVariant& value)
{
    presets.setValue(key, value);
}

void writeWithin(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                 const QVariant& value)
{
    presets.setValue(key, value, constraint.lower, constraint.upper);
}

void writeBetween(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                  const QVariant& value)
{
    presets.setValue(key, value, constraint.min, constraint.max);
}

void writeMinimum(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                  const QVariant& value)
{
    presets.setMinBound(key, value, constraint.upper, E_PV_NONE);
    fitIntoBox(presets, constraint.dependents);
}

void writeMaximum(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                  const QVariant& value)
{
    presets.setMaxBound(key, value, constraint.lower, E_PV_NONE);
    fitIntoBox(presets, constraint.dependents);
}

void writeRoomCeiling(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                      const QVariant& value)
{
    writeMaximum(presets, key, constraint, value);
    keepAbove(presets, E_PV_MAX_CUBE_Y, value);
    keepAbove(presets, E_PV_SAT_NAV_Y, value);
}

void writeBoxTop(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                 const QVariant& value)
{
    // Kept on purpose: too low a top still becomes the top, but is held against the z minimum, and the z
    // values are fitted into the box instead of the y values.
    const PresetConstraint& rule =
        isTooCloseAboveRoom(value) ? presetRow(E_PV_MAX_CUBE_Z)->constraint : constraint;
    writeMaximum(presets, key, rule, value);
}

void writeSatelliteHeight(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                          const QVariant& value)
{
    if (!isTooCloseAboveRoom(value))
        writeWithin(presets, key, constraint, value);
}

void writeRatio(PresetManager& presets, E_PresetValue key, const PresetConstraint& /*constraint*/,
                const QVariant& value)
{
    if (isRatio(value.toString()))
        presets.setValue(key, value);
    else
        warnOfFormat(key, value, QString());
}

void writeRatioOrScreen(PresetManager& presets, E_PresetValue key, const PresetConstraint& /*constraint*/,
                        const QVariant& value)
{
    const QString text = value.toString();
    if (isRatio(text) || text == QLatin1String("0"))
        presets.setValue(key, value);
    else
        warnOfFormat(
            key, value,
            QStringLiteral(" to specify a aspect ratio or 0 to take the current screen aspect ratio"));
}

} // namespace TEKLUVA::PresetRules
