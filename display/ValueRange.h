#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

/// A run of values from min to max; also the wrong way round or empty, as it comes from the user's numbers.
struct ValueRange {
    double min = 0.0;
    double max = 0.0;
};

/// Holds no value: ends that stand the wrong way round.
inline constexpr ValueRange emptyRange{std::numeric_limits<double>::infinity(),
                                       -std::numeric_limits<double>::infinity()};

/// Makes `range` reach to `value`.
inline void widen(ValueRange *range, double value)
{
    range->min = std::min(range->min, value);
    range->max = std::max(range->max, value);
}

/// Makes `range` reach over another one, which may be empty.
inline void widen(ValueRange *range, const ValueRange &other)
{
    range->min = std::min(range->min, other.min);
    range->max = std::max(range->max, other.max);
}

/// Wider on either side by `share` of the extent, by `alone` around a single value.
inline ValueRange withMargin(const ValueRange &range, double share, double alone)
{
    const double by = range.max > range.min ? (range.max - range.min) * share : alone;
    return {range.min - by, range.max + by};
}

/// Equal ends. NaN equals NaN here: what stays without numbers does not become another range.
inline bool operator==(const ValueRange &l, const ValueRange &r)
{
    const auto same = [](double a, double b) {
        return a == b || (std::isnan(a) && std::isnan(b));
    };
    return same(l.min, r.min) && same(l.max, r.max);
}
inline bool operator!=(const ValueRange &l, const ValueRange &r)
{
    return !(l == r);
}
