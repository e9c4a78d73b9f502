#include "analysis/results/QuantityRange.h"
#include "analysis/results/ResultHistograms.h"
#include "analysis/results/ResultQuantities.h"
#include "analysis/results/ResultRecords.h"
#include "analysis/results/ResultView.h"
#include "analysis/results/ShownQuantity.h"
#include "tests/Tables.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <random>

using namespace ResultPosition;
using Method = ResultRecords::Method;

namespace
{

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

using Doubles = QVector<double>;
using Counts = QVector<int>;

/// One row of pixels; in a non-equivalent result, every value of quantity q is q + pixel / 100 but for Ratio 1 and
/// Amount.
ResultRecords records(Method method, const Doubles &a, const Doubles &t)
{
    A2DData map;
    map.setSize(a.size(), 1);
    ResultRecords results;
    if (!results.reset(method, map))
        qFatal("no memory");
    for (int position = 0; method == Method::NonEquivalent && position < ResultPosition::count; ++position) {
        for (int i = 0; i < a.size(); ++i)
            results.quantity(position)[i] = position + i / 100.0;
    }
    std::copy(a.begin(), a.end(), results.a());
    std::copy(t.begin(), t.end(), results.t());
    return results;
}

Doubles asList(const std::optional<ValueRange> &range)
{
    return range ? Doubles{range->min, range->max} : Doubles();
}

/// Under, boxes, over.
Counts countsOf(const HistogramBins &bins)
{
    return Counts{bins.under} + bins.counts + Counts{bins.over};
}

} // namespace

class TestShownQuantity : public QObject
{
    Q_OBJECT

private slots:
    /// The colour range of each quantity, of a non-equivalent and of a four-points result, and what the latter shows;
    /// a wrong name would leave a control without effect.
    void quantities()
    {
        struct Case {
            const char *name;
            Doubles range, fourPointsRange, fourPointsPlane;
        };
        const Doubles fraction = {-0.1, 1.1}, jump = {-0.4, 4.4}, none;
        const Case cases[] = {{"Ratio 1", fraction, fraction, {0, 0.25, 1.5}},
                              {"Ratio 2", fraction, fraction, {1, 0.75, -0.5}},
                              {"Ratio 3", fraction, fraction, none},
                              {"Ratio 4", fraction, fraction, none},
                              {"dMut 1", jump, jump, none},
                              {"dMut 2", jump, jump, none},
                              {"dMut 3", jump, jump, none},
                              {"dMut 4", jump, jump, none},
                              {"mut0", jump, jump, none},
                              {"C1", none, none, none},
                              {"C2", none, none, none},
                              {"Valence", {1.5, 4.5}, {1.5, 4.5}, {5, 4.25, 0.5}},
                              {"Amount", jump, {-0.5, 3}, {1, 2, 3}}};
        const ResultRecords fourPoints = records(Method::FourPoints, {0, 0.25, 1.5}, {1, 2, 3});
        const ResultRecords nonEquivalent = records(Method::NonEquivalent, {0.1, 0.2}, {3, 4});
        numeric::Plane work;
        QCOMPARE(std::size(cases), resultQuantities.size());
        for (const ResultQuantity &quantity : resultQuantities) {
            const Case &c = cases[quantity.position];
            const int position = quantity.position;
            QCOMPARE(quantity.name, c.name);
            QString stem = QString(c.name).remove(' ');
            QCOMPARE(QString(quantity.histogramButton), "Hg" + (stem == "mut0" ? "Mut0" : stem));
            stem[0] = stem[0].toUpper();
            QCOMPARE(QString(quantity.recordBox), "Rec" + stem);
            QCOMPARE(QString(quantity.mapButton), "Map" + stem);
            QCOMPARE(asList(quantityRange(position, {4, 2, 4, false, {-0.5, 3}})), c.range);
            QCOMPARE(asList(quantityRange(position, {4, 2, 4, true, {-0.5, 3}})), c.fourPointsRange);
            const double *const plane = shownPlane(fourPoints, position, {true, 2, 5}, &work);
            QCOMPARE(plane ? Doubles({plane[0], plane[1], plane[2]}) : Doubles(), c.fourPointsPlane);
            QCOMPARE(shownPlane(nonEquivalent, position, {true, 2, 5}, &work), nonEquivalent.quantity(position));
        }
        QCOMPARE(shownPlane(fourPoints, valence, {false, 2, 5}, &work)[1], 0.0); // fewer than two references
        QCOMPARE(shownPlane(ResultRecords(), ratio, {}, &work), nullptr);
        for (const int position : {-1, ResultPosition::count + 0}) {
            QVERIFY(!quantityRange(position, {4, 2, 4, false, {}}));
            QCOMPARE(shownPlane(nonEquivalent, position, {true, 2, 5}, &work), nullptr);
        }
    }

    void rangesOfValues()
    {
        forRows<Doubles, Doubles, Doubles>( // the values, min and max of the finite ones, the quartiles
            {{"none", {}, {}, {}},
             {"none finite", {notANumber, infinity, -infinity}, {}, {}},
             {"one", {notANumber, -3}, {-3, -3}, {-3, -3}},
             {"unordered", {4, infinity, 0, 3, notANumber, 1, 2}, {0, 4}, {1, 3}},
             {"nearest rank", {10, 20, 30, 40}, {10, 40}, {20, 30}},
             {"huge", {1e308, -1e308}, {-1e308, 1e308}, {-1e308, 1e308}}},
            [](const Doubles &values, const Doubles &finite, const Doubles &quartiles) {
                const auto count = static_cast<std::size_t>(values.size());
                QCOMPARE(asList(finiteRange(values.data(), count)), finite);
                QCOMPARE(asList(percentileRange(values.data(), count, nullptr, 0.25, 0.75)), quartiles);
                QCOMPARE(asList(percentileRange(values.data(), count, nullptr, -1, 2)), finite);
            });
        std::vector<double> many(100001);
        std::iota(many.begin(), many.end(), 0.0);
        std::shuffle(many.begin(), many.end(), std::mt19937(1));
        many.push_back(notANumber);
        for (const int threads : {1, 3})
            QCOMPARE(asList(finiteRange(many.data(), many.size(), nullptr, threads)), (Doubles{0, 100000}));
        QCOMPARE(asList(percentileRange(many.data(), many.size())), (Doubles{2000, 98000}));
        const Doubles values = {9, 1, 2, -9};
        const quint8 hidden[] = {1, 0, 0, 1};
        QCOMPARE(asList(finiteRange(values.data(), 4, hidden)), (Doubles{1, 2}));
        QCOMPARE(asList(percentileRange(values.data(), 4, hidden, 0, 1)), (Doubles{1, 2}));
    }

    void view()
    {
        const Doubles t = {0.1, 0.5, -infinity, notANumber, 0.4999};
        const ResultRecords fourPoints = records(Method::FourPoints, {0, 0, 0, 0, 0}, t);
        ResultView view;
        QVERIFY(!view.values() && !view.mask());
        view.show(fourPoints, valence, {true, 2, 3}, 0.5);
        QCOMPARE(Counts(view.mask(), view.mask() + view.count()), (Counts{1, 0, 1, 0, 1})); // a NaN is not below
        QCOMPARE(view.values()[4], 3.0);
        QCOMPARE(view.map().grid.nx * 10 + view.map().grid.ny, 51);
        view.show(fourPoints, amount, {true, 2, 3});
        QVERIFY(view.values() == fourPoints.t() && !view.mask());
        view.show(fourPoints, mut0, {true, 2, 3}, 0.5); // not computed: nothing there to hide
        QVERIFY(!view.values() && !view.mask());
        QCOMPARE(view.position(), mut0 + 0);
        QCOMPARE(view.count(), std::size_t(5));
    }

    void cellTexts()
    {
        forRows<double, double, const char *>({{"first cell", 0, 0, "0"},
                                               {"upper edge of a cell", 1, 0.999, "1.23457e+07"},
                                               {"second row", 2.5, 1.5, "0.5"},
                                               {"nan", 0.5, 1, "nan"},
                                               {"infinite", 1.5, 1, "-inf"},
                                               {"left of the map", -0.001, 0.5, ""},
                                               {"right of it", 3, 0.5, ""},
                                               {"no value there", 0.5, 2, ""},
                                               {"above it", 0.5, 3, ""},
                                               {"no coordinate", notANumber, infinity, ""}},
                                              [](double x, double y, const char *text) {
                                                  const Doubles plane = {0, 12345678, 2, notANumber, -infinity, 0.5};
                                                  const MapGrid grid{3, 3}; // the last row has no values
                                                  QCOMPARE(cellText({plane.data(), 6, grid}, x, y), QString(text));
                                                  QCOMPARE(cellText({nullptr, 6, grid}, x, y), QString());
                                              });
    }

    void fourPointsHistograms()
    {
        const ResultRecords results =
            records(Method::FourPoints, {0, 0.5, 1, -9, notANumber}, {1, 1, 2, 9, notANumber});
        ResultHistograms histograms;
        QVERIFY(!histograms.shown().isSet());
        histograms.count(results, {true, 2, 3}, {2, 3, 2}, {0, 2, 3});
        QCOMPARE(countsOf(histograms.valence()), (Counts{0, 1, 2, 1})); // 3, 2.5, 2, 12
        QCOMPARE(countsOf(histograms.thickness()), (Counts{0, 0, 2, 1, 1}));
        QCOMPARE(histograms.valence().total, 5);
        histograms.choose(results, {amount, ValueRange{0, 1}, 2, true, true}); // of non-equivalent results only
        QCOMPARE(&histograms.shown(), &histograms.valence());
        QCOMPARE(histograms.shownPosition(), valence + 0);
        QVERIFY(histograms.shownParts().isEmpty() && histograms.thicknessParts().isEmpty());
        histograms.count(results, {false, 2, 3}, {-1, 1, 3}, {0, 2, 3});
        QCOMPARE(countsOf(histograms.valence()), (Counts{0, 0, 5, 0, 0})); // fewer than two references
        QCOMPARE(referenceHistogram(histograms.valence(), results, ratio, results.t()).largestCount(), 0);
    }

    void nonEquivalentHistograms()
    {
        const ResultRecords results =
            records(Method::NonEquivalent, {0.5, 0.9, 0.49, notANumber, 1, 1}, {0, 1, 1, 2, 7, notANumber});
        ResultHistograms histograms;
        histograms.count(results, {}, {10, 12, 3}, {0, 2, 3});
        QCOMPARE(countsOf(histograms.valence()), (Counts{0, 0, 6, 0, 0})); // 11 to 11.05, whatever the valence pair is
        QCOMPARE(countsOf(histograms.thickness()), (Counts{0, 1, 2, 1, 1}));
        QCOMPARE(asList(histograms.shownRange()), (Doubles{10, 12}));

        histograms.choose(results, {valence, {}, 1, true, true});
        QCOMPARE(&histograms.shown(), &histograms.valence());
        QCOMPARE(countsOf(histograms.shownParts().value(0)), (Counts{0, 0, 4, 0, 0})); // of a half or more
        QCOMPARE(countsOf(histograms.thicknessParts().value(0)), (Counts{0, 1, 1, 0, 1}));
        QCOMPARE(histograms.thicknessParts().value(0).total, 3);

        histograms.choose(results, {c1, {}, 9, false, true}); // C1 has no range of its own: 9 to 9.05, in three boxes
        QCOMPARE(histograms.shownPosition(), c1 + 0);
        QCOMPARE(asList(histograms.shownRange()), (Doubles{9, 9.05}));
        QCOMPARE(countsOf(histograms.shown()), (Counts{0, 2, 2, 2, 0}));
        QVERIFY(histograms.shownParts().isEmpty());
        QCOMPARE(histograms.thicknessParts().size(), referenceRows + 0); // there are no more
        histograms.choose(results, {ratio, ValueRange{0, 1}, 1, true, false});
        QCOMPARE(countsOf(histograms.shown()), (Counts{0, 0, 2, 3, 0}));
        QCOMPARE(countsOf(histograms.shownParts().value(0)), (Counts{0, 0, 1, 3, 0}));
        QVERIFY(histograms.thicknessParts().isEmpty());
        histograms.count(results, {}, {10, 12, 3}, {0, 2, 3}); // the choice goes with its run
        QCOMPARE(&histograms.shown(), &histograms.valence());
    }
};

QTEST_APPLESS_MAIN(TestShownQuantity)
#include "TestShownQuantity.moc"
