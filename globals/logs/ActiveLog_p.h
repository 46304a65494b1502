#pragma once

#include "globals/globals.h"

class QString;

namespace TEKLUVA {

/// Writes one entry to the active log, or nothing when no log is active. Every diagnostic of the library goes
/// through here. No lock of the library may be held: the entry's receivers run inside, and taking its time
/// stamp asks the configuration manager. What goes wrong inside a receiver of the active log itself is not
/// logged, because that log is busy in this very thread.
void logToActive(E_LogLevel level, const std::string& message, const std::string& location = {},
                 unsigned int line = 0);

void logError(const char* message);
void logError(const std::string& message);
void logError(const QString& message);
void logWarning(const QString& message);

} // namespace TEKLUVA
