#include "DrawingHelpers.h"

#include "analysis/drawing/HistogramDrawing.h"
#include "analysis/drawing/LcfVsMpsDrawing.h"
#include "analysis/drawing/M2M3Drawing.h"
#include "analysis/drawing/MutsDrawing.h"
#include "analysis/drawing/ScatterDrawing.h"
#include "display/DispABase.h"
#include "display/HistogramBins.h"
#include "display/PlotFrame.h"
#include "spectrum/AMutE.h"

#include <QPicture>
#include <QtTest>

#include <cmath>
#include <limits>

using namespace resultdrawing;
using Doubles = QVector<double>;

namespace
{

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
const QColor white(Qt::white);

using Graph = Canvas<DispABase>;
/// Draws one kind of display with the range and values that a test asks for.
using DrawOdd = std::function<void(DispABase *, QStylePainter *, const ValueRange &, const Doubles &)>;

LcfVsMpsInput comparisonOf(const QVector<ComparisonRecord> &records)
{
    LcfVsMpsInput input;
    input.records = records;
    input.colours = {QColor(0, 0, 255), QColor(120, 220, 120)};
    input.valenceA = 2;
    input.valenceB = 3;
    return input;
}

ScatterInput scatterOf(const Doubles &a, const Doubles &t)
{
    ScatterInput input;
    input.a = a.data();
    input.t = t.data();
    input.count = static_cast<std::size_t>(a.size());
    input.valenceA = 2;
    input.valenceB = 3;
    input.valences = {1.5, 3.5};
    input.amounts = {-0.5, 2.0};
    return input;
}

PixelValues pixels(const Doubles &values)
{
    return {values.data(), static_cast<std::size_t>(values.size())};
}

void drawOddHistogram(DispABase *display, QStylePainter *p, const ValueRange &range, const Doubles &values)
{
    HistogramBins bins;
    bins.setBoxes(range.min, range.max, 20);
    bins.addValues(static_cast<std::size_t>(values.size()), [&](std::size_t i) { return values[int(i)]; });
    HistogramInput input;
    input.bins = &bins;
    input.range = range;
    input.parts = {{&bins, Qt::red, QString()}};
    drawHistogram(display, p, input);
}

void drawOddMuts(DispABase *display, QStylePainter *p, const ValueRange &range, const Doubles &values)
{
    MutsInput input;
    MutsCurve curve{QStringLiteral("curve"), Qt::red, {}, Qt::SolidLine};
    for (int i = 0; i < values.size(); ++i) {
        curve.points.append(QPointF(i % 2 ? range.max : range.min, values[i]));
        curve.points.append(QPointF(values[i], i));
    }
    input.curves = {curve};
    input.windowFrom = range.min;
    input.windowTo = range.max;
    input.pointEnergies = input.markedEnergies = values;
    drawMuts(display, p, input);
}

} // namespace
Q_DECLARE_METATYPE(DrawOdd)

class TestDrawing : public QObject
{
    Q_OBJECT

private slots:
    void nothingToDraw_data();
    void nothingToDraw();
    void oddInput_data();
    void oddInput();
    void comparison();
    void comparisonOfOneRecord();
    void scatter();
    void scatterOnFineScreen();
    void scatterAsVectors();
    void m2m3Lines();
    void m2m3Points();
    void mutsCurves();
    void mutsRange_data();
    void mutsRange();
    void mutsLegend();
    void pointsOfSpectrum();
};

void TestDrawing::nothingToDraw_data()
{
    QTest::addColumn<DrawOdd>("draw");
    using Range = const ValueRange &;
    using Values = const Doubles &;
    QTest::newRow("no comparison") << DrawOdd(
        [](DispABase *display, QStylePainter *p, Range, Values) { drawLcfVsMps(display, p, comparisonOf({})); });
    QTest::newRow("no pixels") << DrawOdd(
        [](DispABase *display, QStylePainter *p, Range, Values) { drawScatter(display, p, scatterOf({}, {})); });
    QTest::newRow("no V point") << DrawOdd([](DispABase *display, QStylePainter *p, Range, Values values) {
        M2M3Input input;
        input.p = input.q = pixels(values);
        drawM2M3(display, p, input);
    });
    QTest::newRow("boxes not set") << DrawOdd([](DispABase *display, QStylePainter *p, Range, Values) {
        const HistogramBins bins;
        HistogramInput input;
        input.bins = &bins;
        drawHistogram(display, p, input);
    });
}

/// Not even the scale; and the range stays open for the first results.
void TestDrawing::nothingToDraw()
{
    QFETCH(const DrawOdd, draw);
    Graph graph;
    graph.paint([&](QStylePainter *p) { draw(&graph.display, p, {0, 1}, {1, 2}); });
    QVERIFY(graph.isWhite());
    QVERIFY(!graph.display.area()->scaleFixed);
}

void TestDrawing::oddInput_data()
{
    QTest::addColumn<DrawOdd>("draw");
    using Range = const ValueRange &;
    using Values = const Doubles &;
    QTest::newRow("LCF vs MPS") << DrawOdd([](DispABase *display, QStylePainter *p, Range range, Values values) {
        LcfVsMpsInput input = comparisonOf({});
        for (const double value : values)
            input.records.append({value, value, value, value, -7});
        input.valenceA = range.min;
        input.valenceB = range.max;
        drawLcfVsMps(display, p, input);
    });
    QTest::newRow("scatter") << DrawOdd([](DispABase *display, QStylePainter *p, Range range, Values values) {
        ScatterInput input = scatterOf(values, values);
        input.valenceA = range.min;
        input.valenceB = range.max;
        input.valences = input.amounts = range;
        drawScatter(display, p, input);
    });
    QTest::newRow("M2/M3") << DrawOdd([](DispABase *display, QStylePainter *p, Range range, Values values) {
        M2M3Input input;
        input.p = input.q = input.r = pixels(values);
        input.q.count = 2;
        input.first = input.second = {range.min, range.max, range.min};
        drawM2M3(display, p, input);
    });
    QTest::newRow("histogram") << DrawOdd(drawOddHistogram);
    QTest::newRow("Muts") << DrawOdd(drawOddMuts);
}

/// Whatever the user types and the methods find, a display comes back; the sanitizers see what goes wrong within.
void TestDrawing::oddInput()
{
    QFETCH(const DrawOdd, draw);
    const Doubles values = {0.5, notANumber, infinity, -infinity, 1e308, -1e308, 1e-320, 0, -0.0, 3e9, 7};
    const ValueRange ranges[] = {{0, 1},        {0, 0},          {1, 0},           {0, 1e12},
                                 {0, 1e300},    {-1e308, 1e308}, {notANumber, 1},  {0, notANumber},
                                 {0, infinity}, {0, 1e-300},     {5e9, 5e9 + 1e-6}};
    for (const QSize &size : {QSize(400, 300), QSize(0, 0), QSize(1, 1), QSize(7, 300), QSize(300, 5)}) {
        for (const ValueRange &range : ranges) {
            Graph graph(size);
            graph.paint([&](QStylePainter *p) { draw(&graph.display, p, range, values); });
            for (const ValueRange &zoomed : ranges) { // as a user who zooms and pans gets there
                graph.display.area()->scaleFixed = true;
                graph.cc().setRealArea(zoomed.min, zoomed.min, zoomed.max, zoomed.max);
                graph.paint([&](QStylePainter *p) { draw(&graph.display, p, range, values); });
                QVERIFY(size.width() < 400 || graph.image.pixelColor(0, 0) == white);
            }
        }
    }
}

void TestDrawing::comparison()
{
    Graph graph;
    const LcfVsMpsInput input = comparisonOf({{0, 2.25, 0, 2.65, 0}, {0, 2.65, 0, 2.25, 3}, {0, 2.75, 0, 2.45, 0}});
    graph.paint([&](QStylePainter *p) { drawLcfVsMps(&graph.display, p, input); });
    QCOMPARE(graph.range(), (Doubles{1.8, 1.8, 3.2, 3.2}));
    QCOMPARE(graph.at(2.25, 2.65), QColor(0, 0, 255));
    QCOMPARE(graph.at(2.65, 2.25), QColor(120, 220, 120)); // the palette starts again
    QCOMPARE(graph.at(2.75, 2.45), newestRecordColour);
    QVERIFY(graph.at(2.25, 2.65 + 5 / 182.0) != QColor(0, 0, 255)); // circles of 3 pixels, 182 pixels per unit
    for (const double valence : {2.0, 2.1, 2.9, 3.0}) {
        QCOMPARE(graph.at(valence, 1.85), plot::gridColour);
        QCOMPARE(graph.at(1.85, valence), plot::gridColour);
    }
    QCOMPARE(graph.at(1.9, 1.85), white); // the grid starts at the first reference,
    QCOMPARE(graph.at(3.1, 1.85), white); // and ends at the second
    QCOMPARE(graph.at(2.5, 2.5), agreementColour);
    QCOMPARE(graph.at(1.95, 1.95), white); // and so does the diagonal
    QCOMPARE(graph.at(3.05, 3.05), white);
}

void TestDrawing::comparisonOfOneRecord()
{
    Graph graph;
    graph.paint([&](QStylePainter *p) { drawLcfVsMps(&graph.display, p, comparisonOf({{0, 2.2, 0, 2.7, 1}})); });
    QCOMPARE(graph.at(2.2, 2.7), newestRecordColour); // over its own colour
    QVERIFY(graph.count(QColor(120, 220, 120)) == 0);

    // The newest where another one is, and one that cannot be shown.
    LcfVsMpsInput input = comparisonOf({{0, 2.2, 0, 2.7, 1}, {0, 2.8, 0, 2.2, 0}, {0, 2.2, 0, 2.7, 0}});
    graph.paint([&](QStylePainter *p) { drawLcfVsMps(&graph.display, p, input); });
    QCOMPARE(graph.at(2.2, 2.7), newestRecordColour);
    input.records.append({0, notANumber, 0, infinity, 0});
    graph.paint([&](QStylePainter *p) { drawLcfVsMps(&graph.display, p, input); });
    QCOMPARE(graph.at(2.2, 2.7), QColor(0, 0, 255));
    QCOMPARE(graph.count(newestRecordColour), 0);
}

void TestDrawing::scatter()
{
    Graph graph;
    const Doubles a = {0.25, 0.25, 0.61, notANumber, 1e300, 0.9};
    const Doubles t = {1.23, 1.23, -0.3, 1, infinity, -40};
    graph.paint([&](QStylePainter *p) { drawScatter(&graph.display, p, scatterOf(a, t)); });
    QCOMPARE(graph.range(), (Doubles{1.5, -0.5, 3.5, 2}));
    const QColor black(Qt::black);
    for (const QPoint &centre : {graph.pixelOf(2.75, 1.23), graph.pixelOf(2.39, -0.3)}) {
        for (const QPoint &offset : {QPoint(0, 0), QPoint(1, 0), QPoint(-1, 0), QPoint(0, 1), QPoint(0, -1)})
            QCOMPARE(graph.image.pixelColor(centre + offset), black);
    }
    QCOMPARE(graph.count(black), 10); // and none of those that have no place
    for (const double valence : {2.0, 2.5, 3.0})
        QCOMPARE(graph.at(valence, 1.95), plot::gridColour);
    QCOMPARE(graph.at(1.9, 1.95), white);
    QCOMPARE(graph.at(3.1, 1.95), white);
    for (const double thickness : {0.0, 0.5, 1.0})
        QCOMPARE(graph.at(1.6, thickness), plot::gridColour);
    QCOMPARE(graph.at(1.6, 1.1), white);
    QCOMPARE(graph.at(1.6, -0.1), white);

    graph.cc().setRealArea(2, 0, 3, 1); // zoomed: stays
    graph.paint([&](QStylePainter *p) { drawScatter(&graph.display, p, scatterOf(a, t)); });
    QCOMPARE(graph.range(), (Doubles{2, 0, 3, 1}));
}

/// Points are placed and painted in the pixels of the device.
void TestDrawing::scatterOnFineScreen()
{
    Graph graph;
    graph.paint([&](QStylePainter *p) { drawScatter(&graph.display, p, scatterOf({0.25}, {1.23})); }, 2);
    const QPoint centre(numeric::truncToInt(2 * graph.cc().r2sx(2.75)), numeric::truncToInt(2 * graph.cc().r2sy(1.23)));
    for (const QPoint &offset : {QPoint(0, 0), QPoint(2, 0), QPoint(0, -2), QPoint(1, 1)})
        QCOMPARE(graph.image.pixelColor(centre + offset), QColor(Qt::black));
    QVERIFY(graph.image.pixelColor(centre + QPoint(2, 2)) != QColor(Qt::black));
    QVERIFY(graph.image.pixelColor(centre + QPoint(3, 0)) != QColor(Qt::black));
}

/// As for a printer or a file of vectors, which have no pixels to count.
void TestDrawing::scatterAsVectors()
{
    Graph graph;
    graph.paint([](QStylePainter *) {}); // places the plot
    QPicture vectors;
    QStylePainter p;
    p.begin(&vectors, graph.display.area());
    drawScatter(&graph.display, &p, scatterOf({0.25}, {1.23}));
    p.end();
    graph.paint([&](QStylePainter *painter) {
        graph.cc().setMargins();
        painter->drawPicture(0, 0, vectors);
    });
    QCOMPARE(graph.at(2.75, 1.23), QColor(Qt::black));
    QCOMPARE(graph.at(2.75, 1.3), white);
    QCOMPARE(graph.at(2.9, 1.3), plot::gridColour);
}

void TestDrawing::m2m3Lines()
{
    const M2M3Line first = referenceLine({1, 3, 2});
    QCOMPARE(first.slope, 0.5);
    QCOMPARE(first.offset, 0.0);
    const M2M3Line mixture = mixtureLine({1, 3, 2}, {0, 1, 3}); // through (2, 1) and (1, 3)
    QCOMPARE(mixture.slope, -2.0);
    QCOMPARE(mixture.offset, 5.0);
    QVERIFY(std::isinf(referenceLine({1, 1, 2}).slope));

    Graph graph;
    M2M3Input input;
    const Doubles p = {0, 0}, q = {-1, 4}, r = {4, -1};
    input.p = pixels(p);
    input.q = pixels(q);
    input.r = pixels(r);
    input.first = {1, 3, 2};
    input.second = {0, 1, 3};
    graph.paint([&](QStylePainter *painter) { drawM2M3(&graph.display, painter, input); });
    QCOMPARE(graph.range(), (Doubles{-1.5, -1.5, 4.5, 4.5}));
    QCOMPARE(graph.at(4, 2), firstReferenceColour);
    QCOMPARE(graph.at(-1, -0.5), firstReferenceColour);
    QCOMPARE(graph.at(1.3, 3.9), secondReferenceColour);
    QCOMPARE(graph.at(1.75, 1.5), mixtureColour);
    QCOMPARE(graph.at(0, 3), QColor(Qt::black));
    QCOMPARE(graph.at(3, 0), QColor(Qt::black));
    QCOMPARE(graph.at(-1, 4), QColor(255, 0, 0));
    QCOMPARE(graph.at(4, -1), QColor(255, 0, 0));
}

void TestDrawing::m2m3Points()
{
    Graph graph;
    M2M3Input input;
    const Doubles p = {1, 1, notANumber}, q = {3, 4}, r = {2, 2, 2, infinity};
    input.p = pixels(p);
    input.q = pixels(q);
    input.r = pixels(r);
    input.isBlue = true;
    graph.paint([&](QStylePainter *painter) { drawM2M3(&graph.display, painter, input); });
    // (2, 1), (3, 1), (notANumber, notANumber) and, of the last pixel that only the V point has, (0, infinite).
    QCOMPARE(graph.range(), (Doubles{1.9, 0.9, 3.1, 1.1}));
    QCOMPARE(graph.at(2, 1), QColor(0, 0, 255));
    QCOMPARE(graph.at(3, 1), QColor(0, 0, 255));
    QCOMPARE(graph.count(QColor(0, 0, 255)), 10);

    const Doubles longer = {2, 2, 2, 9}; // p and q of the fourth pixel count as -1
    input.r = pixels(longer);
    graph.display.clearScale();
    graph.paint([&](QStylePainter *painter) { drawM2M3(&graph.display, painter, input); });
    QCOMPARE(graph.at(0, 10), QColor(0, 0, 255));
}

void TestDrawing::mutsCurves()
{
    Graph graph;
    MutsInput input;
    input.curves = {
        {QStringLiteral("used"), Qt::red, QVector<QPointF>{{0, 1}, {50, 1}, {60, notANumber}, {70, 1}, {100, 1}}},
        {QStringLiteral("dashed"), QColor(255, 0, 255), QVector<QPointF>{{0, 0.5}, {100, 0.5}}, Qt::DashLine},
        {QStringLiteral("not loaded"), Qt::green, {}},
        {QStringLiteral("other"), Qt::blue, QVector<QPointF>{{0, 0}, {100, 0}}}};
    input.pointEnergies = {33};
    input.markedEnergies = {78};
    graph.paint([&](QStylePainter *p) { drawMuts(&graph.display, p, input); });
    QCOMPARE(graph.range(), (Doubles{0, -0.05, 100, 1.05}));
    QCOMPARE(graph.at(25, 1), QColor(Qt::red));
    QCOMPARE(graph.at(85, 1), QColor(Qt::red));
    QCOMPARE(graph.at(55, 1), white); // a gap where there is no value
    QCOMPARE(graph.at(65, 1), white);
    QCOMPARE(graph.at(45, 0), QColor(Qt::blue));
    const int dashes = graph.count(QColor(255, 0, 255));
    QVERIFY(dashes > 200 && dashes < 320); // of 340 pixels in a row and those of the legend
    QCOMPARE(graph.count(QColor(Qt::green)), 0);
    QCOMPARE(graph.at(33, 0.25), pointEnergyColour);
    QCOMPARE(graph.at(78, 0.25), markedEnergyColour);
    QCOMPARE(graph.at(50, 0.25), mutsGridColour); // every 10 eV
    QCOMPARE(graph.at(55, 0.25), white);
}

void TestDrawing::mutsRange_data()
{
    QTest::addColumn<QPolygonF>("points");
    QTest::addColumn<Doubles>("window");
    QTest::addColumn<Doubles>("range");
    const QPolygonF points = QVector<QPointF>{{10, 0}, {20, 2}, {30, 10}, {40, infinity}, {notANumber, 50}};
    QTest::newRow("all energies") << points << Doubles{0, 0} << Doubles{10, -0.5, 30, 10.5};
    QTest::newRow("window") << points << Doubles{5, 25} << Doubles{5, -0.1, 25, 2.1};
    QTest::newRow("window without points") << points << Doubles{50, 60} << Doubles{0, 0, 1, 1};
    QTest::newRow("level") << QPolygonF(QVector<QPointF>{{1, 3}, {2, 3}}) << Doubles{0, 0} << Doubles{1, 2.5, 2, 3.5};
    QTest::newRow("one point") << QPolygonF(QVector<QPointF>{{1, 3}}) << Doubles{0, 0} << Doubles{0.5, 2.5, 1.5, 3.5};
    QTest::newRow("none") << QPolygonF() << Doubles{0, 0} << Doubles{0, 0, 1, 1};
}

void TestDrawing::mutsRange()
{
    QFETCH(const QPolygonF, points);
    QFETCH(const Doubles, window);
    Graph graph;
    MutsInput input;
    input.curves = {{QString(), Qt::red, points}};
    input.windowFrom = window[0];
    input.windowTo = window[1];
    graph.paint([&](QStylePainter *p) { drawMuts(&graph.display, p, input); });
    QTEST(graph.range(), "range");
}

/// The names stand where no curve is, whichever corner that leaves.
void TestDrawing::mutsLegend()
{
    for (const QPolygonF &steps : {QPolygonF(QVector<QPointF>{{0, 0}, {20, 0}, {20, 1}, {100, 1}}),
                                   QPolygonF(QVector<QPointF>{{0, 1}, {70, 1}, {70, 0}, {100, 0}})}) {
        Graph graph;
        MutsInput input;
        input.curves = {{QStringLiteral("a name of some length"), Qt::red, steps},
                        {QStringLiteral("one point"), Qt::blue, QVector<QPointF>{{50, 0.5}}},
                        {QStringLiteral("another"), Qt::red, steps}};
        graph.paint([&](QStylePainter *p) { drawMuts(&graph.display, p, input); });
        for (int at = 2; at < 100; at += 5)
            QCOMPARE(graph.at(at, at < steps[1].x() ? steps[0].y() : steps[3].y()), QColor(Qt::red));
        QVERIFY(graph.count(Qt::blue) > 30); // its sample line
    }
}

void TestDrawing::pointsOfSpectrum()
{
    AMutE spectrum;
    spectrum.addPoint({10, 7000, 0.5});
    spectrum.addPoint({9, 7100, 1.5});
    QVERIFY(spectrumPoints(spectrum, AMutE::Raw).isEmpty()); // not valid
    spectrum.setValid(true);
    spectrum.setDE(5);
    QCOMPARE(spectrumPoints(spectrum, AMutE::Raw), QPolygonF(QVector<QPointF>{{6995, 0.5}, {7095, 1.5}}));
    QCOMPARE(spectrumPoints(spectrum, 5), QPolygonF(QVector<QPointF>{{6995, 0}, {7095, 0}}));
}

QTEST_MAIN(TestDrawing)
#include "TestDrawing.moc"
