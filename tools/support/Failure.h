#pragma once

#include "support/ExitCode.h"

#include <QString>

#include <stdexcept>

namespace globalsctl {

/// Ends a command, from any depth: main() prints the reason as an error and exits with the code.
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
