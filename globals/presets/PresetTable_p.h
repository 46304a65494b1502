#pragma once

#include "globals/PresetValue.h"
#include "globals/foundation/Rows_p.h"

#include <array>
#include <variant>

class QVariant;

namespace TEKLUVA {

class PresetManager;
struct PresetConstraint;

/// Stores \p value as the preset \p key, as far as \p constraint allows.
using PresetRule = void (*)(PresetManager& presets, E_PresetValue key, const PresetConstraint& constraint,
                            const QVariant& value);

/// The navigation values along one axis. They are clamped again when the scene box changes along it.
using NavigationValues = std::array<E_PresetValue, 3>;

/// What keeps a value in bounds, or which bound it is itself.
enum class PresetLimit {
    None,
    Presets, ///< lies between the two presets PresetConstraint::lower and upper
    Numbers, ///< lies between PresetConstraint::min and max
    Minimum,
    Maximum,
};

/// What happens when a preset is set.
struct PresetConstraint
{
    PresetRule rule = nullptr;
    /// The constraint for people. "%lower" and "%upper" stand for the bounds below.
    const char* words = nullptr;
    PresetLimit limit = PresetLimit::None;
    /// The presets that bound the value, or the opposite bound of a bound. E_PV_NONE where there is none.
    E_PresetValue lower = E_PV_NONE;
    E_PresetValue upper = E_PV_NONE;
    /// The numbers that bound the value, where no presets do.
    double min = 0;
    double max = 0;
    /// What is clamped again afterwards.
    NavigationValues dependents{};
};

/// A default in the type it is stored in. The function returns one that depends on other presets.
using PresetDefault = std::variant<double, float, int, bool, const char*, float (*)()>;

struct PresetRow
{
    E_PresetValue value;
    const char* key;
    PresetDefault initial;
    PresetConstraint constraint;
};

/// All presets that have a key, in the order in which their defaults are installed: a bound comes before what
/// it bounds.
Rows<PresetRow> presetRows();

/// The row of \p value. Null for the fallback entry and for a number that is no preset.
const PresetRow* presetRow(E_PresetValue value);

} // namespace TEKLUVA
