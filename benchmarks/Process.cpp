#include "Process.h"

#include <algorithm>
#include <chrono>
#include <fcntl.h>
#include <fstream>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

/// Leads what the program prints away.
class Silence
{
public:
    Silence()
    {
        posix_spawn_file_actions_init(&m_actions);
        for (const int output : {STDOUT_FILENO, STDERR_FILENO})
            posix_spawn_file_actions_addopen(&m_actions, output, "/dev/null", O_WRONLY, 0);
    }
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;
    ~Silence() { posix_spawn_file_actions_destroy(&m_actions); }

    const posix_spawn_file_actions_t* get() const { return &m_actions; }

private:
    posix_spawn_file_actions_t m_actions{};
};

/// 0 when it cannot be started.
pid_t start(const std::vector<std::string>& command)
{
    std::vector<std::string> words = command;
    std::vector<char*> arguments;
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);

    const Silence silence;
    pid_t child = 0;
    const int error = posix_spawnp(&child, arguments[0], silence.get(), nullptr, arguments.data(), environ);
    return error == 0 ? child : 0;
}

bool isSuccess(int status)
{
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/// 0 for a process that has ended.
double peakOf(pid_t process)
{
    constexpr double KIBIBYTES = 1024;
    std::ifstream file("/proc/" + std::to_string(process) + "/status");
    std::string word;
    while (file >> word) {
        double peak = 0;
        if (word == "VmHWM:" && file >> peak)
            return peak / KIBIBYTES;
    }
    return 0;
}

} // namespace

Bench::ProcessResult Bench::run(const std::vector<std::string>& command)
{
    const pid_t child = start(command);
    int status = 0;
    const bool hasEnded = child != 0 && waitpid(child, &status, 0) == child;
    return {hasEnded && isSuccess(status), 0};
}

Bench::ProcessResult Bench::runWatched(const std::vector<std::string>& command)
{
    const pid_t child = start(command);
    if (child == 0)
        return {};
    ProcessResult result;
    int status = 0;
    while (waitpid(child, &status, WNOHANG) == 0) {
        result.peakMebibytes = std::max(result.peakMebibytes, peakOf(child));
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    result.isDone = isSuccess(status);
    return result;
}
