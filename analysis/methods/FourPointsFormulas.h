#pragma once

#include "numeric/Lanes.h"

#include <array>

/// The closed formulas of the four-points method, for one target (Real is double) or for several side by side (Real is
/// one of the Lanes): the same operations in the same order, hence the same bits. Results go through references
/// because Lanes must not be passed by value.

/// Three points P, Q (anchors) and R: what does not depend on the target. The height of R relative to the step from P
/// to Q knows neither thickness nor offset, and that of the target is the mean of the references' weighted by a.
struct ThreePointConstants {
    ThreePointConstants(const double *a, const double *b)
        : stepA(a[1] - a[0])
        , stepB(b[1] - b[0])
        , heightA((a[2] - a[0]) / stepA)
        , heightB((b[2] - b[0]) / stepB)
    {
    }
    double stepA, stepB, heightA, heightB;
};

template <class Real>
FLOKLUK_ALWAYS_INLINE void solveThreePoints(const ThreePointConstants &c, const Real &xP, const Real &xQ,
                                            const Real &xR, Real &a, Real &t)
{
    const Real step = xQ - xP;
    const Real height = (xR - xP) / step;
    a = (height - c.heightB) / (c.heightA - c.heightB);
    t = step / ((c.stepB + c.stepA) * 0.5);
}

/// a from the background line's value `l4` at the V point; c2 = 2/t is the scale of A + B against X, r the edge jump
/// J_A of A over J_B. With u = c2 / (1 + r), the mean jump times t is J_B / u, and the model in units of the jumps,
///   X4 - L4 = t (J_A + J_B)/2 (a A4/J_A + (1 - a) B4/J_B) = (a A4/r + (1 - a) B4) / u,
/// times u w, w = r u, is w u (X4 - L4) = a u A4 + (1 - a) w B4, which is solved for a.
template <class Real>
FLOKLUK_ALWAYS_INLINE void fractionOfA(const Real &x4, double a4, double b4, const Real &l4, const Real &c2, double r,
                                       Real &a)
{
    const Real u = c2 / (1 + r);
    const Real w = r * u;
    a = ((l4 - x4) * (w * u) + b4 * w) / (b4 * w - u * a4);
}

/// Anchor points 1 to 3 and the V point as the fourth: what does not depend on the target, s = a + b. The curvature of
/// three points takes no notice of a straight line, so that of the target is t/2 times that of s.
struct ExactConstants {
    ExactConstants(const double *a, const double *b, const double *energies, double jumpRatio)
        : s{a[0] + b[0], a[1] + b[1], a[2] + b[2]}
        , e{energies[0], energies[1], energies[2], energies[3]}
        , d(curvature(s[0], s[1], s[2]))
        , a4(a[3])
        , b4(b[3])
        , r(jumpRatio)
    {
    }
    double curvature(double y1, double y2, double y3) const
    {
        return y1 * (e[2] - e[1]) + y2 * (e[0] - e[2]) + y3 * (e[1] - e[0]);
    }
    std::array<double, 3> s;
    std::array<double, 4> e; ///< eV
    double d;                ///< curvature of s
    double a4, b4, r;
};

template <class Real>
FLOKLUK_ALWAYS_INLINE void solveExact(const ExactConstants &c, const Real &x1, const Real &x2, const Real &x3,
                                      const Real &x4, Real &a, Real &t)
{
    const auto &e = c.e;
    const auto &s = c.s;
    const Real curvature = x1 * (e[2] - e[1]) + x2 * (e[0] - e[2]) + x3 * (e[1] - e[0]);
    const Real q = c.d / curvature;
    t = 2 / q;

    // The background line mu0 + k E through the anchor points.
    const Real slope = ((x2 - x1) * s[2] + (s[0] - s[1]) * x3 + s[1] * x1 - s[0] * x2) / c.d;
    const Real intercept =
        -((e[0] * x2 - x1 * e[1]) * s[2] + (e[1] * s[0] - e[0] * s[1]) * x3 + e[2] * x1 * s[1] - e[2] * s[0] * x2) /
        c.d;
    const Real line = intercept + slope * e[3];
    fractionOfA<Real>(x4, c.a4, c.b4, line, q, c.r, a);
}
