#include "analysis/methods/NonEquivalent.h"
#include "analysis/methods/NonEquivalentBasis.h"
#include "analysis/methods/PixelBlocks.h"
#include "analysis/methods/ResultPosition.h"
#include "numeric/Lanes.h"
#include "numeric/LinearSystem.h"

#include <algorithm>
#include <array>
#include <cstddef>

using namespace ResultPosition;
using numeric::InstructionSet;
using numeric::Lanes2;
using numeric::Lanes4;
using numeric::Lanes8;

namespace
{

/// The decomposed normal equations, in the order of the pivots: logical row i is row p[i] of the normal matrix.
/// Nothing here depends on the pixel.
struct PreparedFit {
    int points = 0;
    std::array<NonEquivalentBasis, mostNonEquivalentPoints> basis; ///< per energy point
    std::array<NonEquivalentBasis, mostNonEquivalentUnknowns> lower;
    std::array<NonEquivalentBasis, mostNonEquivalentUnknowns> upper;
    std::array<double, referenceRows> weights;
    std::array<double, referenceRows> valences;
    double jumpSum = 0.0;
};

PreparedFit prepareFit(const NonEquivalentMapInput &input)
{
    const NonEquivalentReferences &references = input.references;
    const int n = nonEquivalentUnknowns(references.count(), input.background);
    PreparedFit fit = {};
    fit.points = static_cast<int>(references.energies.size());
    numeric::LinearSystem system(n);
    for (std::size_t k = 0; k < references.energies.size(); ++k)
        system.add(nonEquivalentBasis(input.background, references, k).data(), 0.0);
    system.decompose();

    for (int i = 0; i < n; ++i) {
        const auto row = static_cast<std::size_t>(i);
        const auto stored = static_cast<std::size_t>(system.permutation()[i]);
        for (std::size_t k = 0; k < references.energies.size(); ++k)
            fit.basis[k][row] = nonEquivalentBasis(input.background, references, k)[stored];
        std::copy_n(system.lower()[stored], n, fit.lower[row].begin());
        std::copy_n(system.upper()[stored], n, fit.upper[row].begin());
    }
    std::copy(references.weights.begin(), references.weights.end(), fit.weights.begin());
    std::copy(input.valences.begin(), input.valences.end(), fit.valences.begin());
    fit.jumpSum = references.jumpSum;
    return fit;
}

/// The results of one block; the runs of unused quantities stay untouched.
using ResultBlock = std::array<BlockRun, ResultPosition::count>;

/// The order of the operations is that of fitNonEquivalent() and solveNonEquivalent() with LinearSystem; only the
/// divisions by the diagonal of L, which is exactly 1, are left out.
template <class Lanes, int Components, int Unknowns>
FLOKLUK_ALWAYS_INLINE void solveBlock(const PreparedFit &fit, const double *const *y, ResultBlock &out)
{
    for (std::size_t lane = 0; lane < blockPixels; lane += numeric::laneCount<Lanes>) {
        Lanes c[Unknowns] = {}; // right-hand side, then solution
        for (int k = 0; k < fit.points; ++k) {
            Lanes value;
            numeric::loadLanes(y[k] + lane, value);
            const NonEquivalentBasis &basis = fit.basis[static_cast<std::size_t>(k)];
#pragma GCC unroll 8
            for (std::size_t i = 0; i < Unknowns; ++i)
                c[i] += value * basis[i];
        }
#pragma GCC unroll 8
        for (std::size_t k = 0; k < Unknowns; ++k) {
#pragma GCC unroll 8
            for (std::size_t r = k + 1; r < Unknowns; ++r)
                c[r] -= c[k] * fit.lower[r][k];
        }
#pragma GCC unroll 8
        for (std::size_t back = 1; back <= Unknowns; ++back) {
            const std::size_t k = Unknowns - back;
            c[k] /= fit.upper[k][k];
#pragma GCC unroll 8
            for (std::size_t r = 0; r < k; ++r)
                c[r] -= c[k] * fit.upper[r][k];
        }

        Lanes sum = {};
#pragma GCC unroll 8
        for (std::size_t j = 0; j < Components; ++j)
            sum += c[j] * fit.weights[j];
        const Lanes t = sum * fit.jumpSum;
        Lanes mean = {};
#pragma GCC unroll 8
        for (std::size_t j = 0; j < Components; ++j) {
            const Lanes fraction = c[j] * fit.weights[j] / sum;
            numeric::storeLanes(fraction, &out[ratio + j][lane]);
            numeric::storeLanes<Lanes>(t * fraction, &out[dMut + j][lane]);
            mean += fraction * fit.valences[j];
        }
#pragma GCC unroll 8
        for (std::size_t i = Components; i < Unknowns; ++i)
            numeric::storeLanes(c[i], &out[mut0 + i - Components][lane]);
        numeric::storeLanes(mean, &out[valence][lane]);
        numeric::storeLanes(t, &out[amount][lane]);
    }
}

using BlockSolver = void (*)(const PreparedFit &fit, const double *const *y, ResultBlock *out);

template <int Components, int Unknowns>
void solveBlockBaseline(const PreparedFit &fit, const double *const *y, ResultBlock *out)
{
    solveBlock<Lanes2, Components, Unknowns>(fit, y, *out);
}

template <int Components, int Unknowns>
FLOKLUK_FOR_AVX2 void solveBlockAvx2(const PreparedFit &fit, const double *const *y, ResultBlock *out)
{
    solveBlock<Lanes4, Components, Unknowns>(fit, y, *out);
}

template <int Components, int Unknowns>
FLOKLUK_FOR_AVX512 void solveBlockAvx512(const PreparedFit &fit, const double *const *y, ResultBlock *out)
{
    solveBlock<Lanes8, Components, Unknowns>(fit, y, *out);
}

template <int Components, int Unknowns>
BlockSolver solverFor(InstructionSet set)
{
    switch (set) {
    case InstructionSet::Avx512:
        return solveBlockAvx512<Components, Unknowns>;
    case InstructionSet::Avx2:
        return solveBlockAvx2<Components, Unknowns>;
    case InstructionSet::Baseline:
        break;
    }
    return solveBlockBaseline<Components, Unknowns>;
}

BlockSolver chooseSolver(int components, NonEquivalentBackground background, InstructionSet set)
{
    const bool linear = background == NonEquivalentBackground::Linear;
    switch (components) {
    case 1:
        return linear ? solverFor<1, 3>(set) : solverFor<1, 4>(set);
    case 2:
        return linear ? solverFor<2, 4>(set) : solverFor<2, 5>(set);
    case 3:
        return linear ? solverFor<3, 5>(set) : solverFor<3, 6>(set);
    default:
        return linear ? solverFor<4, 6>(set) : solverFor<4, 7>(set);
    }
}

} // namespace

bool isComplete(const NonEquivalentMapInput &input)
{
    const std::size_t references = input.references.columns.size();
    return references > 0 && references == input.valences.size() && !input.maps.empty() &&
           input.references.energies.size() == input.maps.size();
}

void solveNonEquivalentMap(const NonEquivalentMapInput &input, std::size_t pixels, const NonEquivalentPlanes &planes,
                           int threads, InstructionSet set)
{
    const PreparedFit fit = prepareFit(input);
    const BlockSolver solve = chooseSolver(input.references.count(), input.background, set);
    parallelBlocks(pixels, threads, [&](std::size_t begin, std::size_t end) {
        PlaneBlock block(absorptionPlanes(input.maps));
        ResultBlock out;
        for (std::size_t pixel = begin; pixel < end; pixel += blockPixels) {
            const std::size_t count = std::min(blockPixels, end - pixel);
            block.moveTo(pixel);
            solve(fit, block.runs(), &out);
            for (std::size_t q = 0; q < planes.size(); ++q) {
                if (planes[q])
                    numeric::streamCopy(out[q].data(), count, planes[q] + pixel);
            }
        }
    });
}
