// Lets each allocation of each operation fail, once alone and once with all later ones. Whatever fails, the
// process goes on, no exception leaves an operation that promises none, and what it leaves is whole.

#include "Operations.h"

#include "tests/Allocations.h"
#include "tests/TestHome.h"

#include "globals/ConfigManager.h"

#include <cstdio>
#include <new>

#include <sys/wait.h>
#include <unistd.h>

using namespace Operations;
using namespace TEKLUVA;

namespace {

/// How an operation ended for want of memory after some allocations.
enum class End {
    Harmless,
    NeverFailed, ///< as the memory lasted
    Harmful,
};

End endWithout(const Operation& operation, long allocations, EndOfMemory::Failing failing)
{
    bool claims = false;
    bool hasFailed = false;
    try {
        const EndOfMemory end(allocations, failing);
        claims = operation.succeeds();
        hasFailed = EndOfMemory::hasCome();
    } catch (const std::bad_alloc&) {
        hasFailed = true;
        if (!operation.mayThrow)
            return End::Harmful;
    }
    if (!operation.holds(claims))
        return End::Harmful;
    return hasFailed ? End::Harmless : End::NeverFailed;
}

/// The end of \p work in a process of its own, which must not take more than some seconds.
template <typename Work>
End endOfProcess(Work&& work)
{
    constexpr unsigned LONGEST = 10;
    const pid_t child = fork();
    if (child == 0) {
        alarm(LONGEST);
        _exit(static_cast<int>(work()));
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? End(WEXITSTATUS(status)) : End::Harmful;
}

/// Lets the first, second, ... allocation of \p operation fail, until none is left.
bool survivesWithoutMemory(const Operation& operation, EndOfMemory::Failing failing)
{
    constexpr long MOST = 10000;
    bool isGood = true;
    for (long allocations = 0; allocations < MOST; ++allocations) {
        if (!prepareFiles())
            return false;
        const End end = endOfProcess([&] {
            prepareObjects();
            return endWithout(operation, allocations, failing);
        });
        if (end == End::NeverFailed) {
            std::printf("%s: %ld allocations\n", operation.name, allocations);
            return isGood && allocations > 0;
        }
        if (end == End::Harmful) {
            qWarning("broken: %s after %ld allocations", operation.name, allocations);
            isGood = false;
        }
    }
    return false;
}

/// A configuration manager that cannot be made is not there. Qt does not survive what fails later in it.
bool isMadeWholeOrNot()
{
    const auto make = [] {
        delete ConfigManager::getInstance();
        try {
            const EndOfMemory end(20);
            ConfigManager::getInstance();
        } catch (const std::bad_alloc&) { // as it must
        }
        return ConfigManager::hasInstance() ? End::Harmful : End::Harmless;
    };
    return endOfProcess(make) == End::Harmless;
}

} // namespace

int main(int argc, char** argv)
{
    const TestHome::Home home;
    const QCoreApplication application(argc, argv);
    TestHome::nameApplication();
    if (!prepareFiles())
        return 1;
    for (const Operation& operation : all()) // what is made once is there
        static_cast<void>(operation.succeeds());
    bool isGood = isMadeWholeOrNot();
    for (const auto failing : {EndOfMemory::Failing::AllLater, EndOfMemory::Failing::One}) {
        for (const Operation& operation : all()) {
            const bool survives = survivesWithoutMemory(operation, failing);
            isGood = isGood && survives;
        }
    }
    return isGood ? 0 : 1;
}
