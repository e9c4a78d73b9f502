#include "analysis/model/FittedCurve.h"

#include "analysis/model/AnalysisInput.h"
#include "spectrum/AMutE.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace
{

/// The values of reference `j` at the energies of the run.
const std::vector<double> &valuesOf(const RunInfo &run, std::size_t j)
{
    if (run.method.isNonEquivalent)
        return run.nonEquivalent.columns[j];
    return j == 0 ? run.fourPoints.a : run.fourPoints.b;
}

const std::vector<double> &energiesOf(const RunInfo &run)
{
    return run.method.isNonEquivalent ? run.nonEquivalent.energies : run.fourPoints.energies;
}

bool isAsInRun(const RunInfo &run, std::size_t j, const AMutE &spectrum, int type)
{
    constexpr double digits = 1e-4; // of fields with six, which the four-points methods read
    const std::vector<double> &values = valuesOf(run, j);
    double largest = 0.0;
    for (const double value : values)
        largest = std::max(largest, std::abs(value));
    for (std::size_t k = 0; k < values.size(); ++k) {
        if (!(std::abs(spectrum.valueAtEnergy(type, energiesOf(run)[k]) - values[k]) <= digits * largest))
            return false;
    }
    return true;
}

/// One per reference of the run; empty when one of them is another spectrum.
std::vector<const AMutE *> spectraOf(const RunInfo &run, const AnalysisInput &now, int type)
{
    std::vector<const AMutE *> spectra;
    for (const RunReference &reference : run.references) {
        const AMutE *const spectrum =
            reference.row < now.references.size() ? &now.references[reference.row].spectrum : nullptr;
        if (!spectrum || spectrum->pointCount() < 2 || !isAsInRun(run, spectra.size(), *spectrum, type))
            return {};
        spectra.push_back(spectrum);
    }
    return spectra;
}

std::vector<double> commonEnergies(const std::vector<const AMutE *> &spectra)
{
    double first = -std::numeric_limits<double>::infinity();
    double last = -first;
    std::vector<double> all;
    for (const AMutE *const spectrum : spectra) {
        const std::size_t begin = all.size();
        for (int i = 0; i < spectrum->pointCount(); ++i)
            all.push_back(spectrum->shiftedEnergy(i));
        const auto own = all.begin() + static_cast<std::ptrdiff_t>(begin);
        first = std::max(first, *std::min_element(own, all.end()));
        last = std::min(last, *std::max_element(own, all.end()));
    }
    const auto isBeyond = [first, last](double energy) {
        return !(energy >= first && energy <= last);
    };
    all.erase(std::remove_if(all.begin(), all.end(), isBeyond), all.end());
    std::sort(all.begin(), all.end());
    all.erase(std::unique(all.begin(), all.end()), all.end());
    return all;
}

double backgroundAt(const RunInfo &run, const SpectrumFit &fit, double energy)
{
    const bool isVictoreen = run.method.isNonEquivalent && run.method.background == NonEquivalentBackground::Victoreen;
    if (!isVictoreen)
        return fit.background[0] + fit.background[1] * energy;
    const VictoreenBasis basis = victoreenBasis(energy);
    return fit.background[0] + fit.background[1] * basis.l3 + fit.background[2] * basis.l4;
}

} // namespace

FittedCurve fittedCurve(const RunInfo &run, const SpectrumFit &fit, const AnalysisInput &now)
{
    FittedCurve curve;
    const int type = now.conditions.subtractsPostLineOfReferences ? AMutE::PostSubtracted : AMutE::PreSubtracted;
    const std::vector<const AMutE *> spectra = spectraOf(run, now, type);
    if (spectra.empty() || spectra.size() != fit.components.size())
        return curve;
    curve.energies = commonEnergies(spectra);
    curve.components.resize(spectra.size());
    for (const double energy : curve.energies) {
        curve.background.push_back(backgroundAt(run, fit, energy));
        double total = curve.background.back();
        for (std::size_t j = 0; j < spectra.size(); ++j) {
            curve.components[j].push_back(fit.components[j] * spectra[j]->valueAtEnergy(type, energy));
            total += curve.components[j].back();
        }
        curve.total.push_back(total);
    }
    return curve;
}
