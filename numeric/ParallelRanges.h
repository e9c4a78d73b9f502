#pragma once

#include <QFutureSynchronizer>
#include <QThread>
#include <QtConcurrent>

#include <algorithm>
#include <cstddef>

namespace numeric
{

/// Calls work(begin, end) for ranges that together cover 0 ... count - 1, on `threads` threads at once (0: as many as
/// the machine has cores), and returns when all are done. The ranges depend on nothing but the arguments; work must
/// not depend on how the whole is cut. The calling thread takes a share. Fewer than `worthAThread` items are done
/// before a thread has started.
template <class Work>
void parallelRanges(std::size_t count, int threads, Work work, std::size_t worthAThread = 4096)
{
    std::size_t shares = static_cast<std::size_t>(threads > 0 ? threads : QThread::idealThreadCount());
    shares = std::max<std::size_t>(1, std::min(shares, count / worthAThread));
    const auto start = [count, shares](std::size_t share) {
        return count / shares * share + count % shares * share / shares;
    };

    QFutureSynchronizer<void> others; // waits at the end of the scope
    for (std::size_t share = 1; share < shares; ++share)
        others.addFuture(QtConcurrent::run([work, start, share] { work(start(share), start(share + 1)); }));
    work(0, start(1));
}

} // namespace numeric
