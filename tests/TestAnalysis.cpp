#include "analysis/methods/FourPoints.h"
#include "analysis/methods/FourPointsMap.h"
#include "analysis/results/MapRecords.h"
#include "analysis/results/Statistics.h"
#include "tests/MethodSamples.h"
#include "tests/Tables.h"

#include <limits>
#include <numeric>
#include <random>

namespace
{

using Variant = FourPointsVariant;

/// References with edge jumps jumpA and jumpB at 3 or 5 anchor points and the V point (last), and a target that follows
/// the method's model exactly.
struct Mixture {
    FourPointsReferences references;
    std::vector<double> x;
};

Mixture mixtureOf(double a, double t, double jumpA, double jumpB, std::size_t anchors)
{
    constexpr double mu0 = -0.7;
    constexpr double k = 1.3e-4; // per eV
    const std::vector<double> energies = {7080, 7160, 7220, 7040, 7300};
    const std::vector<double> shapeA = {0.01, 1.21, 0.93, 0.02, 1.05};
    const std::vector<double> shapeB = {0.02, 0.88, 1.15, 0.01, 0.97};
    Mixture m;
    m.references.r = jumpA / jumpB;
    const auto addPoint = [&m](double energy, double valueA, double valueB, double x) {
        m.references.energies.push_back(energy);
        m.references.a.push_back(valueA);
        m.references.b.push_back(valueB);
        m.x.push_back(x + mu0 + k * energy);
    };
    for (std::size_t i = 0; i < anchors; ++i)
        addPoint(energies[i], jumpA * shapeA[i], jumpB * shapeB[i], t * (jumpA * shapeA[i] + jumpB * shapeB[i]) / 2);
    addPoint(7122, jumpA * 0.35, jumpB * 0.82, t * (jumpA + jumpB) / 2 * (a * 0.35 + (1 - a) * 0.82));
    return m;
}

FourPointsResult solve(Variant variant, const Mixture &m)
{
    numeric::LinearSystem work(3);
    return solveFourPoints(variant, m.references, m.x.data(), &work);
}

/// What the straight line through the points (x, y) has at `at`.
double onLine(const std::vector<double> &x, const std::vector<double> &y, double at)
{
    const auto n = static_cast<double>(x.size());
    const double meanX = std::accumulate(x.begin(), x.end(), 0.0) / n;
    const double meanY = std::accumulate(y.begin(), y.end(), 0.0) / n;
    double xx = 0.0, xy = 0.0;
    for (std::size_t i = 0; i < x.size(); ++i) {
        xx += (x[i] - meanX) * (x[i] - meanX);
        xy += (x[i] - meanX) * (y[i] - meanY);
    }
    return meanY + xy / xx * (at - meanX);
}

} // namespace

/// The four-points method, and summaries of results.
class TestAnalysis : public QObject
{
    Q_OBJECT

private slots:
    void variants()
    {
        forRows<int, bool, bool, Variant>({{"2", 2, false, true, Variant::None},
                                           {"3 whatever is chosen", 3, true, false, Variant::ThreePoint},
                                           {"4 least squares", 4, false, true, Variant::LeastSquares},
                                           {"4 with neither chosen", 4, false, false, Variant::LeastSquares},
                                           {"4 exact", 4, true, false, Variant::Exact},
                                           {"4 with both chosen", 4, true, true, Variant::Exact},
                                           {"5 exact is refused", 5, true, false, Variant::None},
                                           {"8 least squares", 8, false, true, Variant::LeastSquares}},
                                          [](int points, bool exact, bool leastSquares, Variant variant) {
                                              QVERIFY(chooseFourPoints(points, exact, leastSquares) == variant);
                                          });
    }

    /// Every variant with a background, from the same mixture: the exact solution and least squares with just enough
    /// and with more than enough anchor points.
    void mixturesComeBack()
    {
        forRows<double, double, double, double>(
            {{"equal jumps", 0.3, 0.6, 1.0, 1.0},
             {"jump of A twice that of B", 0.3, 0.6, 2.0, 1.0},
             {"jump of B larger, thick", 0.75, 2.5, 0.8, 1.7},
             {"outside the references", -0.2, 0.6, 1.3, 1.1}},
            [](double a, double t, double jumpA, double jumpB) {
                const Mixture four = mixtureOf(a, t, jumpA, jumpB, 3), six = mixtureOf(a, t, jumpA, jumpB, 5);
                for (const FourPointsResult &result : {solve(Variant::Exact, four), solve(Variant::LeastSquares, four),
                                                       solve(Variant::LeastSquares, six)}) {
                    QVERIFY2(near(result.a, a), qPrintable(QString::number(result.a, 'g', 12)));
                    QVERIFY2(near(result.t, t), qPrintable(QString::number(result.t, 'g', 12)));
                }
            });
    }

    void threePointFormula()
    {
        // nA = .5/1, nB = .2/2 = .1, nX = .9/3 = .3; a = (.3 - .1) / (.5 - .1); t = 3 / ((2 + 1) / 2).
        const FourPointsResult result = threePoints({1, 4, 1.9}, {0, 1, 0.5}, {1, 3, 1.2});
        QVERIFY(near(result.a, 0.5, 1e-14));
        QVERIFY(near(result.t, 2.0, 1e-14));
        // A, then B, in a different thickness and with an offset.
        QVERIFY(near(threePoints({5.2, 7.6, 6.2}, {0.1, 1.3, 0.6}, {0.2, 1.1, 0.9}).a, 1.0));
        QVERIFY(near(threePoints({5.4, 7.2, 6.8}, {0.1, 1.3, 0.6}, {0.2, 1.1, 0.9}).a, 0.0));
        QCOMPARE(mixedValence(2, 3, 1.0), 2.0);
        QCOMPARE(mixedValence(2, 3, 0.25), 2.75);
        QCOMPARE((ValencePair{true, 2, 3}).mixed(0.25), 2.75);
        QCOMPARE((ValencePair{false, 2, 3}).mixed(0.25), 0.0); // fewer than two references
    }

    /// With noise the two directions of regression differ. The coefficient c2 of S = A + B on X beside a straight line
    /// in E is that of S on the part of X that no line explains (R. Frisch and F. V. Waugh, Econometrica 1 (1933) 387).
    void leastSquaresRegressesReferencesOnTarget()
    {
        std::mt19937 random(3);
        for (int round = 0; round < 200; ++round) {
            Mixture m = mixtureOf(0.4, 0.8, 1.2, 0.9, 5);
            for (double &x : m.x)
                x += (static_cast<double>(random() % 2001) - 1000) * 2e-5;
            const std::vector<double> e(m.references.energies.begin(), m.references.energies.begin() + 5);
            const std::vector<double> target(m.x.begin(), m.x.begin() + 5);
            double sx = 0.0, xx = 0.0;
            for (std::size_t i = 0; i < 5; ++i) {
                const double x = m.x[i] - onLine(e, target, e[i]);
                sx += (m.references.a[i] + m.references.b[i]) * x;
                xx += x * x;
            }
            const double scale = sx / xx; // c2
            std::vector<double> rest;
            for (std::size_t i = 0; i < 5; ++i)
                rest.push_back(m.references.a[i] + m.references.b[i] - scale * m.x[i]);
            const double l4 = -onLine(e, rest, m.references.energies[5]) / scale;
            const double u = scale / (1 + m.references.r), w = m.references.r * u;
            const double a4 = m.references.a[5], b4 = m.references.b[5];
            const FourPointsResult result = solve(Variant::LeastSquares, m);
            QVERIFY2(near(result.t, 2 / scale, 1e-7), qPrintable(QString::number(round)));
            QVERIFY(near(result.a, ((l4 - m.x[5]) * w * u + b4 * w) / (b4 * w - u * a4), 1e-7));
        }
    }

    void nothingToSolveIsNotFinite()
    {
        QVERIFY(!std::isfinite(threePoints({0, 1, 1.5}, {0, 1, 2}, {0, 1, 2}).a)); // equal references
        Mixture flat = mixtureOf(0.4, 0.8, 1, 1, 3);
        flat.x = {1, 1, 1, 1}; // a flat target has no edge to compare
        QVERIFY(!std::isfinite(solve(Variant::LeastSquares, flat).a));
        Mixture oneEnergy = mixtureOf(0.4, 0.8, 1, 1, 3);
        oneEnergy.references.energies = {7000, 7000, 7000, 7000};
        QVERIFY(!std::isfinite(solve(Variant::Exact, oneEnergy).a));
        // Fewer points than the variant needs, as with two V points: no number, and nothing read that is not there.
        for (const Variant variant : {Variant::ThreePoint, Variant::Exact, Variant::LeastSquares})
            QVERIFY(std::isnan(solve(variant, mixtureOf(0.4, 0.8, 1, 1, variant == Variant::ThreePoint ? 1 : 2)).a));
    }

    /// The V point decides the size. A pixel that an anchor's map lacks counts with -1 there; one that the V point's
    /// own map lacks sits at 0, 0.
    void mapSizesMayDiffer()
    {
        const auto half = [](qint64) {
            return 0.5;
        };
        const A2DData p = makeMap(1, 1, [](qint64) { return 0.0; });
        const A2DData q = makeMap(2, 1, [](qint64) { return 1.0; });
        const A2DData wide = makeMap(2, 1, half, 7);
        FourPointsMapInput input = {Variant::ThreePoint, {{1, 2, 3}, {0, 1, 0}, {0, 1, 1}, 1.0}, {&p, &q, &wide}};
        ResultRecords results;
        QVERIFY(fillRecords(input, &results));
        QCOMPARE(results.count(), std::size_t(2));
        QCOMPARE(results.record(0).a, 0.5);
        QCOMPARE(results.record(1).a, 1 - (0.5 + 1) / (1.0 + 1));
        QCOMPARE(results.record(1).x, 8.0);
        QVERIFY(results.record(1).values.isEmpty());

        A2DData high = makeMap(1, 2, half, 7); // its second row is at y = 2
        input.maps = {&p, &q, &high};
        high.setSize(2, 2); // promises four pixels, holds two
        QVERIFY(fillRecords(input, &results));
        QCOMPARE(QSize(results.width(), results.height()), QSize(2, 2));
        QCOMPARE(results.record(1).y, 2.0);
        QCOMPARE(results.record(3).x, 0.0);
        QCOMPARE(results.record(3).y, 0.0);
        QVERIFY(std::isnan(results.record(3).a)); // every curve is flat at -1
        QCOMPARE(results.record(4).a, 0.0);       // no such pixel

        high.setSize(11586, 11586); // 11585 squared is just below 2^27: refused, and the last result stays
        QVERIFY(!fillRecords(input, &results));
        QCOMPARE(results.count(), std::size_t(4));
        QCOMPARE(results.record(1).y, 2.0);
    }

    void summaries()
    {
        FiniteSummaryBuilder builder;
        QVERIFY(std::isnan(builder.summary().mean));
        for (const double value : {1e9 + 1, std::nan(""), 1e9 + 3, std::numeric_limits<double>::infinity(), 1e9 + 5})
            builder.add(value);
        const FiniteSummary summary = builder.summary();
        QCOMPARE(summary.count, std::size_t(3));
        QCOMPARE(summary.mean, 1e9 + 3);
        QVERIFY(near(summary.deviation, std::sqrt(8.0 / 3))); // squares of 1e9 would leave nothing of it
        QCOMPARE(summary.min, 1e9 + 1);
        QCOMPARE(summary.max, 1e9 + 5);
    }
};

QTEST_APPLESS_MAIN(TestAnalysis)
#include "TestAnalysis.moc"
