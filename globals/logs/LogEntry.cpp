#include "globals/LogEntry.h"

#include "globals/ConfigManager.h"
#include "globals/foundation/MainThread_p.h"

namespace TEKLUVA {

LogEntry::LogEntry(E_LogLevel level, std::string message)
    : m_message(std::move(message))
    , m_time(ConfigManager::getInstance()->getCurrentServerMSecs())
    , m_level(level)
{
    moveToMainThread(this);
}

E_LogLevel LogEntry::getLevel() const
{
    return m_level;
}

std::string LogEntry::getMessage() const
{
    return m_message;
}

QDateTime LogEntry::getTimeStamp() const
{
    return QDateTime::fromMSecsSinceEpoch(m_time);
}

bool LogEntry::isWritten() const
{
    return m_written;
}

void LogEntry::setWritten()
{
    m_written = true;
}

} // namespace TEKLUVA
