#pragma once

#include <pthread.h>

#include <cstddef>

/// As long as one lives, the system makes no thread: none has room for so large a stack.
class NoThreads
{
public:
    NoThreads()
    {
        pthread_getattr_default_np(&m_before);
        pthread_attr_t huge = m_before;
        pthread_attr_setstacksize(&huge, std::size_t(1) << 50);
        pthread_setattr_default_np(&huge);
    }
    ~NoThreads() { pthread_setattr_default_np(&m_before); }
    NoThreads(const NoThreads &) = delete;
    NoThreads &operator=(const NoThreads &) = delete;

private:
    pthread_attr_t m_before;
};
