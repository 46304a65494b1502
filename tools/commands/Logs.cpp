#include "commands/Command.h"
#include "support/ApplicationFolders.h"
#include "support/ExitCode.h"
#include "support/Failure.h"
#include "support/LogFilter.h"
#include "support/LogReader.h"
#include "support/Output.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QJsonObject>
#include <QThread>

#include <algorithm>

namespace globalsctl {

namespace {

/// The logs that the user wants to see: those named, or all of the application's folder.
class Logs
{
public:
    explicit Logs(const QCommandLineParser& line)
        : m_named(line.positionalArguments())
        , m_isFollowed(line.isSet(QStringLiteral("follow")))
        , m_inJson(line.isSet(QStringLiteral("json")))
        , m_filter(line)
    {
        useFoldersOf(line);
        for (const QString& path : wanted())
            open(path);
        if (m_readers.empty() && !m_isFollowed)
            throw Failure(QStringLiteral("there are no logs in %1").arg(logFolder()));
    }

    /// Shows the entries that have not been shown.
    void show()
    {
        while (LogReader* reader = readerOfOldest(m_readers)) {
            if (m_filter.accepts(*reader->head()))
                print(*reader, *reader->head());
            reader->pop();
        }
    }

    /// Opens the files that are new, or have taken the place of others, which are closed once they are read.
    void openNew()
    {
        for (const QString& path : wanted()) {
            const auto isRead = [&path](const auto& reader) { return reader->isAt(path); };
            if (!QFileInfo::exists(path) || std::any_of(m_readers.begin(), m_readers.end(), isRead))
                continue;
            try {
                open(path);
            } catch (const Failure&) {
                continue; // it is being moved away: the next look finds what takes its place
            }
        }
        const auto isOver = [](const auto& reader) { return reader->isOver(); };
        m_readers.erase(std::remove_if(m_readers.begin(), m_readers.end(), isOver), m_readers.end());
    }

private:
    QStringList wanted() const { return m_named.isEmpty() ? logFiles() : m_named; }

    void open(const QString& path)
    {
        const OpenEnd openEnd = m_isFollowed ? OpenEnd::Awaited : OpenEnd::Taken;
        m_readers.push_back(std::make_unique<LogReader>(path, openEnd));
        m_showsNames = m_showsNames || path != m_readers.front()->path();
    }

    void print(const LogReader& reader, const LogRecord& record) const
    {
        if (m_inJson) {
            printAnswerInLine({{QStringLiteral("file"), reader.path()},
                               {QStringLiteral("log"), reader.name()},
                               {QStringLiteral("level"), levelName(record.level)},
                               {QStringLiteral("time"), isoTime(record.time)},
                               {QStringLiteral("message"), QString::fromUtf8(record.message)}});
            return;
        }
        const QString line = lineOf(record);
        printResult(m_showsNames ? printable(reader.name()) + QStringLiteral("  ") + line : line);
    }

    const QStringList m_named;
    const bool m_isFollowed;
    const bool m_inJson;
    const LogFilter m_filter;
    LogReaders m_readers;
    bool m_showsNames = false; ///< of the logs, because there are several
};

/// Until the user ends it, or nobody reads any more.
[[noreturn]] void follow(Logs& logs)
{
    constexpr unsigned long PAUSE = 200; // milliseconds
    while (flushResults()) {
        QThread::msleep(PAUSE);
        logs.openNew();
        logs.show();
    }
    throw Failure(QStringLiteral("the answer could not be written: %1").arg(reasonOfResults()));
}

} // namespace

int showLogs(const QCommandLineParser& line)
{
    Logs logs(line);
    logs.show();
    if (line.isSet(QStringLiteral("follow")))
        follow(logs);
    return Done;
}

} // namespace globalsctl
