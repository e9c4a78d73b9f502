#include "plan/PlanSearch.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <random>

namespace
{

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double tolerance = 1e-6; // eV

double binomial(double n, int k)
{
    double sets = 1.0;
    for (int i = 0; i < k; ++i)
        sets *= (n - i) / (i + 1);
    return sets;
}

} // namespace

PlanSearch::PlanSearch(const PlanRequest &request, const std::vector<double> &candidates)
    : m_energies(candidates)
    , m_spacing(request.spacing)
    , m_hasVPoint(isFourPoints(request.method))
    , m_seed(request.seed)
{
    for (const double energy : request.keep) {
        const auto nearest = std::min_element(candidates.begin(), candidates.end(), [energy](double l, double r) {
            return std::abs(l - energy) < std::abs(r - energy);
        });
        const auto index = static_cast<int>(nearest - candidates.begin());
        if (std::find(m_kept.begin(), m_kept.end(), index) == m_kept.end())
            m_kept.push_back(index);
    }
}

bool PlanSearch::isFree(const Set &set, int slot, int candidate) const
{
    const double energy = m_energies[static_cast<std::size_t>(candidate)];
    for (std::size_t i = 0; i < set.size(); ++i) {
        if (static_cast<int>(i) == slot)
            continue;
        const double distance = std::abs(m_energies[static_cast<std::size_t>(set[i])] - energy);
        if (set[i] == candidate || distance < m_spacing - tolerance)
            return false;
    }
    return true;
}

double PlanSearch::exchange(const PlanCriterion &criterion, Set *set) const
{
    double value = criterion.of(*set);
    bool isBetter = true;
    while (isBetter) {
        isBetter = false;
        for (std::size_t slot = 0; slot < set->size(); ++slot) {
            if (std::find(m_kept.begin(), m_kept.end(), (*set)[slot]) != m_kept.end())
                continue;
            const std::vector<double> values = criterion.along(*set, slot);
            for (int candidate = 0; candidate < static_cast<int>(values.size()); ++candidate) {
                const double tried = values[static_cast<std::size_t>(candidate)];
                if (!(tried < value * (1.0 - 1e-12)) || !isFree(*set, static_cast<int>(slot), candidate))
                    continue;
                value = tried;
                (*set)[slot] = candidate;
                isBetter = true;
            }
        }
        if (m_hasVPoint) { // any of them may be the V point
            const Set before = *set;
            tryRoles(criterion, before, set, &value);
            isBetter = isBetter || *set != before;
        }
    }
    return value;
}

PlanSearch::Set PlanSearch::fill(Set set, std::size_t n) const
{
    for (int candidate = 0; candidate < static_cast<int>(m_energies.size()) && set.size() < n; ++candidate) {
        if (isFree(set, -1, candidate))
            set.push_back(candidate);
    }
    return set;
}

/// Shuffled by the generator's own bits: the distributions of the standard library differ between compilers.
PlanSearch::Set PlanSearch::randomSet(std::size_t n, std::uint64_t seed) const
{
    std::mt19937_64 generator(seed);
    Set order(m_energies.size());
    std::iota(order.begin(), order.end(), 0);
    Set set = m_kept;
    for (std::size_t i = order.size(); i > 0 && set.size() < n; --i) {
        std::swap(order[i - 1], order[static_cast<std::size_t>(generator() % i)]);
        if (isFree(set, -1, order[i - 1]))
            set.push_back(order[i - 1]);
    }
    return set.size() == n ? set : fill(m_kept, n);
}

/// The set, or with a V point the best choice of it.
void PlanSearch::tryRoles(const PlanCriterion &criterion, const Set &set, Set *found, double *value) const
{
    Set tried = set;
    for (std::size_t v = m_hasVPoint ? 0 : set.size() - 1; v < set.size(); ++v) {
        tried = set;
        std::swap(tried[v], tried.back());
        const double worth = criterion.of(tried);
        if (worth < *value) {
            *value = worth;
            *found = tried;
        }
    }
}

void PlanSearch::enumerate(const PlanCriterion &criterion, const Set &grid, std::size_t from, std::size_t n, Set *set,
                           Set *found, double *value) const
{
    if (set->size() == n) {
        tryRoles(criterion, *set, found, value);
        return;
    }
    for (std::size_t i = from; i < grid.size(); ++i) {
        if (!isFree(*set, -1, grid[i]))
            continue;
        set->push_back(grid[i]);
        enumerate(criterion, grid, i + 1, n, set, found, value);
        set->pop_back();
    }
}

PlanSearch::Set PlanSearch::exhaustive(const PlanCriterion &criterion, int n, int every) const
{
    Set grid;
    for (std::size_t i = 0; i < m_energies.size(); i += static_cast<std::size_t>(every))
        grid.push_back(static_cast<int>(i));
    Set set = m_kept, found;
    double value = infinite;
    enumerate(criterion, grid, 0, static_cast<std::size_t>(n), &set, &found, &value);
    return found;
}

/// Leaves at most 60 000 sets, or 6 000 of the four-points method, which takes longer over each.
int PlanSearch::thinning(const PlanCriterion &criterion, int n) const
{
    const int open = n - static_cast<int>(m_kept.size());
    const double most = m_hasVPoint ? 6000.0 : 60000.0;
    const auto candidates = static_cast<int>(m_energies.size());
    int every = 1;
    const auto steps = [candidates, &every] {
        return candidates / every;
    };
    while (binomial(steps() + 1, open) > most)
        ++every;
    return criterion.most() < n ? candidates : every;
}

PlanSearch::Set PlanSearch::best(const PlanCriterion &criterion, int n, int starts, const std::vector<Set> &given,
                                 const Progress &progress) const
{
    constexpr int mostExhaustive = 4;
    std::vector<Set> sets = given;
    if (n <= mostExhaustive)
        sets.push_back(exhaustive(criterion, n, thinning(criterion, n)));
    return exchanged(criterion, n, starts, sets, progress);
}

PlanSearch::Set PlanSearch::exchanged(const PlanCriterion &criterion, int n, int starts, const std::vector<Set> &given,
                                      const Progress &progress) const
{
    Set found;
    double value = infinite;
    const auto tryStart = [&](Set set) {
        if (set.size() != static_cast<std::size_t>(n))
            return;
        const double reached = exchange(criterion, &set);
        if (reached < value) {
            value = reached;
            found = set;
        }
    };
    const auto whole = static_cast<double>(given.size()) + starts;
    double done = 0.0;
    for (const Set &set : given) {
        tryStart(set);
        if (progress && !progress(++done / whole))
            return {};
    }
    for (int start = 0; start < starts; ++start) {
        tryStart(randomSet(static_cast<std::size_t>(n), m_seed * 1000003u + static_cast<std::uint64_t>(start)));
        if (progress && !progress(++done / whole))
            return {};
    }
    return found;
}
