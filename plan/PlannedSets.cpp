#include "plan/PlannedSets.h"

#include "analysis/uncertainty/LeastSquaresBasis.h"
#include "plan/FourPointsGradient.h"
#include "plan/PlanCriterion.h"

#include <algorithm>
#include <cmath>
#include <numeric>

using Vector = std::vector<double>;

namespace
{

/// Root of the mean square of a number of the scenarios.
template <class Value>
double rootMeanSquare(const std::vector<PlanScenarioResult> &scenarios, Value value)
{
    double sum = 0.0;
    for (const PlanScenarioResult &scenario : scenarios)
        sum += value(scenario) * value(scenario);
    return std::sqrt(sum / static_cast<double>(scenarios.size()));
}

double weightedRoot(const Vector &gradient, const Vector &variances)
{
    double sum = 0.0;
    for (std::size_t k = 0; k < gradient.size(); ++k)
        sum += gradient[k] * gradient[k] * variances[k];
    return std::sqrt(sum);
}

/// Of a fixed whole exposure the variance sum q_k / (n share_k) is smallest for shares in proportion to sqrt(q_k)
/// (Cauchy and Schwarz); with equal shares it is sum q_k.
Vector sharesOf(const Vector &squares)
{
    Vector shares;
    for (const double square : squares)
        shares.push_back(std::sqrt(square));
    const double sum = std::accumulate(shares.begin(), shares.end(), 0.0);
    for (double &share : shares)
        share = sum > 0.0 ? share / sum : 1.0 / static_cast<double>(shares.size());
    return shares;
}

} // namespace

PlannedSets::PlannedSets(const PlanRequest &request, const std::vector<PlanPoint> &candidates)
    : m_request(request)
    , m_candidates(candidates)
    , m_mixtures(planMixtures(request))
    , m_jumps(planJumps(request))
{
    for (const PlanMixture &mixture : m_mixtures)
        m_noise.emplace_back(request, mixture, candidates);
}

PlannedSets::Gradients PlannedSets::gradientsOf(const std::vector<PlanPoint> &points, const PlanMixture &mixture) const
{
    Gradients gradients;
    if (isFourPoints(m_request.method)) { // the V point last
        FourPointsGradients::Found found = FourPointsGradients(m_request, points).of(mixture);
        gradients.fractions = {found.fraction, found.fraction};
        gradients.valence = found.valence;
        gradients.bias = found.bias;
        return gradients;
    }
    Vector energies;
    for (const PlanPoint &point : points)
        energies.push_back(point.energy);
    std::vector<Vector> columns = planBackground(m_request.method, energies, false);
    const std::size_t first = columns.size();
    for (std::size_t j = 0; j < m_jumps.size(); ++j) {
        columns.emplace_back();
        for (const PlanPoint &point : points)
            columns.back().push_back(point.column[j]);
    }
    const LeastSquaresBasis basis = leastSquaresBasis(columns);
    gradients.valence.assign(points.size(), 0.0);
    gradients.fractions.assign(m_jumps.size(), Vector(points.size(), 0.0));
    for (std::size_t k = 0; k < points.size(); ++k) {
        double amount = 0.0; // B_k
        for (std::size_t j = 0; j < m_jumps.size(); ++j)
            amount += m_jumps[j] * basis.inverse[first + j][k];
        for (std::size_t j = 0; j < m_jumps.size(); ++j) {
            double &own = gradients.fractions[j][k];
            own = (m_jumps[j] * basis.inverse[first + j][k] - mixture.fractions[j] * amount) / mixture.thickness;
            gradients.valence[k] += own * m_request.references[j].valence;
        }
    }
    return gradients;
}

void PlannedSets::measure(const std::vector<PlanPoint> &points, PlannedSet *set) const
{
    const std::size_t n = points.size();
    std::vector<Gradients> gradients;
    std::vector<Vector> variances;
    Vector squares(n, 0.0);
    for (std::size_t s = 0; s < m_mixtures.size(); ++s) {
        gradients.push_back(gradientsOf(points, m_mixtures[s]));
        variances.emplace_back();
        for (std::size_t k = 0; k < n; ++k) {
            variances[s].push_back(m_noise[s].variance(m_mixtures[s].absorption(points[k])));
            squares[k] += gradients[s].valence[k] * gradients[s].valence[k] * variances[s][k];
        }
    }
    set->shares = sharesOf(squares);
    for (std::size_t s = 0; s < m_mixtures.size(); ++s) {
        const PlanMixture &mixture = m_mixtures[s];
        PlanScenarioResult result;
        result.scenario = {mixture.fractions, mixture.thickness};
        result.valence = mixture.valence;
        result.bias = gradients[s].bias;
        result.sigmaV = weightedRoot(gradients[s].valence, variances[s]);
        for (const Vector &fraction : gradients[s].fractions)
            result.sigmaF.push_back(weightedRoot(fraction, variances[s]));
        Vector shared = variances[s];
        double drift = 0.0;
        for (std::size_t k = 0; k < n; ++k) {
            shared[k] = set->shares[k] > 0.0 ? shared[k] / (static_cast<double>(n) * set->shares[k]) : 0.0;
            drift += gradients[s].valence[k] * mixture.slope(points[k]);
        }
        result.sigmaVAtShares = weightedRoot(gradients[s].valence, shared);
        result.valencePerTenthEv = 0.1 * std::abs(drift);
        set->scenarios.push_back(result);
    }
    summarise(set);
}

void PlannedSets::summarise(PlannedSet *set) const
{
    const auto &scenarios = set->scenarios;
    set->sigmaV = rootMeanSquare(scenarios, [](const auto &s) { return s.sigmaV; });
    set->sigmaVAtShares = rootMeanSquare(scenarios, [](const auto &s) { return s.sigmaVAtShares; });
    set->valencePerTenthEv = rootMeanSquare(scenarios, [](const auto &s) { return s.valencePerTenthEv; });
    set->bias = rootMeanSquare(scenarios, [](const auto &s) { return s.bias; });
    for (std::size_t j = 0; j < m_jumps.size(); ++j) {
        set->sigmaF.push_back(rootMeanSquare(scenarios, [j](const auto &s) { return s.sigmaF[j]; }));
        set->detectionLimits.push_back(detectionFactor * set->sigmaF.back());
    }
}

double PlannedSets::largestDifference(double energy, PlanRole *role) const
{
    const PlanPoint point = planPoint(m_request, energy);
    double largest = -1.0;
    for (std::size_t i = 0; i < m_jumps.size(); ++i) {
        for (std::size_t j = i + 1; j < m_jumps.size(); ++j) {
            const double difference = std::abs(point.absorption[i] / m_jumps[i] - point.absorption[j] / m_jumps[j]);
            if (difference <= largest)
                continue;
            largest = difference;
            *role = {PlanRole::Kind::Difference, static_cast<int>(i), static_cast<int>(j)};
        }
    }
    return largest;
}

/// References are told apart where they differ by at least a quarter of what they differ by anywhere in the set.
void PlannedSets::findRoles(PlannedSet *set) const
{
    constexpr double least = 0.25;
    Vector differences;
    for (const double energy : set->energies) {
        set->roles.emplace_back();
        differences.push_back(largestDifference(energy, &set->roles.back()));
    }
    const double largest = *std::max_element(differences.begin(), differences.end());
    for (std::size_t k = 0; k < differences.size(); ++k) {
        if (!(differences[k] >= least * largest))
            set->roles[k] = {set->energies[k] < m_request.edge ? PlanRole::Kind::Background : PlanRole::Kind::Amount};
    }
}

PlannedSet PlannedSets::of(Vector energies, int vPoint) const
{
    const bool isFour = isFourPoints(m_request.method);
    const double marked = isFour && vPoint >= 0 ? energies[static_cast<std::size_t>(vPoint)] : 0.0;
    std::sort(energies.begin(), energies.end());
    PlannedSet set;
    set.energies = energies;
    std::vector<PlanPoint> points;
    for (const double energy : energies)
        points.push_back(planPoint(m_request, energy));
    if (!isFour) {
        measure(points, &set);
        findRoles(&set);
        return set;
    }
    if (vPoint < 0) {
        const std::unique_ptr<PlanCriterion> criterion = planCriterion(m_request, points, false, m_candidates);
        double smallest = 0.0;
        for (std::size_t v = 0; v < points.size(); ++v) {
            std::vector<int> order(points.size());
            std::iota(order.begin(), order.end(), 0);
            order.erase(order.begin() + static_cast<std::ptrdiff_t>(v));
            order.push_back(static_cast<int>(v));
            const double value = criterion->of(order);
            if (set.vPoint < 0 || value < smallest) {
                smallest = value;
                set.vPoint = static_cast<int>(v);
            }
        }
    } else {
        set.vPoint = static_cast<int>(std::find(energies.begin(), energies.end(), marked) - energies.begin());
    }
    const auto last = points.begin() + set.vPoint;
    std::rotate(last, last + 1, points.end());
    measure(points, &set);
    const FourPointsGradients method(m_request, points);
    for (const PlanMixture &mixture : pureMixtures(m_request))
        set.pureBias.push_back(method.of(mixture).bias);
    const auto share = set.shares.end() - 1; // back to rising energies
    std::rotate(set.shares.begin() + set.vPoint, share, set.shares.end());
    findRoles(&set);
    return set;
}
