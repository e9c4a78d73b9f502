#include "analysis/methods/NonEquivalent.h"

#include "analysis/methods/NonEquivalentBasis.h"
#include "spectrum/AMutE.h"

#include <algorithm>
#include <cstddef>
#include <utility>

using namespace ResultPosition;

NonEquivalentReferences prepareNonEquivalent(std::vector<double> energies, std::vector<std::vector<double>> columns,
                                             const std::vector<double> &edgeJumps)
{
    NonEquivalentReferences references;
    references.energies = std::move(energies);
    references.energies.resize(std::min<std::size_t>(references.energies.size(), mostNonEquivalentPoints));
    references.columns = std::move(columns);
    references.columns.resize(std::min({references.columns.size(), edgeJumps.size(), std::size_t(referenceRows)}));
    for (std::vector<double> &column : references.columns)
        column.resize(references.energies.size());
    for (std::size_t j = 0; j < references.columns.size(); ++j)
        references.jumpSum += edgeJumps[j];
    for (std::size_t j = 0; j < references.columns.size(); ++j)
        references.weights.push_back(edgeJumps[j] / references.jumpSum);
    return references;
}

NonEquivalentReferences prepareNonEquivalent(const std::vector<double> &energies,
                                             const std::vector<const AMutE *> &spectra, bool subtractPostLine)
{
    std::vector<std::vector<double>> columns;
    std::vector<double> edgeJumps;
    for (const AMutE *spectrum : spectra) {
        std::vector<double> column;
        for (const double energy : energies)
            column.push_back(
                spectrum->valueAtEnergy(subtractPostLine ? AMutE::PostSubtracted : AMutE::PreSubtracted, energy));
        columns.push_back(std::move(column));
        edgeJumps.push_back(spectrum->edgeJump());
    }
    return prepareNonEquivalent(energies, std::move(columns), edgeJumps);
}

NonEquivalentBasis nonEquivalentBasis(NonEquivalentBackground background, const NonEquivalentReferences &references,
                                      std::size_t point)
{
    NonEquivalentBasis basis = {};
    std::size_t i = 0;
    for (const std::vector<double> &column : references.columns)
        basis[i++] = column[point];
    basis[i++] = 1.0;
    if (background == NonEquivalentBackground::Victoreen) {
        const VictoreenBasis l = victoreenBasis(references.energies[point]);
        basis[i++] = l.l3;
        basis[i] = l.l4;
    } else {
        basis[i] = references.energies[point];
    }
    return basis;
}

double fitNonEquivalent(NonEquivalentBackground background, const double *y, const NonEquivalentReferences &references,
                        numeric::LinearSystem *work, NonEquivalentValues *values)
{
    work->clear();
    for (std::size_t k = 0; k < references.energies.size(); ++k)
        work->add(nonEquivalentBasis(background, references, k).data(), y[k]);
    work->solve();

    values->fill(0.0);
    const int m = references.count();
    double sum = 0.0;
    for (int j = 0; j < m; ++j) {
        const double share = work->unknown(j) * references.weights[static_cast<std::size_t>(j)];
        (*values)[static_cast<std::size_t>(ratio + j)] = share;
        sum += share;
    }
    for (int j = 0; j < m; ++j)
        (*values)[static_cast<std::size_t>(ratio + j)] /= sum;
    for (int i = m; i < work->size(); ++i)
        (*values)[static_cast<std::size_t>(mut0 + i - m)] = work->unknown(i);
    return sum;
}

NonEquivalentValues solveNonEquivalent(NonEquivalentBackground background, const std::vector<double> &y,
                                       const NonEquivalentReferences &references, const std::vector<double> &valences)
{
    NonEquivalentValues values;
    numeric::LinearSystem work(nonEquivalentUnknowns(references.count(), background));
    const double sum = fitNonEquivalent(background, y.data(), references, &work, &values);
    const double t = sum * references.jumpSum;
    double mean = 0.0;
    for (std::size_t j = 0; j < references.columns.size(); ++j) {
        values[dMut + j] = t * values[ratio + j];
        mean += values[ratio + j] * valences[j];
    }
    values[valence] = mean;
    values[amount] = t;
    return values;
}
