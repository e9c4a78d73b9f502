#pragma once

#include "plan/PlanCriterion.h"

#include <cstdint>
#include <functional>
#include <vector>

/// Looks for the n candidates with the smallest criterion, by their indices; those of the four-points method with the V
/// point last. All of them are `spacing` apart.
class PlanSearch
{
public:
    using Set = std::vector<int>;
    /// Hears of the share that is done; false stops.
    using Progress = std::function<bool(double)>;

    PlanSearch(const PlanRequest &request, const std::vector<double> &candidates);

    /// The best of exchanges from `starts` random sets and from `given`, and for up to 4 energies from the best of all
    /// sets of a thinned grid. Empty without any set that determines the fit, or when stopped.
    Set best(const PlanCriterion &criterion, int n, int starts, const std::vector<Set> &given,
             const Progress &progress = {}) const;

    /// The same without the sets of a thinned grid.
    Set exchanged(const PlanCriterion &criterion, int n, int starts, const std::vector<Set> &given,
                  const Progress &progress = {}) const;

    /// Moves one energy after the other to where the criterion is smallest, until none moves (V. V. Fedorov, Theory of
    /// Optimal Experiments, 1972; one coordinate at a time: R. K. Meyer, C. J. Nachtsheim, Technometrics 37 (1995) 60).
    /// Returns the value reached.
    double exchange(const PlanCriterion &criterion, Set *set) const;

    /// The best of all sets of n among every `every`-th candidate.
    Set exhaustive(const PlanCriterion &criterion, int n, int every = 1) const;

    /// `set` and the candidates, from the lowest on, that fit beside it; at most n.
    Set fill(Set set, std::size_t n = static_cast<std::size_t>(-1)) const;
    const Set &kept() const { return m_kept; }

    /// Whether the candidate may stand in the place of entry `slot` of a set; -1: beside all.
    bool isFree(const Set &set, int slot, int candidate) const;

private:
    void enumerate(const PlanCriterion &criterion, const Set &grid, std::size_t from, std::size_t n, Set *set,
                   Set *found, double *value) const;
    void tryRoles(const PlanCriterion &criterion, const Set &set, Set *found, double *value) const;
    Set randomSet(std::size_t n, std::uint64_t seed) const;
    int thinning(const PlanCriterion &criterion, int n) const;

    std::vector<double> m_energies;
    double m_spacing;
    bool m_hasVPoint;
    std::uint64_t m_seed;
    Set m_kept;
};
