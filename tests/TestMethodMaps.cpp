#include "analysis/methods/FourPointsMap.h"
#include "analysis/methods/NonEquivalent.h"
#include "analysis/results/MapRecords.h"
#include "tests/MethodSamples.h"
#include "tests/Tables.h"

#include <cstring>
#include <limits>
#include <random>

using namespace ResultPosition;

namespace
{

constexpr double infinity = std::numeric_limits<double>::infinity();

/// Equal bits, or both NaN: which of its operands' NaN an operation hands on is the processor's choice.
bool sameNumber(double got, double wanted)
{
    return std::memcmp(&got, &wanted, sizeof got) == 0 || (std::isnan(got) && std::isnan(wanted));
}

bool samePlane(const double *got, const double *wanted, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        if (!sameNumber(got[i], wanted[i])) {
            qWarning("value %zu: %.17g instead of %.17g", i, got[i], wanted[i]);
            return false;
        }
    }
    return true;
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
            // the last one: sums below 1, another choice of pivots
            const double odd[] = {1, 0, 1e300, k == 2 ? infinity : 0.5, k == 1 ? std::nan("") : noise, noise * 1e-3};
            const qint64 kind = i % 23 - 3;
            if (kind >= 0 && kind < 6)
                return odd[kind];
            return 0.6 * referenceValue(0, energies[k]) + 0.3 * referenceValue(1, energies[k]) + noise;
        };
        maps.push_back(makeMap(width, k % 3 == 1 ? height - 2 : height, value, static_cast<double>(k)));
    }
    return maps;
}

/// Every instruction set that this processor has.
std::vector<numeric::InstructionSet> instructionSets()
{
    using numeric::InstructionSet;
    std::vector<InstructionSet> sets = {InstructionSet::Baseline, InstructionSet::Avx2, InstructionSet::Avx512};
    while (sets.back() != numeric::bestInstructionSet())
        sets.pop_back();
    return sets;
}

} // namespace

/// Map calculations against the plain solution of each pixel, to the last bit, also where that is infinite or no
/// number, for any number of threads and every instruction set.
class TestMethodMaps : public QObject
{
    Q_OBJECT

private slots:
    void nonEquivalentMapIsThePlainFit()
    {
        for (const std::size_t references : {1u, 2u, 3u, 4u}) {
            for (const auto background : {NonEquivalentBackground::Linear, NonEquivalentBackground::Victoreen}) {
                for (const int points : {8, 2}) // 2 are too few
                    checkNonEquivalentMap(references, background, points);
            }
        }
    }

    void fourPointsMapIsThePlainSolution()
    {
        using Variant = FourPointsVariant;
        forRows<Variant, std::vector<double>>(
            {{"three", Variant::ThreePoint, {7000, 7400, 7119}},
             {"exact", Variant::Exact, {7000, 7060, 7400, 7119}},
             {"least squares, 3 anchors", Variant::LeastSquares, {7000, 7060, 7400, 7119}},
             {"least squares, 7 anchors", Variant::LeastSquares, eightEnergies},
             {"energies that add up to 0", Variant::LeastSquares, {-200, 0, 200, 10}},
             {"small energies", Variant::LeastSquares, {0.1, 0.2, 0.4, 0.3}},
             {"one energy", Variant::LeastSquares, {7000, 7000, 7000, 7000}},
             {"too few points", Variant::Exact, {7000, 7060, 7119}}},
            checkFourPointsMap);
    }

    /// Memory stays from run to run: what the run before left must not show through.
    void unusedQuantitiesAreZeroAgain()
    {
        const std::vector<A2DData> maps = oddMaps(eightEnergies, 20, 11);
        const NonEquivalentMapInput two = inputOf(maps, eightEnergies, 2, NonEquivalentBackground::Linear);
        const NonEquivalentMapInput four = inputOf(maps, eightEnergies, 4, NonEquivalentBackground::Victoreen);
        const FourPointsReferences references = {{7000, 7400, 7119}, {0, 1.3, 0.5}, {0, 0.8, 0.1}, 1.0};
        const FourPointsMapInput points = {FourPointsVariant::ThreePoint, references, {&maps[0], &maps[6], &maps[3]}};

        ResultRecords results;
        QVERIFY(fillRecords(two, &results)); // zero planes exist before the others are filled
        for (const bool fourPointsBetween : {false, true}) {
            QVERIFY(fillRecords(four, &results));
            QVERIFY(results.record(0).values[c2] != 0.0);
            QVERIFY(results.record(0).values[ratio + 3] != 0.0);
            if (fourPointsBetween) {
                QVERIFY(fillRecords(points, &results));
                QVERIFY(qAsConst(results).quantity(ratio) == nullptr);
            }
            QVERIFY(fillRecords(two, &results));
            for (std::size_t i = 0; i < results.count(); ++i) {
                for (const int q : {ratio + 2, ratio + 3, dMut + 2, dMut + 3, c2 + 0})
                    QVERIFY(results.record(i).values[q] == 0.0);
            }
        }
    }

    void refusedMapsChangeNothing()
    {
        std::vector<A2DData> maps = oddMaps(eightEnergies, 5, 4);
        NonEquivalentMapInput input = inputOf(maps, eightEnergies, 2, NonEquivalentBackground::Linear);
        ResultRecords results;
        QVERIFY(fillRecords(input, &results));
        const double before = results.record(0).values[valence];
        for (const QSize tooLarge : {QSize(1 << 14, (1 << 13) + 1), // one row beyond 2^27
                                     QSize(std::numeric_limits<int>::max(), std::numeric_limits<int>::max())}) {
            maps.front().setSize(tooLarge.width(), tooLarge.height());
            QVERIFY(!fillRecords(input, &results));
        }
        maps.front().setSize(5, 4);
        input.maps.pop_back(); // an energy without a map
        QVERIFY(!fillRecords(input, &results));
        input.maps = pointersTo(maps);
        input.valences = {2};
        QVERIFY(!fillRecords(input, &results));
        QCOMPARE(results.count(), std::size_t(20));
        QCOMPARE(results.record(0).values[valence], before);
    }

private:
    static NonEquivalentMapInput inputOf(const std::vector<A2DData> &maps, const std::vector<double> &energies,
                                         std::size_t references, NonEquivalentBackground background)
    {
        return {background,
                referencesAt(energies, references),
                {fourValences.begin(), fourValences.begin() + static_cast<int>(references)},
                pointersTo(maps)};
    }

    static std::vector<double> pixelOf(const std::vector<A2DData> &maps, std::size_t i)
    {
        std::vector<double> y;
        for (const A2DData &map : maps)
            y.push_back(map.absorption(static_cast<qint64>(i)));
        return y;
    }

    static void checkNonEquivalentMap(std::size_t references, NonEquivalentBackground background, int points)
    {
        const std::vector<double> energies(eightEnergies.begin(), eightEnergies.begin() + points);
        constexpr int width = 137, height = 97; // enough for three threads
        std::vector<A2DData> maps = oddMaps(energies, width, height);
        maps.front().setSize(width, height + 1); // promises a row that no map has
        const NonEquivalentMapInput input = inputOf(maps, energies, references, background);

        ResultRecords first;
        QVERIFY(fillRecords(input, &first, 1, numeric::InstructionSet::Baseline));
        QCOMPARE(first.count(), std::size_t(width) * (height + 1));
        for (std::size_t i = 0; i < first.count(); ++i) {
            const auto wanted = solveNonEquivalent(background, pixelOf(maps, i), input.references, input.valences);
            const ResultRecord got = first.record(i);
            QVERIFY(samePlane(got.values.data(), wanted.data(), wanted.size()));
            QVERIFY(sameNumber(got.a, wanted[ratio]) && sameNumber(got.t, wanted[amount]));
            const bool known = static_cast<qint64>(i) < maps.front().count();
            QCOMPARE(got.x, known ? static_cast<double>(i % width) : 0.0);
            QCOMPARE(got.y, known ? 2.0 * static_cast<double>(i / width) : 0.0);
        }
        for (const numeric::InstructionSet set : instructionSets()) {
            for (const int threads : {1, 2, 3, 0}) {
                ResultRecords other;
                QVERIFY(fillRecords(input, &other, threads, set));
                for (int q = 0; q < ResultPosition::count; ++q)
                    QVERIFY(samePlane(other.quantity(q), first.quantity(q), first.count()));
            }
        }
    }

    static void checkFourPointsMap(FourPointsVariant variant, const std::vector<double> &energies)
    {
        const std::vector<A2DData> maps = oddMaps(energies, 131, 101);
        FourPointsMapInput input = {variant, {}, pointersTo(maps)};
        input.references.energies = energies;
        for (std::size_t k = 0; k < energies.size(); ++k) {
            input.references.a.push_back(0.1 + referenceValue(0, eightEnergies[k]));
            input.references.b.push_back(0.2 + referenceValue(1, eightEnergies[k]));
        }
        input.references.r = jumps[0] / jumps[1];

        std::vector<double> wantedA, wantedT;
        numeric::LinearSystem work(3);
        const auto pixels = static_cast<std::size_t>(maps.back().nx() * maps.back().ny());
        for (std::size_t i = 0; i < pixels; ++i) {
            const FourPointsResult wanted = solveFourPoints(variant, input.references, pixelOf(maps, i).data(), &work);
            wantedA.push_back(wanted.a);
            wantedT.push_back(wanted.t);
        }
        for (const numeric::InstructionSet set : instructionSets()) {
            for (const int threads : {1, 2, 3, 0}) {
                ResultRecords results;
                QVERIFY(fillRecords(input, &results, threads, set));
                QCOMPARE(results.count(), pixels);
                QVERIFY(samePlane(results.a(), wantedA.data(), pixels));
                QVERIFY(samePlane(results.t(), wantedT.data(), pixels));
            }
        }
    }
};

QTEST_APPLESS_MAIN(TestMethodMaps)
#include "TestMethodMaps.moc"
