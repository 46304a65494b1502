#include "globals/LogEntry.h"

#include "globals/foundation/MainThread_p.h"
#include "globals/logs/LogConfiguration_p.h"
#include "globals/logs/LogRecord_p.h"

namespace TEKLUVA {

LogRecord::LogRecord(E_LogLevel messageLevel, std::string text)
    : level(messageLevel)
    , time(LogConfiguration::currentMSecs())
    , message(std::move(text))
{
}

LogEntry::LogEntry(E_LogLevel level, std::string message)
    : LogEntry(LogRecordPointer(new LogRecord(level, std::move(message))))
{
}

LogEntry::LogEntry(LogRecordPointer record)
    : m_record(std::move(record))
{
    moveToMainThread(this);
}

LogEntry::~LogEntry() = default;

E_LogLevel LogEntry::getLevel() const
{
    return m_record->level;
}

std::string LogEntry::getMessage() const
{
    return m_record->message;
}

std::string_view LogEntry::getMessageView() const
{
    return m_record->message;
}

QDateTime LogEntry::getTimeStamp() const
{
    return QDateTime::fromMSecsSinceEpoch(m_record->time);
}

qint64 LogEntry::getTimeStampMSecs() const
{
    return m_record->time;
}

bool LogEntry::isWritten() const
{
    return m_record->isWritten.load(std::memory_order_acquire);
}

void LogEntry::setWritten()
{
    m_record->isWritten.store(true, std::memory_order_release);
}

} // namespace TEKLUVA
