#pragma once

#include "numeric/HelperThreads.h"

#include <QThread>

#include <algorithm>
#include <cstddef>

namespace numeric
{

/// Calls work(begin, end) for ranges that together cover 0 ... count - 1, on `threads` threads at once (0: as many as
/// the machine has cores), and returns when all are done. The calling thread takes a share, and those for which the
/// system makes no thread. Work must not depend on how the whole is cut; what it throws is thrown when all have ended.
/// Fewer than `worthAThread` items are done before a thread has started.
template <class Work>
void parallelRanges(std::size_t count, int threads, Work work, std::size_t worthAThread = 4096)
{
    std::size_t shares = static_cast<std::size_t>(threads > 0 ? threads : QThread::idealThreadCount());
    shares = std::max<std::size_t>(1, std::min(shares, count / worthAThread));
    const auto start = [count, shares](std::size_t share) {
        return count / shares * share + count % shares * share / shares;
    };

    HelperThreads others(shares - 1);
    std::size_t share = 1;
    while (share < shares && others.start([&work, begin = start(share), end = start(share + 1)] { work(begin, end); }))
        ++share;
    work(0, start(1));
    if (share < shares)
        work(start(share), count);
    others.finish();
}

} // namespace numeric
