#pragma once

#include "analysis/methods/FourPoints.h"
#include "analysis/methods/NonEquivalent.h"
#include "analysis/results/RunInfo.h"

#include <array>
#include <cstddef>
#include <vector>

/// What error propagation and misfit need of a run, whatever the pixel.
///
/// Every method finds the amount t and, of each quantity q (valence, fractions), the product t q from n absorptions
/// y_k. With t = sum B_k y_k and t q = sum A_k y_k follows t dq/dy_k = A_k - q B_k, and with the variances s_k^2
///   sigma_t^2 = sum B_k^2 s_k^2,     sigma_q^2 = t^-2 sum (A_k - q B_k)^2 s_k^2          (delta method, Bevington).
///
/// Non-equivalent method: X the n x p matrix of the references and the background, P = (X^T X)^-1 X^T,
///   B_k = sum_j D_j P_jk,  A_k = sum_j D_j V_j P_jk for the valence and D_i P_ik for fraction i (D_j: edge jumps).
///
/// Three points P, Q, R: t = 2 (y_Q - y_P) / (dA + dB) with the references' steps d; with their heights n at R
///   t a = (t (y_R - y_P) / (y_Q - y_P) - n_B t) / (n_A - n_B), which is linear in y since t / (y_Q - y_P) is constant.
///
/// Exact and least-squares four points: L4 is the background line at the V point, S = A + B, r the ratio of the edge
/// jumps, K = r / (r B4 - A4), G = 2 / (1 + r); then a = K (B4 - G (y_4 - L4) / t). A line through the anchor points
/// of S explains 1 and E; what it leaves is written Q S, and the line's value at E4 h . S. With L4 = h . y - t h . S /
/// 2
///   t a = -K G (y_4 - h . y) + alpha t,  alpha = K (B4 - G h . S / 2).
/// Exact: t = 2 S^T Q y / W, W = S^T Q S, is linear and B_k = 2 (Q S)_k / W.
/// Least squares fits S by 1, E and y, hence t = 2 y^T Q y / (S^T Q y). Let t' = sum B_k y_k with the same B (the fit
/// of y by 1, E and S), z = N^T y with the orthonormal N of what 1, E and S cannot describe; since
/// Q y = t'/2 Q S + N z,
///   t = t' + 4 |z|^2 / (W t'),   dt/dy_k = B_k (2 - t / t') + 8 / (W t') (N z)_k,
/// which depends on the pixel: the A_k above are therefore written A_k + offset dt/dy_k. The second term of t is why
/// this variant overestimates t: noise of variance s^2 adds about 4 (n - 4) s^2 / (W t).
///
/// Misfit: z = N^T y holds what no values of the unknowns explain, its covariance is N^T diag(s^2) N, and
/// chi^2 = z^T (N^T diag(s^2) N)^-1 z has n - p degrees of freedom although the fit is unweighted. For the
/// least-squares variant these are the parts, orthogonal to S, of the residuals of the anchor points divided by c2.
/// chi^2 is the same with any other basis N T of what X cannot describe. With T the inverse of n - p rows of N each of
/// the points of these rows stands in one vector only, and only the p other points are in several: much less to sum.
/// The new z is T^T z, and N z = P_own (T^T z) with those columns of P = N N^T that belong to these points.

constexpr std::size_t mostUncertaintyPoints = mostNonEquivalentPoints;
constexpr std::size_t mostDegrees = mostUncertaintyPoints - 3;
using PointRow = std::array<double, mostUncertaintyPoints>; ///< one value per point; 0 beyond the last
using ResidualRow = std::array<double, mostDegrees>;        ///< one value per degree of freedom

/// What the columns of X cannot describe, in the basis N T.
struct ResidualBasis {
    std::array<std::size_t, mostDegrees> own = {};               ///< the points that stand, with 1, in one vector each
    std::size_t sharedCount = 0;                                 ///< p
    std::array<std::size_t, mostUncertaintyPoints> shared = {};  ///< the other points
    std::array<ResidualRow, mostUncertaintyPoints> weights = {}; ///< one row per shared point
    std::array<ResidualRow, mostUncertaintyPoints> back = {};    ///< P_own, one row per point
};

struct UncertaintyConstants {
    /// t dq/dy_k = factor (row[k] + (offset - v) dt/dy_k), where v is the valence itself or, in the four-points
    /// methods, the fraction a.
    struct Quantity {
        PointRow row = {};
        double offset = 0.0;
        double factor = 1.0;
    };

    int points = 0;       ///< n, 0: nothing is known (fewer points than unknowns, or more than mostUncertaintyPoints)
    int degrees = 0;      ///< n - p
    PointRow amount = {}; ///< B_k
    Quantity valence;
    std::vector<Quantity> fractions; ///< one per reference
    ResidualBasis residuals;
    bool isFourPoints = false;
    bool isInverse = false;   ///< dt/dy_k depends on the pixel: least squares with residuals
    double inverseNorm = 0.0; ///< 8 / W

    std::size_t count() const { return static_cast<std::size_t>(points); }
};

/// The points stand in the order of the method's maps: all of them, or the anchor points and then the V point.
UncertaintyConstants uncertaintyConstants(NonEquivalentBackground background, const NonEquivalentReferences &references,
                                          const std::vector<double> &valences);
/// `valences` not known: the standard errors of the valence are NaN.
UncertaintyConstants uncertaintyConstants(FourPointsVariant variant, const FourPointsReferences &references,
                                          const ValencePair &valences);
/// Those of a map or target calculation.
UncertaintyConstants uncertaintyConstants(const RunInfo &run);
