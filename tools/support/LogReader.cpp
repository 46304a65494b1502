#include "support/LogReader.h"

#include "support/Failure.h"
#include "support/FileSystem.h"
#include "support/Files.h"

#include <QFileInfo>

#include <limits>

namespace globalsctl {

namespace {

constexpr int LONGEST_PIECE = 1 << 20; ///< bytes; a longer one is several, so that no file fills the memory

} // namespace

LogReader::LogReader(const QString& path, OpenEnd openEnd)
    : m_path(path)
    , m_openEnd(openEnd)
    , m_file(path)
    , m_line(LONGEST_PIECE, Qt::Uninitialized)
{
    if (isStandardInput(path)) {
        openStandardInput(m_file);
        return;
    }
    requireReadable(path, std::numeric_limits<qint64>::max());
    if (!m_file.open(QIODevice::ReadOnly))
        throw Failure(QStringLiteral("File %1 cannot be read: %2").arg(path, m_file.errorString()));
}

QString LogReader::name() const
{
    return isStandardInput(m_path) ? m_path : QFileInfo(m_path).completeBaseName();
}

const LogRecord* LogReader::head()
{
    if (!m_head)
        m_head.swap(m_next);
    if (m_head && m_isRead)
        return &*m_head;
    while (!m_next) {
        const QByteArray line = readLine();
        if (line.isEmpty())
            break;
        addLine(line);
    }
    m_isRead = m_head && isHeadWhole();
    return m_isRead ? &*m_head : nullptr;
}

void LogReader::pop()
{
    m_head.reset();
    m_isRead = false;
}

bool LogReader::isHeadWhole() const
{
    constexpr qint64 LONGEST_PAUSE = 2000; // milliseconds; some other program may end lines in its own way
    return m_openEnd == OpenEnd::Taken || m_next || m_isEnded || m_sinceLatest.hasExpired(LONGEST_PAUSE);
}

void LogReader::addLine(QByteArray line)
{
    m_isEnded = line.endsWith("\r\n");
    m_sinceLatest.start();
    while (line.endsWith('\n') || line.endsWith('\r'))
        line.chop(1);
    if (auto record = recordIn(line))
        (m_head ? m_next : m_head) = record;
    else if (m_head)
        m_head->message += '\n' + line;
}

/// With its end; empty when there is none at present.
QByteArray LogReader::readLine()
{
    if (!m_file.isSequential() && m_file.size() < m_file.pos())
        m_file.seek(0); // started afresh by its writer
    const qint64 begin = m_file.pos();
    const auto size = static_cast<int>(m_file.readLine(m_line.data(), m_line.size()));
    QByteArray line(m_line.constData(), qMax(size, 0));
    const bool isOpen = !line.isEmpty() && !line.endsWith('\n') && size < m_line.size() - 1;
    if (!isOpen || m_openEnd == OpenEnd::Taken)
        return line;
    m_file.seek(begin);
    return {};
}

bool LogReader::isAt(const QString& path) const
{
    return FileSystem::identityOf(m_file) == FileSystem::identityOf(path);
}

bool LogReader::isOver()
{
    const bool isReplaced = QFileInfo::exists(m_path) && !isAt(m_path);
    return isReplaced && !head() && !m_head;
}

LogReader* readerOfOldest(const LogReaders& readers)
{
    LogReader* oldest = nullptr;
    for (const auto& reader : readers) {
        const LogRecord* record = reader->head();
        if (record && (!oldest || record->time < oldest->head()->time))
            oldest = reader.get();
    }
    return oldest;
}

} // namespace globalsctl
