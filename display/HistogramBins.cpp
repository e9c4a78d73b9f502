#include "display/HistogramBins.h"

#include "numeric/FileIdentity.h"
#include "numeric/StagedFile.h"

#include <algorithm>
#include <numeric>

void HistogramBins::setBoxes(double first, double last, double boxes)
{
    n = std::max(0, std::min(maxBoxes, numeric::truncToInt(boxes)));
    width = (last - first) / (n - 1);
    min = first - width / 2;
    max = last + width / 2;
    counts.fill(0, n);
    total = under = over = 0;
}

void HistogramBins::add(double value)
{
    Tally one(0);
    one.counts.swap(counts); // counted in place
    tally(
        0, 1, [value](std::size_t) { return value; }, &one);
    counts.swap(one.counts);
    under += one.under;
    over += one.over;
    ++total;
}

void HistogramBins::merge(const Tally &tally)
{
    std::transform(counts.cbegin(), counts.cend(), tally.counts.cbegin(), counts.begin(), std::plus<int>());
    under += tally.under;
    over += tally.over;
}

int HistogramBins::largestCount(int begin, int end) const
{
    constexpr int lanes = 8; // side by side: none waits for the one before
    int largest[lanes] = {};
    const int *const count = counts.constData();
    int i = begin;
    for (; end - i >= lanes; i += lanes) {
        for (int k = 0; k < lanes; ++k)
            largest[k] = std::max(largest[k], count[i + k]);
    }
    for (; i < end; ++i)
        largest[0] = std::max(largest[0], count[i]);
    return *std::max_element(largest, largest + lanes);
}

int HistogramBins::inRangeCount() const
{
    return std::accumulate(counts.cbegin(), counts.cend(), 0);
}

bool HistogramBins::write(const QString &path, const QString &tag, numeric::FileSet *set) const
{
    numeric::StagedFile file(numeric::pathBeside(path, tag));
    if (!file.open(QIODevice::Text))
        return false;
    bool isWritten = true;
    for (int i = -1; i <= n; ++i) {
        const int count = i < 0 ? under : i < n ? counts.at(i) : over;
        const QString line = QStringLiteral("%1 %2 %3  %4\n").arg(lowerEdge(i)).arg(centre(i)).arg(upperEdge(i));
        const QByteArray bytes = line.arg(count).toUtf8();
        isWritten = isWritten && file.device()->write(bytes) == bytes.size();
    }
    return isWritten && file.commit(set);
}
