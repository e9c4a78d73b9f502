#include "analysis/methods/NonEquivalent.h"
#include "tests/MethodSamples.h"
#include "tests/Tables.h"

#include <QtTest>

#include <cmath>
#include <random>

using namespace ResultPosition;

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

    /// A mixture made of amounts t f_j comes back with its fractions, amounts, t, valence and background; references of
    /// different edge jumps.
    void mixturesComeBack()
    {
        struct Case {
            const char *name;
            std::size_t references;
            bool victoreen;
            std::size_t points;
        };
        forEach<Case>({{"2, linear, as many points as unknowns", 2, false, 4},
                       {"2, linear", 2, false, 8},
                       {"2, Victoreen", 2, true, 8},
                       {"3, linear", 3, false, 7},
                       {"3, Victoreen, as many points as unknowns", 3, true, 6},
                       {"4, linear", 4, false, 8},
                       {"4, Victoreen, as many points as unknowns", 4, true, 7},
                       {"4, Victoreen", 4, true, 8}},
                      [](const Case &c) { checkMixture(c.references, c.victoreen, c.points); });
    }

    /// Noise that no mixture explains: what the fit leaves over is at right angles to every function of the fit, which
    /// no other coefficients achieve. c_j is found as amount over edge jump.
    void residualsAreOrthogonal()
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
            const NonEquivalentValues got = solveNonEquivalent(form, y, references, fourValences);
            std::vector<double> products(m + 3), sizes(m + 3);
            for (std::size_t k = 0; k < y.size(); ++k) {
                const double e = eightEnergies[k];
                const double l = 12398.424360387684 / e;
                const bool linear = form == NonEquivalentBackground::Linear;
                std::vector<double> functions = {1, linear ? e : l * l * l, linear ? 0 : l * l * l * l};
                double rest = y[k];
                for (std::size_t i = 0; i < 3; ++i)
                    rest -= got[mut0 + i] * functions[i];
                for (std::size_t j = 0; j < m; ++j) {
                    functions.push_back(referenceValue(j, e));
                    rest -= got[dMut + j] / jumps[j] * functions.back();
                }
                for (std::size_t i = 0; i < functions.size(); ++i) {
                    products[i] += rest * functions[i];
                    sizes[i] += std::abs(rest * functions[i]);
                }
            }
            double amounts = 0.0, mean = 0.0;
            for (std::size_t j = 0; j < m; ++j) {
                amounts += got[dMut + j];
                mean += got[dMut + j] * fourValences[j];
                QVERIFY(near(got[ratio + j] * got[amount], got[dMut + j]));
            }
            QVERIFY(near(got[amount], amounts));
            QVERIFY(near(got[valence], mean / amounts));
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
        const NonEquivalentValues values = solveNonEquivalent(NonEquivalentBackground::Linear, column, twins, {2, 3});
        QVERIFY(!std::isfinite(values[valence]));
        // References of no height at all.
        const std::vector<double> flat(8, 0.0);
        const NonEquivalentValues none = solveNonEquivalent(
            NonEquivalentBackground::Linear, column, prepareNonEquivalent(eightEnergies, {flat, flat}, {0, 0}), {2, 3});
        QVERIFY(std::isnan(none[valence]));
        QVERIFY(std::isnan(none[amount]));
    }

private:
    static void checkMixture(std::size_t m, bool victoreen, std::size_t points)
    {
        const auto form = victoreen ? NonEquivalentBackground::Victoreen : NonEquivalentBackground::Linear;
        std::vector<double> energies = eightEnergies; // few ones are spread over the range too
        for (const int left : {1, 5, 3, 1}) {
            if (energies.size() > points)
                energies.erase(energies.begin() + left);
        }
        const double shares[] = {0.45, 0.35, -0.1, 0.3}; // of 1 with all four
        const double background[] = {victoreen ? 0.3 : 0.4, victoreen ? 0.02 : -3e-5, victoreen ? -0.004 : 0.0};
        const double t = 1.7;
        double sum = 0.0, mean = 0.0;
        for (std::size_t j = 0; j < m; ++j) {
            sum += shares[j];
            mean += shares[j] * fourValences[j];
        }
        std::vector<double> y;
        for (const double energy : energies) {
            const double l = 12398.424360387684 / energy;
            double value =
                background[0] + background[1] * (victoreen ? l * l * l : energy) + background[2] * l * l * l * l;
            for (std::size_t j = 0; j < m; ++j)
                value += t * shares[j] / sum / jumps[j] * referenceValue(j, energy);
            y.push_back(value);
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
            QVERIFY2(near(got[mut0 + i], background[i], victoreen ? 1e-4 : 1e-9), qPrintable(QString::number(i)));
        QVERIFY(victoreen || got[c2] == 0.0);
        QVERIFY(near(got[valence], mean / sum));
        QVERIFY(near(got[amount], t));
    }
};

QTEST_APPLESS_MAIN(TestMethods)
#include "TestMethods.moc"
