#pragma once

#include <cstdint>

namespace Bench {

/// What the calling thread has used since it started.
struct Usage
{
    std::int64_t allocations; ///< calls of malloc(), calloc() and realloc() from wherever they come
    std::int64_t writes;      ///< system calls that write

    static Usage now();
};

/// The bytes that are allocated at the moment, as the allocator counts them, its own overhead among them.
std::int64_t allocatedBytes();

} // namespace Bench
