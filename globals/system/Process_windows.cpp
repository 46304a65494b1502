#include "globals/system/Handle_windows_p.h"
#include "globals/system/Process_p.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSysInfo>

#include <string>

namespace TEKLUVA::System {

namespace {

/// When the process of \p handle was started, in units of 100 nanoseconds since 1601; 0 if that is unknown.
/// Never twice the same for one number.
qint64 startOf(HANDLE handle)
{
    FILETIME start = {};
    FILETIME end = {};
    FILETIME inSystem = {};
    FILETIME inProgram = {};
    if (!::GetProcessTimes(handle, &start, &end, &inSystem, &inProgram))
        return 0;
    constexpr int HALF = 32;
    return static_cast<qint64>(quint64{start.dwHighDateTime} << HALF | start.dwLowDateTime);
}

} // namespace

// The start tells boots apart, so that the machine is all that is left to know.
QString thisBoot()
{
    // Never destroyed, because static objects of the application write settings.
    static const QString& MACHINE = *new QString(QString::fromLatin1(QSysInfo::machineUniqueId()));
    return MACHINE;
}

QString programName()
{
    return QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName();
}

Process thisProcess()
{
    return {static_cast<qint64>(::GetCurrentProcessId()), startOf(::GetCurrentProcess()), thisBoot()};
}

bool isRunning(const Process& process)
{
    const auto id = static_cast<DWORD>(process.id);
    if (process.id <= 0 || process.id != qint64{id} || process.boot != thisBoot())
        return false;
    const Handle handle(::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id));
    if (!handle.isOpen())
        return ::GetLastError() == ERROR_ACCESS_DENIED; // one of another user
    DWORD exitCode = 0;
    const bool hasEnded = ::GetExitCodeProcess(handle.get(), &exitCode) && exitCode != STILL_ACTIVE;
    return !hasEnded && (process.start == 0 || startOf(handle.get()) == process.start);
}

} // namespace TEKLUVA::System
