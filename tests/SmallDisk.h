#pragma once

#include <QtGlobal>

#include <csignal>

#include <sys/resource.h>

/// While it lives no file can grow beyond `bytes`, as on a full disk.
class SmallDisk
{
public:
    explicit SmallDisk(rlim_t bytes)
        : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit limit = m_before;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SmallDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    Q_DISABLE_COPY(SmallDisk)

private:
    void (*m_handler)(int);
    rlimit m_before = {};
};
