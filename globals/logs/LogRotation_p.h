#pragma once

#include "globals/system/System_p.h"

namespace TEKLUVA {

/// When a log file is full, and what becomes of it: it is moved to "NAME.log.1", what is there to
/// "NAME.log.2", and so on. Off by default.
struct LogRotation
{
    qint64 largest = 0; ///< bytes; 0 for no limit
    int oldFiles = 0;   ///< how many are kept beside the file in use

    bool isOn() const { return largest > 0; }
    bool isFull(qint64 size, qint64 line) const { return size > 0 && size + line > largest; }

    /// Moves the file at \p path, and the older ones before it, unless it is not full for a line of \p line
    /// bytes, or another process or log is moving it. A process that is killed meanwhile leaves a number out,
    /// which the next one fills: nothing is lost but the oldest file. A step that fails ends it, and the file
    /// stays in use.
    void rotate(const System::Path& path, qint64 line) const;
};

} // namespace TEKLUVA
