#pragma once

#include "support/ExitCode.h"

#include <QString>

#include <stdexcept>

namespace globalsctl {

/// Ends a command, from any depth: its reason is printed as an error, and the program exits with the code.
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

/// A failure of the user: what is wrong with the arguments. The help of the command is named with the reason.
class UsageError : public Failure
{
public:
    explicit UsageError(const QString& reason)
        : Failure(reason, WrongUsage)
    {
    }
};

} // namespace globalsctl
