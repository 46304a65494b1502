#pragma once

#include <QByteArray>
#include <QString>

class QCommandLineParser;

namespace globalsctl {

enum class PasswordNeed {
    Optional,
    Required,
};

enum class PasswordUse {
    Reading,
    Writing, ///< is typed twice, and must be one with which the application can read the result
};

/// Where a command gets its password from, as its options say. The command line itself never has it, because
/// other users of the machine can see that.
class PasswordSource
{
public:
    /// Throws UsageError: more than one of the options is given, or none although a password is
    /// required and there is no terminal to ask for it.
    PasswordSource(const QCommandLineParser& line, PasswordNeed need);

    /// Reads the password; empty when no option asks for one. Throws Failure when it cannot be read or used,
    /// or when the prompt for it is interrupted.
    QString read(PasswordUse use) const;

    /// Throws UsageError when \p path and the password are both the standard input.
    void requireApartFrom(const QString& path) const;

private:
    QByteArray (*m_source)(const QString& value, PasswordUse use) = nullptr;
    QString m_value; ///< of the option
};

} // namespace globalsctl
