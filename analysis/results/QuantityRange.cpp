#include "analysis/results/QuantityRange.h"

#include "analysis/results/ResultQuantities.h"
#include "numeric/ParallelRanges.h"

#include <algorithm>
#include <cmath>
#include <iterator>
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

std::optional<ValueRange> finiteRange(const double *values, std::size_t count, int threads)
{
    constexpr double largest = std::numeric_limits<double>::max();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    ValueRange all{infinity, -infinity};
    std::mutex merging;
    numeric::parallelRanges(count, threads, [&](std::size_t begin, std::size_t end) {
        ValueRange share{infinity, -infinity};
        for (std::size_t i = begin; i < end; ++i) {
            const double value = values[i];
            if (!(std::abs(value) <= largest))
                continue;
            share.min = std::min(share.min, value);
            share.max = std::max(share.max, value);
        }
        const std::lock_guard<std::mutex> lock(merging);
        all.min = std::min(all.min, share.min);
        all.max = std::max(all.max, share.max);
    });
    if (all.min > all.max)
        return std::nullopt;
    return all;
}

std::optional<ValueRange> percentileRange(const double *values, std::size_t count, double low, double high)
{
    std::vector<double> finite;
    finite.reserve(count);
    std::copy_if(values, values + count, std::back_inserter(finite), [](double value) { return std::isfinite(value); });
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
