#include "Allocations.h"

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstring>

#include <dlfcn.h>

namespace {

std::atomic<bool> isCounting{false};
std::atomic<bool> failsAllLater{true};
std::atomic<long> allocationsLeft{0};

/// Whether \p caller belongs to minizip, which uses small memory without a look at whether it got it. So we
/// look ahead for it whether there is any.
bool isMinizip(const void* caller)
{
    Dl_info info = {};
    return dladdr(caller, &info) != 0 && std::strstr(info.dli_fname, "libminizip") != nullptr;
}

bool fails(const void* caller)
{
    if (!isCounting)
        return false;
    const long left = --allocationsLeft;
    if (left >= 0 || (left < -1 && !failsAllLater) || isMinizip(caller))
        return false;
    errno = ENOMEM;
    return true;
}

} // namespace

EndOfMemory::EndOfMemory(long allocations, Failing failing)
{
    allocationsLeft = allocations;
    failsAllLater = failing == Failing::AllLater;
    isCounting = true;
}

EndOfMemory::~EndOfMemory()
{
    isCounting = false;
}

bool EndOfMemory::hasCome()
{
    return allocationsLeft < 0;
}

// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): glibc names them so
#pragma GCC visibility push(default)
extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);

void* malloc(std::size_t size) noexcept
{
    return fails(__builtin_return_address(0)) ? nullptr : __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) noexcept
{
    return fails(__builtin_return_address(0)) ? nullptr : __libc_calloc(count, size);
}

void* realloc(void* memory, std::size_t size) noexcept
{
    return fails(__builtin_return_address(0)) ? nullptr : __libc_realloc(memory, size);
}

} // extern "C"
#pragma GCC visibility pop
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
