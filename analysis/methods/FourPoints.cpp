#include "analysis/methods/FourPoints.h"

#include "analysis/methods/FourPointsFormulas.h"

#include <limits>

FourPointsVariant chooseFourPoints(int points, bool exact, bool leastSquares)
{
    if (points == 3)
        return FourPointsVariant::ThreePoint;
    if (points == 4)
        return exact ? FourPointsVariant::Exact : FourPointsVariant::LeastSquares;
    if (points > 4 && leastSquares)
        return FourPointsVariant::LeastSquares;
    return FourPointsVariant::None;
}

FourPointsResult threePoints(const std::array<double, 3> &x, const std::array<double, 3> &a,
                             const std::array<double, 3> &b)
{
    FourPointsResult result;
    solveThreePoints(ThreePointConstants(a.data(), b.data()), x[0], x[1], x[2], result.a, result.t);
    return result;
}

double exactFourPoints(const std::array<double, 4> &x, const std::array<double, 4> &a, const std::array<double, 4> &b,
                       const std::array<double, 4> &e, double r, double *t)
{
    double fraction = 0.0;
    solveExact(ExactConstants(a.data(), b.data(), e.data(), r), x[0], x[1], x[2], x[3], fraction, *t);
    return fraction;
}

double leastSquaresFourPoints(double x4, double a4, double b4, double e4, int anchors, const double *x, const double *a,
                              const double *b, const double *e, double r, numeric::LinearSystem *work, double *t)
{
    work->clear();
    for (int i = 0; i < anchors; ++i) {
        const double basis[] = {1.0, e[i], x[i]};
        work->add(basis, a[i] + b[i]);
    }
    work->solve();
    const double c0 = work->unknown(0);
    const double c1 = work->unknown(1);
    const double c2 = work->unknown(2);
    *t = 2 / c2;
    double fraction = 0.0;
    fractionOfA(x4, a4, b4, -c1 / c2 * e4 - c0 / c2, c2, r, fraction);
    return fraction;
}

FourPointsResult solveFourPoints(FourPointsVariant variant, const FourPointsReferences &references, const double *x,
                                 numeric::LinearSystem *work)
{
    const auto &a = references.a;
    const auto &b = references.b;
    const auto &e = references.energies;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    FourPointsResult result = {nan, nan};
    if (e.size() < pointsNeeded(variant))
        return result;
    switch (variant) {
    case FourPointsVariant::ThreePoint:
        return threePoints({x[0], x[1], x[2]}, {a[0], a[1], a[2]}, {b[0], b[1], b[2]});
    case FourPointsVariant::Exact:
        result.a = exactFourPoints({x[0], x[1], x[2], x[3]}, {a[0], a[1], a[2], a[3]}, {b[0], b[1], b[2], b[3]},
                                   {e[0], e[1], e[2], e[3]}, references.r, &result.t);
        break;
    case FourPointsVariant::LeastSquares: {
        const auto v = e.size() - 1;
        result.a = leastSquaresFourPoints(x[v], a[v], b[v], e[v], static_cast<int>(v), x, a.data(), b.data(), e.data(),
                                          references.r, work, &result.t);
        break;
    }
    case FourPointsVariant::None:
        break;
    }
    return result;
}
