#include "analysis/methods/LinearCombination.h"
#include "analysis/model/ResultText.h"
#include "tests/MethodSamples.h"
#include "tests/Tables.h"

#include <array>
#include <clocale>
#include <limits>
#include <random>

constexpr double infinity = std::numeric_limits<double>::infinity();

class TestLinearCombination : public QObject
{
    Q_OBJECT

private slots:
    void mixturesComeBack()
    {
        forRows<std::vector<double>, double>({{"two that sum up to 1", {0.3, 0.7}, 0.0},
                                              {"three with a base", {0.5, 0.2, 0.4}, -0.03},
                                              {"sum of 0.8", {0.6, 0.2}, 0.0},
                                              {"four, one negative", {0.9, 0.3, -0.3, 0.2}, 0.1}},
                                             checkMixture);
    }

    /// One reference, so that the textbook's straight line y = b + c x tells R-factor and standard errors.
    void quality()
    {
        const AMutE reference = referenceSpectrum(1);
        std::mt19937 random(2);
        const AMutE target = makeSpectrum(1.0, 0.0, [&](double energy) {
            return 0.9 * referenceValue(1, energy) / jumps[1] + static_cast<double>(random() % 100) * 1e-3;
        });
        const LinearCombination fit = fitLinearCombination({{&reference}, {3}, &target, 7110, 7150});
        long double n = 0, sx = 0, sy = 0, sxx = 0, sxy = 0, syy = 0;
        for (int i = 110; i <= 150; ++i) {
            const long double x = reference.valueAt(AMutE::ByBothLines, i);
            const long double y = target.valueAt(AMutE::ByBothLines, i);
            n += 1, sx += x, sy += y, sxx += x * x, sxy += x * y, syy += y * y;
        }
        const long double spread = sxx - sx * sx / n;
        const long double c = (sxy - sx * sy / n) / spread;
        const long double residuals = syy - sy * sy / n - c * (sxy - sx * sy / n);
        const long double variance = residuals / (n - 2);
        QCOMPARE(fit.points, 41);
        QVERIFY(near(fit.coefficients[0], static_cast<double>(c)));
        QVERIFY(near(fit.rFactor / static_cast<double>(residuals / syy), 1.0, 1e-8));
        QCOMPARE(fit.standardErrors.size(), std::size_t(2));
        QVERIFY(near(fit.standardErrors[0] / static_cast<double>(std::sqrt(variance / spread)), 1.0, 1e-8));
        QVERIFY(near(fit.standardErrors[1] / static_cast<double>(std::sqrt(variance * sxx / n / spread)), 1.0, 1e-8));
    }

    /// 4000 noisy targets scatter by what their standard errors say on average (the scatter itself is known to 1.1 %).
    void scatterOfManyFits()
    {
        const AMutE a = referenceSpectrum(0), b = referenceSpectrum(1), c = referenceSpectrum(3);
        const AMutE exact = makeSpectrum(1.0, 0.0, [&](double energy) {
            const auto at = [energy](const AMutE &of) {
                return of.valueAtEnergy(AMutE::ByBothLines, energy);
            };
            return 0.3 * at(a) + 0.2 * at(b) + 0.1 * at(c) + 0.02;
        });
        std::mt19937 random(4);
        std::normal_distribution<double> noise(0.0, 0.02);
        std::array<std::array<double, 3>, 5> sums = {}; // of deviations, their squares, squares of the standard errors
        constexpr int fits = 4000;
        for (int i = 0; i < fits; ++i) {
            AMutE target;
            target.setPreEdgeEnd(7095);
            target.setPostEdgeStart(7185);
            for (SpectrumPoint point : exact.points()) {
                if (std::fmod(point.energy, 3) != 0) // enough
                    continue;
                point.mu += point.energy >= 7100 && point.energy <= 7180 ? noise(random) : 0.0;
                target.addPoint(point);
            }
            target.fitLines();
            const LinearCombination fit = fitLinearCombination({{&a, &b, &c}, {2, 3, 4}, &target, 7102, 7150});
            const std::array<std::array<double, 2>, 5> found = {{{fit.coefficients[0] - 0.3, fit.standardErrors[0]},
                                                                 {fit.fractions[0] - 0.5, fit.fractionErrors[0]},
                                                                 {fit.sum - 0.6, fit.sumError},
                                                                 {fit.valence - 1.6, fit.valenceError},
                                                                 {fit.meanValence - 1.6 / 0.6, fit.meanValenceError}}};
            for (std::size_t q = 0; q < found.size(); ++q) {
                sums[q][0] += found[q][0];
                sums[q][1] += found[q][0] * found[q][0];
                sums[q][2] += found[q][1] * found[q][1];
            }
        }
        for (const auto &[sum, squares, predicted] : sums) {
            const double ratio = std::sqrt((squares - sum * sum / fits) / predicted);
            QVERIFY2(std::abs(ratio - 1.0) < 0.05, qPrintable(QString::number(ratio)));
        }
    }

    void withoutPoints()
    {
        const AMutE a = referenceSpectrum(0), b = referenceSpectrum(1);
        const LinearCombination none = fitLinearCombination({{&a, &b}, {2, 3}, &b, 7120.2, 7120.4});
        QCOMPARE(none.points, 0);
        QVERIFY(std::isnan(none.valence));
        QVERIFY(std::isnan(none.rFactor));
        const LinearCombination one = fitLinearCombination({{&a, &b}, {2, 3}, &b, 7120, 7120});
        QCOMPARE(one.points, 1); // the one at that energy
        QVERIFY(std::isnan(one.standardErrors[0]) && std::isnan(one.fractionErrors[0]) && std::isnan(one.valenceError));
        const LinearCombination empty = fitLinearCombination({{&a, &b}, {2, 3}, &b, 1e300, -1e300});
        QCOMPARE(empty.points, 0);
    }

    void resultNumbers()
    {
        const double largest = std::numeric_limits<double>::max();
        const auto check = [](double value, const QString &text) {
            QCOMPARE(resultNumber(value), text);
            // A locale with a decimal comma, where the machine has one.
            for (const char *locale : {"de_DE.UTF-8", "fr_FR.UTF-8", "de_DE", "ru_RU.UTF-8"}) {
                std::setlocale(LC_NUMERIC, locale);
                const QString inThatLocale = resultNumber(value);
                std::setlocale(LC_NUMERIC, "C");
                QCOMPARE(inThatLocale, text);
            }
        };
        forRows<double, QString>({{"positive", 0.4123, " 0.412"},
                                  {"negative", -0.4126, "-0.413"},
                                  {"tie", 0.0625, " 0.062"},
                                  {"zero below zero", -0.0001, "-0.000"},
                                  {"wide", 12345.6789, " 12345.679"},
                                  {"infinite", infinity, "   inf"},
                                  {"negative infinite", -infinity, "  -inf"},
                                  {"no number", std::nan(""), "   nan"},
                                  {"no number with a sign", -std::nan(""), "   nan"},
                                  {"largest", -largest, QString::number(-largest, 'f', 3)}},
                                 check);
    }

    void resultTexts()
    {
        QCOMPARE(linearCombinationText({0.412, 0.301, 0.287}, 2.713, 0.004),
                 QString("Result of LCF ::  0.412 :  0.301 :  0.287, Valence =  2.713, Base =  0.004"));
        QCOMPARE(linearCombinationText({-0.5, std::nan("")}, infinity, -1234.5),
                 QString("Result of LCF :: -0.500 :    nan, Valence =    inf, Base = -1234.500"));
        QCOMPARE(nonEquivalentText({0.25, 0.75}, 2.75, 0.914),
                 QString("Result of NEQ ::  0.250 :  0.750, Valence =  2.750, t =  0.914"));
    }

private:
    static void checkMixture(const std::vector<double> &coefficients, double base)
    {
        std::vector<AMutE> references;
        std::vector<const AMutE *> pointers;
        double sum = 0.0, rawValence = 0.0;
        for (std::size_t j = 0; j < coefficients.size(); ++j) {
            references.push_back(referenceSpectrum(j));
            sum += coefficients[j];
            rawValence += coefficients[j] * fourValences[j];
        }
        for (const AMutE &reference : references)
            pointers.push_back(&reference);
        const AMutE target = makeSpectrum(0.7, 1.5, [&](double energy) {
            double value = base;
            for (std::size_t j = 0; j < references.size(); ++j)
                value += coefficients[j] * references[j].valueAtEnergy(AMutE::ByBothLines, energy);
            return value;
        });
        const LinearCombination fit = fitLinearCombination({pointers, fourValences, &target, 7102, 7175});
        QCOMPARE(fit.points, 74); // both ends included, in energies shifted by 1.5 eV
        for (std::size_t j = 0; j < coefficients.size(); ++j) {
            QVERIFY2(near(fit.coefficients[j], coefficients[j]), qPrintable(QString::number(j)));
            QVERIFY(near(fit.fractions[j], coefficients[j] / sum));
            QVERIFY(fit.standardErrors[j] < 1e-8);
        }
        QVERIFY(near(fit.sum, sum));
        QVERIFY(near(fit.base, base));
        QVERIFY(near(fit.valence, rawValence)); // not divided by the sum
        QVERIFY(fit.rFactor < 1e-18);
        QCOMPARE(fit.fitted.pointCount(), 74);
        QCOMPARE(fit.fitted.points().first().energy, 7102.0);
        QCOMPARE(fit.fitted.points().last().energy, 7175.0);
        QVERIFY(near(fit.fitted.points().at(20).mu, target.valueAtEnergy(AMutE::ByBothLines, 7122)));
    }
};

QTEST_APPLESS_MAIN(TestLinearCombination)
#include "TestLinearCombination.moc"
