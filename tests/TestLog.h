#pragma once

#include "TestFiles.h"
#include "TestHome.h"

#include "globals/Log.h"
#include "globals/LogManager.h"

#include <QFile>
#include <QRegularExpression>
#include <QStringList>

namespace TestLog {

inline QString pathOf(const TEKLUVA::Log& log)
{
    return QString::fromStdString(log.getFilePath());
}

/// The messages of all lines of a log's file. A line that is not whole is returned as it is.
inline QStringList messagesIn(const QString& path)
{
    static const QRegularExpression head(
        R"(^(DEBUG    |INFO     |WARNING  |ERROR    )\d\d\.\d\d\.\d{4} \d\d:\d\d:\d\d  )"_q);
    QStringList lines = QString::fromUtf8(TestFiles::contentOf(path)).split("\r\n"_q);
    if (lines.last().isEmpty())
        lines.removeLast();
    return lines.replaceInStrings(head, QString());
}

inline QStringList messagesOf(const TEKLUVA::Log& log)
{
    return messagesIn(pathOf(log));
}

/// A log that is active as long as the scope lives, to see what the library reports.
class ActiveLog
{
    Q_DISABLE_COPY(ActiveLog)

public:
    explicit ActiveLog(const char* name = "test")
        : m_log(name, true)
    {
        TEKLUVA::LogManager::getInstance()->setActiveLog(&m_log);
    }
    ~ActiveLog() { TEKLUVA::LogManager::getInstance()->restorePreviousLog(); }

    TEKLUVA::Log& log() { return m_log; }

    /// The messages so far, each after its level: "8192 Could not ...".
    QStringList entries()
    {
        QStringList entries;
        for (unsigned int i = 0; i < m_log.getEntryCount(); ++i) {
            TEKLUVA::LogEntry* entry = m_log.getEntry(i);
            entries << "%1 %2"_q.arg(entry->getLevel()).arg(QString::fromStdString(entry->getMessage()));
        }
        return entries;
    }

private:
    TEKLUVA::Log m_log;
};

} // namespace TestLog
