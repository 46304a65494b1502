#pragma once

#include "support/Password.h"

class QCommandLineParser;

namespace globalsctl {

/// How one file is made from another one and a password.
struct Conversion
{
    PasswordUse use;
    /// Throws Failure for a \p path whose content cannot be converted.
    QByteArray (*convert)(const QString& path, const QByteArray& content, const QString& password);
};

/// Converts the first argument to the second. Throws Failure.
void convertFile(const QCommandLineParser& line, const Conversion& conversion);

} // namespace globalsctl
