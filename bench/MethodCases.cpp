#include "bench/MethodCases.h"

#include "analysis/methods/FourPointsMap.h"
#include "analysis/methods/NonEquivalent.h"
#include "analysis/methods/ResultPosition.h"
#include "analysis/results/MapRecords.h"
#include "numeric/JsonArray.h"

#include <cmath>
#include <cstddef>
#include <cstdint>

namespace
{

const std::vector<double> energies = {7040, 7080, 7118, 7122, 7126, 7132, 7160, 7220}; // eV
const std::vector<double> valences = {2, 3, 0, 2.5};
const std::vector<double> jumps = {1.3, 0.9, 1.1, 0.7};

/// Four different edges in the energies above.
double referenceValue(int reference, double energy)
{
    const double edge = 7118 + 2.5 * reference;
    const double line = (energy - edge - 5 - reference) / (4 + reference);
    return jumps[static_cast<std::size_t>(reference)] *
           (0.5 + std::atan((energy - edge) / 2) / 3.14159265358979 + (0.3 + 0.1 * reference) * std::exp(-line * line));
}

/// A uniform number in [0, 1); the same sequence on every machine.
double nextRandom(std::uint64_t *state)
{
    *state = *state * 6364136223846793005u + 1442695040888963407u;
    return static_cast<double>(*state >> 11) / 9007199254740992.0;
}

template <class Input>
void setRuns(const Input &input, const UncertaintyConstants &constants, Case *c)
{
    c->run = [input](ResultRecords *results, int threads) {
        return fillRecords(input, results, threads);
    };
    c->findErrors = [input, constants](const ResultRecords &results, UncertaintyMap *errors, int threads) {
        return computeUncertainty(constants, input.maps, results, UncertaintyRequest(), errors, threads);
    };
}

Case nonEquivalentCase(const std::vector<A2DData> &maps, int references, NonEquivalentBackground background)
{
    Case c;
    NonEquivalentMapInput input;
    input.background = background;
    std::vector<std::vector<double>> columns;
    QJsonArray jsonColumns;
    for (int j = 0; j < references; ++j) {
        columns.emplace_back();
        for (const double energy : energies)
            columns.back().push_back(referenceValue(j, energy));
        jsonColumns.append(numeric::toJsonArray(columns.back()));
    }
    const std::vector<double> usedJumps(jumps.begin(), jumps.begin() + references);
    input.references = prepareNonEquivalent(energies, columns, usedJumps);
    input.valences.assign(valences.begin(), valences.begin() + references);
    for (std::size_t k = 0; k < maps.size(); ++k) {
        input.maps.push_back(&maps[k]);
        c.points.push_back(static_cast<int>(k));
    }
    const bool victoreen = background == NonEquivalentBackground::Victoreen;
    c.name =
        QStringLiteral("non-equivalent, %1 references, %2").arg(references).arg(victoreen ? "Victoreen" : "linear");
    c.conditions = {{"kind", "neq"},
                    {"columns", jsonColumns},
                    {"victoreen", victoreen},
                    {"jumps", numeric::toJsonArray(usedJumps)},
                    {"points", numeric::toJsonArray(c.points)},
                    {"valences", numeric::toJsonArray(input.valences)}};
    c.column1 = ResultPosition::valence;
    c.column2 = ResultPosition::amount;
    setRuns(input, uncertaintyConstants(input.background, input.references, input.valences), &c);
    return c;
}

Case fourPointsCase(const std::vector<A2DData> &maps, const char *kind, FourPointsVariant variant,
                    const std::vector<int> &points)
{
    Case c;
    c.name = QStringLiteral("four-points method, %1").arg(kind);
    c.points = points;
    FourPointsMapInput input;
    input.variant = variant;
    for (const int point : points) {
        const auto k = static_cast<std::size_t>(point);
        input.references.energies.push_back(energies[k]);
        input.references.a.push_back(referenceValue(0, energies[k]));
        input.references.b.push_back(referenceValue(1, energies[k]));
        input.maps.push_back(&maps[k]);
    }
    input.references.r = jumps[0] / jumps[1];
    c.conditions = {{"kind", kind},
                    {"points", numeric::toJsonArray(points)},
                    {"a", numeric::toJsonArray(input.references.a)},
                    {"b", numeric::toJsonArray(input.references.b)},
                    {"e", numeric::toJsonArray(input.references.energies)},
                    {"r", input.references.r},
                    {"valences", numeric::toJsonArray(std::vector<double>{valences[0], valences[1]})}};
    c.column1 = c.column2 = -1;
    setRuns(input, uncertaintyConstants(variant, input.references, {true, valences[0], valences[1]}), &c);
    return c;
}

} // namespace

std::vector<A2DData> makeMaps(int side, QIODevice *file)
{
    const auto pixels = static_cast<std::size_t>(side) * static_cast<std::size_t>(side);
    std::vector<A2DData> maps(energies.size());
    for (std::size_t k = 0; k < maps.size(); ++k) {
        std::uint64_t mixture = 1, noise = k + 2;
        const A2DData::Columns columns = maps[k].resize(static_cast<qint64>(pixels));
        maps[k].setSize(side, side);
        std::vector<std::uint16_t> incident(pixels), transmitted(pixels);
        const double r1 = referenceValue(0, energies[k]);
        const double r2 = referenceValue(1, energies[k]);
        for (std::size_t i = 0; i < pixels; ++i) {
            const double share = nextRandom(&mixture);
            const double t = 0.4 + nextRandom(&mixture);
            const double mu = t * (share * r1 + (1 - share) * r2) + 0.3 - 2e-4 * (energies[k] - 7100);
            incident[i] = static_cast<std::uint16_t>(60000 + 5000 * nextRandom(&noise));
            transmitted[i] = static_cast<std::uint16_t>(incident[i] * std::exp(-mu));
            columns.x[i] = static_cast<double>(i % static_cast<std::size_t>(side));
            columns.y[i] = static_cast<double>(i / static_cast<std::size_t>(side));
            columns.I0[i] = incident[i];
            columns.I[i] = transmitted[i];
            columns.absorption[i] = pixelAbsorption(columns.I[i], columns.I0[i]);
        }
        for (const auto &counts : {incident, transmitted})
            file->write(reinterpret_cast<const char *>(counts.data()), static_cast<qint64>(2 * counts.size()));
    }
    return maps;
}

QJsonArray mapEnergies()
{
    return numeric::toJsonArray(energies);
}

std::vector<Case> makeCases(const std::vector<A2DData> &maps)
{
    std::vector<Case> cases;
    cases.push_back(nonEquivalentCase(maps, 2, NonEquivalentBackground::Linear));
    cases.push_back(nonEquivalentCase(maps, 4, NonEquivalentBackground::Victoreen));
    cases.push_back(fourPointsCase(maps, "three", FourPointsVariant::ThreePoint, {0, 7, 3}));
    cases.push_back(fourPointsCase(maps, "exact", FourPointsVariant::Exact, {0, 6, 7, 3}));
    cases.push_back(fourPointsCase(maps, "least squares", FourPointsVariant::LeastSquares, {0, 1, 2, 4, 5, 6, 7, 3}));
    return cases;
}
