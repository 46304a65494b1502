#include "globals/LogManager.h"

#include "globals/Log.h"

#include <QMutex>
#include <QMutexLocker>
#include <QPointer>

#include <algorithm>
#include <map>

namespace TEKLUVA {

class GLOBALS_NO_EXPORT LogManager::Private
{
public:
    /// Null when no log is registered.
    Log* firstLog() const;

    /// Guards both containers. It is taken after the lock of a log, never before it.
    mutable QMutex mutex;
    std::vector<QPointer<Log>> active;
    std::map<std::string, Log*> logs;
};

Log* LogManager::Private::firstLog() const
{
    const QMutexLocker lock(&mutex);
    return logs.empty() ? nullptr : logs.begin()->second;
}

LogManager* LogManager::__instance = nullptr;

LogManager* LogManager::getInstance()
{
    if (!__instance)
        __instance = new LogManager;
    return __instance;
}

LogManager::LogManager()
    : d(std::make_unique<Private>())
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
    const QMutexLocker lock(&d->mutex);
    d->logs[log->getName()] = log;
    Q_EMIT logAdded(log);
}

void LogManager::removeLog(Log* log)
{
    const QMutexLocker lock(&d->mutex);
    if (d->logs.empty())
        return;
    d->logs.erase(log->getName());
    const auto found = std::find(d->active.begin(), d->active.end(), log);
    if (found != d->active.end())
        d->active.erase(found);
}

void LogManager::updateLogName(const std::string& name, Log* log)
{
    if (!cmp(name, log->getName(), true)) {
        log->setLogName(name, false); // comes back here with the names equal
        return;
    }
    const QMutexLocker lock(&d->mutex);
    const auto found = std::find_if(d->logs.begin(), d->logs.end(),
                                    [log](const auto& entry) { return entry.second == log; });
    if (found == d->logs.end())
        return;
    d->logs.erase(found);
    d->logs[log->getName()] = log;
}

void LogManager::setActiveLog(Log* log)
{
    const QMutexLocker lock(&d->mutex);
    d->active.emplace_back(log);
}

void LogManager::restorePreviousLog()
{
    const QMutexLocker lock(&d->mutex);
    if (!d->active.empty())
        d->active.pop_back();
}

Log* LogManager::getActiveLog()
{
    const QMutexLocker lock(&d->mutex);
    return d->active.empty() ? nullptr : d->active.back().data();
}

std::vector<Log*> LogManager::getAllLogs() const
{
    const QMutexLocker lock(&d->mutex);
    std::vector<Log*> logs;
    logs.reserve(d->logs.size());
    for (const auto& entry : d->logs)
        logs.push_back(entry.second);
    return logs;
}

void LogManager::clear()
{
    {
        const QMutexLocker lock(&d->mutex);
        d->active.clear();
    }
    // The lock is free while a log is deleted, because its destructor takes itself out through removeLog().
    while (const Log* log = d->firstLog())
        delete log;
}

} // namespace TEKLUVA
