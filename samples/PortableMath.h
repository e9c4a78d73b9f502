#pragma once

#include "numeric/RealToInt.h"

#include <cmath>
#include <limits>

/// Transcendental functions from + - * / and the exactly rounded square root alone. The C library's versions differ
/// in the last digit from machine to machine; these give the same bits everywhere, within about two units in the
/// last place, so that a data set made from a seed is the same file on every machine.
namespace portable
{

/// The double nearest to pi.
constexpr double pi = 3.14159265358979323846;

namespace detail
{
constexpr double ln2High = 6.93147180369123816490e-01; // its last 20 bits are zero: a small integer times it is exact
constexpr double ln2Low = 1.90821492927058770002e-10;
constexpr double halfPiHigh =
    1.57079632673412561417e+00; // the first 33 bits of pi / 2, then the next 33, then the rest
constexpr double halfPiMiddle = 6.07710050630396597660e-11;
constexpr double halfPiLow = 2.02226624879595063154e-21;

/// e to the power of x for |x| <= ln(2) / 2: Taylor's polynomial of degree 14.
inline double expPolynomial(double x)
{
    constexpr double inverseFactorials[] = {1.0 / 87178291200,
                                            1.0 / 6227020800,
                                            1.0 / 479001600,
                                            1.0 / 39916800,
                                            1.0 / 3628800,
                                            1.0 / 362880,
                                            1.0 / 40320,
                                            1.0 / 5040,
                                            1.0 / 720,
                                            1.0 / 120,
                                            1.0 / 24,
                                            1.0 / 6,
                                            1.0 / 2,
                                            1.0,
                                            1.0};
    double sum = 0.0;
    for (double coefficient : inverseFactorials)
        sum = sum * x + coefficient;
    return sum;
}

/// sin(x) for |x| <= pi / 4.
inline double sinPolynomial(double x)
{
    const double x2 = x * x;
    double sum = 1.0;
    for (int n = 16; n >= 2; n -= 2)
        sum = 1.0 - sum * x2 / (n * (n + 1));
    return x * sum;
}

/// cos(x) for |x| <= pi / 4.
inline double cosPolynomial(double x)
{
    const double x2 = x * x;
    double sum = 1.0;
    for (int n = 17; n >= 1; n -= 2)
        sum = 1.0 - sum * x2 / (n * (n + 1));
    return sum;
}
} // namespace detail

/// e to the power of x. 0 below -700 and infinite above 700; NaN gives NaN.
inline double exp(double x)
{
    if (x < -700.0)
        return 0.0;
    if (x > 700.0)
        return std::numeric_limits<double>::infinity();
    if (x != x)
        return x;
    const double n = std::floor(x / (detail::ln2High + detail::ln2Low) + 0.5);
    const double rest = (x - n * detail::ln2High) - n * detail::ln2Low;
    return std::ldexp(detail::expPolynomial(rest), numeric::truncToInt(n));
}

/// The natural logarithm of a finite x > 0; NaN for everything else.
inline double log(double x)
{
    if (!(x > 0.0 && x <= std::numeric_limits<double>::max()))
        return std::numeric_limits<double>::quiet_NaN();
    int exponent;
    double mantissa = std::frexp(x, &exponent); // 0.5 <= mantissa < 1
    if (mantissa < 0.70710678118654752440) {
        mantissa *= 2.0;
        --exponent;
    }
    // ln m = 2 (s + s^3 / 3 + s^5 / 5 + ...) with s = (m - 1) / (m + 1), |s| < 0.172
    const double s = (mantissa - 1.0) / (mantissa + 1.0);
    const double s2 = s * s;
    constexpr double inverseOdds[] = {1.0 / 23, 1.0 / 21, 1.0 / 19, 1.0 / 17, 1.0 / 15, 1.0 / 13,
                                      1.0 / 11, 1.0 / 9,  1.0 / 7,  1.0 / 5,  1.0 / 3};
    double sum = 0.0;
    for (double coefficient : inverseOdds)
        sum = (sum + coefficient) * s2;
    const double logMantissa = 2.0 * s + 2.0 * s * sum;
    return exponent * detail::ln2High + (exponent * detail::ln2Low + logMantissa);
}

/// The sine of x in radians, |x| up to 1e5 (beyond that the reduction by pi / 2 loses digits).
inline double sin(double x)
{
    const double n = std::floor(x / (pi / 2) + 0.5);
    const double rest = ((x - n * detail::halfPiHigh) - n * detail::halfPiMiddle) - n * detail::halfPiLow;
    const double quarter = n - 4.0 * std::floor(n / 4.0);
    const double magnitude =
        quarter == 0.0 || quarter == 2.0 ? detail::sinPolynomial(rest) : detail::cosPolynomial(rest);
    return quarter < 2.0 ? magnitude : -magnitude;
}

/// The angle in radians, -pi/2 to pi/2, whose sine is x; NaN outside -1 to 1.
inline double asin(double x)
{
    if (!(x >= -1.0 && x <= 1.0))
        return std::numeric_limits<double>::quiet_NaN();
    if (x < 0.0)
        return -asin(-x);
    if (x > 0.5) // near 1 the sine is flat: half of the complement's angle is well conditioned
        return pi / 2 - 2.0 * asin(std::sqrt((1.0 - x) / 2.0));
    double angle = x;
    for (int i = 0; i < 5; ++i) // Newton: the error is squared each time
        angle += (x - detail::sinPolynomial(angle)) / detail::cosPolynomial(angle);
    return angle;
}

} // namespace portable
