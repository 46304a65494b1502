#include "Process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
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

} // namespace

Bench::ProcessResult Bench::run(const std::vector<std::string>& command)
{
    std::vector<std::string> words = command;
    std::vector<char*> arguments;
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);

    const Silence silence;
    pid_t child = 0;
    if (posix_spawnp(&child, arguments[0], silence.get(), nullptr, arguments.data(), environ) != 0)
        return {};
    int status = 0;
    struct rusage usage = {};
    if (wait4(child, &status, 0, &usage) != child)
        return {};
    constexpr double KIBIBYTES = 1024;
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-union-access): so glibc declares its record
    return {WIFEXITED(status) && WEXITSTATUS(status) == 0, static_cast<double>(usage.ru_maxrss) / KIBIBYTES};
}
