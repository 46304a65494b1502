#pragma once

#include <QDir>
#include <QFile>

#include <csignal>
#include <filesystem>

#include <fcntl.h>
#include <malloc.h>
#include <pthread.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

/// Leaves out a test, or the rest of it, that Windows has no \p what for.
#define SKIP_ON_WINDOWS(what) static_cast<void>(what)

/// What tests ask of the system beyond what Qt and the standard library offer on all.
namespace TestPlatform {

/// Whether there are a shell, links, pipes and devices.
constexpr bool IS_UNIX = true;

/// What a failure says in the words of Unix, of which Windows has others.
inline QString wordsOf(const QString& failure)
{
    return failure;
}

inline std::filesystem::path pathOf(const QString& text)
{
    return QFile::encodeName(text).toStdString();
}

inline QString textOf(const std::filesystem::path& path)
{
    return QFile::decodeName(path.c_str());
}

/// Below which applications keep what is the user's.
inline QString userFolder()
{
    return QDir::homePath();
}

/// Where applications keep their data.
inline QString dataFolder()
{
    return userFolder() + QLatin1String("/.local/share/data");
}

/// Nothing: the home folder of tests is a variable's.
inline void requireOwnHome()
{
}

/// Sets a variable of the environment, of later processes, too.
inline void setVariable(const char* name, const QString& value)
{
    qputenv(name, value.toUtf8());
}

/// Makes a pipe, unless there is one.
[[nodiscard]] inline bool makePipe(const std::filesystem::path& path)
{
    return std::filesystem::is_fifo(path) || mkfifo(path.c_str(), 0600) == 0;
}

/// The files that this process holds open.
inline int openDescriptors()
{
    return static_cast<int>(
        QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::AllEntries | QDir::System).size());
}

/// The bytes that this process has allocated.
inline qint64 allocated()
{
    return static_cast<qint64>(mallinfo2().uordblks);
}

/// A file or folder that this process holds open, and may lock.
class OpenFile
{
    Q_DISABLE_COPY(OpenFile)

public:
    explicit OpenFile(const QString& path, int flags = O_RDONLY)
        : m_descriptor(::open(pathOf(path).c_str(), flags | O_CLOEXEC, 0666))
    {
    }
    ~OpenFile() { close(); }
    static constexpr int NEW = O_RDWR | O_CREAT | O_EXCL;

    bool write(const QByteArray& text) const
    {
        return ::write(m_descriptor, text.constData(), size_t(text.size())) == ssize_t(text.size());
    }
    bool lock() const { return ::flock(m_descriptor, LOCK_EX | LOCK_NB) == 0; }
    void close() { ::close(std::exchange(m_descriptor, -1)); }

private:
    int m_descriptor;
};

/// A lower limit of this process for one of its resources, as long as the scope lives.
class Limit
{
    Q_DISABLE_COPY(Limit)

public:
    Limit(__rlimit_resource resource, rlim_t value)
        : m_resource(resource)
    {
        getrlimit(m_resource, &m_before);
        const rlimit limit = {value, m_before.rlim_max};
        setrlimit(m_resource, &limit);
    }
    ~Limit() { setrlimit(m_resource, &m_before); }

private:
    const __rlimit_resource m_resource;
    rlimit m_before{};
};

/// A disk without room: no file of this process can grow beyond some bytes.
class FullDisk
{
public:
    static constexpr rlim_t WITH_ROOM = RLIM_INFINITY;

    /// \p endsProcess: as soon as it writes beyond them, as the system does unless told otherwise.
    explicit FullDisk(rlim_t bytes, bool endsProcess = false)
        : m_limit(RLIMIT_FSIZE, bytes)
    {
        static_cast<void>(std::signal(SIGXFSZ, endsProcess ? SIG_DFL : SIG_IGN));
    }

private:
    const Limit m_limit;
};

/// No thread can be started: none gets half of all addresses for its stack.
class NoThreads
{
    Q_DISABLE_COPY(NoThreads)

public:
    NoThreads()
    {
        pthread_getattr_default_np(&m_before);
        pthread_attr_t attributes = m_before;
        pthread_attr_setstacksize(&attributes, ~std::size_t(0) / 2 + 1);
        pthread_setattr_default_np(&attributes);
    }
    ~NoThreads() { pthread_setattr_default_np(&m_before); }

private:
    pthread_attr_t m_before{};
};

/// No file can be opened besides those that are open.
class NoDescriptors
{
    const Limit m_limit{RLIMIT_NOFILE, 3};
};

} // namespace TestPlatform
