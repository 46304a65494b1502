#pragma once

#include <QString>

class QStringList;

namespace globalsctl {

/// Runs the command that \p arguments, without the program's name, ask for. Returns the exit code. The
/// exceptions of commands pass through.
int runCommandLine(QStringList arguments);

/// Prints what is wrong with the arguments, and where help is: that of the command with these \p words, if
/// they are known. Returns the exit code for wrong usage.
int printUsageError(const QString& message, const QString& words = QString());

} // namespace globalsctl
