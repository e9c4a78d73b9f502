#include "numeric/HelperThreads.h"

#include <new>
#include <system_error>
#include <utility>

namespace numeric
{

HelperThreads::~HelperThreads()
{
    join();
}

bool HelperThreads::start(std::function<void()> work)
{
    if (m_threads.size() == m_threads.capacity())
        return false;
    auto guarded = [this, work = std::move(work)] {
        try {
            work();
        } catch (...) {
            const std::lock_guard<std::mutex> lock(m_failing);
            m_failure = m_failure ? m_failure : std::current_exception();
        }
    };
    try {
        m_threads.emplace_back(std::move(guarded));
    } catch (const std::system_error &) {
        return false;
    } catch (const std::bad_alloc &) {
        return false;
    }
    return true;
}

void HelperThreads::finish()
{
    join();
    if (m_failure)
        std::rethrow_exception(std::exchange(m_failure, nullptr));
}

void HelperThreads::join()
{
    for (std::thread &thread : m_threads)
        thread.join();
    m_threads.clear();
}

} // namespace numeric
