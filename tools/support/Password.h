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
    Writing, ///< typed twice, and only passwords with which the application can read the result
};

/// Where a command gets its password from, as its options say. Never from the command line itself, which
/// other users of the machine can see.
class PasswordSource
{
public:
    /// Throws Failure for wrong usage: for more than one of the options, and for none where a password is
    /// needed and there is no terminal to ask for it.
    PasswordSource(const QCommandLineParser& line, PasswordNeed need);

    /// Reads the password; empty when none is wanted. Throws Failure for one that cannot be had or used, and
    /// when the prompt for it is interrupted.
    QString read(PasswordUse use) const;

private:
    QByteArray (*m_source)(const QString& value, PasswordUse use) = nullptr;
    QString m_value; ///< of the option
};

} // namespace globalsctl
