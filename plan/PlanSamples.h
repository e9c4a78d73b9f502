#pragma once

#include "analysis/methods/ResultPosition.h"
#include "plan/PlanRequest.h"

#include <array>
#include <cstddef>
#include <vector>

constexpr std::size_t mostPlanReferences = ResultPosition::referenceRows;

/// The detection limit of a fraction in standard errors: found with 95 % confidence both of not being noise and of not
/// being missed (L. A. Currie, Anal. Chem. 40 (1968) 586).
constexpr double detectionFactor = 3.29;

/// The references at one energy.
struct PlanPoint {
    double energy = 0.0;
    std::array<double, mostPlanReferences> column = {};     ///< as the method takes them, a background line subtracted
    std::array<double, mostPlanReferences> absorption = {}; ///< above the pre-edge line
    /// Slope of that per eV: between 0.1 eV below and above, which a reference read linearly between its points has
    /// at a point too.
    std::array<double, mostPlanReferences> slope = {};
};

PlanPoint planPoint(const PlanRequest &request, double energy);

/// A scenario as a sum of the references: y(E) = sum components[j] r_j(E).
struct PlanMixture {
    std::vector<double> fractions; ///< sum 1
    double thickness = 1.0;
    double valence = 0.0;
    /// c_j = T f_j / D_j with the edge jumps D_j. T is the edge jump of the sample: the t of the non-equivalent method,
    /// and that of the four-points method times the mean edge jump of its two references.
    std::vector<double> components;

    double column(const PlanPoint &point) const { return sumOf(point.column); }
    double absorption(const PlanPoint &point) const { return sumOf(point.absorption); }
    double slope(const PlanPoint &point) const { return sumOf(point.slope); }

private:
    double sumOf(const std::array<double, mostPlanReferences> &values) const;
};

/// How many references the method takes.
std::size_t planReferences(const PlanRequest &request);
/// The edge jumps of those.
std::vector<double> planJumps(const PlanRequest &request);

/// The t of a target, which is its edge jump, that of the four-points method in units of the mean edge jump of its two
/// references; that of the request where it is not above 0.
double planThickness(const PlanRequest &request, const AMutE &target);

/// The scenarios of the request, or its own ones without any.
std::vector<PlanMixture> planMixtures(const PlanRequest &request);
/// Each reference alone, at the request's thickness.
std::vector<PlanMixture> pureMixtures(const PlanRequest &request);

/// The variance s^2 of a measured y at equal exposures. Transmission: 1/I + 1/I0 = (1 + exp(y)) / I0, where y contains
/// the absorption of all else. Fluorescence: (y + b) / counts, where b is what the background adds, such that it makes
/// up the wanted share of the signal in the mean over `candidates`; not below what one quantum alone gives.
class PlanNoise
{
public:
    PlanNoise(const PlanRequest &request, const PlanMixture &mixture, const std::vector<PlanPoint> &candidates);
    double variance(double absorption) const;

private:
    PlanMode m_mode;
    double m_counts;
    double m_background; ///< absorption, or b
};
