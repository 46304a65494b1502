#include "globals/Log.h"

#include "globals/ConfigManager.h"
#include "globals/LogManager.h"
#include "globals/foundation/MainThread_p.h"

#include <QFile>
#include <QMutexLocker>
#include <QThread>

namespace TEKLUVA {

namespace {

struct Label
{
    E_LogLevel level;
    const char* text;
};

/// The padding up to nine characters is all that separates a label from the time stamp.
constexpr Label LABELS[] = {
    {E_LL_DEBUG, "DEBUG    "},
    {E_LL_INFO, "INFO     "},
    {E_LL_WARNING, "WARNING  "},
};
constexpr const char* ERROR_LABEL = "ERROR    ";

const char* labelOf(E_LogLevel level)
{
    for (const Label& label : LABELS) {
        if (label.level == level)
            return label.text;
    }
    return ERROR_LABEL;
}

std::string pathOf(const std::string& name)
{
    return ConfigManager::getInstance()->getPath(E_PT_LOGS).toStdString() + name + ".log";
}

/// A full disk may take half a line. It goes again, so that the next line does not grow out of it, unless
/// another process has appended to the file in between.
bool writeWhole(QFile& file, const std::string& line)
{
    const auto size = static_cast<qint64>(line.size());
    const qint64 start = file.pos();
    const qint64 written = file.write(line.data(), size);
    if (written > 0 && written < size && file.size() == start + written)
        file.resize(start);
    return written == size;
}

} // namespace

/// Holds the log's lock, and knows by whom.
class Log::Hold
{
    Q_DISABLE_COPY(Hold)

public:
    explicit Hold(Log& log)
        : m_lock(&log.m_mutex)
        , m_holder(log.m_holder)
    {
        m_holder = QThread::currentThreadId();
    }
    ~Hold() { m_holder = nullptr; }

private:
    const QMutexLocker m_lock;
    std::atomic<Qt::HANDLE>& m_holder;
};

Log::Log(std::string name, bool overwrite)
    : m_name(std::move(name))
    , m_filePath(pathOf(m_name))
    , m_append(!overwrite)
    , m_file(std::make_unique<QFile>(QString::fromStdString(m_filePath)))
{
    moveToMainThread(this);
    LogManager::getInstance()->addLog(this);
}

Log::~Log()
{
    clear();
    LogManager::getInstance()->removeLog(this);
}

void Log::logMessage(E_LogLevel level, std::string message, std::string /*location*/, unsigned int /*line*/)
{
    const Hold hold(*this);
    auto created = std::make_unique<LogEntry>(level, std::move(message));
    LogEntry* entry = created.get();
    {
        const QMutexLocker view(&m_viewMutex);
        m_entries.push_back(std::move(created));
    }
    Q_EMIT contentChanged();
    writeEntry(entry);
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
    if (entry->isWritten() || !openFile())
        return;
    if (writeWhole(*m_file, formatLine(*entry)))
        entry->setWritten();
}

LogEntry* Log::getEntry(unsigned int index)
{
    {
        const QMutexLocker view(&m_viewMutex);
        if (index < m_entries.size())
            return m_entries[index].get();
    }
    return new LogEntry(E_LL_WARNING, "Index out of range.");
}

unsigned int Log::getEntryCount() const
{
    const QMutexLocker view(&m_viewMutex);
    return static_cast<unsigned int>(m_entries.size());
}

void Log::clear()
{
    std::vector<std::unique_ptr<LogEntry>> entries;
    {
        const QMutexLocker view(&m_viewMutex);
        entries.swap(m_entries);
    }
    m_file.reset();
}

void Log::resetLog(bool overwrite)
{
    const Hold hold(*this);
    clear();
    m_append = !overwrite;
    Q_EMIT contentChanged();
}

void Log::setLogName(std::string name, bool overwrite)
{
    // The path first, before the lock: a log folder that cannot be made is reported to the active log, and
    // that may be this one.
    std::string path = pathOf(name);

    const Hold hold(*this);
    if (m_file)
        m_file->close();
    if (path != m_filePath)
        QFile::rename(QString::fromStdString(m_filePath), QString::fromStdString(path));
    {
        const QMutexLocker view(&m_viewMutex);
        m_name = name;
        m_filePath = path;
    }
    if (m_file)
        m_file->setFileName(QString::fromStdString(path));
    LogManager::getInstance()->updateLogName(name, this);
    m_append = !overwrite;
}

bool Log::isHeldHere() const
{
    return m_holder == QThread::currentThreadId();
}

std::string Log::getName() const
{
    const QMutexLocker view(&m_viewMutex);
    return m_name;
}

std::string Log::getFilePath() const
{
    const QMutexLocker view(&m_viewMutex);
    return m_filePath;
}

bool Log::writeToFile() const
{
    return true;
}

bool Log::initWriting(bool /*write*/) const
{
    return true;
}

bool Log::openFile()
{
    if (!m_file)
        m_file = std::make_unique<QFile>(QString::fromStdString(m_filePath));
    if (m_file->isOpen())
        return true;
    // Unbuffered: each line is one system call and is in the file when it returns, so there is nothing to
    // flush.
    const QIODevice::OpenMode mode = m_append ? QIODevice::Append : QIODevice::WriteOnly;
    return m_file->open(mode | QIODevice::Unbuffered);
}

const std::string& Log::formatLine(const LogEntry& entry)
{
    constexpr std::size_t LONGEST_KEPT = 4096;
    if (m_line.capacity() > LONGEST_KEPT)
        m_line = std::string();
    m_line.assign(labelOf(entry.m_level)).append(formatTimeStamp(entry.m_time)).append("  ");
    return m_line.append(entry.m_message).append("\r\n");
}

const std::string& Log::formatTimeStamp(qint64 milliseconds)
{
    const qint64 second = milliseconds / 1000;
    if (second != m_stampSecond) {
        m_stampSecond = second;
        m_stamp = QDateTime::fromMSecsSinceEpoch(milliseconds)
                      .toString(QStringLiteral("dd.MM.yyyy hh:mm:ss"))
                      .toStdString();
    }
    return m_stamp;
}

} // namespace TEKLUVA
