#include "globals/LogEntry.h"

#include "globals/foundation/MainThread_p.h"
#include "globals/logs/LogConfiguration_p.h"

namespace TEKLUVA {

LogEntry::LogEntry(E_LogLevel level, std::string message)
    : m_message(std::move(message))
    , m_time(LogConfiguration::currentMSecs())
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

std::string_view LogEntry::getMessageView() const
{
    return m_message;
}

QDateTime LogEntry::getTimeStamp() const
{
    return QDateTime::fromMSecsSinceEpoch(m_time);
}

qint64 LogEntry::getTimeStampMSecs() const
{
    return m_time;
}

bool LogEntry::isWritten() const
{
    return m_written.load(std::memory_order_acquire);
}

void LogEntry::setWritten()
{
    m_written.store(true, std::memory_order_release);
}

} // namespace TEKLUVA
