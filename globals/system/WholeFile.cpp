#include "globals/WholeFile.h"

#include "globals/system/Buffer_p.h"
#include "globals/system/System_p.h"

#include <array>
#include <new>

namespace TEKLUVA {

using System::FileHandle;
using System::FileKind;
using System::FileStatus;

namespace {

/// Appends what is read beyond the size that the file told: it may have grown, and those of the system tell
/// none. Not beyond \p limit.
std::error_code readOn(const FileHandle& file, QByteArray& content, qint64 limit)
{
    std::array<char, 4096> piece; // NOLINT(cppcoreguidelines-pro-type-member-init)
    std::error_code error;
    for (;;) {
        const qint64 count = file.readAt(piece.data(), qint64(piece.size()), content.size(), error);
        if (error || count == 0)
            return error;
        if (content.size() + count > limit)
            return std::make_error_code(std::errc::file_too_large);
        content.append(piece.data(), static_cast<QByteArray::size_type>(count));
    }
}

std::error_code readInto(QByteArray& content, const QString& path, qint64 limit)
{
    std::error_code error;
    const FileHandle file = FileHandle::openForReading(System::nativePath(path), error);
    if (error)
        return error;
    const FileStatus status = file.status(error);
    if (error)
        return error;
    if (status.kind == FileKind::Folder)
        return std::make_error_code(std::errc::is_a_directory);
    if (status.kind != FileKind::Regular)
        return std::make_error_code(std::errc::not_supported);
    if (status.size > limit)
        return std::make_error_code(std::errc::file_too_large);
    content = newBuffer(static_cast<QByteArray::size_type>(status.size));
    const qint64 count = file.readAt(content.data(), status.size, 0, error);
    if (error)
        return error;
    if (count < status.size)
        return std::make_error_code(std::errc::io_error);
    return readOn(file, content, limit);
}

} // namespace

std::optional<QByteArray> readWhole(const QString& path, qint64 limit, QString* error)
{
    QByteArray content;
    std::error_code failure;
    try {
        failure = readInto(content, path, qMin(limit, LARGEST_WHOLE_FILE));
    } catch (const std::bad_alloc&) {
        failure = std::make_error_code(std::errc::not_enough_memory);
    }
    if (!failure)
        return content;
    if (error)
        *error = System::messageOf(failure);
    return std::nullopt;
}

} // namespace TEKLUVA
