#pragma once

#include "globals/globals.h"

#include <QDateTime>
#include <QObject>

#include <atomic>

namespace TEKLUVA {

/// One message of a Log: immutable but for the mark that it reached the file. Thread-safe.
class GLOBALS_EXPORT LogEntry : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(LogEntry)

public:
    /// Takes its time stamp from ConfigManager::getCurrentServerTime(). \p message is UTF-8 text.
    LogEntry(E_LogLevel level, std::string message);

    E_LogLevel getLevel() const;
    std::string getMessage() const;
    QDateTime getTimeStamp() const;

    /// Whether the entry's line has reached the log file.
    bool isWritten() const;
    void setWritten();

private:
    friend class Log; // formats the line without copying the message

    const std::string m_message;
    const qint64 m_time; ///< milliseconds since the epoch
    const E_LogLevel m_level;
    std::atomic<bool> m_written{false};
};

} // namespace TEKLUVA
