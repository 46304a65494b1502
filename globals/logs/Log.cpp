#include "globals/Log.h"

#include "globals/LogManager.h"
#include "globals/foundation/LockedRecord_p.h"
#include "globals/foundation/MainThread_p.h"
#include "globals/foundation/WithoutExceptions_p.h"
#include "globals/logs/ActiveLog_p.h"
#include "globals/logs/LogConfiguration_p.h"
#include "globals/logs/LogFile_p.h"
#include "globals/logs/LogLock_p.h"

#include <QFile>

#include <vector>

namespace TEKLUVA {

namespace {

std::string pathOf(const std::string& name)
{
    return LogConfiguration::folder() + name + ".log";
}

/// Whether a log of that \p name lies in the log folder itself.
bool staysInFolder(const std::string& name)
{
    return name.find('/') == std::string::npos;
}

void reportBadName(const std::string& name)
{
    logError("The log " + name + " would not lie in the log folder. Its lines are not written to a file.");
}

} // namespace

/// What other threads look at while a line is being written is a record with a leaf lock of its own: name,
/// path and entries. The file belongs to whoever holds the log's lock.
class GLOBALS_NO_EXPORT Log::Private : public LockedRecord
{
public:
    /// The new entry.
    LogEntry* add(E_LogLevel level, std::string message);
    /// Null beyond the last entry.
    LogEntry* entryAt(unsigned int index) const;
    void rename(const std::string& newName, const std::string& newPath);
    /// The file of the log \p ofName, unless that would leave the folder.
    void setFile(const std::string& path, const std::string& ofName);
    /// Expects the log's lock, or that nobody else uses the log.
    void clear();

    std::string name;
    std::string filePath;
    std::vector<std::unique_ptr<LogEntry>> entries;

    /// The log's lock: serialises logMessage(), resetLog() and setLogName(). It is taken before the
    /// registry's lock, never after it.
    QMutex lock;
    LogFile file;
};

LogEntry* Log::Private::add(E_LogLevel level, std::string message)
{
    auto entry = std::make_unique<LogEntry>(level, std::move(message));
    LogEntry* added = entry.get();
    const QMutexLocker locked(mutex());
    entries.push_back(std::move(entry));
    return added;
}

LogEntry* Log::Private::entryAt(unsigned int index) const
{
    const QMutexLocker locked(mutex());
    return index < entries.size() ? entries[index].get() : nullptr;
}

void Log::Private::rename(const std::string& newName, const std::string& newPath)
{
    const QMutexLocker locked(mutex());
    name = newName;
    filePath = newPath;
}

void Log::Private::setFile(const std::string& path, const std::string& ofName)
{
    file.setPath(path);
    if (!staysInFolder(ofName))
        file.refuse();
}

void Log::Private::clear()
{
    std::vector<std::unique_ptr<LogEntry>> deleted; // after the record's lock is free
    {
        const QMutexLocker locked(mutex());
        deleted.swap(entries);
    }
    file.close();
}

Log::Log(std::string name, bool overwrite)
    : d(std::make_unique<Private>())
{
    const std::string path = pathOf(name);
    d->rename(name, path);
    d->setFile(path, name);
    d->file.setAppend(!overwrite);
    moveToMainThread(this);
    LogManager::getInstance()->addLog(this);
    if (!staysInFolder(name))
        reportBadName(name);
}

Log::~Log()
{
    LogManager::getInstance()->retire(this); // first, so that nobody is writing a line any more
    d->clear();
}

void Log::logMessage(E_LogLevel level, std::string message, std::string /*location*/, unsigned int /*line*/)
{
    const LogLock lock(this, d->lock);
    // Without memory for it an entry is lost, and without memory for its line the line.
    LogEntry* entry = withoutExceptions([&] { return d->add(level, std::move(message)); });
    if (!entry)
        return;
    Q_EMIT contentChanged();
    withoutExceptions([&] { d->file.write(*entry); });
}

void Log::logDebugMessage(std::string message, std::string location, unsigned int line)
{
    logMessage(E_LL_DEBUG, std::move(message), std::move(location), line);
}

void Log::logStatusMessage(std::string message, std::string location, unsigned int line)
{
    logMessage(E_LL_INFO, std::move(message), std::move(location), line);
}

void Log::logWarningMessage(std::string message, std::string location, unsigned int line)
{
    logMessage(E_LL_WARNING, std::move(message), std::move(location), line);
}

void Log::logErrorMessage(std::string message, std::string location, unsigned int line)
{
    logMessage(E_LL_ERROR, std::move(message), std::move(location), line);
}

void Log::writeEntry(LogEntry* entry)
{
    d->file.write(*entry);
}

LogEntry* Log::getEntry(unsigned int index)
{
    LogEntry* entry = d->entryAt(index);
    return entry ? entry : new LogEntry(E_LL_WARNING, "Index out of range.");
}

unsigned int Log::getEntryCount() const
{
    const QMutexLocker locked(d->mutex());
    return static_cast<unsigned int>(d->entries.size());
}

void Log::clear()
{
    d->clear();
}

void Log::resetLog(bool overwrite)
{
    const LogLock lock(this, d->lock);
    d->clear();
    d->file.setAppend(!overwrite);
    Q_EMIT contentChanged();
}

void Log::setLogName(std::string name, bool overwrite)
{
    // Before the lock: what is reported goes to the active log, which may be this one.
    const std::string path = pathOf(name);
    if (!staysInFolder(name))
        reportBadName(name);

    const LogLock lock(this, d->lock);
    const std::string oldPath = getFilePath();
    d->file.close();
    if (path != oldPath && staysInFolder(name))
        QFile::rename(QString::fromStdString(oldPath), QString::fromStdString(path));
    d->rename(name, path);
    d->setFile(path, name);
    LogManager::getInstance()->updateLogName(name, this);
    d->file.setAppend(!overwrite);
}

std::string Log::getName() const
{
    return d->get(d->name);
}

std::string Log::getFilePath() const
{
    return d->get(d->filePath);
}

bool Log::writeToFile() const
{
    return true;
}

bool Log::initWriting(bool /*write*/) const
{
    return true;
}

} // namespace TEKLUVA
