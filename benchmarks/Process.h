#pragma once

#include <string>
#include <vector>

namespace Bench {

struct ProcessResult
{
    bool isDone = false;      ///< whether it ended with 0
    double peakMebibytes = 0; ///< the most memory it had resident
};

/// Runs a program, found in the PATH, to its end, without its output.
ProcessResult run(const std::vector<std::string>& command);

} // namespace Bench
