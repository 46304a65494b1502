#pragma once

#include "globals/globals_export.h"

#include <QByteArray>
#include <QString>

#include <limits>
#include <optional>

namespace TEKLUVA {

/// What fits into memory in one piece: a QByteArray keeps a header and an end beside its bytes.
inline constexpr qint64 LARGEST_WHOLE_FILE = std::numeric_limits<int>::max() - 64;

/// The whole content of the file \p path, read to a certain end. Nothing, with the reason in \p error, for
/// what is no regular file, is larger than \p limit bytes or than memory, cannot be read, or ends before its
/// size. Reentrant.
GLOBALS_EXPORT std::optional<QByteArray> readWhole(const QString& path, qint64 limit = LARGEST_WHOLE_FILE,
                                                   QString* error = nullptr);

} // namespace TEKLUVA
