#include "globals/system/System_p.h"

#include <algorithm>
#include <thread>

// For every system but Linux: what works without its calls.

namespace TEKLUVA::System {

FileHandle FileHandle::createUnnamed(const Path& /*folder*/, std::error_code& error)
{
    error = std::make_error_code(std::errc::not_supported);
    return {};
}

std::error_code FileHandle::linkTo(const Path& /*path*/) const
{
    return std::make_error_code(std::errc::not_supported);
}

std::error_code FileHandle::copyFrom(const FileHandle& source) const
{
    return copyPieces(source, 0);
}

FileWatch::FileWatch(const Path& /*path*/)
{
}

FileWatch::~FileWatch() = default;

void FileWatch::wait(std::chrono::milliseconds limit) const
{
    constexpr std::chrono::milliseconds BETWEEN_LOOKS{10};
    std::this_thread::sleep_for(std::min(limit, BETWEEN_LOOKS));
}

void adviseHugePages(char* /*memory*/, std::size_t /*size*/)
{
}

} // namespace TEKLUVA::System
