#pragma once

#include "globals/presets/PresetTable_p.h"

/// The ways a preset is written; the table of presets names one per row.
namespace TEKLUVA::PresetRules {

/// How far above the highest room the scene box ends and the satellite camera stands.
inline constexpr float SPACE_ABOVE_ROOM = 50.0F;

/// The highest room plus SPACE_ABOVE_ROOM.
float aboveHighestRoom();

void writeAsIs(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
               const QVariant& value);
/// Clamps between two presets.
void writeWithin(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                 const QVariant& value);
/// Clamps between two numbers.
void writeBetween(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                  const QVariant& value);
void writeMinimum(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                  const QVariant& value);
void writeMaximum(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                  const QVariant& value);
/// max_room_height: a maximum that lifts the box top and the satellite camera with it.
void writeRoomCeiling(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                      const QVariant& value);
/// max_cube_y: a maximum that treats a value too close above the highest room like one of max_cube_z.
void writeBoxTop(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                 const QVariant& value);
/// sat_nav_y: ignores a value too close above the highest room.
void writeSatelliteHeight(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                          const QVariant& value);
/// Accepts "4:3".
void writeRatio(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                const QVariant& value);
/// Accepts "4:3", and "0" for the ratio of the screen.
void writeRatioOrScreen(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                        const QVariant& value);

} // namespace TEKLUVA::PresetRules
