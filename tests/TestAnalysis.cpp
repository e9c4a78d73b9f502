#include "analysis/methods/FourPoints.h"
#include "analysis/methods/FourPointsMap.h"
#include "analysis/results/MapRecords.h"
#include "analysis/results/Statistics.h"
#include "mapdata/MapFileReader.h"

#include <QtTest>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

namespace
{

bool near(double got, double wanted, double tolerance = 1e-9)
{
    return std::abs(got - wanted) <= tolerance * std::max(1.0, std::abs(wanted));
}

/// Two references with edge jumps jumpA and jumpB at 3 or 5 anchor points and the V point (last), and a target that
/// follows the method's model exactly.
struct Mixture {
    FourPointsReferences references;
    std::vector<double> x;
    double a, t;
};

Mixture mixtureOf(double a, double t, double jumpA, double jumpB, int anchors)
{
    constexpr double mu0 = -0.7;
    constexpr double k = 1.3e-4; // per eV
    const std::vector<double> energies = {7080, 7160, 7220, 7040, 7300};
    const std::vector<double> shapeA = {0.01, 1.21, 0.93, 0.02, 1.05};
    const std::vector<double> shapeB = {0.02, 0.88, 1.15, 0.01, 0.97};
    Mixture m;
    m.a = a;
    m.t = t;
    for (std::size_t i = 0; i < static_cast<std::size_t>(anchors); ++i) {
        m.references.energies.push_back(energies[i]);
        m.references.a.push_back(jumpA * shapeA[i]);
        m.references.b.push_back(jumpB * shapeB[i]);
        m.x.push_back(t * (m.references.a[i] + m.references.b[i]) / 2 + mu0 + k * energies[i]);
    }
    const double energy = 7122;
    const double a4 = jumpA * 0.35;
    const double b4 = jumpB * 0.82;
    m.references.energies.push_back(energy);
    m.references.a.push_back(a4);
    m.references.b.push_back(b4);
    m.references.r = jumpA / jumpB;
    m.x.push_back(t * (jumpA + jumpB) / 2 * (a * a4 / jumpA + (1 - a) * b4 / jumpB) + mu0 + k * energy);
    return m;
}

FourPointsResult solve(FourPointsVariant variant, const Mixture &m)
{
    numeric::LinearSystem work(3);
    return solveFourPoints(variant, m.references, m.x.data(), &work);
}

/// A map of the given rows of absorptions, written as I with I0 = 0 (which means: the absorption itself).
A2DData mapOf(const QVector<QVector<double>> &rows, double shift = 0.0)
{
    QByteArray text = "# 1301\n# AXIS 0 x um 0 1 " + QByteArray::number(rows.first().size() - 1) +
                      "\n# AXIS 1 y um 0 1 " + QByteArray::number(rows.size() - 1) + "\n";
    for (int y = 0; y < rows.size(); ++y) {
        for (int x = 0; x < rows[y].size(); ++x)
            text += QByteArray::number(x + shift) + " " + QByteArray::number(y) + " " +
                    QByteArray::number(rows[y][x], 'g', 17) + " 0\n";
    }
    A2DData map;
    parseMapText(text, &map);
    return map;
}

} // namespace

class TestAnalysis : public QObject
{
    Q_OBJECT

private slots:
    void variants_data();
    void variants();
    void mixturesComeBack_data();
    void mixturesComeBack();
    void pureReferences();
    void threePointFormula();
    void leastSquaresRegressesReferencesOnTarget();
    void nothingToSolveIsNotFinite();
    void mapPixelsAreTheSolversResults();
    void mapSizesMayDiffer();
    void threadsDoNotChangeABit();
    void summaries();
};

void TestAnalysis::variants_data()
{
    QTest::addColumn<int>("points");
    QTest::addColumn<bool>("exact");
    QTest::addColumn<bool>("leastSquares");
    QTest::addColumn<int>("variant");
    const auto row = [](const char *name, int points, bool exact, bool leastSquares, FourPointsVariant variant) {
        QTest::newRow(name) << points << exact << leastSquares << static_cast<int>(variant);
    };
    row("2", 2, false, true, FourPointsVariant::None);
    row("3 whatever is chosen", 3, true, false, FourPointsVariant::ThreePoint);
    row("4 least squares", 4, false, true, FourPointsVariant::LeastSquares);
    row("4 with neither chosen", 4, false, false, FourPointsVariant::LeastSquares);
    row("4 exact", 4, true, false, FourPointsVariant::Exact);
    row("4 with both chosen", 4, true, true, FourPointsVariant::Exact);
    row("5 least squares", 5, false, true, FourPointsVariant::LeastSquares);
    row("5 exact is refused", 5, true, false, FourPointsVariant::None);
    row("8 least squares", 8, false, true, FourPointsVariant::LeastSquares);
}

void TestAnalysis::variants()
{
    QFETCH(int, points);
    QFETCH(bool, exact);
    QFETCH(bool, leastSquares);
    QFETCH(int, variant);
    QCOMPARE(static_cast<int>(chooseFourPoints(points, exact, leastSquares)), variant);
}

void TestAnalysis::mixturesComeBack_data()
{
    QTest::addColumn<double>("a");
    QTest::addColumn<double>("t");
    QTest::addColumn<double>("jumpA");
    QTest::addColumn<double>("jumpB");
    QTest::newRow("equal jumps") << 0.3 << 0.6 << 1.0 << 1.0;
    QTest::newRow("thick") << 0.9 << 2.5 << 1.0 << 1.0;
    QTest::newRow("jump of A twice that of B") << 0.3 << 0.6 << 2.0 << 1.0;
    QTest::newRow("jump of B larger") << 0.75 << 1.1 << 0.8 << 1.7;
    QTest::newRow("outside the references") << -0.2 << 0.6 << 1.3 << 1.1;
}

/// Every variant with a background, from the same mixture: the exact solution and least squares with just enough and
/// with more than enough anchor points.
void TestAnalysis::mixturesComeBack()
{
    QFETCH(double, a);
    QFETCH(double, t);
    QFETCH(double, jumpA);
    QFETCH(double, jumpB);
    const Mixture four = mixtureOf(a, t, jumpA, jumpB, 3);
    const Mixture six = mixtureOf(a, t, jumpA, jumpB, 5);
    for (const FourPointsResult &result :
         {solve(FourPointsVariant::Exact, four), solve(FourPointsVariant::LeastSquares, four),
          solve(FourPointsVariant::LeastSquares, six)}) {
        QVERIFY2(near(result.a, a), qPrintable(QString::number(result.a, 'g', 12)));
        QVERIFY2(near(result.t, t), qPrintable(QString::number(result.t, 'g', 12)));
    }
}

void TestAnalysis::pureReferences()
{
    // Three points: a target that is A, then B, in a different thickness and with an offset.
    const std::array<double, 3> a = {0.1, 1.3, 0.6};
    const std::array<double, 3> b = {0.2, 1.1, 0.9};
    const auto thickened = [](const std::array<double, 3> &v) {
        return std::array<double, 3>{2 * v[0] + 5, 2 * v[1] + 5, 2 * v[2] + 5};
    };
    QVERIFY(near(threePoints(thickened(a), a, b).a, 1.0));
    QVERIFY(near(threePoints(thickened(b), a, b).a, 0.0));
    QCOMPARE(mixedValence(2, 3, 1.0), 2.0);
    QCOMPARE(mixedValence(2, 3, 0.0), 3.0);
    QCOMPARE(mixedValence(2, 3, 0.25), 2.75);
}

void TestAnalysis::threePointFormula()
{
    // nA = .5/1, nB = .2/2 = .1, nX = .9/3 = .3; a = (.3 - .1) / (.5 - .1); t = 3 / ((2 + 1) / 2).
    const FourPointsResult result = threePoints({1, 4, 1.9}, {0, 1, 0.5}, {1, 3, 1.2});
    QVERIFY(near(result.a, 0.5, 1e-14));
    QVERIFY(near(result.t, 2.0, 1e-14));
}

/// With noise the two directions of regression differ; this one is checked against normal equations solved here in
/// long double by Cramer's rule.
void TestAnalysis::leastSquaresRegressesReferencesOnTarget()
{
    std::mt19937 random(3);
    numeric::LinearSystem work(3);
    for (int round = 0; round < 200; ++round) {
        Mixture m = mixtureOf(0.4, 0.8, 1.2, 0.9, 5);
        for (double &x : m.x)
            x += (static_cast<double>(random() % 2001) - 1000) * 2e-5;
        using Real = long double;
        Real n = 0, e1 = 0, x1 = 0, ee = 0, ex = 0, xx = 0, s1 = 0, se = 0, sx = 0;
        for (std::size_t i = 0; i < 5; ++i) {
            const Real e = m.references.energies[i] - 7150.0; // any origin of the energy gives the same c2 and L4
            const Real x = m.x[i];
            const Real s = Real(m.references.a[i]) + m.references.b[i];
            n += 1, e1 += e, x1 += x, ee += e * e, ex += e * x, xx += x * x, s1 += s, se += s * e, sx += s * x;
        }
        const auto det = [](Real a, Real b, Real c, Real d, Real e, Real f, Real g, Real h, Real i) {
            return a * (e * i - f * h) - b * (d * i - f * g) + c * (d * h - e * g);
        };
        const Real d = det(n, e1, x1, e1, ee, ex, x1, ex, xx);
        const Real c0 = det(s1, e1, x1, se, ee, ex, sx, ex, xx) / d;
        const Real c1 = det(n, s1, x1, e1, se, ex, x1, sx, xx) / d;
        const Real c2 = det(n, e1, s1, e1, ee, se, x1, ex, sx) / d;
        const Real r = m.references.r, u = c2 / (1 + r), w = r * u;
        const Real l4 = -c1 / c2 * (m.references.energies[5] - 7150.0) - c0 / c2;
        const Real a =
            ((l4 - m.x[5]) * w * u + m.references.b[5] * w) / (m.references.b[5] * w - u * m.references.a[5]);
        const FourPointsResult result =
            solveFourPoints(FourPointsVariant::LeastSquares, m.references, m.x.data(), &work);
        QVERIFY2(near(result.t, static_cast<double>(2 / c2), 1e-7), qPrintable(QString::number(round)));
        QVERIFY2(near(result.a, static_cast<double>(a), 1e-7), qPrintable(QString::number(round)));
    }
}

void TestAnalysis::nothingToSolveIsNotFinite()
{
    QVERIFY(!std::isfinite(threePoints({0, 1, 1.5}, {0, 1, 2}, {0, 1, 2}).a)); // equal references
    Mixture flat = mixtureOf(0.4, 0.8, 1, 1, 3);
    flat.x = {1, 1, 1, 1}; // a flat target has no edge to compare
    QVERIFY(!std::isfinite(solve(FourPointsVariant::LeastSquares, flat).a));
    Mixture oneEnergy = mixtureOf(0.4, 0.8, 1, 1, 3);
    oneEnergy.references.energies = {7000, 7000, 7000, 7000};
    QVERIFY(!std::isfinite(solve(FourPointsVariant::Exact, oneEnergy).a));
    // Fewer points than the variant needs, as with two V points: no number, and nothing read that is not there.
    for (const FourPointsVariant variant :
         {FourPointsVariant::ThreePoint, FourPointsVariant::Exact, FourPointsVariant::LeastSquares}) {
        const Mixture few = mixtureOf(0.4, 0.8, 1, 1, variant == FourPointsVariant::ThreePoint ? 1 : 2);
        QVERIFY(std::isnan(solve(variant, few).a));
    }
}

void TestAnalysis::mapPixelsAreTheSolversResults()
{
    const Mixture one = mixtureOf(0.3, 0.6, 1.4, 1, 3);
    const Mixture two = mixtureOf(0.8, 1.7, 1.4, 1, 3);
    for (const FourPointsVariant variant : {FourPointsVariant::Exact, FourPointsVariant::LeastSquares}) {
        FourPointsMapInput input;
        input.variant = variant;
        input.references = one.references;
        std::vector<A2DData> maps;
        for (std::size_t k = 0; k < 4; ++k)
            maps.push_back(mapOf({{one.x[k], two.x[k], one.x[k]}, {two.x[k], two.x[k], one.x[k]}}, k == 3 ? 0.5 : 0));
        for (const A2DData &map : maps)
            input.maps.push_back(&map);
        ResultRecords results;
        QVERIFY(fillRecords(input, &results));
        QCOMPARE(results.width(), 3);
        QCOMPARE(results.height(), 2);
        const double wanted[] = {0.3, 0.8, 0.3, 0.8, 0.8, 0.3};
        for (std::size_t i = 0; i < 6; ++i) {
            const ResultRecord record = results.record(i);
            QVERIFY(near(record.a, wanted[i]));
            QVERIFY(near(record.t, wanted[i] == 0.3 ? 0.6 : 1.7));
            QCOMPARE(record.x, static_cast<double>(i % 3) + 0.5); // the V point's positions
            QCOMPARE(record.y, static_cast<double>(i / 3));
            QVERIFY(record.values.isEmpty());
        }
        QCOMPARE(results.record(6).a, 0.0);
    }
}

/// The V point decides the size. A pixel that an anchor's map lacks counts with -1 there; one that the V point's own
/// map lacks sits at 0, 0.
void TestAnalysis::mapSizesMayDiffer()
{
    const A2DData p = mapOf({{0.0}});
    const A2DData q = mapOf({{1.0, 1.0}});
    A2DData r = mapOf({{0.5, 0.5}}, 7);
    FourPointsMapInput input;
    input.variant = FourPointsVariant::ThreePoint;
    input.references.energies = {1, 2, 3};
    input.references.a = {0, 1, 0};
    input.references.b = {0, 1, 1};
    input.maps = {&p, &q, &r};
    ResultRecords results;
    QVERIFY(fillRecords(input, &results));
    QCOMPARE(results.count(), std::size_t(2));
    QCOMPARE(results.record(0).a, 0.5);
    QCOMPARE(results.record(1).a, 1 - (0.5 + 1) / (1.0 + 1));
    QCOMPARE(results.record(1).x, 8.0);

    A2DData high = mapOf({{0.5}, {0.5}}, 7); // its second row is at y = 1
    input.maps = {&p, &q, &high};
    high.setSize(2, 2); // promises four pixels, holds two
    QVERIFY(fillRecords(input, &results));
    QCOMPARE(results.count(), std::size_t(4));
    QCOMPARE(results.record(1).y, 1.0);
    QCOMPARE(results.record(3).x, 0.0);
    QCOMPARE(results.record(3).y, 0.0);
    QVERIFY(std::isnan(results.record(3).a)); // every curve is flat at -1

    // A map that promises more than can be is refused, and the last result stays.
    for (const int side : {std::numeric_limits<int>::max(), 11586}) { // 11585 squared is just below 2^27
        high.setSize(side, side);
        QVERIFY(!fillRecords(input, &results));
        QCOMPARE(results.count(), std::size_t(4));
        QCOMPARE(results.record(1).y, 1.0);
    }
}

void TestAnalysis::threadsDoNotChangeABit()
{
    const Mixture m = mixtureOf(0.3, 0.6, 1.4, 1, 3);
    QVector<QVector<double>> rows(131, QVector<double>(137));
    std::vector<A2DData> maps;
    std::mt19937 random(5);
    for (std::size_t k = 0; k < 4; ++k) {
        for (QVector<double> &row : rows) {
            for (double &x : row)
                x = m.x[k] + static_cast<double>(random() % 1000) * 1e-4;
        }
        maps.push_back(mapOf(rows));
    }
    FourPointsMapInput input;
    input.variant = FourPointsVariant::LeastSquares;
    input.references = m.references;
    for (const A2DData &map : maps)
        input.maps.push_back(&map);
    ResultRecords one;
    QVERIFY(fillRecords(input, &one, 1));
    for (const int threads : {2, 3, 0}) {
        ResultRecords several;
        QVERIFY(fillRecords(input, &several, threads));
        QCOMPARE(several.count(), one.count());
        const std::size_t bytes = one.count() * sizeof(double);
        QCOMPARE(std::memcmp(one.a(), several.a(), bytes), 0);
        QCOMPARE(std::memcmp(one.t(), several.t(), bytes), 0);
        QCOMPARE(std::memcmp(one.x(), several.x(), bytes), 0);
        QCOMPARE(std::memcmp(one.y(), several.y(), bytes), 0);
    }
}

void TestAnalysis::summaries()
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

QTEST_APPLESS_MAIN(TestAnalysis)
#include "TestAnalysis.moc"
