#include "globals/logs/ActiveLog_p.h"

#include "globals/Log.h"
#include "globals/LogManager.h"
#include "globals/foundation/WithoutExceptions_p.h"
#include "globals/logs/LogLock_p.h"

#include <QString>

namespace TEKLUVA {

// No report ends the operation that makes it, or a destructor: what has no memory for its text is lost.

void logToActive(E_LogLevel level, const std::string& message, const std::string& location, unsigned int line)
{
    if (!LogManager::hasInstance())
        return; // and nobody else makes one: it belongs to the main thread
    const auto writeEntry = [&](Log& log) {
        // In a receiver of its contentChanged() a log takes no further entry.
        if (!LogLock::isHeldHere(&log))
            log.logMessage(level, message, location, line);
    };
    withoutExceptions([&writeEntry] { LogManager::getInstance()->withActiveLog(writeEntry); });
}

void logError(const char* message)
{
    withoutExceptions([message] { logToActive(E_LL_ERROR, message); });
}

void logError(const std::string& message)
{
    logToActive(E_LL_ERROR, message);
}

void logError(const QString& message)
{
    withoutExceptions([&message] { logToActive(E_LL_ERROR, message.toStdString()); });
}

void logWarning(const QString& message)
{
    withoutExceptions([&message] { logToActive(E_LL_WARNING, message.toStdString()); });
}

} // namespace TEKLUVA
