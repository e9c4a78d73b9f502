#include "DrawingHelpers.h"
#include "Tables.h"

#include "analysis/drawing/MapDrawing.h"
#include "display/DispMBase.h"

using namespace resultdrawing;
using Doubles = QVector<double>;

namespace
{

const double notANumber = qQNaN(), infinity = qInf();
const QColor white(Qt::white);

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
    return {values.data(), static_cast<std::size_t>(values.size()), {width, height}};
}

ResultMapInput inputOf(const Doubles &values, int width, int height, std::optional<ValueRange> limits = {})
{
    return {shown(values, width, height), nullptr, limits, QString()};
}

} // namespace

class TestMapDrawing : public QObject
{
    Q_OBJECT

private slots:
    void cells()
    {
        MapCanvas canvas;
        const Doubles values = {0.1, 0.2, 0.3, 0.4, notANumber, infinity};
        const QVector<quint8> mask = {0, 0, 1, 0, 0, 0};
        ResultMapInput input = inputOf(values, 3, 2, ValueRange{0, 0.5});
        canvas.drawResult(input);
        QCOMPARE(canvas.range(), QString("0 3 0 2"));
        QCOMPARE(canvas.limits(), (Doubles{0, 0.5}));
        QCOMPARE(canvas.wrong({{0.5, 0.5, canvas.colourOf(0.1)}, // the first row is the lowest
                               {1.5, 0.5, canvas.colourOf(0.2)},
                               {2.5, 0.5, canvas.colourOf(0.3)},
                               {0.5, 1.5, canvas.colourOf(0.4)},
                               {1.5, 1.5, notFiniteColour},
                               {2.5, 1.5, notFiniteColour},
                               {1.0, 0.5, QColor(200, 200, 200)}}), // outlines of the cells
                 QString());
        input.mask = mask.data();
        canvas.drawResult(input);
        QCOMPARE(canvas.wrong({{2.5, 0.5, maskedColour}, {1.5, 0.5, canvas.colourOf(0.2)}}), QString());

        canvas.cc().setRealArea(-3, -2, 3, 2); // zoomed out: white beside the map
        canvas.drawResult(input);
        QCOMPARE(canvas.wrong({{-0.5, 0.5, white}, {0.5, -0.5, white}, {0.5, 0.5, canvas.colourOf(0.1)}}), QString());
    }

    /// Both kinds of map cover all their cells; those that have no record are seen to have none.
    void cellsWithoutValues()
    {
        forRows<int, int, int, QVector<QPointF>>(
            {{"the last row is not whole", 5, 2, 4, {{1.5, 2.5}, {0.5, 3.5}}},
             {"the upper rows are missing", 4, 2, 4, {{0.5, 2.5}, {1.5, 3.5}}},
             {"less than one row", 2, 4, 2, {{2.5, 0.5}, {3.5, 0.5}, {0.5, 1.5}}},
             {"as it should be", 4, 2, 2, {}},
             {"more values than cells", 9, 2, 2, {}}},
            [](int values, int width, int height, const QVector<QPointF> &without) {
                const Doubles plane(values, 7.0);
                for (const bool isResult : {false, true}) {
                    MapCanvas canvas;
                    if (isResult)
                        canvas.drawResult(inputOf(plane, width, height, ValueRange{6, 9}));
                    else
                        canvas.drawData(shown(plane, width, height));
                    QCOMPARE(canvas.range(), QString("0 %1 0 %2").arg(width).arg(height));
                    QCOMPARE(canvas.at(1.5, 0.5), canvas.colourOf(7));
                    for (const QPointF &cell : without)
                        QCOMPARE(canvas.at(cell.x(), cell.y()), notFiniteColour);
                    QVERIFY(!without.isEmpty() || canvas.count(notFiniteColour) == 0);
                }
            });
    }

    void colourRanges()
    {
        forRows<std::optional<ValueRange>, Doubles>(
            {{"of the quantity", ValueRange{-1, 2}, {-1, 2}},
             {"none: as it was", {}, {0, 1}},
             {"empty", ValueRange{0, 0}, {0, 0}},
             {"not finite: that of the values", ValueRange{0, infinity}, {5, 8}}},
            [](const std::optional<ValueRange> &given, const Doubles &limits) {
                MapCanvas canvas;
                const Doubles values = {5, 8, notANumber};
                canvas.drawResult(inputOf(values, 3, 1, given));
                QCOMPARE(canvas.limits(), limits);
                QCOMPARE(canvas.wrong({{0.5, 0.5, canvas.colourOf(5)}, {1.5, 0.5, canvas.colourOf(8)}}), QString());
            });
    }

    /// Zoom and limits are two facts: limits go without the zoom, but not the other way round.
    void zoomAndLimits()
    {
        MapCanvas canvas;
        const Doubles values = {5, 8}, more = {5, 8, 9};
        canvas.drawResult(inputOf(values, 2, 1, ValueRange{0, 10}));
        canvas.display.setLimits(4, 9);
        canvas.cc().setRealArea(0, 0, 1, 0.5);
        canvas.drawResult(inputOf(values, 2, 1, ValueRange{0, 10}));
        QCOMPARE(canvas.limits(), (Doubles{4, 9}));
        QCOMPARE(canvas.range(), QString("0 1 0 0.5"));
        canvas.drawResult(inputOf(values, 2, 1, ValueRange{0, 20}));
        QCOMPARE(canvas.limits(), (Doubles{0, 20}));
        QCOMPARE(canvas.range(), QString("0 1 0 0.5"));
        canvas.display.setLimits(4, 9);
        canvas.drawResult(inputOf(more, 3, 1, ValueRange{0, 20})); // another map is not that of the limits
        QCOMPARE(canvas.limits(), (Doubles{0, 20}));
        QCOMPARE(canvas.range(), QString("0 3 0 1"));
    }

    /// Words instead of cells; the quantity that comes next still finds its own limits.
    void notComputed()
    {
        MapCanvas canvas;
        ResultMapInput input;
        input.map = {nullptr, 0, 30, 20};
        input.limits = ValueRange{0, 10};
        canvas.drawResult(input);
        const int empty = canvas.count(white);
        input.notComputed = QStringLiteral("not computed by this method");
        canvas.drawResult(input);
        QVERIFY(canvas.count(white) < empty);
        QCOMPARE(canvas.range(), QString("0 30 0 20"));
        QCOMPARE(canvas.limits(), (Doubles{0, 1}));
    }

    /// The white area and the scale; both kinds of map.
    void mapsWithoutCells()
    {
        const Doubles plane(4, 7.0);
        for (const ShownMap &map : {shown({}, 0, 0), shown(plane, 4, 0), shown(plane, -2, 2)}) {
            MapCanvas canvas;
            canvas.drawResult({map, nullptr, {}, QString()});
            for (int round = 0; round < 2; ++round) {
                QCOMPARE(canvas.count(white), 339 * 254);
                QCOMPARE(canvas.image.pixelColor(40, 100), QColor(150, 150, 150)); // outline of the plot
                QVERIFY(round == 1 || !canvas.display.area()->scaleFixed);
                canvas.drawData(map);
            }
            QCOMPARE(canvas.range(), QString("0 1 0 1")); // nothing is left of another map
        }
    }

    void dataMap()
    {
        MapCanvas canvas;
        const Doubles values = {0.5, 1.5, -infinity, 2.5, 9.0}, none = {notANumber, infinity};
        canvas.drawData(shown(values, 2, 2));
        QCOMPARE(canvas.limits(), (Doubles{0.5, 2.5})); // of the cells
        QCOMPARE(canvas.wrong(
                     {{0.5, 0.5, canvas.colourOf(0.5)}, {1.5, 1.5, canvas.colourOf(2.5)}, {0.5, 1.5, notFiniteColour}}),
                 QString());
        double changing[] = {1, 2, 3, 4};
        canvas.drawData({changing, 4, 2, 2});
        changing[0] = 0;
        canvas.drawData({changing, 4, 2, 2}); // nothing says that the values are others
        QCOMPARE(canvas.limits(), (Doubles{1, 4}));
        canvas.display.picture.invalidate();
        canvas.drawData({changing, 4, 2, 2});
        QCOMPARE(canvas.limits(), (Doubles{0, 4}));
        canvas.drawData(shown(none, 2, 1));
        QCOMPARE(canvas.limits(), (Doubles{0, 4}));
        QCOMPARE(canvas.at(0.5, 0.5), notFiniteColour);

        for (const QSize &size : {QSize(0, 0), QSize(1, 1), QSize(5, 300)}) {
            canvas.display.area()->resize(size);
            canvas.drawData(shown(values, 2, 2));
        }
    }
};

QTEST_MAIN(TestMapDrawing)
#include "TestMapDrawing.moc"
