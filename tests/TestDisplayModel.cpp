#include "display/ChCoord.h"
#include "display/GraphBoxes.h"
#include "display/HistogramBins.h"

#include "tests/SmallDisk.h"
#include "tests/Tables.h"

#include <QTemporaryDir>

#include <random>

namespace
{

const double infinity = qInf(), notANumber = qQNaN();

/// Coordinates as a drawing area of that size sets them: plot from (40, 15) to (380, 270).
struct AreaCoord : ChCoord {
    explicit AreaCoord(int width = 400, int height = 300)
    {
        setScreenArea(0, height, width, 0);
        setMargins();
    }
};

QStringList filesIn(const QTemporaryDir &directory)
{
    return QDir(directory.path()).entryList(QDir::Files);
}

} // namespace

class TestDisplayModel : public QObject
{
    Q_OBJECT

private slots:
    void margins()
    {
        forRows<QSize, QRectF>({{"even", {400, 300}, {40, 15, 340, 255}},
                                {"odd: margins are whole pixels", {401, 301}, {40, 15, 341, 256}},
                                {"no room", {1, 1}, {0, 0, 1, 1}}},
                               [](const QSize &area, const QRectF &inner) {
                                   const AreaCoord cc(area.width(), area.height());
                                   QCOMPARE(QRectF(QPointF(cc.isx0(), cc.isy1()), QPointF(cc.isx1(), cc.isy0())),
                                            inner);
                               });
    }

    void mapsThereAndBack()
    {
        for (const auto &[x0, y0, x1, y1] : {std::tuple(7080., -0.2, 7230., 1.5), {10., 5., -10., -5.}}) {
            AreaCoord cc;
            cc.setRealArea(x0, y0, x1, y1);
            QCOMPARE(QRectF(QPointF(cc.r2sx(x0), cc.r2sy(y1)), QPointF(cc.r2sx(x1), cc.r2sy(y0))),
                     QRectF(40, 15, 340, 255));
            for (const double s : {-3.0, 40.0, 211.5, 399.0}) {
                QCOMPARE(cc.r2sx(cc.s2rx(s)), s);
                QCOMPARE(cc.r2sy(cc.s2ry(s)), s);
                QCOMPARE(cc.s2rxFromEdge(s) + x0, cc.s2rx(s));
                QCOMPARE(cc.s2ryFromEdge(s) + y0, cc.s2ry(s));
                QCOMPARE(cc.s2rdx(cc.r2sdx(s)), s);
                QCOMPARE(cc.s2rdy(cc.r2sdy(s)), s);
            }
            QCOMPARE(cc.r2sdy(y1 - y0), -255.0); // a length up is negative in pixels
        }
    }

    void limitsHoldInReversedRanges()
    {
        AreaCoord cc;
        cc.setRealArea(2, 0, 8, 1);
        const auto limited = [&cc](double x, double y) {
            return QPointF(cc.s2rxLimit(x), cc.s2ryLimit(y));
        };
        QCOMPARE(limited(10, 299), QPointF(2, 0));
        QCOMPARE(limited(399, 142.5), QPointF(8, 0.5));
        cc.setRealArea(8, 1, 2, -1);
        QCOMPARE(limited(10, 0), QPointF(8, -1)); // beyond the edge where 8 is drawn
        QCOMPARE(limited(399, 299), QPointF(2, 1));
        cc.setScreenArea(0, 300, 400, 0); // the inner area is as large: edge to edge, y upwards
        QCOMPARE(QPointF(cc.r2sx(8), cc.r2sy(1)), QPointF(0, 300));
        QCOMPARE(QPointF(cc.r2sx(2), cc.r2sy(-1)), QPointF(400, 0));
    }

    void edgeBandsAreOpen()
    {
        // near: inner x, inner y, outer x, outer y
        forRows<double, double, QVector<bool>>(
            {{"middle", 200, 150, {false, false, false, false}},
             {"on the inner bands' borders", 74, 244.5, {false, false, false, false}},
             {"just within them", 73.9, 244.6, {true, true, false, false}},
             {"far ends", 346.1, 40.4, {true, true, false, false}},
             {"far borders", 346, 40.5, {false, false, false, false}},
             {"outer borders", 40, 30, {true, true, false, false}},
             {"within the outer bands", 39.9, 270.1, {true, true, true, true}}},
            [](double x, double y, const QVector<bool> &near) {
                AreaCoord cc;
                QCOMPARE((QVector<bool>{cc.nearEdgeX(x), cc.nearEdgeY(y), cc.nearOuterEdgeX(x), cc.nearOuterEdgeY(y)}),
                         near);
            });
    }

    void steps()
    {
        // range: shown on 340 pixels
        forRows<double, double, double, double>({{"34 pixels per unit", 10, 0.1, 20, 1},
                                                 {"the step itself, however long", 10, 5, 20, 5},
                                                 {"twice", 10, 0.5, 20, 1},
                                                 {"five times", 10, 0.2, 20, 1},
                                                 {"exactly as long is too short", 17, 0.1, 20, 2},
                                                 {"largest candidate", 3.4e10, 1, 0.4, 5e7},
                                                 {"none is long enough", 3.4e12, 1, 20, 1e8},
                                                 {"reversed range: none counts", -10, 0.1, 20, 1e7}},
                                                [](double range, double step, double minPixels, double expected) {
                                                    AreaCoord cc;
                                                    cc.setRealX(0, range);
                                                    QCOMPARE(cc.calcStep(step, minPixels), expected);
                                                });
    }

    // Looks like a slip, but the y grids of the displays are spaced by it.
    void stepAlongYUsesTheXScale()
    {
        AreaCoord cc;
        for (const double top : {1000.0, 1e-6}) {
            cc.setRealArea(0, 0, 10, top);
            QCOMPARE(cc.calcStepY(0.1, 20), 1.0);
        }
    }

    void linesInSmallGraphs()
    {
        for (const auto &[width, height, lines] : {std::tuple(400, 600, 22),
                                                   {600, 600, 20},
                                                   {400, 300, 15},
                                                   {400, 210, 11},
                                                   {400, 60, 9},
                                                   {200, 200, 15},
                                                   {860, 200, 10},
                                                   {300, 0, 1}}) { // divided by when it is enlarged
            AreaCoord cc(width, height);
            QCOMPARE(readableTextLines(cc), lines);
            cc.textLines = lines;
            const GraphBoxes boxes(cc);
            QVERIFY(boxes.xTitle.bottom() <= height);    // not below the area
            QVERIFY(boxes.yTitle.bottom() <= cc.isx0()); // left of the plot: its coordinates are turned
        }
    }

    void valueToBox()
    {
        // box: -1 under, 4 over, -2 in the total only
        forRows<double, int>({{"lower edge", -0.5, 0},
                              {"just below the upper edge", 0.4999, 0},
                              {"upper edge belongs to the next", 0.5, 1},
                              {"last box", 3.49, 3},
                              {"end of the last box", 3.5, 4},
                              {"less than a width below: truncated to the first box", -1.49, 0},
                              {"a width below", -1.5, -1},
                              {"far above, beyond an int", 1e300, 4},
                              {"far below, beyond an int", -1e300, -1},
                              {"infinity", infinity, 4},
                              {"minus infinity", -infinity, -1},
                              {"NaN", notANumber, -2}},
                             [](double value, int box) {
                                 HistogramBins one, many;
                                 one.setBoxes(0, 3, 4); // centres 0 ... 3
                                 many.setBoxes(0, 3, 4);
                                 one.add(value);
                                 many.addValues(1, [&](std::size_t) { return value; });
                                 QVector<int> counts(4);
                                 if (box >= 0 && box < 4)
                                     counts[box] = 1;
                                 for (const HistogramBins *bins : {&one, &many}) {
                                     QCOMPARE(bins->counts, counts);
                                     QCOMPARE(bins->inRangeCount(), counts.count(1));
                                     QCOMPARE((QVector<int>{bins->under, bins->over, bins->total}),
                                              (QVector<int>{box == -1, box == 4, 1}));
                                 }
                             });
    }

    void strangeBoxes()
    {
        // n, inRange: of 0, 0.5, 1 and 7
        HistogramBins bins; // set anew by each row, which forgets what was counted
        QVERIFY(!bins.isSet());
        forRows<double, double, double, int, int>({{"no box", 0, 1, 0, 0, 0},
                                                   {"less than none", 0, 1, -5, 0, 0},
                                                   {"not a number of boxes", 0, 1, notANumber, 0, 0},
                                                   {"one infinite box", 0, 1, 1.9, 1, 4},
                                                   {"one box without a range", 1, 1, 1, 1, 4},
                                                   {"more than memory should hold", 0, 1, 1e9, 1000000, 3},
                                                   {"beyond an int", 0, 1, infinity, 1000000, 3},
                                                   {"reversed range", 1, 0, 3, 3, 3},
                                                   {"boxes without width: only their one value", 1, 1, 5, 5, 1},
                                                   {"no numbers", notANumber, notANumber, 2, 2, 4}},
                                                  [&bins](double first, double last, double boxes, int n, int inRange) {
                                                      bins.setBoxes(first, last, boxes);
                                                      for (const double value : {0.0, 0.5, 1.0, 7.0})
                                                          bins.add(value);
                                                      QCOMPARE(bins.n, n);
                                                      QCOMPARE(bins.counts.size(), bins.n);
                                                      QCOMPARE(bins.inRangeCount(), inRange);
                                                      QCOMPARE(bins.total, 4);
                                                      QCOMPARE(bins.under + inRange + bins.over, 4);
                                                      QCOMPARE(bins.largestCount() > 0, bins.inRangeCount() > 0);
                                                  });
    }

    void countsDoNotDependOnThreads()
    {
        std::mt19937 random(7);
        std::normal_distribution<double> normal(2, 1);
        std::vector<double> values(100003);
        for (double &value : values)
            value = normal(random);
        values[5] = notANumber;
        HistogramBins singly;
        singly.setBoxes(1.5, 3.5, 51);
        for (const double value : values)
            singly.add(value);
        QVERIFY(singly.under > 0 && singly.over > 0 && singly.largestCount() > 1000);
        for (const int threads : {0, 1, 3}) {
            HistogramBins bins;
            bins.setBoxes(1.5, 3.5, 51);
            bins.addValues(
                values.size(), [&values](std::size_t i) { return values[i]; }, threads);
            QCOMPARE(bins.counts, singly.counts);
            QCOMPARE((QVector<int>{bins.under, bins.over, bins.total}),
                     (QVector<int>{singly.under, singly.over, singly.total}));
        }
    }

    void file()
    {
        const QTemporaryDir directory;
        HistogramBins bins;
        bins.setBoxes(0, 1, 11);
        bins.under = 7;
        bins.over = 1000;
        bins.counts[10] = 3;
        QVERIFY(bins.write(directory.filePath("map.txt"), "a"));
        QByteArray expected =
            "-0.15 -0.1 -0.05  7\n"
            "-0.05 0 0.05  0\n0.05 0.1 0.15  0\n0.15 0.2 0.25  0\n0.25 0.3 0.35  0\n0.35 0.4 0.45  0\n"
            "0.45 0.5 0.55  0\n0.55 0.6 0.65  0\n0.65 0.7 0.75  0\n0.75 0.8 0.85  0\n0.85 0.9 0.95  0\n"
            "0.95 1 1.05  3\n1.05 1.1 1.15  1000\n";
        QCOMPARE(tables::bytesOf(directory.filePath("map_a.txt")), expected);
    }

    void fileNames()
    {
        forRows<QString, QString>(
            {{"suffix kept", "map.txt", "map_HGAlpha.txt"},
             {"everything before the last dot", "run.3.dat", "run.3_HGAlpha.dat"},
             {"no suffix: the dot stays", "map", "map_HGAlpha."},
             {"markers of a format string", "%1 %2.%3", "%1 %2_HGAlpha.%3"},
             {"not plain ASCII", QStringLiteral("\u7d50\u679c.dat"), QStringLiteral("\u7d50\u679c_HGAlpha.dat")}},
            [](const QString &path, const QString &written) {
                const QTemporaryDir directory;
                QVERIFY(HistogramBins().write(directory.filePath(path), "HGAlpha"));
                QCOMPARE(filesIn(directory), QStringList{written});
            });
    }

    /// A write that fails leaves the previous file and nothing else.
    void fileThatCannotBeWritten()
    {
        const QTemporaryDir directory;
        HistogramBins bins;
        bins.setBoxes(0, 1, 3);
        QVERIFY(bins.write(directory.filePath("map.txt"), "a"));
        const QByteArray before = tables::bytesOf(directory.filePath("map_a.txt"));
        QVERIFY(QDir(directory.path()).mkdir("map_b.txt"));
        QVERIFY(!bins.write(directory.filePath("map.txt"), "b"));
        QVERIFY(!bins.write(directory.filePath("missing/map.txt"), "a"));
        QVERIFY(!bins.write(QString(), "a"));
        bins.setBoxes(0, 1, 5);
        const SmallDisk disk(20);
        QVERIFY(!bins.write(directory.filePath("map.txt"), "a"));
        QCOMPARE(tables::bytesOf(directory.filePath("map_a.txt")), before);
        QCOMPARE(filesIn(directory), QStringList{"map_a.txt"});
    }
};

QTEST_GUILESS_MAIN(TestDisplayModel)
#include "TestDisplayModel.moc"
