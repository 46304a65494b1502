#include "globals/presets/PresetRules_p.h"

#include "globals/PresetManager.h"
#include "globals/logs/ActiveLog_p.h"

#include <QStringList>

#include <algorithm>

namespace TEKLUVA::PresetRules {

namespace {

/// How far the scene box and the satellite camera reach above the highest room, at least.
constexpr float CLEARANCE = 50.0F;

float number(E_PresetValue key)
{
    return PresetManager::getPreset(key).toFloat();
}

bool isTooCloseAboveRoom(const QVariant& value)
{
    return PresetManager::hasPreset(E_PV_MAX_ROOM_HEIGHT) && value.toFloat() < roomHeightWithClearance();
}

/// Sets the current values again, which clamps them to the bounds as they are now.
void clampAgain(PresetManager& presets, const NavigationValues& dependents)
{
    for (const E_PresetValue key : dependents) {
        if (!PresetManager::hasPreset(key))
            continue;
        const QVariant current = PresetManager::getPreset(key);
        presets.setPreset(key, current);
    }
}

/// Lifts \p key to the clearance above \p roomHeight when the room would reach more than the clearance above
/// \p key. Stored without the rule of \p key, because a maximum would not be raised by it.
void liftAboveRoom(PresetManager& presets, E_PresetValue key, const QVariant& roomHeight)
{
    if (PresetManager::hasPreset(key) && roomHeight.toFloat() > number(key) + CLEARANCE)
        presets.setValue(key, roomHeight.toFloat() + CLEARANCE);
}

/// Digits of any script, as always.
bool isNumberOfRatio(const QString& text)
{
    constexpr int MOST_DIGITS = 3;
    const auto characters = text.toUcs4();
    return !characters.isEmpty() && characters.size() <= MOST_DIGITS
           && std::all_of(characters.begin(), characters.end(), [](uint c) { return QChar::isDigit(c); });
}

/// Without a regular expression, whose compilation took a quarter of the start.
bool isAspectRatio(const QString& text)
{
    const QStringList numbers = text.split(QLatin1Char(':'));
    return numbers.size() == 2 && isNumberOfRatio(numbers[0]) && isNumberOfRatio(numbers[1]);
}

void warnOfFormat(E_PresetValue key, const QVariant& value, const QString& alternative)
{
    logWarning(QStringLiteral("Preset value: ") + value.toString() + QStringLiteral(" for Preset: ")
               + QString::fromLatin1(presetRow(key)->key)
               + QStringLiteral(" has the wrong format. Please use <max 3 digit number>:<max 3 digit number>")
               + alternative);
}

} // namespace

float roomHeightWithClearance()
{
    return number(E_PV_MAX_ROOM_HEIGHT) + CLEARANCE;
}

void storeUnchecked(PresetManager& presets, E_PresetValue key, const PresetConstraint& /*constraint*/,
                    const QVariant& value)
{
    presets.setValue(key, value);
}

void clampToPresets(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                    const QVariant& value)
{
    presets.setValue(key, value, constraint.lower, constraint.upper);
}

void clampToNumbers(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                    const QVariant& value)
{
    presets.setValue(key, value, constraint.min, constraint.max);
}

void raiseMinimum(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                  const QVariant& value)
{
    presets.setMinBound(key, value, constraint.upper, E_PV_NONE);
    clampAgain(presets, constraint.dependents);
}

void lowerMaximum(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                  const QVariant& value)
{
    presets.setMaxBound(key, value, constraint.lower, E_PV_NONE);
    clampAgain(presets, constraint.dependents);
}

void setMaxRoomHeight(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                      const QVariant& value)
{
    lowerMaximum(presets, key, constraint, value);
    liftAboveRoom(presets, E_PV_MAX_CUBE_Y, value);
    liftAboveRoom(presets, E_PV_SAT_NAV_Y, value);
}

void setMaxCubeY(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                 const QVariant& value)
{
    // Meant as it is: a value too close above the room still becomes the maximum, but it takes min_cube_z
    // down instead of min_cube_y, and the z values are clamped again instead of the y values.
    const PresetConstraint& effective =
        isTooCloseAboveRoom(value) ? presetRow(E_PV_MAX_CUBE_Z)->constraint : constraint;
    lowerMaximum(presets, key, effective, value);
}

void setSatNavY(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                const QVariant& value)
{
    if (!isTooCloseAboveRoom(value))
        clampToPresets(presets, key, constraint, value);
}

void storeAspectRatio(PresetManager& presets, E_PresetValue key, const PresetConstraint& /*constraint*/,
                      const QVariant& value)
{
    if (isAspectRatio(value.toString()))
        presets.setValue(key, value);
    else
        warnOfFormat(key, value, QString());
}

void storeAspectRatioOrScreen(PresetManager& presets, E_PresetValue key,
                              const PresetConstraint& /*constraint*/, const QVariant& value)
{
    const QString text = value.toString();
    if (isAspectRatio(text) || text == QLatin1String("0"))
        presets.setValue(key, value);
    else
        warnOfFormat(
            key, value,
            QStringLiteral(" to specify a aspect ratio or 0 to take the current screen aspect ratio"));
}

} // namespace TEKLUVA::PresetRules
