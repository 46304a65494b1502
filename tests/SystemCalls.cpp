#include "SystemCalls.h"

#include <QMap>

#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <mutex>

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

namespace {

struct PlannedFault
{
    int error = 0;
    int callsLeft = 0; ///< that succeed
};

struct State
{
    std::recursive_mutex mutex;
    bool isWatching = false;
    bool hasUnnamedFiles = true;
    QMap<QByteArray, PlannedFault> faults;
    QByteArrayList changes;
    QByteArrayList inherited;
};

State& state()
{
    static auto* const instance = new State; // calls go on after static objects are gone
    return *instance;
}

template <typename Function>
Function* original(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

/// Notes the call; true when it is to fail, with errno set.
bool fails(const char* name, const QByteArray& change = {})
{
    State& s = state();
    const std::lock_guard<std::recursive_mutex> lock(s.mutex);
    if (!s.isWatching)
        return false;
    if (!change.isNull())
        s.changes << change;
    const auto fault = s.faults.find(name);
    if (fault == s.faults.end() || fault->callsLeft-- > 0)
        return false;
    errno = fault->error;
    return true;
}

bool isUnnamed(int flags)
{
    return (flags & O_TMPFILE) == O_TMPFILE;
}

bool isForbidden(int flags)
{
    if (!isUnnamed(flags) || !state().isWatching || state().hasUnnamedFiles)
        return false;
    errno = EOPNOTSUPP;
    return true;
}

void noteIfInherited(const char* path, int flags)
{
    State& s = state();
    const std::lock_guard<std::recursive_mutex> lock(s.mutex);
    const bool isOfSystem = QByteArray(path).startsWith("/usr/"); // such as the font of a question
    if (s.isWatching && !isOfSystem && (flags & O_CLOEXEC) == 0)
        s.inherited << path;
}

} // namespace

SystemCalls::SystemCalls()
{
    State& s = state();
    s.faults.clear();
    s.changes.clear();
    s.inherited.clear();
    s.hasUnnamedFiles = true;
    s.isWatching = true;
}

SystemCalls::~SystemCalls()
{
    state().isWatching = false;
}

void SystemCalls::fail(const QByteArray& name, int error, int first) // NOLINT: belongs to the object's time
{
    state().faults.insert(name, {error, first - 1});
}

void SystemCalls::forbidUnnamedFiles() // NOLINT: belongs to the object's time
{
    state().hasUnnamedFiles = false;
}

QByteArrayList SystemCalls::changes()
{
    return state().changes;
}

QByteArrayList SystemCalls::inherited()
{
    return state().inherited;
}

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the system names them its own way
#pragma GCC visibility push(default)
extern "C" {

int open64(const char* path, int flags, ...)
{
    va_list more;
    va_start(more, flags);
    const mode_t mode = (flags & O_CREAT) != 0 || isUnnamed(flags) ? va_arg(more, mode_t) : 0;
    va_end(more);
    noteIfInherited(path, flags);
    const bool hasFailed = isForbidden(flags) || fails("open");
    return hasFailed ? -1 : original<decltype(open64)>("open64")(path, flags, mode);
}

int open(const char* path, int flags, ...) __attribute__((alias("open64")));

ssize_t pread64(int file, void* target, size_t size, off64_t position)
{
    return fails("read") ? -1 : original<decltype(pread64)>("pread64")(file, target, size, position);
}

ssize_t pwrite64(int file, const void* bytes, size_t size, off64_t position)
{
    return fails("write") ? -1 : original<decltype(pwrite64)>("pwrite64")(file, bytes, size, position);
}

int fchown(int file, uid_t owner, gid_t group) noexcept
{
    return fails("chown") ? -1 : original<int(int, uid_t, gid_t)>("fchown")(file, owner, group);
}

int fdatasync(int file)
{
    return fails("sync", "sync") ? -1 : original<decltype(fdatasync)>("fdatasync")(file);
}

int syncfs(int file) noexcept
{
    return fails("syncfs", "syncfs") ? -1 : original<decltype(syncfs)>("syncfs")(file);
}

int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) noexcept
{
    const bool hasFailed = fails("link", QByteArray("link ") + to);
    return hasFailed ? -1 : original<decltype(linkat)>("linkat")(fromFolder, from, toFolder, to, flags);
}

int rename(const char* from, const char* to) noexcept
{
    const bool hasFailed = fails("rename", QByteArray("rename ") + to);
    return hasFailed ? -1 : original<decltype(rename)>("rename")(from, to);
}

int unlink(const char* path) noexcept
{
    const bool hasFailed = fails("unlink", QByteArray("unlink ") + path);
    return hasFailed ? -1 : original<decltype(unlink)>("unlink")(path);
}

dirent* readdir(DIR* folder)
{
    return fails("readdir") ? nullptr : original<decltype(readdir)>("readdir")(folder);
}

dirent64* readdir64(DIR* folder)
{
    return fails("readdir") ? nullptr : original<decltype(readdir64)>("readdir64")(folder);
}

} // extern "C"
#pragma GCC visibility pop
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
