#include "analysis/results/Statistics.h"

#include <algorithm>
#include <cmath>
#include <limits>

/// One pass without cancellation: Welford, Technometrics 4 (1962) 419.
void FiniteSummaryBuilder::add(double value)
{
    if (!std::isfinite(value))
        return;
    m_min = m_count == 0 ? value : std::min(m_min, value);
    m_max = m_count == 0 ? value : std::max(m_max, value);
    ++m_count;
    const double difference = value - m_mean;
    m_mean += difference / static_cast<double>(m_count);
    m_squares += difference * (value - m_mean);
}

FiniteSummary FiniteSummaryBuilder::summary() const
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    if (m_count == 0)
        return {0, nan, nan, nan, nan};
    return {m_count, m_mean, std::sqrt(m_squares / static_cast<double>(m_count)), m_min, m_max};
}
