#pragma once

#include <cerrno>
#include <system_error>

namespace TEKLUVA::System {

/// Why the last call of the C library failed, in the calling thread.
inline std::error_code lastError()
{
    return {errno, std::generic_category()};
}

} // namespace TEKLUVA::System
