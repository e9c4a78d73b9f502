#include "analysis/results/QuantityRange.h"

#include "analysis/results/ResultQuantities.h"
#include "numeric/ParallelRanges.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <mutex>
#include <vector>

std::optional<ValueRange> quantityRange(int position, const RangeConditions &conditions)
{
    const ResultQuantity *const quantity = quantityAt(position);
    if (!quantity)
        return std::nullopt;
    const ValueRange ofEdgeJumps = {-conditions.edgeJumps / 10, 1.1 * conditions.edgeJumps};
    switch (quantity->range) {
    case RangeRule::Fraction:
        return ValueRange{-0.1, 1.1};
    case RangeRule::EdgeJump:
        return ofEdgeJumps;
    case RangeRule::Valence:
        return ValueRange{conditions.smallestValence - 0.5, conditions.largestValence + 0.5};
    case RangeRule::TotalAmount:
        return conditions.isFourPoints ? conditions.thickness : ofEdgeJumps;
    case RangeRule::None:
        break;
    }
    return std::nullopt;
}

std::optional<ValueRange> finiteRange(const double *values, std::size_t count, const quint8 *mask, int threads)
{
    constexpr double largest = std::numeric_limits<double>::max();
    ValueRange all = emptyRange;
    std::mutex merging;
    numeric::parallelRanges(count, threads, [&](std::size_t begin, std::size_t end) {
        ValueRange share = emptyRange;
        for (std::size_t i = begin; i < end; ++i) {
            const double value = values[i];
            if (std::abs(value) <= largest && !(mask && mask[i]))
                widen(&share, value);
        }
        const std::lock_guard<std::mutex> lock(merging);
        widen(&all, share);
    });
    if (all.min > all.max)
        return std::nullopt;
    return all;
}

std::optional<ValueRange> percentileRange(const double *values, std::size_t count, const quint8 *mask, double low,
                                          double high)
{
    std::vector<double> finite;
    finite.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        if (std::isfinite(values[i]) && !(mask && mask[i]))
            finite.push_back(values[i]);
    }
    if (finite.empty())
        return std::nullopt;
    const auto valueAt = [&finite](double fraction) {
        const double last = static_cast<double>(finite.size() - 1);
        const auto rank = std::lround(std::max(0.0, std::min(1.0, fraction)) * last);
        std::nth_element(finite.begin(), finite.begin() + rank, finite.end());
        return finite[static_cast<std::size_t>(rank)];
    };
    return ValueRange{valueAt(low), valueAt(high)};
}
