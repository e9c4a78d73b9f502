#include "analysis/results/ShownQuantity.h"

#include "analysis/methods/FourPoints.h"
#include "analysis/results/ResultQuantities.h"
#include "analysis/results/ResultRecords.h"
#include "numeric/ParallelRanges.h"
#include "numeric/RealToInt.h"

#include <limits>
#include <new>

namespace
{

/// of(i) for every pixel.
template <class Of>
const double *derived(std::size_t count, numeric::Plane *work, Of of)
{
    try {
        work->resize(count);
    } catch (const std::bad_alloc &) {
        return nullptr;
    }
    double *const values = work->data();
    numeric::parallelRanges(count, 0, [values, of](std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i)
            values[i] = of(i);
    });
    return values;
}

} // namespace

const double *shownPlane(const ResultRecords &results, int position, double valenceA, double valenceB,
                         numeric::Plane *work)
{
    if (position < 0 || position >= ResultPosition::count)
        return nullptr;
    if (results.method() == ResultRecords::Method::NonEquivalent)
        return results.quantity(position);
    const double *const a = results.a();
    switch (position) {
    case ResultPosition::ratio:
        return a;
    case ResultPosition::ratio + 1:
        return derived(results.count(), work, [a](std::size_t i) { return 1 - a[i]; });
    case ResultPosition::valence:
        return derived(results.count(), work,
                       [a, valenceA, valenceB](std::size_t i) { return mixedValence(valenceA, valenceB, a[i]); });
    case ResultPosition::amount:
        return results.t();
    default:
        return nullptr;
    }
}

void maskBelow(const ResultRecords &results, double limit, std::vector<quint8> *mask)
{
    mask->resize(results.count());
    const double *const t = results.t();
    quint8 *const hidden = mask->data();
    numeric::parallelRanges(results.count(), 0, [t, limit, hidden](std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i)
            hidden[i] = t[i] < limit ? 1 : 0;
    });
}

QString cellText(const double *plane, int width, int height, double x, double y)
{
    if (!plane || !(x >= 0 && x < width && y >= 0 && y < height))
        return QString();
    const auto index = static_cast<std::size_t>(numeric::truncToInt(y)) * static_cast<std::size_t>(width) +
                       static_cast<std::size_t>(numeric::truncToInt(x));
    return QString::number(plane[index], 'g', 6);
}

HistogramBins referenceHistogram(const HistogramBins &boxes, const ResultRecords &results, int ratio,
                                 const double *values)
{
    HistogramBins bins = boxes;
    bins.counts.fill(0, bins.n);
    bins.total = bins.under = bins.over = 0;
    if (results.method() != ResultRecords::Method::NonEquivalent || !boxes.isSet())
        return bins;
    const double *const fraction = results.quantity(ratio);
    constexpr double notCounted = std::numeric_limits<double>::quiet_NaN();
    bins.addValues(results.count(),
                   [fraction, values](std::size_t i) { return fraction[i] >= 0.5 ? values[i] : notCounted; });
    bins.total = bins.under + bins.inRangeCount() + bins.over;
    return bins;
}
