#include "plan/PlanSamples.h"

#include <algorithm>
#include <cmath>
#include <numeric>

PlanPoint planPoint(const PlanRequest &request, double energy)
{
    constexpr double halfStep = 0.1; // eV
    const int type = request.subtractsPostLine ? AMutE::PostSubtracted : AMutE::PreSubtracted;
    PlanPoint point;
    point.energy = energy;
    for (std::size_t j = 0; j < planReferences(request); ++j) {
        const AMutE &spectrum = request.references[j].spectrum;
        const auto absorption = [&spectrum](double at) {
            return spectrum.valueAtEnergy(AMutE::PreSubtracted, at);
        };
        point.column[j] = spectrum.valueAtEnergy(type, energy);
        point.absorption[j] = absorption(energy);
        point.slope[j] = (absorption(energy + halfStep) - absorption(energy - halfStep)) / (2.0 * halfStep);
    }
    return point;
}

double PlanMixture::sumOf(const std::array<double, mostPlanReferences> &values) const
{
    return std::inner_product(components.begin(), components.end(), values.begin(), 0.0);
}

std::size_t planReferences(const PlanRequest &request)
{
    return std::min(request.references.size(), isFourPoints(request.method) ? std::size_t(2) : mostPlanReferences);
}

std::vector<double> planJumps(const PlanRequest &request)
{
    std::vector<double> jumps;
    for (std::size_t j = 0; j < planReferences(request); ++j)
        jumps.push_back(request.references[j].spectrum.edgeJump());
    return jumps;
}

double planThickness(const PlanRequest &request, const AMutE &target)
{
    if (request.references.size() < 2)
        return request.thickness;
    double unit = 1.0; // edge jumps
    if (isFourPoints(request.method))
        unit = 0.5 * (request.references[0].spectrum.edgeJump() + request.references[1].spectrum.edgeJump());
    const double thickness = target.edgeJump() / unit;
    return std::isfinite(thickness) && thickness > 0.0 ? thickness : request.thickness;
}

namespace
{

std::vector<PlanScenario> pureScenarios(const PlanRequest &request)
{
    const std::size_t m = planReferences(request);
    std::vector<PlanScenario> scenarios;
    for (std::size_t j = 0; j < m; ++j) {
        scenarios.push_back({std::vector<double>(m, 0.0), request.thickness});
        scenarios.back().fractions[j] = 1.0;
    }
    return scenarios;
}

std::vector<PlanMixture> mixturesOf(const PlanRequest &request, const std::vector<PlanScenario> &scenarios)
{
    const std::vector<double> jumps = planJumps(request);
    const std::size_t m = jumps.size();
    const double meanJump = std::accumulate(jumps.begin(), jumps.end(), 0.0) / static_cast<double>(m);
    std::vector<PlanMixture> mixtures;
    for (const PlanScenario &scenario : scenarios) {
        PlanMixture mixture;
        mixture.thickness = scenario.thickness;
        const double total = scenario.thickness * (isFourPoints(request.method) ? meanJump : 1.0);
        const double sum = std::accumulate(scenario.fractions.begin(), scenario.fractions.end(), 0.0);
        for (std::size_t j = 0; j < m; ++j) {
            mixture.fractions.push_back(scenario.fractions[j] / sum);
            mixture.components.push_back(total * mixture.fractions[j] / jumps[j]);
            mixture.valence += mixture.fractions[j] * request.references[j].valence;
        }
        mixtures.push_back(mixture);
    }
    return mixtures;
}

} // namespace

std::vector<PlanMixture> planMixtures(const PlanRequest &request)
{
    if (!request.scenarios.empty())
        return mixturesOf(request, request.scenarios);
    std::vector<PlanScenario> scenarios = pureScenarios(request);
    scenarios.push_back({std::vector<double>(scenarios.size(), 1.0), request.thickness});
    return mixturesOf(request, scenarios);
}

std::vector<PlanMixture> pureMixtures(const PlanRequest &request)
{
    return mixturesOf(request, pureScenarios(request));
}

PlanNoise::PlanNoise(const PlanRequest &request, const PlanMixture &mixture, const std::vector<PlanPoint> &candidates)
    : m_mode(request.mode)
    , m_counts(request.counts)
    , m_background(request.background)
{
    if (m_mode == PlanMode::Transmission)
        return;
    double mean = 0.0;
    for (const PlanPoint &candidate : candidates)
        mean += mixture.absorption(candidate) / static_cast<double>(candidates.size());
    m_background = request.background / (1.0 - request.background) * mean;
}

double PlanNoise::variance(double absorption) const
{
    if (m_mode == PlanMode::Transmission)
        return (1.0 + std::exp(m_background + absorption)) / m_counts;
    return std::max(absorption + m_background, 1.0 / m_counts) / m_counts;
}
