#include "analysis/results/QuantityRange.h"
#include "analysis/results/ResultQuantities.h"
#include "analysis/results/ResultRecords.h"
#include "analysis/results/ShownQuantity.h"

#include <QtTest>

#include <cmath>
#include <limits>
#include <random>

using Method = ResultRecords::Method;

namespace
{

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

using Doubles = QVector<double>;

/// One row of pixels; in a non-equivalent result, every value of quantity q is q + pixel / 100 but for Ratio 1 and
/// Amount.
ResultRecords records(Method method, const Doubles &a, const Doubles &t)
{
    A2DData map;
    map.setSize(a.size(), 1);
    ResultRecords results;
    if (!results.reset(method, map))
        qFatal("no memory");
    if (method == Method::NonEquivalent) {
        for (int position = 0; position < ResultPosition::count; ++position) {
            for (int i = 0; i < a.size(); ++i)
                results.quantity(position)[i] = position + i / 100.0;
        }
        std::copy(a.begin(), a.end(), results.quantity(ResultPosition::ratio));
        std::copy(t.begin(), t.end(), results.quantity(ResultPosition::amount));
    }
    std::copy(a.begin(), a.end(), results.a());
    std::copy(t.begin(), t.end(), results.t());
    return results;
}

} // namespace

class TestShownQuantity : public QObject
{
    Q_OBJECT

private slots:
    void colourRanges_data();
    void colourRanges();
    void rangesOfValues_data();
    void rangesOfValues();
    void rangesOfManyValues();
    void fourPointsPlanes_data();
    void fourPointsPlanes();
    void nonEquivalentPlanes();
    void mask();
    void texts_data();
    void texts();
    void referenceHistograms();
};

void TestShownQuantity::colourRanges_data()
{
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<bool>("hasRange");
    for (const ResultQuantity &quantity : resultQuantities) {
        const QByteArray name = quantity.name;
        const bool hasRange = !name.startsWith('C');
        const bool isValence = name == "Valence";
        const bool isRatio = name.startsWith("Ratio");
        QTest::newRow(quantity.name) << (!hasRange   ? 7.0
                                         : isValence ? 1.5
                                         : isRatio   ? -0.1
                                                     : -0.4)
                                     << (!hasRange   ? 8.0
                                         : isValence ? 4.5
                                         : isRatio   ? 1.1
                                                     : 4.4)
                                     << hasRange;
    }
}

void TestShownQuantity::colourRanges()
{
    QFETCH(const bool, hasRange);
    int position = 0;
    while (qstrcmp(resultQuantities[static_cast<std::size_t>(position)].name, QTest::currentDataTag()) != 0)
        ++position;
    ValueRange range{7, 8};
    QCOMPARE(quantityRange(position, {4.0, 2.0, 4.0}, &range), hasRange);
    QTEST(range.min, "min");
    QTEST(range.max, "max");
    QVERIFY(!quantityRange(-1, {4.0, 2.0, 4.0}, &range));
    QVERIFY(!quantityRange(13, {4.0, 2.0, 4.0}, &range));
    QTEST(range.max, "max");
}

void TestShownQuantity::rangesOfValues_data()
{
    QTest::addColumn<Doubles>("values");
    QTest::addColumn<Doubles>("finite"); // min and max, or none
    QTest::addColumn<Doubles>("quartiles");
    QTest::newRow("none") << Doubles() << Doubles() << Doubles();
    QTest::newRow("none finite") << Doubles{notANumber, infinity, -infinity} << Doubles() << Doubles();
    QTest::newRow("one") << Doubles{notANumber, -3} << Doubles{-3, -3} << Doubles{-3, -3};
    QTest::newRow("unordered") << Doubles{4, infinity, 0, 3, notANumber, 1, 2} << Doubles{0, 4} << Doubles{1, 3};
    QTest::newRow("nearest rank") << Doubles{10, 20, 30, 40} << Doubles{10, 40} << Doubles{20, 30};
    QTest::newRow("huge") << Doubles{1e308, -1e308} << Doubles{-1e308, 1e308} << Doubles{-1e308, 1e308};
}

void TestShownQuantity::rangesOfValues()
{
    QFETCH(const Doubles, values);
    const auto asList = [](const std::optional<ValueRange> &range) {
        return range ? Doubles{range->min, range->max} : Doubles();
    };
    const auto count = static_cast<std::size_t>(values.size());
    QTEST(asList(finiteRange(values.data(), count)), "finite");
    QTEST(asList(percentileRange(values.data(), count, 0.25, 0.75)), "quartiles");
    QTEST(asList(percentileRange(values.data(), count, -1, 2)), "finite");
}

void TestShownQuantity::rangesOfManyValues()
{
    std::vector<double> values;
    for (int i = 0; i <= 100000; ++i)
        values.push_back(i);
    std::shuffle(values.begin(), values.end(), std::mt19937(1));
    values.push_back(notANumber);
    for (const int threads : {1, 3}) {
        const auto range = finiteRange(values.data(), values.size(), threads);
        QVERIFY(range && range->min == 0 && range->max == 100000);
    }
    const auto range = percentileRange(values.data(), values.size());
    QVERIFY(range && range->min == 2000 && range->max == 98000);
}

void TestShownQuantity::fourPointsPlanes_data()
{
    QTest::addColumn<Doubles>("plane");
    QTest::newRow("Ratio 1") << Doubles{0, 0.25, 1.5};
    QTest::newRow("Ratio 2") << Doubles{1, 0.75, -0.5};
    QTest::newRow("Valence") << Doubles{5, 4.25, 0.5};
    QTest::newRow("Amount") << Doubles{1, 2, 3};
    for (const char *name : {"Ratio 3", "Ratio 4", "dMut 1", "dMut 2", "dMut 3", "dMut 4", "mut0", "C1", "C2"})
        QTest::newRow(name) << Doubles();
}

void TestShownQuantity::fourPointsPlanes()
{
    const ResultRecords results = records(Method::FourPoints, {0, 0.25, 1.5}, {1, 2, 3});
    for (const ResultQuantity &quantity : resultQuantities) {
        if (qstrcmp(quantity.name, QTest::currentDataTag()) != 0)
            continue;
        numeric::Plane work;
        const double *const plane = shownPlane(results, quantity.position, 2, 5, &work);
        QTEST(plane ? Doubles({plane[0], plane[1], plane[2]}) : Doubles(), "plane");
        return;
    }
    QFAIL("no such quantity");
}

void TestShownQuantity::nonEquivalentPlanes()
{
    const ResultRecords results = records(Method::NonEquivalent, {0.1, 0.2}, {3, 4});
    numeric::Plane work;
    for (int position = 0; position < ResultPosition::count; ++position)
        QCOMPARE(shownPlane(results, position, 2, 5, &work), results.quantity(position)); // as computed
    QCOMPARE(shownPlane(results, -1, 2, 5, &work), nullptr);
    QCOMPARE(shownPlane(results, ResultPosition::count, 2, 5, &work), nullptr);
}

void TestShownQuantity::mask()
{
    const ResultRecords results =
        records(Method::FourPoints, {0, 0, 0, 0, 0}, {0.1, 0.5, -infinity, notANumber, 0.4999});
    std::vector<quint8> hidden(99);
    maskBelow(results, 0.5, &hidden);
    QCOMPARE(hidden, (std::vector<quint8>{1, 0, 1, 0, 1}));
}

void TestShownQuantity::texts_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::addColumn<QString>("text");
    QTest::newRow("first cell") << 0.0 << 0.0 << "0";
    QTest::newRow("upper edge of a cell") << 1.0 << 0.999 << "1.23457e+07";
    QTest::newRow("second row") << 2.5 << 1.5 << "0.5";
    QTest::newRow("nan") << 0.5 << 1.0 << "nan";
    QTest::newRow("infinite") << 1.5 << 1.0 << "-inf";
    QTest::newRow("left of the map") << -0.001 << 0.5 << "";
    QTest::newRow("right of it") << 3.0 << 0.5 << "";
    QTest::newRow("above it") << 0.5 << 2.0 << "";
    QTest::newRow("no coordinate") << notANumber << infinity << "";
}

void TestShownQuantity::texts()
{
    QFETCH(const double, x);
    QFETCH(const double, y);
    const Doubles plane = {0, 12345678, 2, notANumber, -infinity, 0.5};
    QTEST(cellText(plane.data(), 3, 2, x, y), "text");
    QCOMPARE(cellText(nullptr, 3, 2, 0, 0), QString());
}

void TestShownQuantity::referenceHistograms()
{
    HistogramBins boxes;
    boxes.setBoxes(0, 2, 3);
    boxes.add(1); // a count of its own, which the parts do not have
    const Doubles values = {0, 1, 1, 2, 7, notANumber};
    const ResultRecords results = records(Method::NonEquivalent, {0.5, 0.9, 0.49, notANumber, 1, 1}, values);
    const HistogramBins bins = referenceHistogram(boxes, results, ResultPosition::ratio, values.data());
    QCOMPARE(bins.counts, (QVector<int>{1, 1, 0}));
    QCOMPARE(bins.over, 1);
    QCOMPARE(bins.total, 3);
    const ResultRecords fourPoints = records(Method::FourPoints, {1, 1}, {1, 1});
    QCOMPARE(referenceHistogram(boxes, fourPoints, 0, values.data()).largestCount(), 0);
}

QTEST_MAIN(TestShownQuantity)
#include "TestShownQuantity.moc"
