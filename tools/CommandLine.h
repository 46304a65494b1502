#pragma once

class QStringList;

namespace globalsctl {

/// Runs the command that \p arguments (without the program's name) ask for and answers the exit code. Lets
/// the exceptions of commands through.
int runCommandLine(QStringList arguments);

} // namespace globalsctl
