#pragma once

#include <QtGlobal>

#include <csignal>
#include <sys/resource.h>

/// A disk without room, as long as the scope lives: no file of this process can grow beyond some bytes.
class FullDisk
{
    Q_DISABLE_COPY(FullDisk)

public:
    explicit FullDisk(rlim_t bytes)
    {
        static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit = {bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &m_before); }

private:
    rlimit m_before{};
};
