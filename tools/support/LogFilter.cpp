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

struct FormRow
{
    const char* form;
    qint64 lasts; ///< seconds: what such a text stands for goes on so long
};

constexpr FormRow FORMS[] = {
    {"yyyy-MM-dd", DAY},          {"yyyy-MM-dd hh:mm", MINUTE}, {"yyyy-MM-dd hh:mm:ss", 1},
    {"yyyy-MM-ddThh:mm", MINUTE}, {"yyyy-MM-ddThh:mm:ss", 1},   {"dd.MM.yyyy", DAY},
    {"dd.MM.yyyy hh:mm", MINUTE}, {"dd.MM.yyyy hh:mm:ss", 1},
};

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

std::optional<Moment> momentIn(const QString& text)
{
    for (const FormRow& row : FORMS) {
        const QDateTime begin = QDateTime::fromString(text, QLatin1String(row.form));
        if (begin.isValid())
            return Moment{begin, begin.addSecs(row.lasts - 1)};
    }
    return momentAgo(text);
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
