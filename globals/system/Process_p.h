#pragma once

#include <QString>
#include <QtGlobal>

namespace TEKLUVA::System {

/// A process of this machine. The system gives numbers of ended processes to new ones; with its start and the
/// boot a process is told from those.
struct Process
{
    qint64 id = 0;    ///< 0 for none
    qint64 start = 0; ///< in the system's own unit, since the boot; 0 where the system does not tell
    QString boot;     ///< differs from boot to boot and from machine to machine; empty if unknown
};

/// The name of the executable as QLockFile has it; empty if unknown.
QString programName();

/// Asked anew each time, because a forked process is another one.
Process thisProcess();

/// What Process::boot is of all processes that run.
QString thisBoot();

/// Whether \p process exists and has not ended. False for one of another machine, of which nothing is known.
bool isRunning(const Process& process);

} // namespace TEKLUVA::System
