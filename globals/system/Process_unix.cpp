#include "globals/system/Process_p.h"

#include <QFile>
#include <QSysInfo>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <csignal>
#include <unistd.h>

namespace TEKLUVA::System {

namespace {

/// What Linux tells of a process in /proc.
struct ProcessStatus
{
    char state = 0; ///< 0 when nothing is told
    qint64 start = 0;
};

ProcessStatus statusOfProcess(qint64 id)
{
    std::ifstream file("/proc/" + std::to_string(id) + "/stat");
    std::string text;
    std::getline(file, text, '\0');
    // The second field is the program's name in brackets, which may hold brackets and blanks itself.
    const auto nameEnd = text.rfind(')');
    if (nameEnd == std::string::npos)
        return {};
    constexpr int BETWEEN = 18; // from the third field, the state, to the 22nd, the start
    std::istringstream fields(text.substr(nameEnd + 1));
    ProcessStatus status;
    fields >> status.state;
    std::string skipped;
    for (int i = 0; i < BETWEEN; ++i)
        fields >> skipped;
    fields >> status.start;
    return status;
}

/// Ended, and kept only until its parent asks how.
bool isZombie(const ProcessStatus& status)
{
    return status.state == 'Z' || status.state == 'X';
}

} // namespace

QString thisBoot()
{
    // Never destroyed, because static objects of the application write settings.
    static const QString& BOOT = *new QString(QString::fromLatin1(QSysInfo::bootUniqueId()));
    return BOOT;
}

QString programName()
{
    std::error_code unknown;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", unknown);
    return QFile::decodeName(program.filename().c_str());
}

Process thisProcess()
{
    const qint64 id = ::getpid();
    return {id, statusOfProcess(id).start, thisBoot()};
}

bool isRunning(const Process& process)
{
    // 0 and negative numbers stand for groups of processes, and a larger one than there are for another.
    const auto id = static_cast<pid_t>(process.id);
    if (process.id <= 0 || process.id != id || process.boot != thisBoot())
        return false;
    const bool exists = ::kill(id, 0) == 0 || errno == EPERM;
    if (!exists)
        return false;
    const ProcessStatus status = statusOfProcess(process.id);
    return !isZombie(status) && (process.start == 0 || status.start == process.start);
}

} // namespace TEKLUVA::System
