#include "globals/PresetManager.h"
#include "globals/presets/PresetTable_p.h"

namespace TEKLUVA {

namespace {

/// That of \p minimum; E_PV_NONE for what is none, or has none.
E_PresetValue maximumOf(E_PresetValue minimum)
{
    E_PresetValue maximum = E_PV_NONE;
    for (const PresetRow& row : presetRows()) {
        if (row.constraint.lower != minimum)
            continue;
        // Rather the one that moves the minimum than one that only bounds the same values.
        if (row.constraint.limit == PresetLimit::Maximum)
            return row.value;
        if (row.constraint.limit == PresetLimit::Presets)
            maximum = row.constraint.upper;
    }
    return maximum;
}

E_PresetValue minimumOf(E_PresetValue maximum)
{
    for (const PresetRow& row : presetRows()) {
        if (row.value == maximum && row.constraint.limit == PresetLimit::Maximum
            && row.constraint.lower != E_PV_NONE)
            return row.constraint.lower;
        if (row.constraint.limit == PresetLimit::Presets && row.constraint.upper == maximum)
            return row.constraint.lower;
    }
    return E_PV_NONE;
}

} // namespace

PresetBounds PresetManager::boundsOf(const E_PresetValue& value)
{
    PresetBounds bounds;
    const PresetRow* row = presetRow(value);
    if (!row)
        return bounds;
    const PresetConstraint& constraint = row->constraint;
    if (constraint.limit == PresetLimit::Presets) {
        bounds.lower = constraint.lower;
        bounds.upper = constraint.upper;
    } else if (constraint.limit == PresetLimit::Numbers) {
        bounds.min = constraint.min;
        bounds.max = constraint.max;
    }
    bounds.minimum = minimumOf(value);
    bounds.maximum = maximumOf(value);
    return bounds;
}

} // namespace TEKLUVA
