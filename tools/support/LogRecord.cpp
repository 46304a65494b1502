#include "support/LogRecord.h"

#include <QDateTime>

#include <algorithm>
#include <iterator>

namespace globalsctl {

using namespace TEKLUVA;

namespace {

struct LevelRow
{
    E_LogLevel level;
    const char* label; ///< padded, because nothing else is between it and the time
    const char* name;
};

constexpr LevelRow LEVELS[] = {
    {E_LL_DEBUG, "DEBUG    ", "debug"},
    {E_LL_INFO, "INFO     ", "info"},
    {E_LL_WARNING, "WARNING  ", "warning"},
    {E_LL_ERROR, "ERROR    ", "error"},
};
constexpr int LABEL_SIZE = 9;

constexpr char TIME_FORM[] = "00.00.0000 00:00:00  "; ///< with the blanks before the message
constexpr int TIME_SIZE = sizeof TIME_FORM - 1;

const LevelRow& rowOf(E_LogLevel level)
{
    const auto* found = std::find_if(std::begin(LEVELS), std::end(LEVELS),
                                     [level](const LevelRow& row) { return row.level == level; });
    return found == std::end(LEVELS) ? *std::prev(std::end(LEVELS)) : *found;
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool hasTimeForm(const char* text)
{
    return std::equal(text, text + TIME_SIZE, TIME_FORM,
                      [](char c, char form) { return form == '0' ? isDigit(c) : c == form; });
}

qint64 numberIn(const char* text, int begin, int digits)
{
    qint64 number = 0;
    for (int i = begin; i < begin + digits; ++i)
        number = number * 10 + (text[i] - '0');
    return number;
}

qint64 joined(std::initializer_list<qint64> parts)
{
    qint64 key = 0;
    for (const qint64 part : parts)
        key = key * 100 + part;
    return key;
}

qint64 timeIn(const char* text)
{
    return joined({numberIn(text, 6, 4), numberIn(text, 3, 2), numberIn(text, 0, 2), numberIn(text, 11, 2),
                   numberIn(text, 14, 2), numberIn(text, 17, 2)});
}

/// \p key in the digits of \p form, from the right.
QString written(qint64 key, QString form)
{
    for (int i = static_cast<int>(form.size()) - 1; i >= 0; --i) {
        if (form[i] != QLatin1Char('0'))
            continue;
        form[i] = QLatin1Char(static_cast<char>('0' + key % 10));
        key /= 10;
    }
    return form;
}

} // namespace

std::optional<LogRecord> recordIn(const QByteArray& line)
{
    if (line.size() < LABEL_SIZE + TIME_SIZE || !hasTimeForm(line.constData() + LABEL_SIZE))
        return std::nullopt;
    const auto* row = std::find_if(std::begin(LEVELS), std::end(LEVELS),
                                   [&line](const LevelRow& level) { return line.startsWith(level.label); });
    if (row == std::end(LEVELS))
        return std::nullopt;
    return LogRecord{row->level, timeIn(line.constData() + LABEL_SIZE), line.mid(LABEL_SIZE + TIME_SIZE)};
}

qint64 timeKey(const QDateTime& time)
{
    const QDate date = time.date();
    const QTime clock = time.time();
    return joined({date.year(), date.month(), date.day(), clock.hour(), clock.minute(), clock.second()});
}

QString isoTime(qint64 key)
{
    return written(key, QStringLiteral("0000-00-00T00:00:00"));
}

QStringList levelNames()
{
    QStringList names;
    for (const LevelRow& row : LEVELS)
        names << QString::fromLatin1(row.name);
    return names;
}

QString levelName(E_LogLevel level)
{
    return QString::fromLatin1(rowOf(level).name);
}

std::optional<E_LogLevel> levelOf(const QString& name)
{
    const auto* found = std::find_if(std::begin(LEVELS), std::end(LEVELS), [&name](const LevelRow& row) {
        return name == QLatin1String(row.name);
    });
    return found == std::end(LEVELS) ? std::nullopt : std::make_optional(found->level);
}

QString lineOf(const LogRecord& record)
{
    const QString iso = isoTime(record.time);
    const QString time =
        QStringLiteral("%1.%2.%3 %4").arg(iso.mid(8, 2), iso.mid(5, 2), iso.left(4), iso.mid(11));
    return QString::fromLatin1(rowOf(record.level).label) + time + QStringLiteral("  ")
           + QString::fromUtf8(record.message);
}

} // namespace globalsctl
