#pragma once

#include <QString>

namespace TEKLUVA {

/// Whether the library has texts in \p language.
inline bool isOffered(const QString& language)
{
    return language == QLatin1String("en") || language == QLatin1String("de");
}

} // namespace TEKLUVA
