#pragma once

#include "support/LogRecord.h"

#include <QRegularExpression>

#include <limits>

class QCommandLineParser;

namespace globalsctl {

/// Which entries the options --level, --since, --until and --grep want.
class LogFilter
{
public:
    /// Throws UsageError for a value that is none.
    explicit LogFilter(const QCommandLineParser& line);

    bool accepts(const LogRecord& record) const;

private:
    TEKLUVA::E_LogLevel m_level = TEKLUVA::E_LL_DEBUG;
    qint64 m_since = 0; ///< this and m_until as timeKey() has them
    qint64 m_until = std::numeric_limits<qint64>::max();
    QRegularExpression m_pattern;
};

} // namespace globalsctl
