#pragma once

namespace TEKLUVA::Misuse {

/// Tells the developer of an application of a mistake in the use of the library: a qWarning() in debug builds
/// of the library, once for each \p mistake, nothing in others. Thread-safe.
void warn(const char* mistake);

/// Warns of \p mistake on any thread but the main one.
void checkMainThread(const char* mistake);

} // namespace TEKLUVA::Misuse
