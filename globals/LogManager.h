#pragma once

#include "globals/globals.h"

#include <QObject>

#include <atomic>
#include <functional>
#include <memory>
#include <vector>

namespace TEKLUVA {

class Log;

/// The registry of all logs: knows them by name, and keeps a stack of active logs, so that a piece of work
/// can switch the log that diagnostics go to and later restore the one before.
///
/// Thread-safe, once getInstance() has been called on the main thread. Nothing here is called back under the
/// registry's lock except receivers of logAdded().
///
/// Ownership: the registry deletes the logs registered with it in clear() and in its destructor. A log that
/// lost its name to another one is no longer registered. The active stack owns nothing.
class GLOBALS_EXPORT LogManager : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(LogManager)

public:
    static LogManager* getInstance();
    /// False before the first getInstance(), and after the registry was deleted.
    static bool hasInstance();
    ~LogManager() override;

    /// Registers \p log under its name, in the place of any other log of that name. Emits logAdded().
    void addLog(Log* log);
    /// Removes whatever log is registered under the name of \p log, and \p log once from the active stack. If
    /// no log is registered at all, nothing happens, not even to the stack.
    void removeLog(Log* log);
    /// For the destructor of \p log: removes it, lets nobody find it on the active stack any more, and waits
    /// until no other thread uses it through withActiveLog().
    void retire(Log* log);
    /// Renames \p log, as Log::setLogName() does for appending. If it has that \p name already, it is
    /// registered under it instead.
    void updateLogName(const std::string& name, Log* log);

    /// Makes \p log the active one. The same log may be set several times and is then restored as often.
    void setActiveLog(Log* log);
    /// Goes back to the log that was active before. The one that was active is not deleted.
    void restorePreviousLog();
    /// The log that diagnostics go to; null when there is none. A log that was deleted is passed over for the
    /// one below it. Another thread may delete the log at any time, see withActiveLog().
    Log* getActiveLog();
    /// Calls \p use with the active log, which is not deleted meanwhile: its destructor waits. Does nothing
    /// when there is none.
    void withActiveLog(const std::function<void(Log& log)>& use);

    /// Brings what Qt and the application say through qDebug(), qInfo(), qWarning(), qCritical() and qFatal()
    /// into the active log as well, with the level, and with the category if it has one: "qt.network: ...".
    /// The handler that was installed before is called after it. What is said while the calling thread holds
    /// a lock of a log, of the registry or of the settings goes to that handler only. A second call does
    /// nothing.
    static void installQtMessageHandler();

    /// All registered logs in ascending order of their names, byte by byte.
    std::vector<Log*> getAllLogs() const;

    /// Deletes all registered logs; no log is active afterwards.
    void clear();

Q_SIGNALS:
    /// A log was registered. Emitted once per addLog(), under the registry's lock: a receiver connected
    /// directly must not call back into the registry.
    void logAdded(Log* log);

private:
    LogManager();

    static std::atomic<LogManager*> __instance; ///< any thread may ask whether there is one

    class Private;
    const std::unique_ptr<Private> d;
};

} // namespace TEKLUVA
