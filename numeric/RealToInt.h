#pragma once

#include <limits>

namespace numeric
{

/// The whole part of `value`, truncated toward zero. Values beyond an int give the nearest int, NaN gives 0, so
/// that no pixel or bin index ever comes from an undefined conversion.
constexpr int truncToInt(double value)
{
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    if (value != value)
        return 0;
    if (value <= lowest)
        return std::numeric_limits<int>::min();
    if (value >= highest)
        return std::numeric_limits<int>::max();
    return static_cast<int>(value);
}

} // namespace numeric
