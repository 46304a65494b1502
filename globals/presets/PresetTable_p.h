#pragma once

#include "globals/PresetManager.h"

#include <array>
#include <variant>

namespace TEKLUVA {

struct PresetConstraint;

/// Writes \p value to the preset \p key as \p constraint allows.
using PresetWrite = void (*)(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                             const QVariant& value);

/// The values that are fitted into the scene box again when its extent along one axis changes.
using NavigationValues = std::array<E_PresetValue, 3>;

/// What happens when a preset is set.
struct PresetConstraint
{
    PresetWrite write;
    /// For people; "%lower" and "%upper" stand for the bounds below.
    const char* words;
    /// The presets that bound the value, or the partner of a bound. E_PV_NONE where there is none.
    E_PresetValue lower = E_PV_NONE;
    E_PresetValue upper = E_PV_NONE;
    /// The numbers that bound the value, where no presets do.
    double min = 0;
    double max = 0;
    NavigationValues dependents{};
};

/// A built-in value in the type it is stored in; the function answers one that depends on the other presets.
using PresetDefault = std::variant<double, float, int, bool, const char*, float (*)()>;

struct PresetRow
{
    E_PresetValue value;
    const char* key;
    PresetDefault initial;
    PresetConstraint constraint;
};

inline constexpr int PRESET_COUNT = 100;
using PresetTable = std::array<PresetRow, PRESET_COUNT>;

/// All presets that have a key, in the order in which their defaults are installed: a bound stands before
/// what it bounds.
const PresetTable& presetTable();

/// The row of a value from 2 to 101, null for another one.
const PresetRow* presetRow(E_PresetValue value);

} // namespace TEKLUVA
