#pragma once

#include "globals/logs/LogRotation_p.h"

#include <QFile>

#include <limits>
#include <string>

namespace TEKLUVA {

class LogRecord;

/// The file of a log: opened with the first line, and again with the first one after close(). It has no lock:
/// whoever uses it holds that of its log.
class LogFile
{
    Q_DISABLE_COPY(LogFile)

public:
    LogFile() = default;

    /// In UTF-8. The file must be closed.
    void setPath(const std::string& path);
    /// Keeps the file from being opened until there is another path.
    void refuse() { m_isUsable = false; }
    /// Whether the first opening, and the first one after close(), keeps what the file holds.
    void setAppend(bool append) { m_append = append; }

    void setRotation(const LogRotation& rotation) { m_rotation = rotation; }

    /// Writes the line of \p record and marks it as written, unless it is marked already.
    void write(LogRecord& record);
    void close();

private:
    bool ensureOpen();
    bool openToAppend();
    /// Opens another file if this one is full, or if another process has moved it.
    bool makeRoomFor(qint64 line);
    bool writeWhole(const std::string& line);
    /// The line, in memory that the next one uses again.
    const std::string& lineOf(const LogRecord& record);
    const std::string& timeStamp(qint64 milliseconds);

    QString m_path;
    QFile m_file;
    bool m_append = false;
    bool m_hasBegun = false; ///< opened since close(), and so not emptied again
    bool m_isUsable = true;
    LogRotation m_rotation;
    System::FileStatus m_opened; ///< when the file was opened

    std::string m_line;
    /// The time stamp last written and its second since the epoch. They are kept because most lines share
    /// their second with the line before, and a new time stamp takes longer than the rest of a line (6 µs and
    /// 1.3 µs measured: Qt asks the system for the time zone).
    std::string m_stamp;
    qint64 m_stampSecond = std::numeric_limits<qint64>::min();
};

} // namespace TEKLUVA
