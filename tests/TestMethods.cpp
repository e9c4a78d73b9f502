#include "analysis/FourPointsMap.h"
#include "analysis/NonEquivalent.h"
#include "tests/MethodSamples.h"

#include <QtTest>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

using namespace ResultPosition;

namespace
{

constexpr double infinity = std::numeric_limits<double>::infinity();
const std::vector<double> eightEnergies = {7000, 7060, 7112, 7119, 7124, 7135, 7400, 7900}; // eV
/// Equal bits, or both NaN: which of its operands' NaN an operation hands on is the processor's choice.
bool sameNumber(double got, double wanted)
{
    return std::memcmp(&got, &wanted, sizeof got) == 0 || (std::isnan(got) && std::isnan(wanted));
}

bool samePlane(const double *got, const double *wanted, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        if (!sameNumber(got[i], wanted[i])) {
            qWarning("pixel %zu: %.17g instead of %.17g", i, got[i], wanted[i]);
            return false;
        }
    }
    return true;
}

NonEquivalentReferences referencesAt(const std::vector<double> &energies, std::size_t count)
{
    std::vector<std::vector<double>> columns(count);
    for (std::size_t j = 0; j < count; ++j) {
        for (const double energy : energies)
            columns[j].push_back(referenceValue(j, energy));
    }
    return prepareNonEquivalent(energies, columns, {jumps.begin(), jumps.begin() + static_cast<int>(count)});
}

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

/// A map of width x height whose absorptions come from `value(pixel)`, at the positions (ix + shift, 2 iy).
template <class Value>
A2DData makeMap(int width, int height, Value value, double shift = 0.0)
{
    A2DData map;
    const qint64 count = qint64(width) * height;
    const A2DData::Columns columns = map.resize(count);
    map.setSize(width, height);
    for (qint64 i = 0; i < count; ++i) {
        columns.x[i] = static_cast<double>(i % width) + shift;
        columns.y[i] = 2.0 * static_cast<double>(i / width);
        columns.I[i] = columns.absorption[i] = value(i);
        columns.I0[i] = 0.0;
    }
    return map;
}

/// Maps of noisy mixtures with odd pixels in between: constant, zero, huge, infinite and NaN ones. Odd ones out of the
/// list are smaller than the first and the last.
std::vector<A2DData> oddMaps(const std::vector<double> &energies, int width, int height)
{
    std::vector<A2DData> maps;
    std::mt19937 random(11);
    for (std::size_t k = 0; k < energies.size(); ++k) {
        const auto value = [&](qint64 i) {
            const double noise = static_cast<double>(random() % 4001) * 1e-4 - 0.2;
            switch (i % 23) {
            case 3:
                return 1.0;
            case 7:
                return 0.0;
            case 11:
                return 1e300;
            case 13:
                return k == 2 ? infinity : 0.5;
            case 17:
                return k == 1 ? std::nan("") : noise;
            case 19:
                return noise * 1e-3; // sums below 1: another choice of pivots
            default:
                return 0.6 * referenceValue(0, energies[k]) + 0.3 * referenceValue(1, energies[k]) + noise;
            }
        };
        maps.push_back(makeMap(width, k % 3 == 1 ? height - 2 : height, value, static_cast<double>(k)));
    }
    return maps;
}

std::vector<const A2DData *> pointersTo(const std::vector<A2DData> &maps)
{
    std::vector<const A2DData *> pointers;
    for (const A2DData &map : maps)
        pointers.push_back(&map);
    return pointers;
}

/// Every instruction set that this processor has.
std::vector<numeric::InstructionSet> instructionSets()
{
    using numeric::InstructionSet;
    std::vector<InstructionSet> sets = {InstructionSet::Baseline};
    if (numeric::bestInstructionSet() != InstructionSet::Baseline)
        sets.push_back(InstructionSet::Avx2);
    if (numeric::bestInstructionSet() == InstructionSet::Avx512)
        sets.push_back(InstructionSet::Avx512);
    return sets;
}

} // namespace

class TestMethods : public QObject
{
    Q_OBJECT

private slots:
    void quantityTable();
    void preparation();
    void preparationFromSpectra();
    void nonEquivalentMixtures_data();
    void nonEquivalentMixtures();
    void nonEquivalentAgainstLongDouble();
    void nonEquivalentMapIsThePlainFit_data();
    void nonEquivalentMapIsThePlainFit();
    void singularSystems();
    void unusedQuantitiesAreZeroAgain();
    void refusedMapsChangeNothing();
    void fourPointsMapIsThePlainSolution_data();
    void fourPointsMapIsThePlainSolution();
    void valencePlane();
};

/// A wrong name here would leave a control without effect.
void TestMethods::quantityTable()
{
    QStringList names;
    for (const ResultQuantity &quantity : resultQuantities) {
        QCOMPARE(quantity.position, names.size());
        names.append(quantity.name);
        QString stem = QString(quantity.name).remove(' ');
        stem[0] = stem[0].toUpper();
        QCOMPARE(QString(quantity.recordBox), "Rec" + stem);
        QCOMPARE(QString(quantity.mapButton), "Map" + stem);
        const bool isAmountOfOne = quantity.position >= dMut && quantity.position < mut0;
        QCOMPARE(QString(quantity.histogramButton),
                 "Hg" + (isAmountOfOne ? QString("dMut%1").arg(quantity.position - 3) : stem));
    }
    QCOMPARE(names.join(','), QString("Ratio 1,Ratio 2,Ratio 3,Ratio 4,dMut 1,dMut 2,dMut 3,dMut 4,mut0,C1,C2,"
                                      "Valence,Amount"));
}

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
    QVERIFY(calcNonEquivalentMap({form, prepared, valences, pointersTo(maps)}, &results));
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

void TestMethods::nonEquivalentMapIsThePlainFit_data()
{
    QTest::addColumn<int>("references");
    QTest::addColumn<bool>("victoreen");
    QTest::addColumn<int>("points");
    for (const int references : {1, 2, 3, 4}) {
        for (const bool victoreen : {false, true}) {
            QTest::addRow("%d %s", references, victoreen ? "Victoreen" : "linear") << references << victoreen << 8;
            QTest::addRow("%d %s, too few points", references, victoreen ? "Victoreen" : "linear")
                << references << victoreen << 2;
        }
    }
}

/// Every pixel of a map is what the plain fit of its own column gives, to the last bit, also where that is infinite or
/// no number, for any number of threads and every instruction set.
void TestMethods::nonEquivalentMapIsThePlainFit()
{
    QFETCH(int, references);
    QFETCH(bool, victoreen);
    QFETCH(int, points);
    const std::vector<double> energies(eightEnergies.begin(), eightEnergies.begin() + points);
    constexpr int width = 137, height = 97; // enough for three threads
    std::vector<A2DData> maps = oddMaps(energies, width, height);
    maps.front().setSize(width, height + 1); // promises a row that no map has
    NonEquivalentMapInput input;
    input.background = victoreen ? NonEquivalentBackground::Victoreen : NonEquivalentBackground::Linear;
    input.references = referencesAt(energies, static_cast<std::size_t>(references));
    input.valences.assign(fourValences.begin(), fourValences.begin() + references);
    input.maps = pointersTo(maps);

    ResultRecords first;
    QVERIFY(calcNonEquivalentMap(input, &first, 1, numeric::InstructionSet::Baseline));
    QCOMPARE(first.count(), std::size_t(width) * (height + 1));
    for (std::size_t i = 0; i < first.count(); ++i) {
        std::vector<double> y;
        for (const A2DData &map : maps)
            y.push_back(map.absorption(static_cast<qint64>(i)));
        const NonEquivalentValues wanted = solveNonEquivalent(input.background, y, input.references, input.valences);
        const ResultRecord got = first.record(i);
        for (int q = 0; q < ResultPosition::count; ++q)
            QVERIFY2(sameNumber(got.values[q], wanted[static_cast<std::size_t>(q)]),
                     qPrintable(QString("pixel %1, quantity %2: %3").arg(i).arg(q).arg(got.values[q])));
        const bool known = static_cast<qint64>(i) < maps.front().count();
        QCOMPARE(got.x, known ? static_cast<double>(i % width) : 0.0);
        QCOMPARE(got.y, known ? 2.0 * static_cast<double>(i / width) : 0.0);
    }
    for (const numeric::InstructionSet set : instructionSets()) {
        for (const int threads : {1, 2, 3, 0}) {
            ResultRecords other;
            QVERIFY(calcNonEquivalentMap(input, &other, threads, set));
            for (int q = 0; q < ResultPosition::count; ++q)
                QVERIFY(samePlane(other.quantity(q), first.quantity(q), first.count()));
        }
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

/// Memory stays from run to run: what the run before left must not show through.
void TestMethods::unusedQuantitiesAreZeroAgain()
{
    const std::vector<A2DData> maps = oddMaps(eightEnergies, 20, 11);
    NonEquivalentMapInput two, four;
    two.references = referencesAt(eightEnergies, 2);
    two.valences = {2, 3};
    four.background = NonEquivalentBackground::Victoreen;
    four.references = referencesAt(eightEnergies, 4);
    four.valences = fourValences;
    two.maps = four.maps = pointersTo(maps);
    FourPointsMapInput points;
    points.variant = FourPointsVariant::ThreePoint;
    points.references = {{7000, 7400, 7119}, {0, 1.3, 0.5}, {0, 0.8, 0.1}, 1.0};
    points.maps = {&maps[0], &maps[6], &maps[3]};

    ResultRecords results;
    QVERIFY(calcNonEquivalentMap(two, &results)); // zero planes exist before the others are filled
    for (const bool fourPointsBetween : {false, true}) {
        QVERIFY(calcNonEquivalentMap(four, &results));
        QVERIFY(results.record(0).values[c2] != 0.0);
        QVERIFY(results.record(0).values[ratio + 3] != 0.0);
        if (fourPointsBetween) {
            QVERIFY(calcFourPointsMap(points, &results));
            QVERIFY(static_cast<const ResultRecords &>(results).quantity(0) == nullptr);
        }
        QVERIFY(calcNonEquivalentMap(two, &results));
        for (std::size_t i = 0; i < results.count(); ++i) {
            const ResultRecord record = results.record(i);
            for (const int q : {ratio + 2, ratio + 3, dMut + 2, dMut + 3, c2 + 0})
                QVERIFY(record.values[q] == 0.0);
        }
    }
}

void TestMethods::refusedMapsChangeNothing()
{
    std::vector<A2DData> maps = oddMaps(eightEnergies, 5, 4);
    NonEquivalentMapInput input;
    input.references = referencesAt(eightEnergies, 2);
    input.valences = {2, 3};
    input.maps = pointersTo(maps);
    ResultRecords results;
    QVERIFY(calcNonEquivalentMap(input, &results));
    const double before = results.record(0).values[valence];
    maps.front().setSize(1 << 14, (1 << 13) + 1); // one row beyond 2^27
    QVERIFY(!calcNonEquivalentMap(input, &results));
    maps.front().setSize(5, 4);
    input.maps.pop_back(); // an energy without a map
    QVERIFY(!calcNonEquivalentMap(input, &results));
    input.maps = pointersTo(maps);
    input.valences = {2};
    QVERIFY(!calcNonEquivalentMap(input, &results));
    QCOMPARE(results.count(), std::size_t(20));
    QCOMPARE(results.record(0).values[valence], before);
}

void TestMethods::fourPointsMapIsThePlainSolution_data()
{
    QTest::addColumn<int>("variant");
    QTest::addColumn<std::vector<double>>("energies");
    const auto row = [](const char *name, FourPointsVariant variant, const std::vector<double> &energies) {
        QTest::newRow(name) << static_cast<int>(variant) << energies;
    };
    row("three", FourPointsVariant::ThreePoint, {7000, 7400, 7119});
    row("exact", FourPointsVariant::Exact, {7000, 7060, 7400, 7119});
    row("least squares, 3 anchors", FourPointsVariant::LeastSquares, {7000, 7060, 7400, 7119});
    row("least squares, 7 anchors", FourPointsVariant::LeastSquares, eightEnergies);
    row("energies that add up to 0", FourPointsVariant::LeastSquares, {-200, 0, 200, 10});
    row("small energies", FourPointsVariant::LeastSquares, {0.1, 0.2, 0.4, 0.3});
    row("one energy", FourPointsVariant::LeastSquares, {7000, 7000, 7000, 7000});
    row("too few points", FourPointsVariant::Exact, {7000, 7060, 7119});
}

/// As for the non-equivalent method: bit for bit what the solvers for one target give.
void TestMethods::fourPointsMapIsThePlainSolution()
{
    QFETCH(int, variant);
    QFETCH(std::vector<double>, energies);
    constexpr int width = 131, height = 101;
    const std::vector<A2DData> maps = oddMaps(energies, width, height);
    FourPointsMapInput input;
    input.variant = static_cast<FourPointsVariant>(variant);
    input.maps = pointersTo(maps);
    input.references.energies = energies;
    for (std::size_t k = 0; k < energies.size(); ++k) {
        input.references.a.push_back(0.1 + referenceValue(0, eightEnergies[k]));
        input.references.b.push_back(0.2 + referenceValue(1, eightEnergies[k]));
    }
    input.references.r = jumps[0] / jumps[1];

    std::vector<double> wantedA, wantedT;
    numeric::LinearSystem work(3);
    const std::size_t pixels = static_cast<std::size_t>(maps.back().nx()) * static_cast<std::size_t>(maps.back().ny());
    for (std::size_t i = 0; i < pixels; ++i) {
        std::vector<double> x;
        for (const A2DData &map : maps)
            x.push_back(map.absorption(static_cast<qint64>(i)));
        const FourPointsResult wanted = solveFourPoints(input.variant, input.references, x.data(), &work);
        wantedA.push_back(wanted.a);
        wantedT.push_back(wanted.t);
    }
    for (const numeric::InstructionSet set : instructionSets()) {
        for (const int threads : {1, 2, 3, 0}) {
            ResultRecords results;
            QVERIFY(calcFourPointsMap(input, &results, threads, set));
            QCOMPARE(results.count(), pixels);
            QVERIFY(samePlane(results.a(), wantedA.data(), pixels));
            QVERIFY(samePlane(results.t(), wantedT.data(), pixels));
        }
    }
}

void TestMethods::valencePlane()
{
    std::vector<double> a = {0, 1, 0.25, -2, infinity, 1e9, 0.1};
    const std::vector<double> before = a;
    mixedValences(2, 3, a.data(), a.size(), a.data());
    for (std::size_t i = 0; i < a.size(); ++i)
        QVERIFY(sameNumber(a[i], mixedValence(2, 3, before[i])));
}

QTEST_APPLESS_MAIN(TestMethods)
#include "TestMethods.moc"
