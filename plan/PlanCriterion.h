#pragma once

#include "plan/PlanSamples.h"

#include <cstddef>
#include <memory>
#include <vector>

/// What a plan makes small: the mean over the scenarios of
///   sigma_V^2 + sum_k (g_k y'(E_k) deltaE)^2,    g_k = dV/dy_k,
/// counting noise and the monochromator's irreproducibility. Non-equivalent method: g_k = (A_k - V B_k) / t with the
/// coefficients A, B of t V and t (analysis/uncertainty/UncertaintyConstants.h). The four-points method finds a wrong
/// valence even without noise where its anchors do not suit the references; the square of that is added, as a mean over
/// the scenarios and as a mean over the two references alone, whatever the scenarios are. Without the latter a single
/// scenario of valence V would be planned best by energies whose fit answers V to every sample: no noise, no drift,
/// nothing wrong there. Whatever such a fit answers, V1 and V2 of the references are missed by a mean square of at
/// least (V1 - V2)^2 / 4.
class PlanCriterion
{
public:
    virtual ~PlanCriterion() = default;

    /// Of the candidates with these indices, the V point of the four-points method last. Infinite where they do not
    /// determine the fit.
    virtual double of(const std::vector<int> &chosen) const = 0;

    /// The same for every candidate in the place of entry `slot`, one value per candidate.
    virtual std::vector<double> along(const std::vector<int> &chosen, std::size_t slot) const = 0;

    /// The fewest energies that it knows a value for, and the most.
    virtual int fewest() const = 0;
    virtual int most() const = 0;
};

/// The criterion for a fit with or without the extra background term: E^2 beside 1 and E, L^2 beside 1, L^3 and L^4.
/// The four-points method has none.
std::unique_ptr<PlanCriterion> planCriterion(const PlanRequest &request, const std::vector<PlanPoint> &candidates,
                                             bool hasExtraTerm);

/// The same for other points than the candidates, which the noise of fluorescence asks for (see PlanNoise).
std::unique_ptr<PlanCriterion> planCriterion(const PlanRequest &request, const std::vector<PlanPoint> &points,
                                             bool hasExtraTerm, const std::vector<PlanPoint> &candidates);

/// Columns that span the backgrounds of a non-equivalent fit at these energies, with or without the extra term.
std::vector<std::vector<double>> planBackground(PlanMethod method, const std::vector<double> &energies,
                                                bool hasExtraTerm);

/// How far a reference is from being a mixture of a background and others, as the share of what it is beyond the
/// background that no such mixture explains. 0: it is one.
double distinctness(PlanMethod method, const std::vector<PlanPoint> &candidates, std::size_t reference,
                    const std::vector<std::size_t> &others);
