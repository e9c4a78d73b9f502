#pragma once

#include <cstddef>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace numeric
{

/// Threads that work beside the calling one and have ended when the scope ends. A system may refuse to make a thread (a
/// limit on processes or on memory): whoever shares work out does such a share itself.
class HelperThreads
{
public:
    /// Room for `most` threads. Throws std::bad_alloc.
    explicit HelperThreads(std::size_t most) { m_threads.reserve(most); }
    ~HelperThreads();
    HelperThreads(const HelperThreads &) = delete;
    HelperThreads &operator=(const HelperThreads &) = delete;

    /// Calls work() on a new thread. False, and nothing is called, when there is none to be had or no room for it.
    [[nodiscard]] bool start(std::function<void()> work);

    /// Waits for all threads; throws the first exception that one of them ended with.
    void finish();

private:
    void join();

    std::vector<std::thread> m_threads;
    std::mutex m_failing;
    std::exception_ptr m_failure;
};

} // namespace numeric
