#pragma once

#include "globals/presets/PresetTable_p.h"

/// The rules by which presets are stored. Each row of the table of presets has one.
namespace TEKLUVA::PresetRules {

/// max_room_height and the clearance that the scene box and the satellite camera keep above it.
float roomHeightWithClearance();

void storeUnchecked(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                    const QVariant& value);
/// Clamps to the presets PresetConstraint::lower and PresetConstraint::upper.
void clampToPresets(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                    const QVariant& value);
/// Clamps to PresetConstraint::min and PresetConstraint::max.
void clampToNumbers(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                    const QVariant& value);
/// Raises a minimum, and with it the maximum PresetConstraint::upper.
void raiseMinimum(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                  const QVariant& value);
/// Lowers a maximum, and with it the minimum PresetConstraint::lower.
void lowerMaximum(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                  const QVariant& value);
/// A maximum that lifts max_cube_y and sat_nav_y when they would be too close above it.
void setMaxRoomHeight(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                      const QVariant& value);
/// A maximum. A value too close above max_room_height is treated as one of max_cube_z.
void setMaxCubeY(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                 const QVariant& value);
/// Clamps to presets. A value too close above max_room_height is ignored.
void setSatNavY(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                const QVariant& value);
/// Stores "4:3"; warns of text of another form.
void storeAspectRatio(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                      const QVariant& value);
/// The same, and stores "0", which stands for the ratio of the screen.
void storeAspectRatioOrScreen(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                              const QVariant& value);

} // namespace TEKLUVA::PresetRules
