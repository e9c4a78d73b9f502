// Whether the standard errors are worth what they say: pixels of the sample maker's model measured again and again with
// its counting noise. Prints tables and fails where the coverage is not that of a normal distribution. With the name of
// a file, writes the points of docs/uncertainty.png there instead, which uncertainty_picture.py draws.
#include "bench/CoverageRun.h"

#include <cmath>
#include <cstdio>

namespace
{

using Method = CoverageMethod;

constexpr double thicknesses[] = {1.0, 0.5, 0.3, 0.2, 0.1, 0.05};

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

void print(const Coverage &coverage)
{
    std::printf("  %5.1f %5.1f %7.4f %7.4f", 100 * coverage.once, 100 * coverage.twice, coverage.error, coverage.bias);
}

bool measure(const Row &row)
{
    const CoverageResult result = measureCoverage(row.conditions);
    std::printf("%-32s %4.1f", row.name, row.conditions.thickness);
    print(result.valence);
    print(result.amount);
    print(result.fraction);
    std::printf("  %6.4f%s\n", result.noise.scale, result.noise.isScaleAssumed ? " assumed" : "");
    const bool isGammaGood = result.degrees == 0 || isWithin(result.noise.scale * row.conditions.unit, 1.0, 0.01);
    return !row.isBound || (isGammaGood && isGood(result.valence) && isGood(result.amount) && isGood(result.fraction));
}

bool measureAll()
{
    std::printf("Share of pixels (%%) within one and two standard errors of the noise-free result, median standard\n"
                "error and median difference from that result, for the valence V, the amount t and the first fraction "
                "f.\n\n%-32s    t",
                "");
    for (const char *name : {"V", "t", "f"})
        std::printf("  %s: 1s    2s   error    bias", name);
    std::printf("   gamma\n");
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
    return good;
}

/// Per thickness what two methods find of it, in the median.
struct Bias {
    double t, leastSquares, nonEquivalent; ///< t found over true t
    double valenceLeastSquares, valenceNonEquivalent;
};

Bias biasAt(double t)
{
    const CoverageResult least = measureCoverage({Method::LeastSquares, t});
    const CoverageResult other = measureCoverage({Method::NonEquivalentLinear, t});
    return {t, 1.0 + least.amount.bias / least.trueAmount, 1.0 + other.amount.bias / other.trueAmount,
            least.valence.bias, other.valence.bias};
}

void measureBias()
{
    std::printf("\nMedian of t found over the noise-free t, and median error of V\n"
                "     t   least squares          non-equivalent\n");
    for (const double t : thicknesses) {
        const Bias bias = biasAt(t);
        std::printf("  %4.2f   %6.4f %8.4f        %6.4f %8.4f\n", t, bias.leastSquares, bias.valenceLeastSquares,
                    bias.nonEquivalent, bias.valenceNonEquivalent);
    }
}

/// "s error sigma" per pixel of the sample, "b t ratio ratio" per thickness.
bool writePoints(const char *path)
{
    std::FILE *const file = std::fopen(path, "w");
    if (!file)
        return false;
    for (const SamplePixel &pixel : measureSample(400, 300, 40000))
        std::fprintf(file, "s %.6g %.6g\n", pixel.difference, pixel.error);
    for (const double t : thicknesses) {
        const Bias bias = biasAt(t);
        std::fprintf(file, "b %.6g %.6g %.6g\n", t, bias.leastSquares, bias.nonEquivalent);
    }
    return std::fclose(file) == 0;
}

} // namespace

int main(int count, char **arguments)
{
    if (count > 1)
        return writePoints(arguments[1]) ? 0 : 1;
    const bool good = measureAll();
    measureBias();
    std::printf(good ? "\nall within 68.3 +- 1.0 %% and 95.4 +- 0.7 %%, gamma within 1 %%\n" : "\nOUT OF BOUNDS\n");
    return good ? 0 : 1;
}
