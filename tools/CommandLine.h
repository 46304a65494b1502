#pragma once

class QString;
class QStringList;

namespace globalsctl {

/// Runs the command that \p arguments (without the program's name) ask for and answers the exit code. Lets
/// the exceptions of commands through.
int runCommandLine(QStringList arguments);

/// Says what is wrong with the arguments and where to look it up, and answers the exit code for that.
int complainOfUsage(const QString& message);

} // namespace globalsctl
