#include "support/LogFilter.h"

#include "support/Failure.h"

#include <QCommandLineParser>
#include <QDateTime>

#include <algorithm>
#include <array>

namespace globalsctl {

namespace {

constexpr qint64 MINUTE = 60;
constexpr qint64 HOUR = 60 * MINUTE;
constexpr qint64 DAY = 24 * HOUR;

struct SpanRow
{
    char unit;
    qint64 seconds;
};

constexpr SpanRow SPANS[] = {{'s', 1}, {'m', MINUTE}, {'h', HOUR}, {'d', DAY}};

constexpr const char* DATE_FORMS[] = {"yyyy-MM-dd", "dd.MM.yyyy"};
constexpr int DATE_SIZE = 10;

struct ClockRow
{
    const char* form;
    qint64 lasts; ///< seconds: what such a text stands for goes on so long
};

constexpr ClockRow CLOCK_FORMS[] = {{"hh:mm", MINUTE}, {"hh:mm:ss", 1}};

/// From the first second to the last one.
struct Moment
{
    QDateTime begin;
    QDateTime end;
};

/// "2h" is the moment two hours ago.
std::optional<Moment> momentAgo(const QString& text)
{
    bool isNumber = false;
    const int count = text.chopped(1).toInt(&isNumber);
    const auto* span = std::find_if(std::begin(SPANS), std::end(SPANS), [&text](const SpanRow& row) {
        return text.endsWith(QLatin1Char(row.unit));
    });
    if (!isNumber || count < 0 || span == std::end(SPANS))
        return std::nullopt;
    const QDateTime moment = QDateTime::currentDateTime().addSecs(-count * span->seconds);
    return Moment{moment, moment};
}

/// In UTC, where each day has all its hours: a log does not say when its clock was changed.
Moment momentAt(const QDate& date, const QTime& clock, qint64 lasts)
{
    const QDateTime begin(date, clock, Qt::UTC);
    return {begin, begin.addSecs(lasts - 1)};
}

QDate dateIn(const QString& text)
{
    for (const char* form : DATE_FORMS) {
        const QDate date = QDate::fromString(text, QLatin1String(form));
        if (date.isValid())
            return date;
    }
    return {};
}

std::optional<Moment> momentIn(const QString& text)
{
    const QDate date = dateIn(text.left(DATE_SIZE));
    if (!date.isValid())
        return momentAgo(text);
    const QString rest = text.mid(DATE_SIZE);
    if (rest.isEmpty())
        return momentAt(date, QTime(0, 0), DAY);
    if (rest[0] != QLatin1Char(' ') && rest[0] != QLatin1Char('T'))
        return std::nullopt;
    for (const ClockRow& row : CLOCK_FORMS) {
        const QTime clock = QTime::fromString(rest.mid(1), QLatin1String(row.form));
        if (clock.isValid())
            return momentAt(date, clock, row.lasts);
    }
    return std::nullopt;
}

Moment momentOf(const QCommandLineParser& line, const QString& option)
{
    const QString text = line.value(option);
    const auto moment = text.isEmpty() ? std::nullopt : momentIn(text);
    if (!moment)
        throw UsageError(QStringLiteral("--%1 is \"%2\", not a time like \"2026-12-24 18:30\", a day like "
                                        "2026-12-24, or a span like 30m, 2h or 7d before now")
                             .arg(option, text));
    return *moment;
}

} // namespace

LogFilter::LogFilter(const QCommandLineParser& line)
    : m_pattern(line.value(QStringLiteral("grep")))
{
    const auto level = levelOf(line.value(QStringLiteral("level")));
    if (!level)
        throw UsageError(
            QStringLiteral("--level is \"%1\", not one of %2")
                .arg(line.value(QStringLiteral("level")), levelNames().join(QStringLiteral(", "))));
    m_level = *level;
    if (line.isSet(QStringLiteral("since")))
        m_since = timeKey(momentOf(line, QStringLiteral("since")).begin);
    if (line.isSet(QStringLiteral("until")))
        m_until = timeKey(momentOf(line, QStringLiteral("until")).end);
    if (!m_pattern.isValid())
        throw UsageError(QStringLiteral("--grep is no regular expression: %1").arg(m_pattern.errorString()));
}

bool LogFilter::accepts(const LogRecord& record) const
{
    return record.level >= m_level && record.time >= m_since && record.time <= m_until
           && (m_pattern.pattern().isEmpty()
               || m_pattern.match(QString::fromUtf8(record.message)).hasMatch());
}

} // namespace globalsctl
