#include "globals/LogManager.h"

#include "globals/Log.h"
#include "globals/foundation/Misuse_p.h"
#include "globals/foundation/WithoutExceptions_p.h"
#include "globals/logs/LogLock_p.h"
#include "globals/logs/QtMessages_p.h"

#include <QPointer>

#include <algorithm>
#include <condition_variable>
#include <map>
#include <mutex>

namespace TEKLUVA {

class GLOBALS_NO_EXPORT LogManager::Private
{
public:
    /// A place on the active stack.
    struct Place
    {
        QPointer<Log> log;
        bool isNone; ///< on purpose, and not because the log was deleted
    };

    /// Null when no log is registered.
    Log* firstLog() const;
    /// The top of the stack that has not been deleted; null for none. Expects the lock.
    Log* activeLog() const;
    /// Lets nobody find \p log any more, whatever it is registered under. Takes no memory. Expects the lock.
    void forget(const Log* log);

    /// Guards both containers. It is taken after the lock of a log, never before it.
    mutable std::mutex mutex;
    std::vector<Place> active;
    std::map<std::string, Log*> logs;
    std::map<const Log*, int> users; ///< how many calls of withActiveLog() use a log
    std::condition_variable released;

    /// Keeps the active log from being deleted as long as the scope lives.
    class Use
    {
        Q_DISABLE_COPY(Use)

    public:
        explicit Use(Private& registry);
        ~Use();

        Log* log() const { return m_log; }

    private:
        Private& m_registry;
        Log* m_log;
    };
};

LogManager::Private::Use::Use(Private& registry)
    : m_registry(registry)
{
    const std::lock_guard<std::mutex> lock(registry.mutex);
    m_log = registry.activeLog();
    if (m_log)
        ++registry.users[m_log];
}

LogManager::Private::Use::~Use()
{
    if (!m_log)
        return;
    const std::lock_guard<std::mutex> lock(m_registry.mutex);
    const auto user = m_registry.users.find(m_log);
    if (--user->second == 0)
        m_registry.users.erase(user);
    m_registry.released.notify_all();
}

Log* LogManager::Private::activeLog() const
{
    const auto top = std::find_if(active.rbegin(), active.rend(),
                                  [](const Place& place) { return place.isNone || !place.log.isNull(); });
    return top == active.rend() ? nullptr : top->log.data();
}

Log* LogManager::Private::firstLog() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return logs.empty() ? nullptr : logs.begin()->second;
}

void LogManager::Private::forget(const Log* log)
{
    for (auto entry = logs.begin(); entry != logs.end();)
        entry = entry->second == log ? logs.erase(entry) : std::next(entry);
    // Its places stay, because each is still going to be restored from.
    for (Place& place : active) {
        if (place.log == log)
            place.log.clear();
    }
}

std::atomic<LogManager*> LogManager::__instance{nullptr};

LogManager* LogManager::getInstance()
{
    if (!__instance) {
        Misuse::checkMainThread("The first LogManager::getInstance() was not called on the main thread.");
        __instance = new LogManager;
    }
    return __instance;
}

bool LogManager::hasInstance()
{
    return __instance != nullptr;
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
    const std::lock_guard<std::mutex> lock(d->mutex);
    d->logs[log->getName()] = log;
    const QtMessagePause pause; // a receiver may make Qt speak
    Q_EMIT logAdded(log);
}

void LogManager::removeLog(Log* log)
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    if (d->logs.empty())
        return;
    d->logs.erase(log->getName());
    const auto found = std::find_if(d->active.begin(), d->active.end(),
                                    [log](const Private::Place& place) { return place.log == log; });
    if (found != d->active.end())
        d->active.erase(found);
}

void LogManager::retire(Log* log)
{
    withoutExceptions([this, log] { removeLog(log); }); // by a copy of its name
    std::unique_lock<std::mutex> lock(d->mutex);
    d->forget(log);
    // Whoever deletes a log in a receiver of its own would wait for himself.
    if (!LogLock::isHeldHere(log))
        d->released.wait(lock, [this, log] { return d->users.count(log) == 0; });
}

void LogManager::updateLogName(const std::string& name, Log* log)
{
    if (!cmp(name, log->getName(), true)) {
        log->setLogName(name, false); // comes back here with the names equal
        return;
    }
    const std::lock_guard<std::mutex> lock(d->mutex);
    const auto found = std::find_if(d->logs.begin(), d->logs.end(),
                                    [log](const auto& entry) { return entry.second == log; });
    if (found == d->logs.end())
        return;
    const std::string key = log->getName();
    d->logs[key] = log;
    if (found->first != key) // last: without memory for the new key the old one stays
        d->logs.erase(found);
}

void LogManager::setActiveLog(Log* log)
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    d->active.push_back({log, log == nullptr});
}

void LogManager::restorePreviousLog()
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    if (!d->active.empty())
        d->active.pop_back();
}

Log* LogManager::getActiveLog()
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    return d->activeLog();
}

void LogManager::withActiveLog(const std::function<void(Log& log)>& use)
{
    const Private::Use active(*d);
    if (active.log())
        use(*active.log());
}

std::vector<Log*> LogManager::getAllLogs() const
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    std::vector<Log*> logs;
    logs.reserve(d->logs.size());
    for (const auto& entry : d->logs)
        logs.push_back(entry.second);
    return logs;
}

void LogManager::clear()
{
    {
        const std::lock_guard<std::mutex> lock(d->mutex);
        d->active.clear();
    }
    // The lock is free while a log is deleted, because its destructor takes itself out through removeLog().
    while (const Log* log = d->firstLog())
        delete log;
}

} // namespace TEKLUVA
