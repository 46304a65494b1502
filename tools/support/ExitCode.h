#pragma once

namespace globalsctl {

enum ExitCode : int {
    Done = 0,
    Failed = 1,
    WrongUsage = 2,
    Trouble = 2,       ///< of a comparison that could not be made, when Failed means a difference
    Interrupted = 128, ///< plus the number of the signal
};

} // namespace globalsctl
