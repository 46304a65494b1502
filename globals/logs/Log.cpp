#include "globals/Log.h"

#include "globals/LogManager.h"
#include "globals/foundation/LockedRecord_p.h"
#include "globals/foundation/MainThread_p.h"
#include "globals/foundation/WithoutExceptions_p.h"
#include "globals/logs/ActiveLog_p.h"
#include "globals/logs/LogConfiguration_p.h"
#include "globals/logs/LogFile_p.h"
#include "globals/logs/LogLock_p.h"
#include "globals/logs/LogRecord_p.h"

#include <QFile>

#include <atomic>
#include <deque>
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
    /// A message, and the entry that shows it once somebody has asked for that.
    struct KeptEntry
    {
        LogRecordPointer record;
        std::unique_ptr<LogEntry> entry;

        /// Deletes the entry in the event loop: the main thread may be looking at it.
        void deleteEntryLater();
    };
    using KeptEntries = std::deque<KeptEntry>;
    /// No deque, which takes memory even when it is empty.
    using DroppedEntries = std::vector<KeptEntry>;

    bool isBelowThreshold(E_LogLevel level) const;
    /// Adds a record and sets \p index to its place.
    LogRecordPointer add(E_LogLevel level, std::string message, unsigned int& index);
    void setMaxEntryCount(unsigned int count);
    /// How many of \p count entries are beyond the bound. Expects the record's lock.
    std::size_t excessOf(std::size_t count) const;
    /// Takes out what is beyond the bound, into \p dropped, which has room for it. Expects the record's lock.
    void takeExcess(DroppedEntries& dropped);
    void rename(const std::string& newName, const std::string& newPath);
    /// The file of the log \p ofName, unless that would leave the folder.
    void setFile(const std::string& path, const std::string& ofName);
    /// Expects the log's lock, or that nobody else uses the log.
    void clear();

    std::string name;
    std::string filePath;
    KeptEntries entries;
    quint64 oldestNumber = 0;       ///< of the first of them, counted since the log was made
    unsigned int maxEntryCount = 0; ///< 0 for any number
    std::atomic<E_LogLevel> threshold{E_LL_DEBUG};

    /// The log's lock: serialises logMessage(), resetLog() and setLogName(). It is taken before the
    /// registry's lock, never after it.
    QMutex lock;
    LogFile file;
};

/// A level that is none counts as an error.
bool Log::Private::isBelowThreshold(E_LogLevel level) const
{
    const bool isLower = level == E_LL_DEBUG || level == E_LL_INFO || level == E_LL_WARNING;
    return isLower && level < threshold;
}

LogRecordPointer Log::Private::add(E_LogLevel level, std::string message, unsigned int& index)
{
    const LogRecordPointer record(new LogRecord(level, std::move(message)));
    DroppedEntries dropped; // after the record's lock is free
    {
        const QMutexLocker locked(mutex());
        dropped.reserve(excessOf(entries.size() + 1)); // first: an entry that is added is announced
        entries.push_back({record, nullptr});
        takeExcess(dropped);
        index = static_cast<unsigned int>(entries.size() - 1);
    }
    for (KeptEntry& kept : dropped)
        kept.deleteEntryLater();
    return record;
}

void Log::Private::setMaxEntryCount(unsigned int count)
{
    DroppedEntries dropped;
    {
        const QMutexLocker locked(mutex());
        maxEntryCount = count;
        dropped.reserve(excessOf(entries.size()));
        takeExcess(dropped);
    }
    for (KeptEntry& kept : dropped)
        kept.deleteEntryLater();
}

void Log::Private::KeptEntry::deleteEntryLater()
{
    if (LogEntry* shown = entry.release())
        shown->deleteLater();
}

std::size_t Log::Private::excessOf(std::size_t count) const
{
    return maxEntryCount > 0 && count > maxEntryCount ? count - maxEntryCount : 0;
}

void Log::Private::takeExcess(DroppedEntries& dropped)
{
    for (std::size_t excess = excessOf(entries.size()); excess > 0; --excess) {
        dropped.push_back(std::move(entries.front()));
        entries.pop_front();
        ++oldestNumber;
    }
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
    KeptEntries deleted; // after the record's lock is free
    {
        const QMutexLocker locked(mutex());
        oldestNumber += entries.size();
        deleted.swap(entries);
    }
    if (isOffMainThread()) {
        for (KeptEntry& kept : deleted)
            kept.deleteEntryLater();
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
    LogManager* registry = LogManager::getInstance();
    try {
        registry->addLog(this);
        if (!staysInFolder(name))
            reportBadName(name);
    } catch (...) {
        registry->retire(this); // there will be no destructor
        throw;
    }
}

Log::~Log()
{
    if (LogManager::hasInstance())
        LogManager::getInstance()->retire(this); // first, so that nobody is writing a line any more
    withoutExceptions([this] { d->clear(); });   // what it leaves goes with the private part
}

void Log::logMessage(E_LogLevel level, std::string message, std::string /*location*/, unsigned int /*line*/)
{
    if (d->isBelowThreshold(level))
        return;
    const LogLock lock(this, d->lock);
    // Without memory for it an entry is lost, and without memory for its line the line.
    unsigned int index = 0;
    const auto record = withoutExceptions([&] { return d->add(level, std::move(message), index); });
    if (!record)
        return;
    Q_EMIT contentChanged();
    Q_EMIT entryAdded(index);
    withoutExceptions([&] { d->file.write(*record); });
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

void Log::logMessage(E_LogLevel level, const QString& message)
{
    logMessage(level, message.toStdString(), {}, 0);
}

void Log::logDebugMessage(const QString& message)
{
    logMessage(E_LL_DEBUG, message);
}

void Log::logStatusMessage(const QString& message)
{
    logMessage(E_LL_INFO, message);
}

void Log::logWarningMessage(const QString& message)
{
    logMessage(E_LL_WARNING, message);
}

void Log::logErrorMessage(const QString& message)
{
    logMessage(E_LL_ERROR, message);
}

void Log::writeEntry(LogEntry* entry)
{
    d->file.write(*entry->m_record);
}

LogEntry* Log::getEntry(unsigned int index)
{
    {
        const QMutexLocker locked(d->mutex());
        if (index < d->entries.size()) {
            Private::KeptEntry& kept = d->entries[index];
            if (!kept.entry)
                kept.entry.reset(new LogEntry(kept.record)); // its constructor is private
            return kept.entry.get();
        }
    }
    // Its time comes from the configuration, which may have to report an error to this log first.
    return new LogEntry(E_LL_WARNING, "Index out of range.");
}

LogLines Log::getLines(quint64 from, unsigned int atMost) const
{
    const QMutexLocker locked(d->mutex());
    LogLines result;
    result.oldest = d->oldestNumber;
    result.first = qBound(d->oldestNumber, from, d->oldestNumber + d->entries.size());
    const auto begin = static_cast<std::size_t>(result.first - result.oldest);
    const std::size_t end = begin + std::min<std::size_t>(d->entries.size() - begin, atMost);
    for (std::size_t i = begin; i < end; ++i) {
        const LogRecord& record = *d->entries[i].record;
        result.lines.push_back({record.time, record.level, record.message});
    }
    return result;
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

void Log::setThreshold(E_LogLevel level)
{
    d->threshold = level;
}

E_LogLevel Log::getThreshold() const
{
    return d->threshold;
}

void Log::setMaxEntryCount(unsigned int count)
{
    d->setMaxEntryCount(count);
}

unsigned int Log::getMaxEntryCount() const
{
    return d->get(d->maxEntryCount);
}

void Log::setRotation(qint64 bytes, int files)
{
    const LogLock lock(this, d->lock);
    d->file.setRotation({std::max<qint64>(bytes, 0), std::max(files, 0)});
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
