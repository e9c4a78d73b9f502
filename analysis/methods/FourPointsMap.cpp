#include "analysis/methods/FourPointsMap.h"

#include "analysis/methods/FourPointsFormulas.h"
#include "analysis/methods/PixelBlocks.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

using numeric::InstructionSet;
using numeric::Lanes2;
using numeric::Lanes4;
using numeric::Lanes8;

namespace
{

struct BlockResult {
    BlockRun a, t;
};

template <class Lanes>
FLOKLUK_ALWAYS_INLINE void solveBlockThree(const FourPointsReferences &references, const double *const *x,
                                           BlockResult &out)
{
    const ThreePointConstants constants(references.a.data(), references.b.data());
    for (std::size_t lane = 0; lane < blockPixels; lane += numeric::laneCount<Lanes>) {
        Lanes xs[3], a, t;
        for (std::size_t k = 0; k < 3; ++k)
            numeric::loadLanes(x[k] + lane, xs[k]);
        solveThreePoints<Lanes>(constants, xs[0], xs[1], xs[2], a, t);
        numeric::storeLanes(a, &out.a[lane]);
        numeric::storeLanes(t, &out.t[lane]);
    }
}

template <class Lanes>
FLOKLUK_ALWAYS_INLINE void solveBlockExact(const FourPointsReferences &references, const double *const *x,
                                           BlockResult &out)
{
    const ExactConstants constants(references.a.data(), references.b.data(), references.energies.data(), references.r);
    for (std::size_t lane = 0; lane < blockPixels; lane += numeric::laneCount<Lanes>) {
        Lanes xs[4], a, t;
        for (std::size_t k = 0; k < 4; ++k)
            numeric::loadLanes(x[k] + lane, xs[k]);
        solveExact<Lanes>(constants, xs[0], xs[1], xs[2], xs[3], a, t);
        numeric::storeLanes(a, &out.a[lane]);
        numeric::storeLanes(t, &out.t[lane]);
    }
}

/// One row of the normal equations of A + B = c0 + c1 E + c2 X, with its right-hand side.
template <class Lanes>
struct Row {
    Lanes c0, c1, c2, y;
};

/// Per lane the row `yes` where value > limit, `no` elsewhere. The comparison stands in each selection: compilers make
/// one mask of it, but take a mask that is kept in a variable apart into single lanes.
template <class Lanes>
FLOKLUK_ALWAYS_INLINE void selectRow(const Lanes &value, const Lanes &limit, const Row<Lanes> &yes,
                                     const Row<Lanes> &no, Row<Lanes> &row)
{
    row.c0 = value > limit ? yes.c0 : no.c0;
    row.c1 = value > limit ? yes.c1 : no.c1;
    row.c2 = value > limit ? yes.c2 : no.c2;
    row.y = value > limit ? yes.y : no.y;
}

template <class Lanes>
FLOKLUK_ALWAYS_INLINE void magnitude(const Lanes &value, Lanes &result)
{
    const Lanes zero = {};
    const Lanes negative = -value;
    result = value < zero ? negative : value;
}

/// `value`, or 1 where it is 0.
template <class Lanes>
FLOKLUK_ALWAYS_INLINE void nonZero(const Lanes &value, Lanes &result)
{
    const Lanes zero = {};
    const Lanes one = zero + 1.0;
    result = value == zero ? one : value;
}

/// row -= pivot * multiplier, and the multiplier; a zero pivot element counts as 1.
template <class Lanes>
FLOKLUK_ALWAYS_INLINE void eliminateFirst(const Row<Lanes> &pivot, Row<Lanes> &row)
{
    Lanes divisor;
    nonZero(pivot.c0, divisor);
    const Lanes multiplier = row.c0 / divisor;
    row.c1 -= pivot.c1 * multiplier;
    row.c2 -= pivot.c2 * multiplier;
    row.y -= pivot.y * multiplier;
}

/// Solves one 3 x 3 system per lane as luDecompose(), forwardSubstitute() and backSubstitute() do, operation for
/// operation, with every choice of a pivot made per lane: a row is chosen when its magnitude exceeds the *index* of the
/// row chosen before. rows[0].c0 is the number of points, not 0. The unknowns come in `c`.
template <class Lanes>
FLOKLUK_ALWAYS_INLINE void solveNormalEquations(const Row<Lanes> (&rows)[3], double sumE, Lanes (&c)[3])
{
    // First column {N, sum E, sum X}: row 1 when |sum E| > 0, the same for all pixels; then row 2 per pixel.
    const bool takesSecond = std::fabs(sumE) > 0.0;
    const Lanes zero = {};
    const Lanes chosen = zero + (takesSecond ? 1.0 : 0.0);
    const Row<Lanes> &first = takesSecond ? rows[1] : rows[0];
    const Row<Lanes> &other = takesSecond ? rows[0] : rows[1];
    Lanes candidate;
    magnitude(rows[2].c0, candidate);
    Row<Lanes> pivot, middle, last;
    selectRow(candidate, chosen, rows[2], first, pivot);
    selectRow(candidate, chosen, rows[1], other, middle);
    selectRow(candidate, chosen, rows[0], rows[2], last);
    eliminateFirst(pivot, middle);
    eliminateFirst(pivot, last);

    // Second column: the last row when its magnitude exceeds 1, the index of the middle one.
    const Lanes one = zero + 1.0;
    magnitude(last.c1, candidate);
    Row<Lanes> second, third;
    selectRow(candidate, one, last, middle, second);
    selectRow(candidate, one, middle, last, third);
    Lanes divisor;
    nonZero(second.c1, divisor);
    const Lanes multiplier = third.c1 / divisor;
    third.c2 -= second.c2 * multiplier;
    third.y -= second.y * multiplier;

    c[2] = third.y / third.c2;
    c[1] = (second.y - c[2] * second.c2) / second.c1;
    c[0] = (pivot.y - c[2] * pivot.c2 - c[1] * pivot.c1) / pivot.c0;
}

template <class Lanes>
FLOKLUK_ALWAYS_INLINE void solveBlockLeastSquares(const FourPointsReferences &references, const double *const *x,
                                                  BlockResult &out)
{
    const std::size_t anchors = references.energies.size() - 1;
    const double a4 = references.a[anchors];
    const double b4 = references.b[anchors];
    const double e4 = references.energies[anchors];
    const double r = references.r;
    double count = 0.0, sumE = 0.0, sumS = 0.0, sumEE = 0.0, sumSE = 0.0; // what does not depend on the pixel
    for (std::size_t k = 0; k < anchors; ++k) {
        const double e = references.energies[k];
        const double s = references.a[k] + references.b[k];
        count += 1.0;
        sumE += e;
        sumS += s;
        sumEE += e * e;
        sumSE += s * e;
    }
    const Lanes zero = {};
    for (std::size_t lane = 0; lane < blockPixels; lane += numeric::laneCount<Lanes>) {
        Lanes sumX = zero, sumEX = zero, sumXX = zero, sumSX = zero;
        for (std::size_t k = 0; k < anchors; ++k) {
            Lanes value;
            numeric::loadLanes(x[k] + lane, value);
            sumX += value;
            sumEX += references.energies[k] * value;
            sumXX += value * value;
            sumSX += (references.a[k] + references.b[k]) * value;
        }
        const Row<Lanes> rows[3] = {{zero + count, zero + sumE, sumX, zero + sumS},
                                    {zero + sumE, zero + sumEE, sumEX, zero + sumSE},
                                    {sumX, sumEX, sumXX, sumSX}};
        Lanes c[3], x4, a;
        solveNormalEquations(rows, sumE, c);
        numeric::loadLanes(x[anchors] + lane, x4);
        const Lanes line = -c[1] / c[2] * e4 - c[0] / c[2];
        fractionOfA<Lanes>(x4, a4, b4, line, c[2], r, a);
        numeric::storeLanes(a, &out.a[lane]);
        numeric::storeLanes<Lanes>(2 / c[2], &out.t[lane]);
    }
}

template <class Lanes>
FLOKLUK_ALWAYS_INLINE void solveBlock(FourPointsVariant variant, const FourPointsReferences &references,
                                      const double *const *x, BlockResult &out)
{
    switch (variant) {
    case FourPointsVariant::ThreePoint:
        solveBlockThree<Lanes>(references, x, out);
        break;
    case FourPointsVariant::Exact:
        solveBlockExact<Lanes>(references, x, out);
        break;
    case FourPointsVariant::LeastSquares:
        solveBlockLeastSquares<Lanes>(references, x, out);
        break;
    case FourPointsVariant::None:
        break;
    }
}

using BlockSolver = void (*)(FourPointsVariant variant, const FourPointsReferences &references, const double *const *x,
                             BlockResult *out);

void solveBlockBaseline(FourPointsVariant variant, const FourPointsReferences &references, const double *const *x,
                        BlockResult *out)
{
    solveBlock<Lanes2>(variant, references, x, *out);
}

FLOKLUK_FOR_AVX2 void solveBlockAvx2(FourPointsVariant variant, const FourPointsReferences &references,
                                     const double *const *x, BlockResult *out)
{
    solveBlock<Lanes4>(variant, references, x, *out);
}

/// The closed forms only, see chooseSolver().
FLOKLUK_FOR_AVX512 void solveBlockAvx512(FourPointsVariant variant, const FourPointsReferences &references,
                                         const double *const *x, BlockResult *out)
{
    if (variant == FourPointsVariant::ThreePoint)
        solveBlockThree<Lanes8>(references, x, *out);
    else
        solveBlockExact<Lanes8>(references, x, *out);
}

/// Too few points for the variant: every pixel is NaN.
void solveNothing(FourPointsVariant, const FourPointsReferences &, const double *const *, BlockResult *out)
{
    out->a.fill(std::numeric_limits<double>::quiet_NaN());
    out->t.fill(std::numeric_limits<double>::quiet_NaN());
}

BlockSolver chooseSolver(const FourPointsMapInput &input, InstructionSet set)
{
    if (input.variant == FourPointsVariant::None || input.maps.size() < pointsNeeded(input.variant))
        return solveNothing;
    if (set == InstructionSet::Baseline)
        return solveBlockBaseline;
    // Compilers take selections among eight lanes apart into single ones: four at once are faster.
    const bool selects = input.variant == FourPointsVariant::LeastSquares;
    return set == InstructionSet::Avx512 && !selects ? solveBlockAvx512 : solveBlockAvx2;
}

} // namespace

bool isComplete(const FourPointsMapInput &input)
{
    return !input.maps.empty() && input.maps.size() == input.references.energies.size();
}

void solveFourPointsMap(const FourPointsMapInput &input, std::size_t pixels, const FourPointsPlanes &planes,
                        int threads, InstructionSet set)
{
    const BlockSolver solve = chooseSolver(input, set);
    parallelBlocks(pixels, threads, [&](std::size_t begin, std::size_t end) {
        PlaneBlock block(absorptionPlanes(input.maps));
        BlockResult out;
        for (std::size_t pixel = begin; pixel < end; pixel += blockPixels) {
            const std::size_t count = std::min(blockPixels, end - pixel);
            block.moveTo(pixel);
            solve(input.variant, input.references, block.runs(), &out);
            numeric::streamCopy(out.a.data(), count, planes.a + pixel);
            numeric::streamCopy(out.t.data(), count, planes.t + pixel);
        }
    });
}
