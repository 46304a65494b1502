#pragma once

#include "support/LogRecord.h"

#include <QElapsedTimer>
#include <QFile>

#include <memory>
#include <vector>

namespace globalsctl {

/// What becomes of the last line of a log that has no end yet.
enum class OpenEnd {
    Taken,
    Awaited, ///< it is read when its end has been written
};

/// Reads one log file, entry by entry, however large it is. What stands before the first entry is left out.
class LogReader
{
    Q_DISABLE_COPY(LogReader)

public:
    /// Throws Failure for what cannot be read, and for what is no regular file. "-" is the standard input.
    LogReader(const QString& path, OpenEnd openEnd);

    QString path() const { return m_path; }
    /// The name of the log.
    QString name() const;

    /// The next entry, null at the present end of the file; the next call may find more there. An entry that
    /// is still being written is waited for some seconds.
    const LogRecord* head();
    void pop();

    /// Whether \p path is the file that is read, which may have had another name when it was opened.
    bool isAt(const QString& path) const;
    /// Whether another file has its name by now, and all of this one has been read.
    bool isOver();

private:
    QByteArray readLine();
    void addLine(QByteArray line);
    bool isHeadWhole() const;

    const QString m_path;
    const OpenEnd m_openEnd;
    QFile m_file;
    QByteArray m_line; ///< room for a line, which would take longer to get than to read one
    std::optional<LogRecord> m_head;
    bool m_isRead = false;       ///< whether nothing more belongs to that entry
    bool m_isEnded = false;      ///< whether the last line of that entry ends as the library ends an entry
    QElapsedTimer m_sinceLatest; ///< since that line was read
    std::optional<LogRecord> m_next; ///< the one whose first line ended the last
};

using LogReaders = std::vector<std::unique_ptr<LogReader>>;

/// The reader whose next entry is the oldest one; null when there is none at present.
LogReader* readerOfOldest(const LogReaders& readers);

} // namespace globalsctl
