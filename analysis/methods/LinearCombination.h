#pragma once

#include "spectrum/AMutE.h"

#include <vector>

/// Linear combination fitting: the target's normalised spectrum as a sum of the references' normalised spectra and a
/// constant, y(E) = c_1 r_1(E) + ... + c_m r_m(E) + b, unweighted least squares without constraints over all points of
/// the target between two energies. Normalised: (mu - pre(E)) / (post(E) - pre(E)). Energies in eV, shifted.

struct LinearCombinationInput {
    std::vector<const AMutE *> references;
    std::vector<double> valences; ///< one per reference
    const AMutE *target = nullptr;
    double energyMin = 0.0; ///< both ends belong to the range
    double energyMax = 0.0;
};

/// Nothing guards against too few points, dependent references or a sum of 0: such results are infinite or NaN.
struct LinearCombination {
    std::vector<double> coefficients; ///< c_j
    std::vector<double> fractions;    ///< c_j / sum
    double base = 0.0;                ///< b
    double sum = 0.0;                 ///< of the coefficients, without the base
    /// c_1 V_1 + ... + c_m V_m. With the coefficients, not the fractions, on purpose: when they do not sum up to 1 this
    /// is not the mean of the valences.
    double valence = 0.0;
    double meanValence = 0.0; ///< valence / sum: that of the fractions

    /// The fitted curve: one point per point in the range, its energy the shifted one, its mu the fitted value.
    AMutE fitted;

    int points = 0;       ///< in the range
    double rFactor = 0.0; ///< sum of (y - fit)^2 over the sum of y^2
    int degrees = 0;      ///< points - m - 1

    /// Standard errors from the residuals, whose mean square is sigma^2 = sum of (y - fit)^2 / degrees: the
    /// coefficients have the covariance matrix C = sigma^2 A^-1 with the normal matrix A (N. R. Draper and H. Smith,
    /// Applied Regression Analysis, 3rd ed., Wiley 1998, chapter 5), and a quantity q of them, by the delta method (P.
    /// R. Bevington, Data Reduction and Error Analysis for the Physical Sciences, McGraw-Hill 1969, chapter 4), the
    /// variance g^T C g with g_k = dq/dc_k:
    ///   sum                1                      valence      V_k
    ///   fraction f_j       (delta_jk - f_j) / sum  meanValence  (V_k - meanValence) / sum
    /// The first two are linear, so that this is exact; the others to first order, for errors of the sum that are small
    /// against it. All are NaN without a degree of freedom.
    /// They hold independent errors of the same size in all points of the range. Not in them: residuals that follow one
    /// another (a missing reference, smoothed or interpolated points: the errors are too small then), the target's
    /// pre-edge and post-edge line, which all points share, and whatever the references are wrong by.
    std::vector<double> standardErrors; ///< of c_1 ... c_m and, last, of the base
    std::vector<double> fractionErrors;
    double sumError = 0.0;
    double valenceError = 0.0;
    double meanValenceError = 0.0;
};

LinearCombination fitLinearCombination(const LinearCombinationInput &input);
