#pragma once

#include "globals/globals.h"

class QString;

namespace TEKLUVA {

/// Writes one entry to the active log, or nothing when no log is active. Every diagnostic of the library goes
/// through here. No lock of the library may be held, because receivers of the log run inside and may call the
/// library. What fails in a receiver of the active log itself is not logged: that log is busy in this thread.
void logToActive(E_LogLevel level, const std::string& message, const std::string& location = {},
                 unsigned int line = 0);

void logError(const char* message);
void logError(const std::string& message);
void logError(const QString& message);
void logWarning(const QString& message);

} // namespace TEKLUVA
