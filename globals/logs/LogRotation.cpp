#include "globals/logs/LogRotation_p.h"

#include <string>

namespace TEKLUVA {

namespace fs = std::filesystem;

namespace {

fs::path oldFile(const fs::path& path, int number)
{
    fs::path old = path;
    old += '.' + std::to_string(number);
    return old;
}

bool isThere(const fs::path& path)
{
    std::error_code error;
    return fs::symlink_status(path, error).type() != fs::file_type::not_found;
}

/// The first number that no old file has; the last one, whose file goes, if all have.
int firstFree(const fs::path& path, int oldFiles)
{
    int number = 1;
    while (number < oldFiles && isThere(oldFile(path, number)))
        ++number;
    return number;
}

} // namespace

void LogRotation::rotate(const System::Path& path, qint64 line) const
{
    std::error_code error;
    const auto file = System::FileHandle::openForReading(path, error);
    // Whoever has it locked is moving it. Not all file systems can lock, and then there is one process in
    // general.
    if (error || file.tryLock() == std::errc::operation_would_block)
        return;
    const System::FileStatus status = file.status(error);
    const bool isStillThere = !error && status.isSameFile(System::statusOf(path, error)) && !error;
    if (!isStillThere || !isFull(status.size, line))
        return;
    if (oldFiles == 0) {
        fs::remove(path, error);
        return;
    }
    for (int number = firstFree(path, oldFiles); number > 0 && !error; --number)
        fs::rename(number == 1 ? path : oldFile(path, number - 1), oldFile(path, number), error);
}

} // namespace TEKLUVA
