#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>
#include <optional>
#include <vector>

/// The median of `values`, of an even number the mean of the two in the middle; NaN without any. Reorders them.
/// `below`, `above`: so many more values lie below and above all of these; none when the middle is among those.
inline std::optional<double> median(std::vector<double> *values, std::size_t below = 0, std::size_t above = 0)
{
    const std::size_t count = below + values->size() + above;
    if (count == 0)
        return std::numeric_limits<double>::quiet_NaN();
    const std::size_t low = (count - 1) / 2;
    const std::size_t high = count / 2;
    if (low < below || high >= below + values->size())
        return std::nullopt;
    const auto upper = values->begin() + static_cast<std::ptrdiff_t>(high - below);
    std::nth_element(values->begin(), upper, values->end());
    const double lower = low == high ? *upper : *std::max_element(values->begin(), upper);
    return 0.5 * (lower + *upper);
}
