#include "globals/LogManager.h"

#include "globals/Log.h"

#include <QMutexLocker>

#include <algorithm>

namespace TEKLUVA {

LogManager* LogManager::__instance = nullptr;

LogManager* LogManager::getInstance()
{
    if (!__instance)
        __instance = new LogManager;
    return __instance;
}

LogManager::LogManager()
{
    // For queued connections written with the SIGNAL macro, which look the type up by this spelling.
    qRegisterMetaType<Log*>("Log*");
}

LogManager::~LogManager()
{
    clear();
    __instance = nullptr;
}

void LogManager::addLog(Log* log)
{
    const QMutexLocker lock(&m_mutex);
    m_logs[log->getName()] = log;
    Q_EMIT logAdded(log);
}

void LogManager::removeLog(Log* log)
{
    const QMutexLocker lock(&m_mutex);
    if (m_logs.empty())
        return;
    m_logs.erase(log->getName());
    const auto found = std::find(m_active.begin(), m_active.end(), log);
    if (found != m_active.end())
        m_active.erase(found);
}

void LogManager::updateLogName(const std::string& name, Log* log)
{
    if (!cmp(name, log->getName(), true)) {
        log->setLogName(name, false); // comes back here with the names equal
        return;
    }
    const QMutexLocker lock(&m_mutex);
    const auto found =
        std::find_if(m_logs.begin(), m_logs.end(), [log](const auto& entry) { return entry.second == log; });
    if (found == m_logs.end())
        return;
    m_logs.erase(found);
    m_logs[log->getName()] = log;
}

void LogManager::setActiveLog(Log* log)
{
    const QMutexLocker lock(&m_mutex);
    m_active.emplace_back(log);
}

void LogManager::restorePreviousLog()
{
    const QMutexLocker lock(&m_mutex);
    if (!m_active.empty())
        m_active.pop_back();
}

Log* LogManager::getActiveLog()
{
    const QMutexLocker lock(&m_mutex);
    return m_active.empty() ? nullptr : m_active.back().data();
}

std::vector<Log*> LogManager::getAllLogs() const
{
    const QMutexLocker lock(&m_mutex);
    std::vector<Log*> logs;
    logs.reserve(m_logs.size());
    for (const auto& entry : m_logs)
        logs.push_back(entry.second);
    return logs;
}

void LogManager::clear()
{
    {
        const QMutexLocker lock(&m_mutex);
        m_active.clear();
    }
    // The lock is free while a log is deleted, because its destructor takes itself out through removeLog().
    while (const Log* log = firstLog())
        delete log;
}

Log* LogManager::firstLog() const
{
    const QMutexLocker lock(&m_mutex);
    return m_logs.empty() ? nullptr : m_logs.begin()->second;
}

} // namespace TEKLUVA
