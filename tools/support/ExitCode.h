#pragma once

namespace globalsctl {

enum ExitCode : int {
    Done = 0,
    Failed = 1,
    WrongUsage = 2,
    Interrupted = 128, ///< plus the number of the signal
};

} // namespace globalsctl
