#pragma once

#include "globals/globals.h"

#include <QExplicitlySharedDataPointer>
#include <QSharedData>

#include <atomic>
#include <string>

namespace TEKLUVA {

/// What a log keeps of a message. The LogEntry that shows it is made when somebody asks for it and shares it,
/// because a QObject for each message takes as much memory again. Nothing in it changes but the mark that its
/// line reached the file.
class LogRecord : public QSharedData
{
    Q_DISABLE_COPY(LogRecord)

public:
    /// Takes the time from LogConfiguration.
    LogRecord(E_LogLevel messageLevel, std::string text);

    const E_LogLevel level;
    const qint64 time; ///< milliseconds since the epoch
    const std::string message;
    std::atomic<bool> isWritten{false};
};

using LogRecordPointer = QExplicitlySharedDataPointer<LogRecord>;

} // namespace TEKLUVA
