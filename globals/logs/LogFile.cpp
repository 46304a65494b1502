#include "globals/logs/LogFile_p.h"

#include "globals/LogEntry.h"

#include <QFileInfo>
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
    m_file.setFileName(QString::fromStdString(path));
    m_isUsable = true;
}

void LogFile::write(LogEntry& entry)
{
    if (entry.isWritten())
        return;
    const bool isOpen = ensureOpen();
    if (!isOpen)
        return;
    const bool isWhole = writeWhole(lineOf(entry));
    if (isWhole)
        entry.setWritten();
}

void LogFile::close()
{
    m_file.close();
}

bool LogFile::ensureOpen()
{
    if (m_file.isOpen())
        return true;
    // A pipe might block us for ever, or end the process when its reader goes.
    const QFileInfo info(m_file);
    if (!m_isUsable || (info.exists() && !info.isFile()))
        return false;
    if (!m_append && info.exists())
        m_file.resize(0);
    // Appended to also when it starts afresh: a second log over the same file would write into the lines of
    // the first. Unbuffered: each line is one system call and in the file when the call returns.
    return m_file.open(QIODevice::Append | QIODevice::Unbuffered);
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

const std::string& LogFile::lineOf(const LogEntry& entry)
{
    constexpr std::size_t LONGEST_KEPT = 4096;
    if (m_line.capacity() > LONGEST_KEPT)
        m_line = std::string();
    m_line.assign(labelOf(entry.getLevel())).append(timeStamp(entry.getTimeStampMSecs())).append("  ");
    return m_line.append(entry.getMessageView()).append("\r\n");
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
