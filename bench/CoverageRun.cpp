#include "bench/CoverageRun.h"

#include "analysis/results/MapRecords.h"
#include "analysis/uncertainty/Median.h"
#include "analysis/uncertainty/SpectrumFit.h"
#include "analysis/uncertainty/UncertaintyMap.h"
#include "samples/EdgeModel.h"
#include "samples/ParticleField.h"
#include "samples/PortableMath.h"
#include "samples/Random.h"

#include <cmath>
#include <cstddef>

namespace
{

using Vector = std::vector<double>;

const sample::EdgeModel &model()
{
    static const sample::EdgeModel edges;
    return edges;
}

double referenceValue(int j, double energy)
{
    return sample::edgeJumps[j] * model().normalized(j, energy);
}

/// The shares of the amount: three components, or two for the methods that know two.
Vector sharesOf(const RunInfo &run)
{
    return run.references.size() == 3 ? Vector{0.25, 0.45, 0.30} : Vector{0.4, 0.6};
}

const Vector &energiesOf(const RunInfo &run)
{
    return run.method.isNonEquivalent ? run.nonEquivalent.energies : run.fourPoints.energies;
}

double absorptionAt(const RunInfo &run, double energy, double thickness)
{
    double sum = run.method.isNonEquivalent && run.method.background == NonEquivalentBackground::Victoreen
                     ? 3.0 * model().preEdgeLine(2, energy)
                     : 0.25 - 1e-4 * (energy - sample::edgeEnergy);
    const Vector shares = sharesOf(run);
    for (std::size_t j = 0; j < shares.size(); ++j)
        sum += thickness * shares[j] * model().normalized(static_cast<int>(j), energy);
    return sum;
}

void fillMap(const CoverageConditions &conditions, double absorption, std::uint64_t stream, A2DData *map)
{
    const qint64 count = qint64(conditions.side) * conditions.side;
    const A2DData::Columns columns = map->resize(count);
    map->setSize(conditions.side, conditions.side);
    sample::Random random(conditions.seed, stream);
    const double transmission = portable::exp(-absorption);
    for (qint64 i = 0; i < count; ++i) {
        columns.x[i] = columns.y[i] = 0.0;
        const double incident = conditions.isDrawn ? random.counts(conditions.counts) : conditions.counts;
        columns.I0[i] = incident / conditions.unit;
        columns.I[i] = random.counts(conditions.counts * transmission) / conditions.unit;
        columns.absorption[i] = pixelAbsorption(columns.I[i], columns.I0[i]);
    }
}

/// `resultAt(i)` is the result of pixel i.
template <class ResultAt>
Coverage coverageOf(const numeric::Plane &errors, double truth, ResultAt resultAt)
{
    Coverage coverage;
    const auto count = static_cast<double>(errors.size());
    Vector differences;
    for (std::size_t i = 0; i < errors.size(); ++i) {
        differences.push_back(resultAt(i) - truth);
        coverage.once += std::abs(differences[i]) <= errors[i] ? 1.0 / count : 0.0;
        coverage.twice += std::abs(differences[i]) <= 2.0 * errors[i] ? 1.0 / count : 0.0;
    }
    Vector sigmas(errors.data(), errors.data() + errors.size());
    coverage.error = *median(&sigmas);
    coverage.bias = *median(&differences);
    return coverage;
}

void addFourPoints(CoverageMethod method, RunInfo *run)
{
    run->method.variant = method == CoverageMethod::ThreePoints ? FourPointsVariant::ThreePoint
                          : method == CoverageMethod::Exact     ? FourPointsVariant::Exact
                                                                : FourPointsVariant::LeastSquares;
    std::vector<int> points;
    for (int k = 0; k < sample::mapCount; ++k) {
        const bool isWanted = method == CoverageMethod::LeastSquares || k == 0 || k == sample::mapCount - 1 ||
                              (method == CoverageMethod::Exact && k == sample::mapCount - 3);
        if (sample::isAnchor[k] && isWanted)
            points.push_back(k);
    }
    points.push_back(sample::vPoint);
    for (const int k : points) {
        const double energy = sample::mapEnergies[k];
        run->fourPoints.energies.push_back(energy);
        run->fourPoints.a.push_back(referenceValue(0, energy));
        run->fourPoints.b.push_back(referenceValue(1, energy));
    }
    run->fourPoints.r = sample::edgeJumps[0] / sample::edgeJumps[1];
}

bool fill(const RunInfo &run, const std::vector<const A2DData *> &maps, ResultRecords *results)
{
    if (!run.method.isNonEquivalent)
        return fillRecords(FourPointsMapInput{run.method.variant, run.fourPoints, maps}, results);
    Vector valences;
    for (const RunReference &reference : run.references)
        valences.push_back(reference.valence);
    return fillRecords(NonEquivalentMapInput{run.method.background, run.nonEquivalent, valences, maps}, results);
}

} // namespace

RunInfo coverageRun(CoverageMethod method)
{
    RunInfo run;
    run.method.isNonEquivalent =
        method == CoverageMethod::NonEquivalentLinear || method == CoverageMethod::NonEquivalentVictoreen;
    const int references = run.method.isNonEquivalent ? sample::referenceCount : 2;
    Vector jumps;
    for (int j = 0; j < references; ++j) {
        run.references.append({j, QString(), sample::valences[j], sample::edgeJumps[j]});
        jumps.push_back(sample::edgeJumps[j]);
    }
    if (!run.method.isNonEquivalent) {
        addFourPoints(method, &run);
        return run;
    }
    run.method.background = method == CoverageMethod::NonEquivalentLinear ? NonEquivalentBackground::Linear
                                                                          : NonEquivalentBackground::Victoreen;
    const Vector energies(std::begin(sample::mapEnergies), std::end(sample::mapEnergies));
    std::vector<Vector> columns(jumps.size());
    for (int j = 0; j < references; ++j) {
        for (const double energy : energies)
            columns[static_cast<std::size_t>(j)].push_back(referenceValue(j, energy));
    }
    run.nonEquivalent = prepareNonEquivalent(energies, columns, jumps);
    return run;
}

CoverageResult measureCoverage(const CoverageConditions &conditions)
{
    const RunInfo run = coverageRun(conditions.method);
    const Vector &energies = energiesOf(run);
    std::vector<A2DData> maps(energies.size());
    std::vector<const A2DData *> pointers;
    Vector exact;
    for (std::size_t k = 0; k < maps.size(); ++k) {
        exact.push_back(absorptionAt(run, energies[k], conditions.thickness));
        fillMap(conditions, exact.back(), k, &maps[k]);
        pointers.push_back(&maps[k]);
    }
    const SpectrumFit truth = fitSpectrum(run, exact, Vector(exact.size(), 1.0));
    ResultRecords results;
    UncertaintyMap found;
    CoverageResult coverage;
    UncertaintyRequest request;
    request.hasFractions = true;
    if (!fill(run, pointers, &results) ||
        !computeUncertainty(uncertaintyConstants(run), pointers, results, request, &found))
        return coverage;
    const ResultRecords &done = results;
    const ValencePair pair = {true, run.references[0].valence, run.references[1].valence};
    coverage.valence = coverageOf(found.valence, truth.valence, [&](std::size_t i) {
        return run.method.isNonEquivalent ? done.quantity(ResultPosition::valence)[i] : pair.mixed(done.a()[i]);
    });
    coverage.amount = coverageOf(found.amount, truth.amount, [&](std::size_t i) { return done.t()[i]; });
    coverage.fraction = coverageOf(found.fractions[0], truth.fractions[0], [&](std::size_t i) { return done.a()[i]; });
    coverage.trueAmount = truth.amount;
    coverage.noise = found.noise;
    coverage.degrees = found.degrees;
    return coverage;
}

std::vector<SamplePixel> measureSample(int width, int height, double counts)
{
    const RunInfo run = coverageRun(CoverageMethod::NonEquivalentLinear);
    const sample::ParticleField field(width, height, 1);
    std::vector<sample::Pixel> truth(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    for (int y = 0; y < height; ++y)
        field.fillRow(y, &truth[static_cast<std::size_t>(y) * static_cast<std::size_t>(width)]);
    std::vector<A2DData> maps(sample::mapCount);
    std::vector<const A2DData *> pointers;
    for (int k = 0; k < sample::mapCount; ++k) {
        A2DData &map = maps[static_cast<std::size_t>(k)];
        const A2DData::Columns columns = map.resize(static_cast<qint64>(truth.size()));
        map.setSize(width, height);
        sample::Random random(1, static_cast<std::uint64_t>(k));
        for (std::size_t i = 0; i < truth.size(); ++i) {
            const double energy = sample::mapEnergies[k];
            double absorption = truth[i].background + truth[i].backgroundSlope * energy;
            for (int j = 0; j < sample::referenceCount; ++j)
                absorption += truth[i].thickness * truth[i].fractions[j] * model().normalized(j, energy);
            columns.x[i] = columns.y[i] = 0.0;
            columns.I0[i] = random.counts(counts * truth[i].beam);
            columns.I[i] = random.counts(counts * truth[i].beam * portable::exp(-absorption));
            columns.absorption[i] = pixelAbsorption(columns.I[i], columns.I0[i]);
        }
        pointers.push_back(&map);
    }
    ResultRecords results;
    UncertaintyMap errors;
    std::vector<SamplePixel> pixels;
    if (!fill(run, pointers, &results) ||
        !computeUncertainty(uncertaintyConstants(run), pointers, results, {}, &errors))
        return pixels;
    const double *const valences = static_cast<const ResultRecords &>(results).quantity(ResultPosition::valence);
    for (std::size_t i = 0; i < truth.size(); ++i) {
        if (truth[i].thickness > 0.0)
            pixels.push_back({truth[i].thickness, valences[i] - truth[i].valence, errors.valence[i]});
    }
    return pixels;
}
