// Whether the standard errors are worth what they say: pixels of the sample maker's model measured again and again with
// its counting noise. Prints a table and fails where the coverage is not that of a normal distribution.
#include "bench/CoverageRun.h"

#include <cmath>
#include <cstdio>

namespace
{

struct Row {
    const char *name;
    CoverageConditions conditions;
    bool isBound; ///< false: shown only
};

bool isWithin(double value, double wanted, double tolerance)
{
    return std::abs(value - wanted) <= tolerance;
}

bool isGood(const Coverage &coverage)
{
    return isWithin(coverage.once, 0.683, 0.010) && isWithin(coverage.twice, 0.954, 0.007);
}

void print(const Coverage &c)
{
    std::printf("  %5.1f %5.1f %6.3f %6.3f %7.4f", 100 * c.once, 100 * c.twice, c.spread, c.bias, c.error);
}

bool measure(const Row &row)
{
    const CoverageResult result = measureCoverage(row.conditions);
    std::printf("%-34s %4.1f", row.name, row.conditions.thickness);
    print(result.valence);
    print(result.amount);
    print(result.fraction);
    std::printf("  %7.4f%s\n", result.noise.scale, result.noise.isScaleAssumed ? " assumed" : "");
    const bool isGammaGood = result.degrees == 0 || isWithin(result.noise.scale * row.conditions.unit, 1.0, 0.01);
    return !row.isBound || (isGammaGood && isGood(result.valence) && isGood(result.amount) && isGood(result.fraction));
}

} // namespace

int main()
{
    std::printf(
        "Share of pixels within one and two standard errors of the noise-free result (%%), standard deviation\n"
        "and mean of the difference from it in standard errors, and the standard error, for V, t and f1.\n\n"
        "%-34s    t  V: 1s    2s spread   bias   error  t: 1s    2s spread   bias   error  f: 1s    2s spread   "
        "bias   error    gamma\n",
        "");
    using Method = CoverageMethod;
    bool good = true;
    for (const double t : {1.0, 0.3}) {
        const Row rows[] = {
            {"non-equivalent, linear", {Method::NonEquivalentLinear, t}, true},
            {"non-equivalent, Victoreen", {Method::NonEquivalentVictoreen, t}, true},
            {"stored as tenths of the counts", {Method::NonEquivalentLinear, t, 40000, 600, 10}, true},
            {"I0 not counted", {Method::NonEquivalentLinear, t, 40000, 600, 1, false}, true},
            {"four points, exact", {Method::Exact, t}, true},
            {"three points", {Method::ThreePoints, t}, true},
            {"four points, least squares", {Method::LeastSquares, t}, false},
        };
        for (const Row &row : rows)
            good = measure(row) && good;
    }
    for (const double t : {0.1, 0.03})
        good = measure({"four points, least squares", {Method::LeastSquares, t}, false}) && good;
    for (const double t : {0.1, 0.03})
        good = measure({"non-equivalent, linear", {Method::NonEquivalentLinear, t}, false}) && good;
    std::printf(good ? "\nall within 68.3 +- 1.0 %% and 95.4 +- 0.7 %%, gamma within 1 %%\n" : "\nOUT OF BOUNDS\n");
    return good ? 0 : 1;
}
