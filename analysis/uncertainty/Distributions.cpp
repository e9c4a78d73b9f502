#include "analysis/uncertainty/Distributions.h"

#include <cmath>
#include <limits>

namespace
{

constexpr double pi = 3.14159265358979323846;

/// Where the rising function `of`, 0 at 0, reaches `wanted` < 1.
template <class Of>
double inverse(double wanted, Of of)
{
    double low = 0.0;
    double high = 1.0;
    while (of(high) < wanted && high < 1e300)
        high *= 2.0;
    for (int i = 0; i < 200; ++i) {
        const double middle = 0.5 * (low + high);
        (of(middle) < wanted ? low : high) = middle;
    }
    return high;
}

/// The probability that chi^2 is at most `value` (26.4.4 and 26.4.5).
double chiSquareBelow(double value, int degrees)
{
    const bool isOdd = degrees % 2 == 1;
    const double root = std::sqrt(value);
    double term = isOdd ? root * std::sqrt(2.0 / pi) : 1.0;
    double sum = 0.0;
    for (int r = isOdd ? 1 : 0; r <= degrees - 2; r += 2) {
        sum += term;
        term *= value / (r + 2);
    }
    const double tail = (isOdd ? std::erfc(root / std::sqrt(2.0)) : 0.0) + std::exp(-0.5 * value) * sum;
    return 1.0 - tail;
}

/// The probability that Student's |t| is at most `value` (26.7.3 and 26.7.4).
double studentWithin(double value, int degrees)
{
    const double angle = std::atan(value / std::sqrt(static_cast<double>(degrees)));
    const double square = std::cos(angle) * std::cos(angle);
    const bool isOdd = degrees % 2 == 1;
    double term = isOdd ? std::cos(angle) : 1.0;
    double sum = 0.0;
    for (int r = isOdd ? 1 : 0; r <= degrees - 2; r += 2) {
        sum += term;
        term *= square * (r + 1) / (r + 2);
    }
    const double sine = std::sin(angle) * sum;
    return isOdd ? 2.0 / pi * (angle + sine) : sine;
}

} // namespace

double chiSquareMedian(int degrees)
{
    if (degrees < 1)
        return std::numeric_limits<double>::quiet_NaN();
    return inverse(0.5, [degrees](double value) { return chiSquareBelow(value, degrees); });
}

double studentFactor(int degrees, double coverage)
{
    if (degrees < 1 || !(coverage > 0.0 && coverage < 1.0))
        return std::numeric_limits<double>::quiet_NaN();
    return inverse(coverage, [degrees](double value) { return studentWithin(value, degrees); });
}
