#pragma once

#include "analysis/results/RunInfo.h"
#include "analysis/uncertainty/Distributions.h"

#include <array>
#include <vector>

/// What a method finds for one column of absorptions, such as the mean of a region or a target spectrum, and how well.
/// Points stand in the order of the method: all of them, or the anchor points and then the V point.
struct SpectrumFit {
    double valence = 0.0;
    double amount = 0.0;           ///< t
    std::vector<double> fractions; ///< one per reference; a and 1 - a of the four-points methods
    double valenceError = 0.0;     ///< standard errors
    double amountError = 0.0;
    std::vector<double> fractionErrors;

    int degrees = 0;        ///< n - p; 0: there is no misfit
    double chiSquare = 0.0; ///< of the variances that were given; NaN for n = p
    double misfit() const { return chiSquare / degrees; }

    /// The fitted curve: sum of components[j] r_j(E) + b0 + b1 E, or b0 + b1 L^3 + b2 L^4 with the Victoreen
    /// background, where r_j are the references as the method was given them and L = 12398.424360387684 / E.
    std::vector<double> components;
    std::array<double, 3> background = {};
    /// The method's model at the points. The four-points methods take the mean of the references at the anchor points,
    /// where the curve above agrees only as far as these do.
    std::vector<double> fitted;
};

/// `values` and their variances, one per point of the run. Standard errors and chi^2 are NaN where the run has fewer
/// points than unknowns.
SpectrumFit fitSpectrum(const RunInfo &run, const std::vector<double> &values, const std::vector<double> &variances);

/// A target's fit with the variance that its own residuals give, RSS / (n - p), the same for all points.
struct TargetFit {
    SpectrumFit fit;        ///< the standard errors are NaN for n = p
    double deviation = 0.0; ///< root of that variance
    /// The true value lies within factor times the standard error with a probability of 68.3 % (Student's t for n - p
    /// degrees of freedom; see studentFactor() for another coverage); NaN for n = p.
    double factor = 0.0;
};

TargetFit fitTarget(const RunInfo &run, const std::vector<double> &values);
