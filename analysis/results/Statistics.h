#pragma once

#include <cstddef>

/// Summary of the finite ones among some values.
struct FiniteSummary {
    std::size_t count = 0;  ///< finite values
    double mean = 0.0;      ///< NaN without any
    double deviation = 0.0; ///< standard deviation of the values themselves (divided by count); NaN without any
    double min = 0.0;       ///< NaN without any
    double max = 0.0;
};

class FiniteSummaryBuilder
{
public:
    void add(double value); ///< ignores infinities and NaN
    FiniteSummary summary() const;

private:
    std::size_t m_count = 0;
    double m_mean = 0.0;
    double m_squares = 0.0; // of the differences from the mean so far
    double m_min = 0.0;
    double m_max = 0.0;
};
