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

    /// The fitted curve: one point per point in the range, its energy the shifted one, its mu the fitted value.
    AMutE fitted;

    int points = 0;       ///< in the range
    double rFactor = 0.0; ///< sum of (y - fit)^2 over the sum of y^2
    /// Of c_1 ... c_m and, last, of the base: the roots of sigma^2 (A^-1)_ii with the normal matrix A and
    /// sigma^2 = sum of (y - fit)^2 / (points - m - 1) (N. R. Draper and H. Smith, Applied Regression Analysis, 3rd
    /// ed., Wiley 1998, chapter 5). NaN or infinite without a point to spare.
    std::vector<double> standardErrors;
};

LinearCombination fitLinearCombination(const LinearCombinationInput &input);
