#include "Usage.h"

#include <cstdlib>
#include <fstream>
#include <malloc.h>
#include <string>

namespace {

thread_local std::int64_t allocationsOfThisThread = 0;

std::int64_t writesOfThisThread()
{
    std::ifstream file("/proc/thread-self/io");
    std::string name;
    std::int64_t value = 0;
    while (file >> name >> value) {
        if (name == "syscw:")
            return value;
    }
    return 0;
}

} // namespace

// glibc allows a program to put its own functions in front of the allocator, and keeps the originals under
// these names. The memory stays glibc's, so free() need not be replaced.
extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);

void* malloc(std::size_t size)
{
    ++allocationsOfThisThread;
    return __libc_malloc(size);
}

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): glibc's names are reserved
void* calloc(std::size_t count, std::size_t size)
{
    ++allocationsOfThisThread;
    return __libc_calloc(count, size);
}

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
void* realloc(void* memory, std::size_t size)
{
    ++allocationsOfThisThread;
    return __libc_realloc(memory, size);
}
}

namespace Bench {

Usage Usage::now()
{
    const std::int64_t writes = writesOfThisThread();
    return {allocationsOfThisThread, writes};
}

std::int64_t allocatedBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return static_cast<std::int64_t>(info.uordblks + info.hblkhd);
}

} // namespace Bench
