#pragma once

#include "analysis/uncertainty/UncertaintyConstants.h"
#include "numeric/Lanes.h"

#include <cstddef>
#include <type_traits>

/// The formulas of UncertaintyConstants.h for one pixel (Real is double) or for several side by side (Real is one of
/// the Lanes): the same operations in the same order, hence the same bits. Results go through references because Lanes
/// must not be passed by value.

/// Calls work(std::integral_constant<std::size_t, degrees>()) for 0 to mostDegrees degrees of freedom.
template <class Work>
auto withDegrees(int degrees, Work work)
{
    static_assert(mostDegrees == 5, "one row per number of degrees");
    switch (degrees) {
    case 0:
        return work(std::integral_constant<std::size_t, 0>());
    case 1:
        return work(std::integral_constant<std::size_t, 1>());
    case 2:
        return work(std::integral_constant<std::size_t, 2>());
    case 3:
        return work(std::integral_constant<std::size_t, 3>());
    case 4:
        return work(std::integral_constant<std::size_t, 4>());
    default:
        return work(std::integral_constant<std::size_t, 5>());
    }
}

/// chi^2 from the values y and variances s, one per point, and z = T^T N^T y. M, the covariance of z, is decomposed in
/// place, two rows at once, which takes half as many divisions as one by one: with the 2 x 2 block B on the diagonal
/// and the rows R below it, chi^2 = z_B^T B^-1 z_B + that of M - R B^-1 R^T and z - R B^-1 z_B.
template <std::size_t Degrees, class Real>
FLOKLUK_ALWAYS_INLINE void misfitOf(const UncertaintyConstants &c, const Real *y, const Real *s, Real *z,
                                    Real &chiSquare)
{
    Real m[Degrees][Degrees] = {};
    Real rest[Degrees];
#pragma GCC unroll 5
    for (std::size_t i = 0; i < Degrees; ++i) {
        rest[i] = y[c.residuals.own[i]];
        m[i][i] = s[c.residuals.own[i]];
    }
    for (std::size_t k = 0; k < c.residuals.sharedCount; ++k) {
        const std::size_t point = c.residuals.shared[k];
        const ResidualRow &n = c.residuals.weights[k];
#pragma GCC unroll 5
        for (std::size_t i = 0; i < Degrees; ++i) {
            rest[i] += y[point] * n[i];
            const Real scaled = s[point] * n[i];
#pragma GCC unroll 5
            for (std::size_t j = 0; j <= i; ++j)
                m[i][j] += scaled * n[j];
        }
    }
#pragma GCC unroll 5
    for (std::size_t j = 0; j < Degrees; ++j)
        z[j] = rest[j];
    chiSquare = Real{};
#pragma GCC unroll 5
    for (std::size_t j = 0; j + 1 < Degrees; j += 2) {
        const Real inverse = 1.0 / (m[j][j] * m[j + 1][j + 1] - m[j + 1][j] * m[j + 1][j]);
        const Real first = inverse * (m[j + 1][j + 1] * rest[j] - m[j + 1][j] * rest[j + 1]);
        const Real second = inverse * (m[j][j] * rest[j + 1] - m[j + 1][j] * rest[j]);
        chiSquare += rest[j] * first + rest[j + 1] * second;
#pragma GCC unroll 5
        for (std::size_t i = j + 2; i < Degrees; ++i) {
            const Real l = inverse * (m[i][j] * m[j + 1][j + 1] - m[i][j + 1] * m[j + 1][j]);
            const Real r = inverse * (m[i][j + 1] * m[j][j] - m[i][j] * m[j + 1][j]);
            rest[i] -= m[i][j] * first + m[i][j + 1] * second;
#pragma GCC unroll 5
            for (std::size_t h = j + 2; h <= i; ++h)
                m[i][h] -= l * m[h][j] + r * m[h][j + 1];
        }
    }
    if constexpr (Degrees % 2 == 1)
        chiSquare += rest[Degrees - 1] * rest[Degrees - 1] / m[Degrees - 1][Degrees - 1];
}

/// dt/dy_k of the least-squares variant from the values, z and the method's t.
template <std::size_t Degrees, class Real>
FLOKLUK_ALWAYS_INLINE void inverseGradient(const UncertaintyConstants &c, const Real *y, const Real *z, const Real &t,
                                           Real *gradient)
{
    Real direct = {}; // t'
    for (std::size_t k = 0; k < c.count(); ++k)
        direct += y[k] * c.amount[k];
    const Real inverse = 1.0 / direct;
    const Real share = 2.0 - t * inverse;
    Real scaled[Degrees];
#pragma GCC unroll 5
    for (std::size_t i = 0; i < Degrees; ++i)
        scaled[i] = z[i] * (inverse * c.inverseNorm);
    for (std::size_t k = 0; k < c.count(); ++k) {
        gradient[k] = share * c.amount[k];
#pragma GCC unroll 5
        for (std::size_t i = 0; i < Degrees; ++i)
            gradient[k] += scaled[i] * c.residuals.back[k][i];
    }
}

/// sigma_q^2, with dt/dy_k constant or, in `gradient`, of the pixel.
template <class Real>
FLOKLUK_ALWAYS_INLINE void quantityVariance(const UncertaintyConstants &c, const UncertaintyConstants::Quantity &q,
                                            const Real *s, const Real *gradient, const Real &value, const Real &t,
                                            Real &variance)
{
    const Real rest = q.offset - value;
    Real sum = {};
    for (std::size_t k = 0; k < c.count(); ++k) {
        Real part = gradient ? rest * gradient[k] : rest * c.amount[k];
        part += q.row[k];
        sum += part * part * s[k];
    }
    const Real perT = q.factor / t;
    variance = sum * perT * perT;
}

/// sigma_t^2, as above.
template <class Real>
FLOKLUK_ALWAYS_INLINE void amountVariance(const UncertaintyConstants &c, const Real *s, const Real *gradient,
                                          Real &variance)
{
    variance = Real{};
    for (std::size_t k = 0; k < c.count(); ++k) {
        if (gradient)
            variance += gradient[k] * gradient[k] * s[k];
        else
            variance += s[k] * (c.amount[k] * c.amount[k]);
    }
}
