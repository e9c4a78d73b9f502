#include "analysis/shift/MapShift.h"

#include "analysis/model/UsedPoints.h"
#include "analysis/results/MapRecords.h"
#include "analysis/uncertainty/RegionStatistics.h"
#include "analysis/uncertainty/UncertaintyMap.h"

#include <cmath>

namespace
{

using Outcome = EnergyShift::Outcome;

/// The maps with the references that they are fitted by.
class ShiftedMaps
{
public:
    explicit ShiftedMaps(const AnalysisInput &input);
    EnergyShift find();

private:
    /// The mean spectrum, its material and noise judged with shifted references. False when there is none.
    bool measure(double shift);

    EnergyShiftInput m_input;
    std::vector<double> m_valences;
    std::vector<const A2DData *> m_maps;
    ResultRecords m_results;
    UncertaintyMap m_uncertainty;
};

ShiftedMaps::ShiftedMaps(const AnalysisInput &input)
{
    const Conditions &conditions = input.conditions;
    m_input.subtractsPostLine = conditions.subtractsPostLineOfReferences;
    if (conditions.isNonEquivalent && !conditions.isLinear)
        m_input.background = NonEquivalentBackground::Victoreen;
    for (const ReferenceInput &reference : input.references) {
        if (!reference.takesPart() || (!conditions.isNonEquivalent && m_input.spectra.size() == 2))
            continue;
        m_input.spectra.push_back(&reference.spectrum);
        m_valences.push_back(reference.valence);
    }
    for (const int row : usedPoints(input, true).all) {
        m_input.energies.push_back(input.points[row].energy);
        m_maps.push_back(input.points[row].map);
    }
}

bool ShiftedMaps::measure(double shift)
{
    std::vector<double> shifted = m_input.energies;
    for (double &energy : shifted)
        energy += shift;
    RunInfo run;
    run.method.isNonEquivalent = true;
    run.method.background = m_input.background;
    run.nonEquivalent = prepareNonEquivalent(shifted, m_input.spectra, m_input.subtractsPostLine);
    run.nonEquivalent.energies = m_input.energies;
    for (const double valence : m_valences)
        run.references.append({run.references.size(), QString(), valence, 0.0});
    const NonEquivalentMapInput work = {run.method.background, run.nonEquivalent, m_valences, m_maps};
    if (!isComplete(work) || !fillRecords(work, &m_results) ||
        !computeUncertainty(uncertaintyConstants(run), m_maps, m_results, {}, &m_uncertainty))
        return false;
    std::vector<std::size_t> material;
    for (std::size_t i = 0; i < m_uncertainty.amount.size(); ++i) {
        if (m_uncertainty.isMaterial(m_results.t()[i], m_uncertainty.amount[i]))
            material.push_back(i);
    }
    const RegionStatistics mean = regionStatistics(run, m_maps, m_results, m_uncertainty.noise, material);
    m_input.values.clear();
    m_input.variances.clear();
    for (const RegionPoint &point : mean.points) {
        m_input.values.push_back(point.mean);
        m_input.variances.push_back(point.error * point.error);
    }
    m_input.isScaleKnown = !m_uncertainty.noise.isUniform;
    return mean.pixels > 0;
}

EnergyShift ShiftedMaps::find()
{
    EnergyShift found;
    const int unknowns = nonEquivalentUnknowns(static_cast<int>(m_input.spectra.size()), m_input.background);
    if (m_maps.empty() || m_input.spectra.size() < 2)
        return found;
    found.outcome = Outcome::FewEnergies;
    if (static_cast<int>(m_maps.size()) <= unknowns)
        return found;
    constexpr int rounds = 2;
    for (int round = 0; round < rounds; ++round) {
        if (!measure(found.shift))
            return EnergyShift();
        found = findEnergyShift(m_input);
    }
    return found;
}

} // namespace

EnergyShift findMapShift(const AnalysisInput &input)
{
    return ShiftedMaps(input).find();
}
