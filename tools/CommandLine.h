#pragma once

#include <QStringList>

namespace globalsctl {

/// Runs the command that \p arguments, without the program's name, ask for. Returns the exit code. The
/// exceptions of commands pass through, except UsageError.
int runCommandLine(QStringList arguments);

} // namespace globalsctl
