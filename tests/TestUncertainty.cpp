#include "analysis/uncertainty/Distributions.h"
#include "analysis/uncertainty/RegionStatistics.h"
#include "analysis/uncertainty/UncertaintyMap.h"
#include "bench/CoverageRun.h"
#include "tests/Tables.h"
#include "tests/UncertaintySamples.h"

#include <cstring>
#include <random>

using namespace tables;
using namespace uncertainty_samples;

namespace
{

using Vector = std::vector<double>;
using Variant = FourPointsVariant;

const std::initializer_list<Method> methods = {
    {"one reference, n = p", Variant::None, 3, 1},
    {"one reference, five to spare", Variant::None, 8, 1},
    {"two references, one to spare", Variant::None, 5, 2},
    {"four references, two to spare", Variant::None, 8, 4},
    {"Victoreen, n = p", Variant::None, 5, 2, NonEquivalentBackground::Victoreen},
    {"Victoreen, three references", Variant::None, 8, 3, NonEquivalentBackground::Victoreen},
    {"Victoreen, four references", Variant::None, 8, 4, NonEquivalentBackground::Victoreen},
    {"three points", Variant::ThreePoint, 3},
    {"exact", Variant::Exact, 4},
    {"least squares, nothing to spare", Variant::LeastSquares, 4},
    {"least squares, one to spare", Variant::LeastSquares, 5},
    {"least squares, four to spare", Variant::LeastSquares, 8}};

/// The smallest sum of squares that the model leaves when every value is weighted with its variance.
double weightedSquares(const RunInfo &run, const Vector &y, const Vector &variances)
{
    const std::size_t count = run.method.isNonEquivalent ? y.size() : y.size() - 1;
    std::vector<Vector> rows;
    for (std::size_t k = 0; k < count; ++k) {
        const double energy = (energiesOf(run)[k] - 7300) / 1000;
        const double l = 12398.424360387684 / energiesOf(run)[k];
        Vector row = {1.0, energy};
        if (run.method.isNonEquivalent && run.method.background == NonEquivalentBackground::Victoreen)
            row = {1.0, std::pow(l, 3) - 5, std::pow(l, 4) - 8 - 2.3 * (std::pow(l, 3) - 5)};
        for (const Vector &column : run.nonEquivalent.columns)
            row.push_back(column[k]);
        if (!run.method.isNonEquivalent)
            row.push_back(run.fourPoints.a[k] + run.fourPoints.b[k]);
        rows.push_back(row);
    }
    numeric::LinearSystem system(static_cast<int>(rows.front().size()));
    for (std::size_t k = 0; k < count; ++k) {
        for (double &value : rows[k])
            value /= std::sqrt(variances[k]);
        system.add(rows[k].data(), y[k] / std::sqrt(variances[k]));
    }
    system.solve();
    double sum = 0.0;
    for (std::size_t k = 0; k < count; ++k) {
        double rest = y[k] / std::sqrt(variances[k]);
        for (int i = 0; i < system.size(); ++i)
            rest -= system.unknown(i) * rows[k][static_cast<std::size_t>(i)];
        sum += rest * rest;
    }
    return sum;
}

double plainMedian(Vector values)
{
    std::sort(values.begin(), values.end());
    return 0.5 * (values[(values.size() - 1) / 2] + values[values.size() / 2]);
}

bool isSamePlane(const numeric::Plane &l, const numeric::Plane &r)
{
    bool isSame = l.size() == r.size();
    for (std::size_t i = 0; isSame && i < l.size(); ++i)
        isSame = std::memcmp(&l.data()[i], &r.data()[i], sizeof(double)) == 0 || (std::isnan(l[i]) && std::isnan(r[i]));
    return isSame;
}

} // namespace

/// Standard errors, misfit, regions and targets against other ways to the same numbers.
class TestUncertainty : public QObject
{
    Q_OBJECT

private slots:
    /// Printed tables: chi^2 medians and Student's t (two-sided 68.27 % and 95 %).
    void quantiles()
    {
        forRows<int, double, double, double>({{"1", 1, 0.454936, 1.8373, 12.7062},
                                              {"2", 2, 1.386294, 1.3213, 4.3027},
                                              {"3", 3, 2.365974, 1.1969, 3.1824},
                                              {"4", 4, 3.356694, 1.1416, 2.7764},
                                              {"5", 5, 4.351460, 1.1105, 2.5706},
                                              {"none", 0, std::nan(""), std::nan(""), std::nan("")}},
                                             [](int degrees, double middle, double once, double most) {
                                                 QVERIFY(isClose(chiSquareMedian(degrees), middle, 1e-6));
                                                 QVERIFY(isClose(studentFactor(degrees), once, 1e-4));
                                                 QVERIFY(isClose(studentFactor(degrees, 0.95), most, 1e-4));
                                             });
    }

    /// Every standard error against central differences of the method, chi^2 against the weighted fit.
    void errorsAreThoseOfTheMethod()
    {
        std::mt19937 random(3);
        forEach<Method>(methods, [&random](const Method &method) {
            const RunInfo run = runOf(method);
            const Vector y = spectrumOf(run, 0.03, &random);
            Vector variances;
            for (std::size_t k = 0; k < y.size(); ++k)
                variances.push_back(1e-4 * (2.0 + nextRandom(&random)));
            const SpectrumFit fit = fitSpectrum(run, y, variances);
            Vector squares(2 + fit.fractions.size(), 0.0);
            for (std::size_t k = 0; k < y.size(); ++k) {
                constexpr double step = 1e-5;
                Vector more = y, less = y;
                more[k] += step;
                less[k] -= step;
                const SpectrumFit high = fitSpectrum(run, more, variances);
                const SpectrumFit low = fitSpectrum(run, less, variances);
                Vector slopes = {high.valence - low.valence, high.amount - low.amount};
                for (std::size_t j = 0; j < fit.fractions.size(); ++j)
                    slopes.push_back(high.fractions[j] - low.fractions[j]);
                for (std::size_t q = 0; q < squares.size(); ++q)
                    squares[q] += std::pow(slopes[q] / (2 * step), 2) * variances[k];
            }
            QVERIFY(isClose(fit.valenceError, std::sqrt(squares[0]), 1e-5));
            QVERIFY(isClose(fit.amountError, std::sqrt(squares[1]), 1e-5));
            for (std::size_t j = 0; j < fit.fractions.size(); ++j)
                QVERIFY(isClose(fit.fractionErrors[j] + 1.0, std::sqrt(squares[2 + j]) + 1.0, 1e-5));
            const bool isFour = !run.method.isNonEquivalent;
            QCOMPARE(fit.degrees, static_cast<int>(y.size()) -
                                      (isFour ? method.variant == Variant::ThreePoint ? 3 : 4
                                              : nonEquivalentUnknowns(run.references.size(), method.background)));
            if (fit.degrees > 0)
                QVERIFY(isClose(fit.chiSquare, weightedSquares(run, y, variances), 1e-5));
            else
                QVERIFY(std::isnan(fit.chiSquare));
            checkTarget(run, y);
        });
    }

    /// Maps against single pixels, the scale against a plain median, for any threads and every instruction set.
    void mapsAreTheirPixels()
    {
        struct Case {
            const char *name;
            Method method;
            Intensities kind;
            std::optional<double> thinnest;
        };
        const Method two = {"", Variant::None, 8, 2};
        const Method least = {"", Variant::LeastSquares, 7};
        const Method exact = {"", Variant::Exact, 4};
        const Method victoreen = {"", Variant::None, 7, 3, NonEquivalentBackground::Victoreen};
        forEach<Case>({{"counted", two, Intensities::Counted, std::nullopt},
                       {"counted, above a thickness", victoreen, Intensities::Counted, 0.9},
                       {"I0 not counted", two, Intensities::ConstantI0, std::nullopt},
                       {"transmission ratios", two, Intensities::Ratios, std::nullopt},
                       {"absorptions", least, Intensities::Absorptions, 0.5},
                       {"least squares", least, Intensities::Counted, std::nullopt},
                       {"exact", exact, Intensities::Counted, std::nullopt},
                       {"exact, no intensities", exact, Intensities::Ratios, std::nullopt}},
                      [](const Case &c) { checkMap(NoisyMaps(c.method, c.kind, 97, 61), c.thinnest); });
    }

    /// The blocks from which the median is expected have another misfit than those between them.
    void medianFarFromTheExpectedOne()
    {
        checkMap(NoisyMaps({"", Variant::None, 6, 2}, Intensities::Counted, 330, 300, 0.2), 0.0);
    }

    void regions()
    {
        struct Case {
            const char *name;
            Method method;
            double tolerance;
        };
        forEach<Case>(
            {{"linear", {"", Variant::None, 8, 2}, 1e-12},
             {"Victoreen", {"", Variant::None, 8, 3, NonEquivalentBackground::Victoreen}, 1e-9},
             {"exact", {"", Variant::Exact, 4}, 1e-12},
             {"three points", {"", Variant::ThreePoint, 3}, 1e-12}},
            [](const Case &c) { checkRegion(NoisyMaps(c.method, Intensities::Counted, 50, 40), c.tolerance); });
    }

    /// A few thousand pixels: bounds are five standard deviations of the shares, about 3 % of sigma and 10 % of gamma.
    void coverage()
    {
        forRows<CoverageMethod, double, double>(
            {{"linear", CoverageMethod::NonEquivalentLinear, 1.0, 1.0},
             {"Victoreen, stored as tenths", CoverageMethod::NonEquivalentVictoreen, 0.3, 10.0},
             {"exact", CoverageMethod::Exact, 1.0, 1.0},
             {"least squares", CoverageMethod::LeastSquares, 1.0, 1.0}},
            [](CoverageMethod method, double thickness, double unit) {
                CoverageConditions conditions;
                conditions.method = method;
                conditions.thickness = thickness;
                conditions.unit = unit;
                conditions.side = 90;
                const CoverageResult result = measureCoverage(conditions);
                for (const Coverage &share : {result.valence, result.amount, result.fraction}) {
                    QVERIFY2(std::abs(share.once - 0.683) < 0.026, qPrintable(QString::number(share.once)));
                    QVERIFY2(std::abs(share.twice - 0.954) < 0.012, qPrintable(QString::number(share.twice)));
                }
                QCOMPARE(result.noise.isScaleAssumed, method == CoverageMethod::Exact);
                QVERIFY(std::abs(result.noise.scale * unit - 1.0) < 0.08);
            });
    }

private:
    /// The deviation is that of the plain residuals, the errors scale with it.
    static void checkTarget(const RunInfo &run, const Vector &y)
    {
        const Vector ones(y.size(), 1.0);
        const TargetFit target = fitTarget(run, y);
        const SpectrumFit unit = fitSpectrum(run, y, ones);
        if (unit.degrees == 0) {
            QVERIFY(std::isnan(target.deviation) && std::isnan(target.factor) && std::isnan(target.fit.valenceError));
            return;
        }
        QVERIFY(isClose(target.deviation, std::sqrt(weightedSquares(run, y, ones) / unit.degrees), 1e-5));
        QVERIFY(isClose(target.fit.valenceError, unit.valenceError * target.deviation));
        QVERIFY(isClose(target.fit.fractionErrors[0] + 1, unit.fractionErrors[0] * target.deviation + 1));
        QVERIFY(isClose(target.fit.misfit(), 1.0));
        QCOMPARE(target.factor, studentFactor(unit.degrees));
    }

    static void checkMap(const NoisyMaps &noisy, std::optional<double> thinnest)
    {
        UncertaintyRequest request;
        request.thinnest = thinnest;
        request.hasFractions = true;
        UncertaintyMap map;
        QVERIFY(computeUncertainty(noisy.constants, noisy.pointers, noisy.results, request, &map, 1,
                                   numeric::InstructionSet::Baseline));
        const std::size_t count = noisy.results.count();
        std::vector<PixelErrors> errors;
        Vector all;
        for (std::size_t i = 0; i < count; ++i) {
            errors.push_back(noisy.errorsAt(i, map.noise));
            if (std::isfinite(errors[i].chiSquare))
                all.push_back(errors[i].chiSquare);
        }
        double scale = map.noise.isUniform ? std::nan("") : 1.0;
        if (map.degrees > 0) {
            const double rough = plainMedian(all) / chiSquareMedian(map.degrees);
            Vector material;
            for (std::size_t i = 0; i < count; ++i) {
                const double least = thinnest.value_or(3 * std::sqrt(rough) * errors[i].amount);
                if (std::isfinite(errors[i].chiSquare) && noisy.results.t()[i] >= least)
                    material.push_back(errors[i].chiSquare);
            }
            scale = plainMedian(material) / chiSquareMedian(map.degrees);
            QCOMPARE(map.scalePixels, material.size());
        }
        QVERIFY(isClose(map.noise.scale, scale, 1e-6));
        QCOMPARE(map.noise.isScaleAssumed, map.degrees == 0 && !map.noise.isUniform);
        for (std::size_t i = 0; i < count; ++i) {
            QVERIFY(isClose(map.amount[i], errors[i].amount * std::sqrt(scale), 1e-5));
            QVERIFY(isClose(map.valence[i], errors[i].valence * std::sqrt(scale), 1e-5));
            for (std::size_t j = 0; j < map.fractions.size(); ++j)
                QVERIFY(isClose(map.fractions[j][i], errors[i].fractions[j] * std::sqrt(scale), 1e-5));
            if (map.degrees > 0)
                QVERIFY(isClose(map.misfit[i], errors[i].chiSquare / (map.degrees * scale), 1e-5));
        }
        checkOtherRuns(noisy, request, map);
    }

    static void checkOtherRuns(const NoisyMaps &noisy, const UncertaintyRequest &request, const UncertaintyMap &wanted)
    {
        using numeric::InstructionSet;
        UncertaintyMap map; // its memory serves every run
        for (const InstructionSet set : {InstructionSet::Baseline, InstructionSet::Avx2, InstructionSet::Avx512}) {
            for (const int threads : {1, 3}) {
                if (set > numeric::bestInstructionSet())
                    continue;
                QVERIFY(
                    computeUncertainty(noisy.constants, noisy.pointers, noisy.results, request, &map, threads, set));
                QVERIFY(isSamePlane(map.valence, wanted.valence) && isSamePlane(map.amount, wanted.amount));
                QVERIFY(isSamePlane(map.misfit, wanted.misfit));
                QVERIFY(isSamePlane(map.fractions.back(), wanted.fractions.back()));
            }
        }
        auto fewer = noisy.pointers;
        fewer.pop_back();
        QVERIFY(!computeUncertainty(noisy.constants, fewer, noisy.results, request, &map));
        QVERIFY(map.valence.size() == 0);
    }

    static void checkRegion(const NoisyMaps &noisy, double tolerance)
    {
        UncertaintyMap map;
        QVERIFY(computeUncertainty(noisy.constants, noisy.pointers, noisy.results, {}, &map));
        const PixelRectangle corners = {60, 31, 7, -4}; // in any order, partly beside the map of 50 x 40
        const std::vector<std::size_t> pixels = regionPixels(noisy.results, corners, 0.5);
        const RegionStatistics region =
            regionStatistics(noisy.run, noisy.pointers, noisy.results, map.noise, pixels, 1);
        Vector valences;
        double amount = 0.0, weighted = 0.0, squares = 0.0, variance = 0.0, mean = 0.0;
        for (std::size_t i = 0; i < noisy.results.count(); ++i) {
            const bool isInside = i % 50 >= 7 && i / 50 <= 31 && noisy.results.t()[i] >= 0.5;
            QCOMPARE(std::binary_search(pixels.begin(), pixels.end(), i), isInside);
            if (!isInside || std::isnan(map.amount[i]))
                continue;
            const PixelValues found = noisy.valuesAt(i);
            valences.push_back(found.valence);
            amount += found.amount;
            weighted += found.amount * found.valence;
            squares += map.valence[i] * map.valence[i];
            mean += noisy.maps[1].absorptions()[i];
            variance += map.noise.scale * map.noise.relativeVariance(1, noisy.maps[1].I()[i], noisy.maps[1].I0()[i]);
        }
        const auto count = static_cast<double>(valences.size());
        QVERIFY(valences.size() > 800);
        QCOMPARE(region.pixels, valences.size());
        QCOMPARE(region.pixels + region.leftOut, pixels.size());
        QVERIFY(isClose(region.mean, weighted / amount) && isClose(region.amount, amount));
        QVERIFY2(isClose(region.fit.valence, region.mean, tolerance),
                 qPrintable(QString::number(region.fit.valence / region.mean - 1)));
        QVERIFY(isClose(region.fit.amount, amount / count, tolerance));
        QVERIFY(isClose(region.median, plainMedian(valences)));
        QVERIFY(isClose(region.expectedScatter, std::sqrt(squares / count), 1e-9));
        QVERIFY(isClose(region.points[1].mean, mean / count));
        QVERIFY(isClose(region.points[1].error, std::sqrt(variance) / count));
        checkCurve(noisy.run, region);
        const RegionStatistics nothing = regionStatistics(noisy.run, noisy.pointers, noisy.results, map.noise, {});
        QVERIFY(nothing.pixels == 0 && std::isnan(nothing.mean) && std::isnan(nothing.median));
    }

    /// The curve's parts against the fitted values: everywhere, or at the V point.
    static void checkCurve(const RunInfo &run, const RegionStatistics &region)
    {
        const SpectrumFit &fit = region.fit;
        const bool isVictoreen = run.method.background == NonEquivalentBackground::Victoreen;
        const std::size_t first = run.method.isNonEquivalent ? 0 : region.points.size() - 1;
        for (std::size_t k = first; k < region.points.size(); ++k) {
            const double energy = region.points[k].energy;
            const double l = 12398.424360387684 / energy;
            double sum = fit.background[0] + fit.background[1] * (isVictoreen ? std::pow(l, 3) : energy) +
                         fit.background[2] * std::pow(l, 4);
            for (std::size_t j = 0; j < fit.components.size(); ++j)
                sum += fit.components[j] * referenceValue(j, energy);
            QVERIFY(isClose(sum, region.points[k].fitted, 1e-8));
            QVERIFY(std::abs(region.points[k].residual()) < 5.0);
        }
    }
};

QTEST_APPLESS_MAIN(TestUncertainty)
#include "TestUncertainty.moc"
