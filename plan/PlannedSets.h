#pragma once

#include "plan/PlanResult.h"
#include "plan/PlanSamples.h"

#include <vector>

/// Gives the worth of sets of energies, as the fit itself has it.
class PlannedSets
{
public:
    /// Both must live as long as this.
    PlannedSets(const PlanRequest &request, const std::vector<PlanPoint> &candidates);

    /// Energies in any order; vPoint: the index of the V point among them, -1: none, or for the four-points method the
    /// best of them. Name, criterion and hasExtraTerm are left to the caller.
    PlannedSet of(std::vector<double> energies, int vPoint = -1) const;

    /// How much the normalised references `role` names differ at an energy; the two that differ most.
    double largestDifference(double energy, PlanRole *role) const;

private:
    /// Change of the valence and of each fraction per unit of each value.
    struct Gradients {
        std::vector<double> valence;
        std::vector<std::vector<double>> fractions;
        double bias = 0.0;
    };
    Gradients gradientsOf(const std::vector<PlanPoint> &points, const PlanMixture &mixture) const;
    void measure(const std::vector<PlanPoint> &points, PlannedSet *set) const;
    void summarise(PlannedSet *set) const;
    void findRoles(PlannedSet *set) const;

    const PlanRequest &m_request;
    const std::vector<PlanPoint> &m_candidates;
    std::vector<PlanMixture> m_mixtures;
    std::vector<PlanNoise> m_noise; ///< one per mixture
    std::vector<double> m_jumps;
};
