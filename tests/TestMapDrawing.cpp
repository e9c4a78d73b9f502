#include "DrawingHelpers.h"

#include "analysis/drawing/MapDrawing.h"
#include "display/DispMBase.h"

#include <QtTest>

#include <limits>

using namespace resultdrawing;
using Doubles = QVector<double>;

namespace
{

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

struct MapCanvas : Canvas<DispMBase> {
    void drawResult(const ResultMapInput &input)
    {
        paint([&](QStylePainter *p) { drawResultMap(&display, p, input); });
    }
    void drawData(const ShownMap &map)
    {
        paint([&](QStylePainter *p) { drawDataMap(&display, p, map); });
    }
    QColor colourOf(double value) const { return display.bar()->getColor(value); }
    Doubles limits() const { return {display.bar()->zmin(), display.bar()->zmax()}; }
};

ShownMap shown(const Doubles &values, int width, int height)
{
    return {values.data(), static_cast<std::size_t>(values.size()), width, height};
}

} // namespace

class TestMapDrawing : public QObject
{
    Q_OBJECT

private slots:
    void cells();
    void colourRanges_data();
    void colourRanges();
    void rangeIsTheUsersOnceFixed();
    void notComputed();
    void mapsWithoutCells_data();
    void mapsWithoutCells();
    void dataMap();
};

void TestMapDrawing::cells()
{
    MapCanvas canvas;
    const Doubles values = {0.1, 0.2, 0.3, 0.4, notANumber, infinity};
    const QVector<quint8> mask = {0, 0, 1, 0, 0, 0};
    ResultMapInput input;
    input.map = shown(values, 3, 2);
    input.limits = ValueRange{0, 0.5};
    canvas.drawResult(input);
    QCOMPARE(canvas.range(), (Doubles{0, 0, 3, 2}));
    QCOMPARE(canvas.limits(), (Doubles{0, 0.5}));
    QCOMPARE(canvas.at(0.5, 0.5), canvas.colourOf(0.1)); // the first row is the lowest
    QCOMPARE(canvas.at(1.5, 0.5), canvas.colourOf(0.2));
    QCOMPARE(canvas.at(2.5, 0.5), canvas.colourOf(0.3));
    QCOMPARE(canvas.at(0.5, 1.5), canvas.colourOf(0.4));
    QCOMPARE(canvas.at(1.5, 1.5), notFiniteColour);
    QCOMPARE(canvas.at(2.5, 1.5), notFiniteColour);
    QCOMPARE(canvas.at(1.0, 0.5), QColor(200, 200, 200)); // outlines of the cells

    input.mask = mask.data();
    canvas.drawResult(input);
    QCOMPARE(canvas.at(2.5, 0.5), maskedColour);
    QCOMPARE(canvas.at(1.5, 0.5), canvas.colourOf(0.2));

    canvas.cc().setRealArea(-3, -2, 3, 2); // zoomed out: white beside the map
    canvas.drawResult(input);
    QCOMPARE(canvas.at(-0.5, 0.5), QColor(Qt::white));
    QCOMPARE(canvas.at(0.5, -0.5), QColor(Qt::white));
    QCOMPARE(canvas.at(0.5, 0.5), canvas.colourOf(0.1));
}

void TestMapDrawing::colourRanges_data()
{
    QTest::addColumn<Doubles>("given"); // or none
    QTest::addColumn<bool>("automatic");
    QTest::addColumn<Doubles>("limits");
    QTest::newRow("of the quantity") << Doubles{-1, 2} << true << Doubles{-1, 2};
    QTest::newRow("none: as it was") << Doubles() << true << Doubles{0, 1};
    QTest::newRow("empty") << Doubles{0, 0} << true << Doubles{0, 0};
    QTest::newRow("not finite: that of the values") << Doubles{0, infinity} << true << Doubles{5, 8};
    QTest::newRow("not automatic") << Doubles{-1, 2} << false << Doubles{0, 1};
}

void TestMapDrawing::colourRanges()
{
    QFETCH(const Doubles, given);
    QFETCH(const bool, automatic);
    MapCanvas canvas;
    canvas.display.bar()->setAutoScale(automatic);
    const Doubles values = {5, 8, notANumber};
    ResultMapInput input;
    input.map = shown(values, 3, 1);
    if (!given.isEmpty())
        input.limits = ValueRange{given[0], given[1]};
    canvas.drawResult(input);
    QTEST(canvas.limits(), "limits");
    QCOMPARE(canvas.at(0.5, 0.5), canvas.colourOf(5));
    QCOMPARE(canvas.at(1.5, 0.5), canvas.colourOf(8));
}

void TestMapDrawing::rangeIsTheUsersOnceFixed()
{
    MapCanvas canvas;
    const Doubles values = {5, 8};
    ResultMapInput input;
    input.map = shown(values, 2, 1);
    input.limits = ValueRange{0, 10};
    canvas.drawResult(input);
    canvas.display.setLimits(4, 9);
    canvas.cc().setRealArea(0, 0, 1, 1);
    canvas.drawResult(input);
    QCOMPARE(canvas.limits(), (Doubles{4, 9}));
    QCOMPARE(canvas.range(), (Doubles{0, 0, 1, 1}));
    canvas.display.clearScale();
    canvas.drawResult(input);
    QCOMPARE(canvas.limits(), (Doubles{0, 10}));
    QCOMPARE(canvas.range(), (Doubles{0, 0, 2, 1}));
}

/// Words instead of cells; the quantity that comes next still finds its own range.
void TestMapDrawing::notComputed()
{
    MapCanvas canvas;
    ResultMapInput input;
    input.map = {nullptr, 0, 30, 20};
    input.limits = ValueRange{0, 10};
    canvas.drawResult(input);
    const int empty = canvas.count(Qt::white);
    input.notComputed = QStringLiteral("not computed by this method");
    canvas.drawResult(input);
    QVERIFY(canvas.count(Qt::white) < empty);
    QCOMPARE(canvas.range(), (Doubles{0, 0, 30, 20}));
    QVERIFY(!canvas.display.area()->scaleFixed);
    QCOMPARE(canvas.limits(), (Doubles{0, 1}));
}

void TestMapDrawing::mapsWithoutCells_data()
{
    QTest::addColumn<int>("values");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::newRow("no result") << 0 << 0 << 0;
    QTest::newRow("no rows") << 4 << 4 << 0;
    QTest::newRow("negative") << 4 << -2 << 2;
    QTest::newRow("less than one row") << 4 << 5 << 2;
}

/// The white area and the scale; both kinds of map.
void TestMapDrawing::mapsWithoutCells()
{
    QFETCH(const int, values);
    QFETCH(const int, width);
    QFETCH(const int, height);
    const Doubles plane(values, 7.0);
    MapCanvas canvas;
    ResultMapInput input;
    input.map = shown(plane, width, height);
    canvas.drawResult(input);
    for (int round = 0; round < 2; ++round) {
        QCOMPARE(canvas.count(Qt::white), 339 * 254);
        QCOMPARE(canvas.image.pixelColor(40, 100), QColor(150, 150, 150)); // outline of the plot
        QVERIFY(!canvas.display.area()->scaleFixed);
        canvas.drawData(input.map);
    }
}

void TestMapDrawing::dataMap()
{
    MapCanvas canvas;
    const Doubles values = {0.5, 1.5, -infinity, 2.5, 9.0}; // two rows and a value that makes none
    canvas.drawData(shown(values, 2, 3));
    QCOMPARE(canvas.range(), (Doubles{0, 0, 2, 2}));
    QCOMPARE(canvas.limits(), (Doubles{0.5, 2.5}));
    QCOMPARE(canvas.at(0.5, 0.5), canvas.colourOf(0.5));
    QCOMPARE(canvas.at(1.5, 1.5), canvas.colourOf(2.5));
    QCOMPARE(canvas.at(0.5, 1.5), notFiniteColour);

    const Doubles none = {notANumber, infinity};
    canvas.display.clearScale();
    canvas.drawData(shown(none, 2, 1));
    QCOMPARE(canvas.limits(), (Doubles{0.5, 2.5}));
    QCOMPARE(canvas.at(0.5, 0.5), notFiniteColour);

    for (const QSize &size : {QSize(0, 0), QSize(1, 1), QSize(5, 300)}) {
        canvas.display.area()->resize(size);
        canvas.drawData(shown(values, 2, 2));
        for (const double edge : {0.0, 1e-300, 1e300, infinity, notANumber}) {
            canvas.cc().setRealArea(0, -edge, edge, 1);
            canvas.drawData(shown(values, 2, 2));
        }
    }
}

QTEST_MAIN(TestMapDrawing)
#include "TestMapDrawing.moc"
