#include "globals/system/Buffer_p.h"

#include "globals/WholeFile.h"
#include "globals/system/System_p.h"

#include <new>

namespace TEKLUVA {

QByteArray newBuffer(QByteArray::size_type size)
{
    QByteArray buffer(size, Qt::Uninitialized);
    System::adviseHugePages(buffer.data(), static_cast<std::size_t>(size));
    return buffer;
}

std::optional<QByteArray> allocate(quint64 size)
{
    if (size > static_cast<quint64>(LARGEST_WHOLE_FILE))
        return std::nullopt;
    try {
        return newBuffer(static_cast<QByteArray::size_type>(size));
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

} // namespace TEKLUVA
