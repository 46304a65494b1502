#pragma once

#include "tools/support/ExitCode.h"

#include <QString>

#include <stdexcept>

namespace globalsctl {

/// Ends a command from wherever it is: main() complains of the reason and exits with the code.
class Failure : public std::runtime_error
{
public:
    explicit Failure(const QString& reason, int exitCode = Failed)
        : std::runtime_error(reason.toStdString())
        , m_exitCode(exitCode)
    {
    }

    QString reason() const { return QString::fromUtf8(what()); }
    int exitCode() const { return m_exitCode; }

private:
    int m_exitCode;
};

} // namespace globalsctl
