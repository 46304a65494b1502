#include "globals/system/System_p.h"

#include "globals/system/Folder_p.h"

#include <array>
#include <tuple>
#include <utility>

namespace TEKLUVA::System {

bool FileStatus::operator==(const FileStatus& other) const
{
    const auto fields = [](const FileStatus& status) {
        return std::tie(status.kind, status.device, status.inode, status.size, status.modified,
                        status.changed, status.permissions, status.owner, status.group);
    };
    return fields(*this) == fields(other);
}

bool isRegularFile(const Path& path)
{
    std::error_code error;
    const FileStatus status = statusOf(path, error);
    return !error && status.kind == FileKind::Regular;
}

std::vector<FolderEntry> entriesOf(const Path& path, std::error_code& error)
{
    const Folder folder = Folder::open(path, error);
    return error ? std::vector<FolderEntry>() : folder.entries(error);
}

FileHandle::FileHandle(FileHandle&& other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1))
{
}

FileHandle& FileHandle::operator=(FileHandle&& other) noexcept
{
    std::swap(m_descriptor, other.m_descriptor);
    return *this;
}

FileHandle::~FileHandle()
{
    static_cast<void>(close());
}

FileStatus FileHandle::status(std::error_code& error) const
{
    return statusOf(m_descriptor, error);
}

std::error_code FileHandle::copyPieces(const FileHandle& source, qint64 position) const
{
    std::array<char, std::size_t{64} * 1024> piece; // NOLINT(cppcoreguidelines-pro-type-member-init)
    std::error_code error;
    for (;;) {
        const qint64 count = source.readAt(piece.data(), qint64(piece.size()), position, error);
        if (error || count == 0)
            return error;
        error = writeAt(piece.data(), count, position);
        if (error)
            return error;
        position += count;
    }
}

} // namespace TEKLUVA::System
