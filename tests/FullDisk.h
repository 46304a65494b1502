#pragma once

#include <QtGlobal>

#include <csignal>
#include <sys/resource.h>

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
    explicit FullDisk(rlim_t bytes)
        : m_limit(RLIMIT_FSIZE, bytes)
    {
        static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    }

private:
    const Limit m_limit;
};
