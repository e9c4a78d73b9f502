#include "analysis/uncertainty/UncertaintyBlocks.h"

#include "analysis/uncertainty/UncertaintyFormulas.h"

#include <limits>

using numeric::InstructionSet;
using numeric::Lanes2;
using numeric::Lanes4;
using numeric::Lanes8;

namespace
{

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

/// I and I0 of one map's block; where I0 does not matter it is I once more.
struct IntensityRuns {
    Intensities kind;
    const double *transmitted;
    const double *incident;
};

/// NoiseModel::relativeVariance() as numerator over denominator, both NaN where there is none.
template <class Lanes>
FLOKLUK_ALWAYS_INLINE void varianceOf(const IntensityRuns &runs, bool isUniform, std::size_t lane, Lanes &numerator,
                                      Lanes &denominator)
{
    const Lanes zero = {};
    Lanes i, i0;
    numeric::loadLanes(runs.transmitted + lane, i);
    numeric::loadLanes(runs.incident + lane, i0);
    numerator = zero + 1.0;
    denominator = i * 0.0 + 1.0; // NaN where I is not finite
    if (!isUniform) {
        denominator = runs.kind == Intensities::Counted ? i * i0 : i;
        if (runs.kind == Intensities::Counted)
            numerator = i + i0;
    }
    if (runs.kind != Intensities::Absorptions)
        numeric::nanUnlessPositive(i, i0, denominator);
}

/// The variances of two maps, which share a division: divisions take longest here.
template <class Lanes>
FLOKLUK_ALWAYS_INLINE void variancesOf(const IntensityRuns (&runs)[2], bool isUniform, BlockRun &first,
                                       BlockRun &second)
{
    for (std::size_t lane = 0; lane < blockPixels; lane += numeric::laneCount<Lanes>) {
        Lanes n1, d1, n2, d2;
        varianceOf(runs[0], isUniform, lane, n1, d1);
        varianceOf(runs[1], isUniform, lane, n2, d2);
        const Lanes inverse = 1.0 / (d1 * d2);
        numeric::storeLanes<Lanes>(n1 * d2 * inverse, &first[lane]);
        numeric::storeLanes<Lanes>(n2 * d1 * inverse, &second[lane]);
    }
}

void variancesBaseline(const IntensityRuns (&runs)[2], bool isUniform, BlockRun *first, BlockRun *second)
{
    variancesOf<Lanes2>(runs, isUniform, *first, *second);
}

FLOKLUK_FOR_AVX2 void variancesAvx2(const IntensityRuns (&runs)[2], bool isUniform, BlockRun *first, BlockRun *second)
{
    variancesOf<Lanes4>(runs, isUniform, *first, *second);
}

FLOKLUK_FOR_AVX512 void variancesAvx512(const IntensityRuns (&runs)[2], bool isUniform, BlockRun *first,
                                        BlockRun *second)
{
    variancesOf<Lanes8>(runs, isUniform, *first, *second);
}

auto variancesFor(InstructionSet set)
{
    switch (set) {
    case InstructionSet::Avx512:
        return variancesAvx512;
    case InstructionSet::Avx2:
        return variancesAvx2;
    case InstructionSet::Baseline:
        break;
    }
    return variancesBaseline;
}

template <class Lanes, std::size_t Degrees>
FLOKLUK_ALWAYS_INLINE void solveBlock(const UncertaintyConstants &c, std::size_t quantities, const double *const *y,
                                      const BlockRun *s, const double *const *values, UncertaintyBlock &out)
{
    const std::size_t n = c.count();
    for (std::size_t lane = 0; lane < blockPixels; lane += numeric::laneCount<Lanes>) {
        Lanes ys[mostUncertaintyPoints], ss[mostUncertaintyPoints], slope[mostUncertaintyPoints], t, variance;
        for (std::size_t k = 0; k < n; ++k)
            numeric::loadLanes(&s[k][lane], ss[k]);
        numeric::loadLanes(values[0] + lane, t);
        const Lanes *gradient = nullptr;
        if constexpr (Degrees > 0) {
            Lanes z[Degrees], chiSquare;
            for (std::size_t k = 0; k < n; ++k)
                numeric::loadLanes(y[k] + lane, ys[k]);
            misfitOf<Degrees>(c, ys, ss, z, chiSquare);
            numeric::storeLanes(chiSquare, &out.chiSquare[lane]);
            if (c.isInverse) {
                inverseGradient<Degrees>(c, ys, z, t, slope);
                gradient = slope;
            }
        }
        amountVariance(c, ss, gradient, variance);
        numeric::storeLanes(variance, &out.amount[lane]);
        for (std::size_t q = 0; q < quantities; ++q) {
            Lanes value;
            numeric::loadLanes(values[1 + q] + lane, value);
            quantityVariance(c, q == 0 ? c.valence : c.fractions[q - 1], ss, gradient, value, t, variance);
            numeric::storeLanes(variance, &out.quantities[q][lane]);
        }
    }
}

template <std::size_t Degrees>
void solveBaseline(const UncertaintyConstants &c, std::size_t quantities, const double *const *y, const BlockRun *s,
                   const double *const *values, UncertaintyBlock *out)
{
    solveBlock<Lanes2, Degrees>(c, quantities, y, s, values, *out);
}

template <std::size_t Degrees>
FLOKLUK_FOR_AVX2 void solveAvx2(const UncertaintyConstants &c, std::size_t quantities, const double *const *y,
                                const BlockRun *s, const double *const *values, UncertaintyBlock *out)
{
    solveBlock<Lanes4, Degrees>(c, quantities, y, s, values, *out);
}

template <std::size_t Degrees>
FLOKLUK_FOR_AVX512 void solveAvx512(const UncertaintyConstants &c, std::size_t quantities, const double *const *y,
                                    const BlockRun *s, const double *const *values, UncertaintyBlock *out)
{
    solveBlock<Lanes8, Degrees>(c, quantities, y, s, values, *out);
}

template <std::size_t Degrees>
UncertaintyBlocks::Solver solverFor(InstructionSet set)
{
    switch (set) {
    case InstructionSet::Avx512:
        return solveAvx512<Degrees>;
    case InstructionSet::Avx2:
        return solveAvx2<Degrees>;
    case InstructionSet::Baseline:
        break;
    }
    return solveBaseline<Degrees>;
}

/// The absorptions where the misfit needs them, I and I0 where the variances do, then t and the quantities' values.
std::vector<BlockPlane> planesOf(const UncertaintyTask &task, std::size_t *intensities, std::size_t *results)
{
    std::vector<BlockPlane> planes;
    if (task.constants->degrees > 0)
        planes = absorptionPlanes(task.maps);
    *intensities = planes.size();
    for (std::size_t k = 0; k < task.maps.size(); ++k) {
        const A2DData &map = *task.maps[k];
        planes.push_back({map.I().data(), map.I().size(), nan});
        if (task.noise->maps[k] == Intensities::Counted)
            planes.push_back({map.I0().data(), map.I0().size(), nan});
    }
    *results = planes.size();
    const ResultRecords &found = *task.results;
    planes.push_back({found.t(), found.count(), nan});
    if (task.constants->isFourPoints) {
        planes.push_back({found.a(), found.count(), nan});
        planes.push_back(planes.back());
        return planes;
    }
    planes.push_back({found.quantity(ResultPosition::valence), found.count(), nan});
    for (std::size_t j = 0; j < task.constants->fractions.size(); ++j)
        planes.push_back({found.quantity(ResultPosition::ratio + static_cast<int>(j)), found.count(), nan});
    return planes;
}

} // namespace

UncertaintyBlocks::UncertaintyBlocks(const UncertaintyTask &task)
    : m_task(task)
    , m_quantities(1)
    , m_block(planesOf(task, &m_intensities, &m_results), PlaneBlock::NothingAhead) // map after map, two planes each
    , m_solver(withDegrees(task.constants->degrees, [&task](auto degrees) { return solverFor<degrees>(task.set); }))
    , m_variances(task.maps.size() + 1)
{
    // Both fractions of the four-points methods have the same standard error.
    if (task.hasFractions)
        m_quantities += task.constants->isFourPoints ? 1 : task.constants->fractions.size();
}

void UncertaintyBlocks::findVariances()
{
    const auto variances = variancesFor(m_task.set);
    const double *const *run = m_block.runs() + m_intensities;
    IntensityRuns pair[2];
    for (std::size_t k = 0; k < m_task.maps.size(); ++k) {
        const Intensities kind = m_task.noise->maps[k];
        const double *const transmitted = *run++;
        pair[k % 2] = {kind, transmitted, kind == Intensities::Counted ? *run++ : transmitted};
        const bool isLast = k + 1 == m_task.maps.size();
        if (isLast && k % 2 == 0)
            pair[1] = pair[0]; // has no partner
        if (isLast || k % 2 == 1)
            variances(pair, m_task.noise->isUniform, &m_variances[k / 2 * 2], &m_variances[k / 2 * 2 + 1]);
    }
}

const UncertaintyBlock &UncertaintyBlocks::calculate(std::size_t first)
{
    m_block.moveTo(first);
    findVariances();
    m_solver(*m_task.constants, m_quantities, m_block.runs(), m_variances.data(), m_block.runs() + m_results, &m_out);
    return m_out;
}
