#pragma once

#include <string>
#include <vector>

namespace Bench {

struct ProcessResult
{
    bool isDone = false;      ///< whether it ended with 0
    double peakMebibytes = 0; ///< the most memory it had resident, if watched
};

/// Runs a program, found in the PATH, to its end, without its output.
ProcessResult run(const std::vector<std::string>& command);

/// The same, and looks each millisecond at the program's memory. Not wait4(): what that tells includes the
/// memory of the process that started the program.
ProcessResult runWatched(const std::vector<std::string>& command);

} // namespace Bench
