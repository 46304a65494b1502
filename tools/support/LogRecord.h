#pragma once

#include "globals/globals.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

class QDateTime;

namespace globalsctl {

/// An entry of a log file.
struct LogRecord
{
    TEKLUVA::E_LogLevel level = TEKLUVA::E_LL_INFO;
    qint64 time = 0;    ///< as timeKey() has it
    QByteArray message; ///< as it is in the file, with "\n" between its lines
};

/// The entry that begins with \p line, which may have its line end. Nothing for a line that goes on with a
/// message.
std::optional<LogRecord> recordIn(const QByteArray& line);

/// A time as a number whose digits are year to second, 20261122055000: log files have no time zone.
qint64 timeKey(const QDateTime& time);
/// \p key as "2026-11-22T05:50:00".
QString isoTime(qint64 key);

/// \name Levels by their names: "warning"
/// @{
QStringList levelNames();
QString levelName(TEKLUVA::E_LogLevel level);
/// Nothing for a word that is no name.
std::optional<TEKLUVA::E_LogLevel> levelOf(const QString& name);
/// @}

/// The line of the file, without its end: lines of the message after the first stand on lines of their own.
QString lineOf(const LogRecord& record);

} // namespace globalsctl
