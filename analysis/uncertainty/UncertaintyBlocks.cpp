#include "analysis/uncertainty/UncertaintyBlocks.h"

#include "analysis/uncertainty/UncertaintyFormulas.h"

#include <limits>
#include <utility>

using numeric::InstructionSet;
using numeric::Lanes2;
using numeric::Lanes4;
using numeric::Lanes8;

namespace
{

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

/// NoiseModel::relativeVariance() of a map's pixels.
template <class Lanes>
FLOKLUK_ALWAYS_INLINE void variancesOf(Intensities kind, bool isUniform, const double *transmitted,
                                       const double *incident, BlockRun &out)
{
    const Lanes zero = {};
    const Lanes bad = zero + nan;
    for (std::size_t lane = 0; lane < blockPixels; lane += numeric::laneCount<Lanes>) {
        Lanes i, i0;
        numeric::loadLanes(transmitted + lane, i);
        numeric::loadLanes(incident + lane, i0);
        Lanes s = i * 0.0 + 1.0; // NaN where I is not finite
        if (!isUniform && kind == Intensities::Counted)
            s = (i + i0) / (i * i0);
        else if (!isUniform)
            s = 1.0 / i;
        if (kind != Intensities::Absorptions) {
            s = i > zero ? s : bad;
            s = i0 > zero ? s : bad;
        }
        numeric::storeLanes(s, &out[lane]);
    }
}

void variancesBaseline(Intensities kind, bool isUniform, const double *i, const double *i0, BlockRun *out)
{
    variancesOf<Lanes2>(kind, isUniform, i, i0, *out);
}

FLOKLUK_FOR_AVX2 void variancesAvx2(Intensities kind, bool isUniform, const double *i, const double *i0, BlockRun *out)
{
    variancesOf<Lanes4>(kind, isUniform, i, i0, *out);
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
                inverseGradient(c, ys, z, t, slope);
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
    , m_block(planesOf(task, &m_intensities, &m_results))
    , m_solver(withDegrees(task.constants->degrees, [&task](auto degrees) { return solverFor<degrees>(task.set); }))
    , m_variances(task.maps.size())
{
    // Both fractions of the four-points methods have the same standard error.
    if (task.hasFractions)
        m_quantities += task.constants->isFourPoints ? 1 : task.constants->fractions.size();
}

void UncertaintyBlocks::findVariances()
{
    // Compilers take selections among eight lanes apart into single ones: four at once are faster.
    const auto variances = m_task.set == InstructionSet::Baseline ? variancesBaseline : variancesAvx2;
    const double *const *run = m_block.runs() + m_intensities;
    for (std::size_t k = 0; k < m_variances.size(); ++k) {
        const Intensities kind = m_task.noise->maps[k];
        const double *const transmitted = *run++;
        const double *const incident = kind == Intensities::Counted ? *run++ : transmitted;
        variances(kind, m_task.noise->isUniform, transmitted, incident, &m_variances[k]);
    }
}

const UncertaintyBlock &UncertaintyBlocks::calculate(std::size_t first)
{
    m_block.moveTo(first);
    findVariances();
    m_solver(*m_task.constants, m_quantities, m_block.runs(), m_variances.data(), m_block.runs() + m_results, &m_out);
    return m_out;
}
