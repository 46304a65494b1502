#pragma once

#include "globals/PresetManager.h"

#include <QList>
#include <QString>

namespace globalsctl {

/// One end of a preset's range: another preset, or a number that never changes.
struct PresetBound
{
    TEKLUVA::E_PresetValue preset = TEKLUVA::E_PV_NONE; ///< none for a number
    double value = 0;
};

/// A preset whose value in force lies outside of its range. The library does not look again at values that
/// were set before their bounds.
struct OutOfBounds
{
    TEKLUVA::PresetDescription preset;
    PresetBound bound;
    bool isBelow = false; ///< or above it

    /// "room_height is 900, above max_room_height (600)".
    QString words() const;
};

/// All presets whose values in force lie outside of their ranges, and all minimums above their maximums.
QList<OutOfBounds> valuesOutOfBounds();

/// The key of \p preset; empty for none.
QString keyOf(TEKLUVA::E_PresetValue preset);

/// The key of the maximum that belongs to the minimum \p preset, and the other way round; empty when there is
/// none.
QString partnerOf(TEKLUVA::E_PresetValue preset);

} // namespace globalsctl
