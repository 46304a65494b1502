#pragma once

#include "globals/globals.h"

#include <QDateTime>
#include <QExplicitlySharedDataPointer>
#include <QObject>

#include <string_view>

namespace TEKLUVA {

class LogRecord;

/// One message of a Log. Nothing in it changes but the mark that its line reached the file. Thread-safe.
class GLOBALS_EXPORT LogEntry : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(LogEntry)

public:
    /// Takes its time stamp from ConfigManager::getCurrentServerTime(). \p message is UTF-8 text.
    LogEntry(E_LogLevel level, std::string message);
    ~LogEntry() override;

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
    friend class Log; // which makes an entry of a message that it keeps

    explicit LogEntry(QExplicitlySharedDataPointer<LogRecord> record);

    const QExplicitlySharedDataPointer<LogRecord> m_record; ///< shared with the log
};

} // namespace TEKLUVA
