#include "analysis/FourPoints.h"

#include <limits>

namespace
{

/// a from the background line's value `l4` at the V point; c2 is the scale of A + B against X.
double fractionOfA(double x4, double a4, double b4, double l4, double c2, double r)
{
    const double u = c2 / (1 + r);
    const double w = r * u;
    return ((l4 - x4) * (w * u) + b4 * w) / (b4 * w - u * a4);
}

} // namespace

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
    const double stepA = a[1] - a[0];
    const double stepB = b[1] - b[0];
    const double stepX = x[1] - x[0];
    const double nA = (a[2] - a[0]) / stepA;
    const double nB = (b[2] - b[0]) / stepB;
    const double nX = (x[2] - x[0]) / stepX;
    return {(nX - nB) / (nA - nB), stepX / ((stepB + stepA) * 0.5)};
}

double exactFourPoints(const std::array<double, 4> &x, const std::array<double, 4> &a, const std::array<double, 4> &b,
                       const std::array<double, 4> &e, double r, double *t)
{
    const std::array<double, 3> s = {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
    const auto curvature = [&e](double y1, double y2, double y3) {
        return y1 * (e[2] - e[1]) + y2 * (e[0] - e[2]) + y3 * (e[1] - e[0]);
    };
    const double d = curvature(s[0], s[1], s[2]);
    const double q = d / curvature(x[0], x[1], x[2]);
    *t = 2 / q;

    // The background line mu0 + k E through the anchor points.
    const double slope = ((x[1] - x[0]) * s[2] + (s[0] - s[1]) * x[2] + s[1] * x[0] - s[0] * x[1]) / d;
    const double intercept = -((e[0] * x[1] - x[0] * e[1]) * s[2] + (e[1] * s[0] - e[0] * s[1]) * x[2] +
                               e[2] * x[0] * s[1] - e[2] * s[0] * x[1]) /
                             d;
    return fractionOfA(x[3], a[3], b[3], intercept + slope * e[3], q, r);
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
    return fractionOfA(x4, a4, b4, -c1 / c2 * e4 - c0 / c2, c2, r);
}

FourPointsResult solveFourPoints(FourPointsVariant variant, const FourPointsReferences &references, const double *x,
                                 numeric::LinearSystem *work)
{
    const auto &a = references.a;
    const auto &b = references.b;
    const auto &e = references.energies;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    FourPointsResult result = {nan, nan};
    if (e.size() < (variant == FourPointsVariant::ThreePoint ? 3u : 4u))
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
