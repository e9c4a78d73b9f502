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

/// chi^2 from the values y and variances s, one per point, and z = N^T y. M = N^T diag(s) N = L D L^T is decomposed in
/// place: chi^2 = sum of (L^-1 z)_i^2 / D_i.
template <std::size_t Degrees, class Real>
FLOKLUK_ALWAYS_INLINE void misfitOf(const UncertaintyConstants &c, const Real *y, const Real *s, Real *z,
                                    Real &chiSquare)
{
    Real m[Degrees][Degrees] = {};
    Real rest[Degrees] = {};
    for (std::size_t k = 0; k < c.residualCount(); ++k) {
        const ResidualRow &n = c.residuals[k];
#pragma GCC unroll 5
        for (std::size_t i = 0; i < Degrees; ++i) {
            rest[i] += y[k] * n[i];
            const Real scaled = s[k] * n[i];
#pragma GCC unroll 5
            for (std::size_t j = 0; j <= i; ++j)
                m[i][j] += scaled * n[j];
        }
    }
    chiSquare = Real{};
#pragma GCC unroll 5
    for (std::size_t j = 0; j < Degrees; ++j)
        z[j] = rest[j];
#pragma GCC unroll 5
    for (std::size_t j = 0; j < Degrees; ++j) {
        const Real inverse = 1.0 / m[j][j];
        chiSquare += rest[j] * rest[j] * inverse;
#pragma GCC unroll 5
        for (std::size_t i = j + 1; i < Degrees; ++i) {
            const Real l = m[i][j] * inverse;
            rest[i] -= l * rest[j];
#pragma GCC unroll 5
            for (std::size_t h = j + 1; h <= i; ++h)
                m[i][h] -= l * m[h][j];
        }
    }
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
            gradient[k] += scaled[i] * c.residuals[k][i];
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
