#include "globals/logs/LogFile_p.h"

#include "globals/logs/LogRecord_p.h"

#include <QDateTime>
#include <QLocale>

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

} // namespace

void LogFile::setPath(const std::string& path)
{
    m_path = QString::fromStdString(path);
    m_isUsable = true;
}

void LogFile::write(LogRecord& record)
{
    if (record.isWritten.load(std::memory_order_acquire))
        return;
    bool isOpen = ensureOpen();
    if (!isOpen)
        return;
    const std::string& line = lineOf(record);
    if (m_rotation.isOn())
        isOpen = makeRoomFor(static_cast<qint64>(line.size()));
    if (isOpen && writeWhole(line))
        record.isWritten.store(true, std::memory_order_release);
}

void LogFile::close()
{
    m_file.close();
    m_hasBegun = false;
}

bool LogFile::ensureOpen()
{
    if (m_file.isOpen())
        return true;
    // Asked for once: another process may move the file meanwhile.
    std::error_code missing;
    const System::FileStatus status = System::statusOf(System::nativePath(m_path), missing);
    // A pipe might block us for ever, or end the process when its reader goes.
    if (!m_isUsable || (!missing && status.kind != System::FileKind::Regular))
        return false;
    if (!m_append && !m_hasBegun && !missing)
        QFile::resize(m_path, 0);
    return openToAppend();
}

bool LogFile::openToAppend()
{
    // Appended to also when it starts afresh: a second log over the same file would write into the lines of
    // the first. Unbuffered: each line is one system call and in the file when the call returns.
    const bool isOpen = System::openToAppend(m_path, m_file);
    std::error_code unknown;
    if (isOpen)
        m_opened = System::statusOf(m_file.handle(), unknown);
    m_hasBegun = m_hasBegun || isOpen;
    return isOpen;
}

bool LogFile::makeRoomFor(qint64 line)
{
    const System::Path path = System::nativePath(m_path);
    std::error_code error;
    const System::FileStatus present = System::statusOf(path, error);
    const bool isMoved = error || !present.isSameFile(m_opened);
    if (!isMoved && !m_rotation.isFull(present.size, line))
        return true;
    m_file.close();
    if (!isMoved)
        m_rotation.rotate(path, line);
    return ensureOpen();
}

/// On a full disk the system may take half a line. That half is removed, so that the next line does not
/// continue it. It stays only if another process has appended to the file in between.
bool LogFile::writeWhole(const std::string& line)
{
    const auto size = static_cast<qint64>(line.size());
    const qint64 start = m_file.pos();
    const qint64 written = m_file.write(line.data(), size);
    const bool isHalf = written > 0 && written < size;
    if (isHalf && m_file.size() == start + written)
        m_file.resize(start);
    return written == size;
}

const std::string& LogFile::lineOf(const LogRecord& record)
{
    constexpr std::size_t LONGEST_KEPT = 4096;
    if (m_line.capacity() > LONGEST_KEPT)
        m_line = std::string();
    m_line.assign(labelOf(record.level)).append(timeStamp(record.time)).append("  ");
    return m_line.append(record.message).append("\r\n");
}

const std::string& LogFile::timeStamp(qint64 milliseconds)
{
    const qint64 second = milliseconds / 1000;
    if (second != m_stampSecond) {
        m_stampSecond = second;
        // In the C locale: QDateTime would write the digits of the system's.
        m_stamp =
            QLocale::c()
                .toString(QDateTime::fromMSecsSinceEpoch(milliseconds), QStringLiteral("dd.MM.yyyy hh:mm:ss"))
                .toStdString();
    }
    return m_stamp;
}

} // namespace TEKLUVA
