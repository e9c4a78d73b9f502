#include "analysis/methods/NonEquivalent.h"
#include "tests/MethodSamples.h"
#include "tests/Tables.h"

#include <numeric>
#include <random>

using namespace ResultPosition;
using Background = NonEquivalentBackground;

/// The non-equivalent method on one column of values.
class TestMethods : public QObject
{
    Q_OBJECT

private slots:
    void preparation()
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

    void preparationFromSpectra()
    {
        const AMutE a = referenceSpectrum(0), b = referenceSpectrum(1);
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

    /// A mixture made of amounts t f_j comes back with its fractions, amounts, t, valence and background; references of
    /// different edge jumps.
    void mixturesComeBack()
    {
        forRows<std::size_t, Background, std::size_t>(
            {{"2, linear, as many points as unknowns", 2, Background::Linear, 4},
             {"2, linear", 2, Background::Linear, 8},
             {"2, Victoreen", 2, Background::Victoreen, 8},
             {"3, linear", 3, Background::Linear, 7},
             {"3, Victoreen, as many points as unknowns", 3, Background::Victoreen, 6},
             {"4, linear", 4, Background::Linear, 8},
             {"4, Victoreen, as many points as unknowns", 4, Background::Victoreen, 7}},
            checkMixture);
    }

    /// Noise that no mixture explains: what the fit leaves over is at right angles to every function of the fit, which
    /// no other coefficients achieve. c_j is found as amount over edge jump.
    void residualsAreOrthogonal()
    {
        std::mt19937 random(7);
        for (int round = 0; round < 200; ++round) {
            const auto form = round % 2 ? Background::Linear : Background::Victoreen;
            const auto m = static_cast<std::size_t>(2 + round % 3);
            std::vector<double> y;
            for (const double energy : eightEnergies)
                y.push_back(referenceValue(0, energy) + 0.5 * referenceValue(1, energy) +
                            static_cast<double>(random() % 1000) * 1e-4);
            const NonEquivalentValues got = solveNonEquivalent(form, y, referencesAt(eightEnergies, m), fourValences);
            std::vector<double> coefficients(got.begin() + mut0, got.begin() + mut0 + 3);
            for (std::size_t j = 0; j < m; ++j)
                coefficients.push_back(got[dMut + j] / jumps[j]);
            std::vector<double> products(m + 3), sizes(m + 3);
            for (std::size_t k = 0; k < y.size(); ++k) {
                const std::vector<double> functions = functionsAt(eightEnergies[k], form, m);
                const double rest =
                    y[k] - std::inner_product(functions.begin(), functions.end(), coefficients.begin(), 0.0);
                for (std::size_t i = 0; i < functions.size(); ++i) {
                    products[i] += rest * functions[i];
                    sizes[i] += std::abs(rest * functions[i]);
                }
            }
            for (std::size_t i = 0; i < products.size(); ++i)
                QVERIFY2(std::abs(products[i]) <= 1e-6 * sizes[i], qPrintable(QString("%1, %2").arg(round).arg(i)));
        }
    }

    void singularSystems()
    {
        // Two references that are one and the same, in whole numbers: the pivot is exactly 0.
        const std::vector<double> energies = {1, 2, 3, 4, 5, 6, 7, 8};
        const std::vector<double> column = {1, 0, 1, 0, 1, 0, 1, 0};
        const NonEquivalentReferences twins = prepareNonEquivalent(energies, {column, column}, {1, 1});
        const NonEquivalentValues values = solveNonEquivalent(Background::Linear, column, twins, {2, 3});
        QVERIFY(!std::isfinite(values[valence]));
        // References of no height at all.
        const std::vector<double> flat(8, 0.0);
        const NonEquivalentValues none = solveNonEquivalent(
            Background::Linear, column, prepareNonEquivalent(eightEnergies, {flat, flat}, {0, 0}), {2, 3});
        QVERIFY(std::isnan(none[valence]));
        QVERIFY(std::isnan(none[amount]));
    }

private:
    /// The three functions of the background, then the references.
    static std::vector<double> functionsAt(double energy, Background form, std::size_t references)
    {
        const double l = 12398.424360387684 / energy;
        std::vector<double> values = {1, energy, 0};
        if (form == Background::Victoreen)
            values = {1, l * l * l, l * l * l * l};
        for (std::size_t j = 0; j < references; ++j)
            values.push_back(referenceValue(j, energy));
        return values;
    }

    static void checkMixture(std::size_t m, Background form, std::size_t points)
    {
        const bool victoreen = form == Background::Victoreen;
        std::vector<double> energies = eightEnergies; // few ones are spread over the range too
        for (const int left : {1, 5, 3, 1}) {
            if (energies.size() > points)
                energies.erase(energies.begin() + left);
        }
        const double shares[] = {0.45, 0.35, -0.1, 0.3}; // of 1 with all four
        const double sum = std::accumulate(shares, shares + m, 0.0), t = 1.7;
        std::vector<double> coefficients = {0.4, -3e-5, 0.0};
        if (victoreen)
            coefficients = {0.3, 0.02, -0.004};
        for (std::size_t j = 0; j < m; ++j)
            coefficients.push_back(t * shares[j] / sum / jumps[j]);
        std::vector<double> y;
        for (const double energy : energies) {
            const std::vector<double> functions = functionsAt(energy, form, m);
            y.push_back(std::inner_product(functions.begin(), functions.end(), coefficients.begin(), 0.0));
        }
        const NonEquivalentValues got = solveNonEquivalent(form, y, referencesAt(energies, m), fourValences);
        for (std::size_t j = 0; j < referenceRows; ++j) {
            const double fraction = j < m ? shares[j] / sum : 0.0;
            QVERIFY2(near(got[ratio + j], fraction), qPrintable(QString::number(got[ratio + j] - fraction)));
            QVERIFY2(near(got[dMut + j], t * fraction), qPrintable(QString::number(got[dMut + j])));
        }
        // The Victoreen terms nearly cancel each other: the coefficients keep fewer digits than what they are there
        // for.
        for (std::size_t i = 0; i < 3; ++i)
            QVERIFY2(near(got[mut0 + i], coefficients[i], victoreen ? 1e-4 : 1e-9), qPrintable(QString::number(i)));
        QVERIFY(victoreen || got[c2] == 0.0);
        QVERIFY(near(got[valence], std::inner_product(shares, shares + m, fourValences.begin(), 0.0) / sum));
        QVERIFY(near(got[amount], t));
    }
};

QTEST_APPLESS_MAIN(TestMethods)
#include "TestMethods.moc"
