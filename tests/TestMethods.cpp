#include "analysis/methods/NonEquivalent.h"
#include "analysis/results/MapRecords.h"
#include "tests/MethodSamples.h"

#include <QtTest>

#include <cmath>
#include <limits>
#include <random>

using namespace ResultPosition;

namespace
{

constexpr double infinity = std::numeric_limits<double>::infinity();

/// The background b0 + b1 E or b0 + b1 L^3 + b2 L^4.
double background(NonEquivalentBackground form, double energy)
{
    if (form == NonEquivalentBackground::Linear)
        return 0.4 - 3e-5 * energy;
    const double l = 12398.424360387684 / energy;
    return 0.3 + 0.02 * l * l * l - 0.004 * l * l * l * l;
}

/// c_1 ... c_m and the background by the normal equations in long double, Gauss-Jordan with the largest pivot.
std::vector<long double> independentFit(NonEquivalentBackground form, const std::vector<double> &y,
                                        const NonEquivalentReferences &references)
{
    using Real = long double;
    const auto n = static_cast<std::size_t>(nonEquivalentUnknowns(references.count(), form));
    std::vector<std::vector<Real>> a(n, std::vector<Real>(n + 1));
    for (std::size_t k = 0; k < y.size(); ++k) {
        std::vector<Real> basis;
        for (const auto &column : references.columns)
            basis.push_back(column[k]);
        const Real l = 12398.424360387684L / references.energies[k];
        basis.push_back(1);
        if (form == NonEquivalentBackground::Linear)
            basis.push_back(references.energies[k]);
        else
            basis.insert(basis.end(), {l * l * l, l * l * l * l});
        basis.push_back(y[k]);
        for (std::size_t i = 0; i < n; ++i) {
            for (std::size_t j = 0; j <= n; ++j)
                a[i][j] += basis[i] * basis[j];
        }
    }
    for (std::size_t k = 0; k < n; ++k) {
        std::size_t best = k;
        for (std::size_t r = k; r < n; ++r)
            best = std::abs(a[r][k]) > std::abs(a[best][k]) ? r : best;
        std::swap(a[k], a[best]);
        for (std::size_t r = 0; r < n; ++r) {
            const Real multiplier = r == k ? 0 : a[r][k] / a[k][k];
            for (std::size_t j = k; j <= n; ++j)
                a[r][j] -= multiplier * a[k][j];
        }
    }
    std::vector<Real> solution;
    for (std::size_t k = 0; k < n; ++k)
        solution.push_back(a[k][n] / a[k][k]);
    return solution;
}

} // namespace

class TestMethods : public QObject
{
    Q_OBJECT

private slots:
    void preparation();
    void preparationFromSpectra();
    void nonEquivalentMixtures_data();
    void nonEquivalentMixtures();
    void nonEquivalentAgainstLongDouble();
    void singularSystems();
};

void TestMethods::preparation()
{
    const NonEquivalentReferences two = prepareNonEquivalent({1, 2}, {{5, 6}, {7, 8}}, {1.5, 0.5});
    QCOMPARE(two.jumpSum, 2.0);
    QCOMPARE(two.weights, (std::vector<double>{0.75, 0.25}));
    // Only the first eight energies count, and a panel has four rows.
    const std::vector<double> many(10, 1.0);
    const NonEquivalentReferences cut = prepareNonEquivalent(many, {5, many}, std::vector<double>(5, 2.0));
    QCOMPARE(cut.energies.size(), std::size_t(8));
    QCOMPARE(cut.count(), 4);
    QCOMPARE(cut.columns[3].size(), std::size_t(8));
    QCOMPARE(cut.weights, std::vector<double>(4, 0.25)); // equal jumps: s_j = 1 / m
}

void TestMethods::preparationFromSpectra()
{
    const AMutE a = referenceSpectrum(0);
    const AMutE b = referenceSpectrum(1);
    const NonEquivalentReferences pre = prepareNonEquivalent({7050, 7120.25, 7200}, {&a, &b}, false);
    const NonEquivalentReferences post = prepareNonEquivalent({7050, 7120.25, 7200}, {&a, &b}, true);
    QVERIFY(near(pre.columns[0][0], 0.0, 1e-6));
    QVERIFY(near(pre.columns[0][2], jumps[0], 1e-6));
    QVERIFY(near(post.columns[1][0], -jumps[1], 1e-6));
    QVERIFY(near(post.columns[1][2], 0.0, 1e-6));
    QCOMPARE(pre.columns[1][1], b.valueAtEnergy(AMutE::PreSubtracted, 7120.25)); // in full precision
    QVERIFY(near(pre.weights[0], jumps[0] / (jumps[0] + jumps[1]), 1e-6));
    QVERIFY(near(pre.jumpSum, jumps[0] + jumps[1], 1e-6));
}

void TestMethods::nonEquivalentMixtures_data()
{
    QTest::addColumn<int>("references");
    QTest::addColumn<bool>("victoreen");
    QTest::addColumn<int>("points");
    QTest::newRow("2, linear, as many points as unknowns") << 2 << false << 4;
    QTest::newRow("2, linear") << 2 << false << 8;
    QTest::newRow("2, Victoreen") << 2 << true << 8;
    QTest::newRow("3, linear") << 3 << false << 7;
    QTest::newRow("3, Victoreen, as many points as unknowns") << 3 << true << 6;
    QTest::newRow("4, linear") << 4 << false << 8;
    QTest::newRow("4, Victoreen, as many points as unknowns") << 4 << true << 7;
    QTest::newRow("4, Victoreen") << 4 << true << 8;
}

/// A mixture made of amounts t f_j comes back with its fractions, amounts, t, valence and background, for the target
/// as for a map; references of different edge jumps.
void TestMethods::nonEquivalentMixtures()
{
    QFETCH(int, references);
    QFETCH(bool, victoreen);
    QFETCH(int, points);
    const auto form = victoreen ? NonEquivalentBackground::Victoreen : NonEquivalentBackground::Linear;
    const auto m = static_cast<std::size_t>(references);
    // Spread over the range also when there are few.
    std::vector<double> energies = eightEnergies;
    for (const std::size_t left : {std::size_t(1), std::size_t(5), std::size_t(3), std::size_t(1)}) {
        if (energies.size() > static_cast<std::size_t>(points))
            energies.erase(energies.begin() + static_cast<int>(left));
    }
    const NonEquivalentReferences prepared = referencesAt(energies, m);
    const std::vector<double> shares = {0.45, 0.35, -0.1, 0.3}; // of 1.0 with all four
    double sum = 0.0;
    for (std::size_t j = 0; j < m; ++j)
        sum += shares[j];
    const double t = 1.7;
    std::vector<double> y;
    for (const double energy : energies) {
        double value = background(form, energy);
        for (std::size_t j = 0; j < m; ++j)
            value += t * shares[j] / sum / jumps[j] * referenceValue(j, energy);
        y.push_back(value);
    }
    const std::vector<double> valences(fourValences.begin(), fourValences.begin() + references);
    const NonEquivalentValues target = solveNonEquivalent(form, y, prepared, valences);

    std::vector<A2DData> maps;
    for (const double value : y)
        maps.push_back(makeMap(3, 2, [value](qint64) { return value; }));
    ResultRecords results;
    QVERIFY(fillRecords(NonEquivalentMapInput{form, prepared, valences, pointersTo(maps)}, &results));
    const ResultRecord pixel = results.record(4);

    double mean = 0.0;
    for (std::size_t j = 0; j < m; ++j)
        mean += shares[j] / sum * fourValences[j];
    // The Victoreen terms nearly cancel each other: the coefficients keep fewer digits than what they are there for.
    const double digits = victoreen ? 1e-4 : 1e-9;
    const double wantedBackground[] = {victoreen ? 0.3 : 0.4, victoreen ? 0.02 : -3e-5, victoreen ? -0.004 : 0.0};
    for (const QVector<double> &values : {QVector<double>(target.begin(), target.end()), pixel.values}) {
        for (int j = 0; j < referenceRows; ++j) {
            const double fraction = j < references ? shares[static_cast<std::size_t>(j)] / sum : 0.0;
            QVERIFY2(near(values[ratio + j], fraction), qPrintable(QString::number(values[ratio + j] - fraction)));
            QVERIFY2(near(values[dMut + j], t * fraction), qPrintable(QString::number(values[dMut + j])));
        }
        for (int i = 0; i < 3; ++i)
            QVERIFY2(near(values[mut0 + i], wantedBackground[i], digits),
                     qPrintable(QString::number(values[mut0 + i] - wantedBackground[i])));
        QVERIFY(victoreen || values[c2] == 0.0);
        QVERIFY(near(values[valence], mean));
        QVERIFY(near(values[amount], t));
    }
    QCOMPARE(pixel.a, pixel.values[ratio]);
    QCOMPARE(pixel.t, pixel.values[amount]);
    QCOMPARE(pixel.x, 1.0);
    QCOMPARE(pixel.y, 2.0);
}

/// Noise that no mixture explains, hence a true least-squares problem.
void TestMethods::nonEquivalentAgainstLongDouble()
{
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        const auto form = round % 2 ? NonEquivalentBackground::Linear : NonEquivalentBackground::Victoreen;
        const auto m = static_cast<std::size_t>(2 + round % 3);
        const NonEquivalentReferences references = referencesAt(eightEnergies, m);
        std::vector<double> y;
        for (const double energy : eightEnergies)
            y.push_back(referenceValue(0, energy) + 0.5 * referenceValue(1, energy) +
                        static_cast<double>(random() % 1000) * 1e-4);
        const NonEquivalentValues got =
            solveNonEquivalent(form, y, references, {fourValences.begin(), fourValences.begin() + static_cast<int>(m)});
        const std::vector<long double> wanted = independentFit(form, y, references);
        long double t = 0, mean = 0;
        for (std::size_t j = 0; j < m; ++j)
            t += wanted[j] * static_cast<long double>(jumps[j]);
        double fractions = 0.0, amounts = 0.0;
        for (std::size_t j = 0; j < m; ++j) {
            const long double fraction = wanted[j] * static_cast<long double>(jumps[j]) / t;
            mean += fraction * static_cast<long double>(fourValences[j]);
            QVERIFY2(near(got[ratio + j], static_cast<double>(fraction), 1e-7), qPrintable(QString::number(round)));
            fractions += got[ratio + j];
            amounts += got[dMut + j];
        }
        QVERIFY(near(got[amount], static_cast<double>(t), 1e-7));
        QVERIFY(near(got[valence], static_cast<double>(mean), 1e-7));
        QVERIFY(near(fractions, 1.0));
        QVERIFY(near(amounts, got[amount]));
    }
}

void TestMethods::singularSystems()
{
    // Two references that are one and the same, in whole numbers: the pivot is exactly 0.
    const std::vector<double> energies = {1, 2, 3, 4, 5, 6, 7, 8};
    const std::vector<double> column = {1, 0, 1, 0, 1, 0, 1, 0};
    const NonEquivalentReferences twins = prepareNonEquivalent(energies, {column, column}, {1, 1});
    const NonEquivalentValues values = solveNonEquivalent(NonEquivalentBackground::Linear, column, twins, {2, 3});
    QVERIFY(!std::isfinite(values[valence]));
    // References of no height at all.
    const std::vector<double> flat(8, 0.0);
    const NonEquivalentValues none = solveNonEquivalent(
        NonEquivalentBackground::Linear, column, prepareNonEquivalent(eightEnergies, {flat, flat}, {0, 0}), {2, 3});
    QVERIFY(std::isnan(none[valence]));
    QVERIFY(std::isnan(none[amount]));
}

QTEST_APPLESS_MAIN(TestMethods)
#include "TestMethods.moc"
