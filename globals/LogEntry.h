#pragma once

#include "globals/globals.h"

#include <QDateTime>
#include <QObject>

#include <atomic>
#include <string_view>

namespace TEKLUVA {

/// One message of a Log. Nothing in it changes but the mark that its line reached the file. Thread-safe.
class GLOBALS_EXPORT LogEntry : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(LogEntry)

public:
    /// Takes its time stamp from ConfigManager::getCurrentServerTime(). \p message is UTF-8 text.
    LogEntry(E_LogLevel level, std::string message);

    E_LogLevel getLevel() const;
    std::string getMessage() const;
    /// The message without a copy, valid as long as the entry lives.
    std::string_view getMessageView() const;
    QDateTime getTimeStamp() const;
    /// The time stamp in milliseconds since the epoch, without asking the system for its time zone.
    qint64 getTimeStampMSecs() const;

    /// Whether the entry's line has reached the log file.
    bool isWritten() const;
    void setWritten();

private:
    // Not behind a pointer: a log keeps every entry, and a pointer costs each of them one allocation more (4
    // instead of 3), 16 bytes and time (141 ns instead of 121 to create one).
    const std::string m_message;
    const qint64 m_time; ///< milliseconds since the epoch
    const E_LogLevel m_level;
    std::atomic<bool> m_written{false};
};

} // namespace TEKLUVA
