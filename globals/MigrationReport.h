#pragma once

#include <QStringList>

namespace TEKLUVA {

/// What became of the data of older installations at a first start. All empty when there was nothing to move.
/// Absolute paths, without "/" at their ends.
struct MigrationReport
{
    /// The old folders whose data is in the new one now. An empty list also means that a settings file was
    /// there already.
    QStringList moved;
    /// The old folders that are still there, because something in them could not be copied or deleted.
    QStringList kept;
    /// Files and folders that were deleted without having been copied: caches, logs, and what else lay in the
    /// folder of the vendor.
    QStringList deleted;
};

} // namespace TEKLUVA
