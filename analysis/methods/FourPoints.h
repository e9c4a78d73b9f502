#pragma once

#include "numeric/LinearSystem.h"

#include <array>
#include <cstddef>
#include <vector>

/// The four-points method: the target X is a mixture of references A and B, measured at a few energies,
///   X(E) = t (a A + (1 - a) B)(E) + mu0 + k E,
/// where at the anchor points A and B may be replaced by their mean. All values are dimensionless absorptions,
/// energies are in eV. No formula guards against a division by zero: what is undetermined comes out infinite or NaN.

enum class FourPointsVariant {
    None,        ///< the number of points fits no variant
    ThreePoint,  ///< 2 anchor points and the V point; no background slope
    Exact,       ///< 3 anchor points and the V point: t, mu0 and k solved exactly
    LeastSquares ///< 3 or more anchor points and the V point: t, mu0 and k fitted
};

/// The variant for `points` energy points, the V point counted; `exact` and `leastSquares` are the user's choice.
FourPointsVariant chooseFourPoints(int points, bool exact, bool leastSquares);

/// The least number of points, the V point counted.
inline std::size_t pointsNeeded(FourPointsVariant variant)
{
    return variant == FourPointsVariant::ThreePoint ? 3 : 4;
}

/// What the method finds: the fraction a of reference A, and the thickness relative to the references' mean.
struct FourPointsResult {
    double a = 0.0;
    double t = 0.0;
};

/// The references at the anchor points in their order, then at the V point: all three have the same size.
struct FourPointsReferences {
    std::vector<double> energies; ///< eV
    std::vector<double> a;
    std::vector<double> b;
    double r = 1.0; ///< edge jump of A over that of B
};

/// Three points P, Q (anchors) and R (the V point), in this order. t is the target's step P to Q over the mean of the
/// references' steps.
FourPointsResult threePoints(const std::array<double, 3> &x, const std::array<double, 3> &a,
                             const std::array<double, 3> &b);

/// Anchor points 1 to 3 and the V point as the fourth. Returns a and writes t.
double exactFourPoints(const std::array<double, 4> &x, const std::array<double, 4> &a, const std::array<double, 4> &b,
                       const std::array<double, 4> &e, double r, double *t);

/// Anchor points of any number (pointers to `anchors` values each) and the values at the V point. Fits
/// A + B = c0 + c1 E + c2 X: the references on the target, not the other way round, which matters for noisy data.
/// `work` is storage for 3 unknowns. Returns a and writes t.
double leastSquaresFourPoints(double x4, double a4, double b4, double e4, int anchors, const double *x, const double *a,
                              const double *b, const double *e, double r, numeric::LinearSystem *work, double *t);

/// The variant's solution for one target; `x` holds its values in the order of `references`. NaN when there are fewer
/// points than the variant needs.
FourPointsResult solveFourPoints(FourPointsVariant variant, const FourPointsReferences &references, const double *x,
                                 numeric::LinearSystem *work);

/// The mean valence of a mixture of two references.
inline double mixedValence(double valenceA, double valenceB, double a)
{
    return valenceA * a + valenceB * (1 - a);
}

/// The valences of two references; known is false where there were no two, and every valence is then 0.
struct ValencePair {
    bool known = false;
    double first = 0.0;
    double second = 0.0;

    /// The mean valence at the fraction `a` of the first.
    double mixed(double a) const { return known ? mixedValence(first, second, a) : 0.0; }
};
