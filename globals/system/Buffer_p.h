#pragma once

#include <QByteArray>

#include <optional>

namespace TEKLUVA {

/// A buffer of \p size bytes, not initialised. Throws for want of memory. A large one lies in huge pages
/// where the system has them: to touch its many small pages for the first time costs more than the cipher.
QByteArray newBuffer(QByteArray::size_type size);

/// A buffer of \p size bytes, which is what somebody claims; nothing when it cannot be had.
std::optional<QByteArray> allocate(quint64 size);

} // namespace TEKLUVA
