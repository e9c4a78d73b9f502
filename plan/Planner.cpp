#include "plan/PlanCandidates.h"
#include "plan/PlanCriterion.h"
#include "plan/PlanResult.h"
#include "plan/PlanSearch.h"
#include "plan/PlanText.h"
#include "plan/PlannedSets.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numeric>

using Vector = std::vector<double>;
using Set = PlanSearch::Set;

namespace
{

constexpr int mainStarts = 16;
constexpr int otherStarts = 4;
constexpr int fewestByNumber = 4, mostByNumber = 10;

/// One planning on its way.
class Planner
{
public:
    Planner(const PlanRequest &request, const PlanProgress &progress);

    std::variant<PlanResult, QString> run();

private:
    struct Found {
        Set set;
        double value = 0.0;
        bool hasExtraTerm = false;
    };
    Found search(int n, int starts, double from, double to);
    const PlanCriterion &criterionFor(int n, bool *hasExtraTerm) const;
    PlannedSet setOf(const Found &found) const;
    PlannedSet comparison(const PlanList &list) const;
    Set endsAndDifferences(int n) const;
    void findCandidateValues(const Found &found, PlanResult *result) const;
    std::vector<int> numbers() const;

    const PlanRequest &m_request;
    PlanProgress m_progress;
    Vector m_candidates;
    std::vector<PlanPoint> m_points;
    PlanSearch m_search;
    PlannedSets m_sets;
    std::unique_ptr<PlanCriterion> m_plain, m_extended;
    Set m_last; ///< the plan for another number: something to start from
    bool m_isStopped = false;
};

std::vector<PlanPoint> pointsOf(const PlanRequest &request, const Vector &energies)
{
    std::vector<PlanPoint> points;
    for (const double energy : energies)
        points.push_back(planPoint(request, energy));
    return points;
}

Planner::Planner(const PlanRequest &request, const PlanProgress &progress)
    : m_request(request)
    , m_progress(progress)
    , m_candidates(planCandidates(request))
    , m_points(pointsOf(request, m_candidates))
    , m_search(request, m_candidates)
    , m_sets(request, m_points)
    , m_plain(planCriterion(request, m_points, false))
{
    if (request.hasExtraTerm && !isFourPoints(request.method))
        m_extended = planCriterion(request, m_points, true);
}

/// With the extra term wherever n energies determine the larger fit.
const PlanCriterion &Planner::criterionFor(int n, bool *hasExtraTerm) const
{
    *hasExtraTerm = m_extended && n >= m_extended->fewest();
    return *hasExtraTerm ? *m_extended : *m_plain;
}

/// The two ends, and the energies at which the references differ most.
Set Planner::endsAndDifferences(int n) const
{
    std::vector<int> order(m_candidates.size());
    std::iota(order.begin(), order.end(), 0);
    Vector differences;
    PlanRole unused;
    for (const double energy : m_candidates)
        differences.push_back(m_sets.largestDifference(energy, &unused));
    std::stable_sort(order.begin(), order.end(), [&differences](int l, int r) {
        return differences[static_cast<std::size_t>(l)] > differences[static_cast<std::size_t>(r)];
    });
    Set set = {0, static_cast<int>(m_candidates.size()) - 1};
    for (std::size_t i = 0; i < order.size() && set.size() < static_cast<std::size_t>(n); ++i) {
        if (m_search.isFree(set, -1, order[i]))
            set.push_back(order[i]);
    }
    return set;
}

Planner::Found Planner::search(int n, int starts, double from, double to)
{
    Found found;
    const PlanCriterion &criterion = criterionFor(n, &found.hasExtraTerm);
    std::vector<Set> given;
    const Set &kept = m_search.kept();
    if (kept.empty())
        given.push_back(endsAndDifferences(n));
    if (m_last.size() == static_cast<std::size_t>(n) - 1) { // one more in the best place
        for (const int candidate : {0, static_cast<int>(m_candidates.size()) / 2}) {
            Set set = m_last;
            for (int i = candidate;
                 set.size() < static_cast<std::size_t>(n) && i < static_cast<int>(m_candidates.size()); ++i) {
                if (m_search.isFree(set, -1, i))
                    set.insert(set.begin(), i);
            }
            given.push_back(set);
        }
    }
    found.set = m_search.best(criterion, n, starts, given, [&](double done) {
        m_isStopped = m_isStopped || (m_progress && !m_progress(from + done * (to - from)));
        return !m_isStopped;
    });
    if (!found.set.empty())
        found.value = criterion.of(found.set);
    m_last = found.set;
    return found;
}

PlannedSet Planner::setOf(const Found &found) const
{
    Vector energies;
    for (const int k : found.set)
        energies.push_back(m_candidates[static_cast<std::size_t>(k)]);
    PlannedSet set = m_sets.of(energies, isFourPoints(m_request.method) ? static_cast<int>(energies.size()) - 1 : -1);
    set.criterion = std::sqrt(found.value);
    set.hasExtraTerm = found.hasExtraTerm;
    return set;
}

PlannedSet Planner::comparison(const PlanList &list) const
{
    PlannedSet set = m_sets.of(list.energies, list.vPoint);
    set.name = list.name;
    std::vector<int> order(set.energies.size());
    std::iota(order.begin(), order.end(), 0);
    if (set.vPoint >= 0)
        std::rotate(order.begin() + set.vPoint, order.begin() + set.vPoint + 1, order.end());
    const auto n = static_cast<int>(order.size());
    criterionFor(n, &set.hasExtraTerm);
    const std::vector<PlanPoint> points = pointsOf(m_request, set.energies);
    set.criterion = std::sqrt(planCriterion(m_request, points, set.hasExtraTerm, m_points)->of(order));
    return set;
}

void Planner::findCandidateValues(const Found &found, PlanResult *result) const
{
    bool hasExtraTerm = false;
    const PlanCriterion &criterion = criterionFor(static_cast<int>(found.set.size()), &hasExtraTerm);
    for (std::size_t c = 0; c < m_candidates.size(); ++c) {
        const auto distance = [&](int k) {
            return std::abs(m_candidates[static_cast<std::size_t>(k)] - m_candidates[c]);
        };
        Set set = found.set;
        *std::min_element(set.begin(), set.end(), [&](int l, int r) { return distance(l) < distance(r); }) =
            static_cast<int>(c);
        result->candidateValues.push_back(std::sqrt(criterion.of(set)));
    }
    result->candidates = m_candidates;
}

std::vector<int> Planner::numbers() const
{
    const int most = std::min({mostByNumber, m_plain->most(), mostTogether(m_request, m_candidates)});
    std::vector<int> found;
    for (int n = std::max({fewestByNumber, m_plain->fewest(), static_cast<int>(m_search.kept().size())}); n <= most;
         ++n)
        found.push_back(n);
    return found;
}

std::variant<PlanResult, QString> Planner::run()
{
    constexpr double mainPart = 0.5; // of the time
    const Found found = search(m_request.count, mainStarts, 0.0, mainPart);
    if (found.set.empty())
        return planText(m_isStopped ? PlanText::Stopped : PlanText::NothingFound);
    PlanResult result;
    result.planned = setOf(found);
    for (const PlanList &list : m_request.compare)
        result.compared.push_back(comparison(list));
    PlanList simple = {planText(PlanText::EndsAndDifferences), {}, -1};
    for (const int k : endsAndDifferences(m_request.count))
        simple.energies.push_back(m_candidates[static_cast<std::size_t>(k)]);
    if (static_cast<int>(simple.energies.size()) == m_request.count)
        result.compared.push_back(comparison(simple));
    findCandidateValues(found, &result);

    m_last.clear();
    const std::vector<int> wanted = numbers();
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const auto part = [&wanted](std::size_t index) {
            return mainPart + (1.0 - mainPart) * static_cast<double>(index) / static_cast<double>(wanted.size());
        };
        const Found other = wanted[i] == m_request.count ? found : search(wanted[i], otherStarts, part(i), part(i + 1));
        if (m_isStopped)
            return planText(PlanText::Stopped);
        m_last = other.set;
        if (!other.set.empty())
            result.byNumber.push_back(setOf(other));
    }
    if (m_progress)
        m_progress(1.0);
    return result;
}

} // namespace

std::variant<PlanResult, QString> planEnergies(const PlanRequest &request, const PlanProgress &progress)
{
    QString mistake = planMistake(request);
    if (!mistake.isEmpty())
        return mistake;
    return Planner(request, progress).run();
}
