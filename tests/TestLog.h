#pragma once

#include "globals/Log.h"
#include "globals/LogManager.h"

#include <QFile>
#include <QStringList>

namespace TestLog {

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
