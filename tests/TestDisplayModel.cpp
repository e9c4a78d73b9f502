#include "display/ChCoord.h"
#include "display/GraphBoxes.h"
#include "display/HistogramBins.h"

#include "tests/SmallDisk.h"
#include <QTemporaryDir>

#include <QtTest>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace
{

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// As a drawing area of that size sets it.
void setArea(ChCoord *cc, int width, int height)
{
    cc->setScreenArea(0, height, width, 0);
    cc->setMargins();
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArrayLiteral("(cannot be opened)");
}

} // namespace

class TestDisplayModel : public QObject
{
    Q_OBJECT

private slots:
    void margins_data();
    void margins();
    void screenAreaResetsTheInnerOne();
    void mapsThereAndBack_data();
    void mapsThereAndBack();
    void limitsHoldInReversedRanges();
    void edgeBandsAreOpen_data();
    void edgeBandsAreOpen();
    void step_data();
    void step();
    void stepAlongYUsesTheXScale();
    void boxesOfTitlesAndLabels();
    void linesInSmallGraphs();
    void valueToBox_data();
    void valueToBox();
    void strangeBoxes_data();
    void strangeBoxes();
    void countsDoNotDependOnThreads();
    void setBoxesForgets();
    void file();
    void fileNames_data();
    void fileNames();
    void fileThatCannotBeWritten();
    void fullDiskKeepsThePreviousFile();
};

void TestDisplayModel::margins_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<QRectF>("inner"); // left, top, width, height
    QTest::newRow("even") << 400 << 300 << QRectF(QPointF(40, 15), QPointF(380, 270));
    QTest::newRow("odd: margins are whole pixels") << 401 << 301 << QRectF(QPointF(40, 15), QPointF(381, 271));
    QTest::newRow("no room") << 1 << 1 << QRectF(QPointF(0, 0), QPointF(1, 1));
}

void TestDisplayModel::margins()
{
    QFETCH(int, width);
    QFETCH(int, height);
    ChCoord cc;
    setArea(&cc, width, height);
    QTEST(QRectF(QPointF(cc.isx0(), cc.isy1()), QPointF(cc.isx1(), cc.isy0())), "inner");
}

void TestDisplayModel::screenAreaResetsTheInnerOne()
{
    ChCoord cc;
    setArea(&cc, 400, 300);
    cc.setScreenArea(0, 300, 400, 0);
    QCOMPARE(cc.r2sx(0.0), 0.0);
    QCOMPARE(cc.r2sy(0.0), 300.0); // edge to edge, y upwards
    QCOMPARE(cc.r2sy(1.0), 0.0);
}

void TestDisplayModel::mapsThereAndBack_data()
{
    QTest::addColumn<QVector<double>>("range"); // x0, y0, x1, y1
    QTest::newRow("usual") << QVector<double>{7080, -0.2, 7230, 1.5};
    QTest::newRow("reversed") << QVector<double>{10, 5, -10, -5};
}

void TestDisplayModel::mapsThereAndBack()
{
    QFETCH(QVector<double>, range);
    ChCoord cc;
    setArea(&cc, 400, 300);
    cc.setRealArea(range[0], range[1], range[2], range[3]);
    QCOMPARE(cc.r2sx(range[0]), 40.0);
    QCOMPARE(cc.r2sx(range[2]), 380.0);
    QCOMPARE(cc.r2sy(range[1]), 270.0);
    QCOMPARE(cc.r2sy(range[3]), 15.0);
    for (const double s : {-3.0, 40.0, 211.5, 399.0}) {
        QCOMPARE(cc.r2sx(cc.s2rx(s)), s);
        QCOMPARE(cc.r2sy(cc.s2ry(s)), s);
        QCOMPARE(cc.s2rxFromEdge(s) + range[0], cc.s2rx(s));
        QCOMPARE(cc.s2ryFromEdge(s) + range[1], cc.s2ry(s));
        QCOMPARE(cc.s2rdx(cc.r2sdx(s)), s);
        QCOMPARE(cc.s2rdy(cc.r2sdy(s)), s);
    }
    QCOMPARE(cc.r2sdy(range[3] - range[1]), -255.0); // a length up is negative in pixels
}

void TestDisplayModel::limitsHoldInReversedRanges()
{
    ChCoord cc;
    setArea(&cc, 400, 300);
    cc.setRealArea(2, 0, 8, 1);
    QCOMPARE(cc.s2rxLimit(10), 2.0);
    QCOMPARE(cc.s2rxLimit(399), 8.0);
    QCOMPARE(cc.s2ryLimit(299), 0.0);
    QCOMPARE(cc.s2rxLimit(210), 5.0);
    cc.setRealX(8, 2);
    cc.setRealY(1, -1);
    QCOMPARE(cc.s2rxLimit(10), 8.0); // beyond the edge where 8 is drawn
    QCOMPARE(cc.s2rxLimit(399), 2.0);
    QCOMPARE(cc.s2ryLimit(0), -1.0);
}

void TestDisplayModel::edgeBandsAreOpen_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::addColumn<QVector<bool>>("near"); // inner x, inner y, outer x, outer y
    QTest::newRow("middle") << 200.0 << 150.0 << QVector<bool>{false, false, false, false};
    QTest::newRow("on the inner bands' borders") << 74.0 << 244.5 << QVector<bool>{false, false, false, false};
    QTest::newRow("just within them") << 73.9 << 244.6 << QVector<bool>{true, true, false, false};
    QTest::newRow("far ends") << 346.1 << 40.4 << QVector<bool>{true, true, false, false};
    QTest::newRow("far borders") << 346.0 << 40.5 << QVector<bool>{false, false, false, false};
    QTest::newRow("outer borders") << 40.0 << 30.0 << QVector<bool>{true, true, false, false};
    QTest::newRow("within the outer bands") << 39.9 << 270.1 << QVector<bool>{true, true, true, true};
}

void TestDisplayModel::edgeBandsAreOpen()
{
    QFETCH(double, x);
    QFETCH(double, y);
    QFETCH(QVector<bool>, near);
    ChCoord cc;
    setArea(&cc, 400, 300);
    QCOMPARE((QVector<bool>{cc.nearEdgeX(x), cc.nearEdgeY(y), cc.nearOuterEdgeX(x), cc.nearOuterEdgeY(y)}), near);
}

void TestDisplayModel::step_data()
{
    QTest::addColumn<double>("range"); // shown on 340 pixels
    QTest::addColumn<double>("step");
    QTest::addColumn<double>("minPixels");
    QTest::addColumn<double>("expected");
    QTest::newRow("34 pixels per unit") << 10.0 << 0.1 << 20.0 << 1.0;
    QTest::newRow("the step itself, however long") << 10.0 << 5.0 << 20.0 << 5.0;
    QTest::newRow("twice") << 10.0 << 0.5 << 20.0 << 1.0;
    QTest::newRow("five times") << 10.0 << 0.2 << 20.0 << 1.0;
    QTest::newRow("exactly as long is too short") << 17.0 << 0.1 << 20.0 << 2.0;
    QTest::newRow("largest candidate") << 3.4e10 << 1.0 << 0.4 << 5e7;
    QTest::newRow("none is long enough") << 3.4e12 << 1.0 << 20.0 << 1e8;
    QTest::newRow("reversed range: none counts") << -10.0 << 0.1 << 20.0 << 1e7;
}

void TestDisplayModel::step()
{
    QFETCH(double, range);
    QFETCH(double, step);
    QFETCH(double, minPixels);
    ChCoord cc;
    setArea(&cc, 400, 300);
    cc.setRealX(0, range);
    QTEST(cc.calcStep(step, minPixels), "expected");
}

// Looks like a slip, but the y grids of the displays are spaced by it.
void TestDisplayModel::stepAlongYUsesTheXScale()
{
    ChCoord cc;
    setArea(&cc, 400, 300);
    cc.setRealArea(0, 0, 10, 1000);
    QCOMPARE(cc.calcStepY(0.1, 20), 1.0);
    cc.setRealY(0, 1e-6);
    QCOMPARE(cc.calcStepY(0.1, 20), 1.0);
}

void TestDisplayModel::boxesOfTitlesAndLabels()
{
    ChCoord cc;
    setArea(&cc, 400, 300);
    const GraphBoxes boxes(cc);
    QCOMPARE(boxes.xTitle, QRectF(40, 271, 340, 10));
    QCOMPARE(boxes.yTitle, QRectF(-300, 10, 300, 10));
    QCOMPARE(boxes.yMaximum, QRectF(0, 15, 38, 10));
    QCOMPARE(boxes.yMinimum, QRectF(0, 270, 38, -10));
    QCOMPARE(boxes.xMinimum, QRectF(40, 271, 80, 10));
    QCOMPARE(boxes.xMaximum, QRectF(380, 271, -80, 10));
}

void TestDisplayModel::linesInSmallGraphs()
{
    ChCoord cc;
    for (const auto &[height, lines] : {std::pair(600, 20), {300, 15}, {210, 11}, {60, 9}}) {
        setArea(&cc, 400, height);
        QCOMPARE(readableTextLines(cc), lines);
        cc.textLines = lines;
        QVERIFY(GraphBoxes(cc).xTitle.bottom() <= height); // not below the area
    }
}

void TestDisplayModel::valueToBox_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("box"); // -1 under, 4 over, -2 in the total only
    QTest::newRow("lower edge") << -0.5 << 0;
    QTest::newRow("just below the upper edge") << 0.4999 << 0;
    QTest::newRow("upper edge belongs to the next") << 0.5 << 1;
    QTest::newRow("last box") << 3.49 << 3;
    QTest::newRow("end of the last box") << 3.5 << 4;
    QTest::newRow("less than a width below: truncated to the first box") << -1.49 << 0;
    QTest::newRow("a width below") << -1.5 << -1;
    QTest::newRow("far above, beyond an int") << 1e300 << 4;
    QTest::newRow("far below, beyond an int") << -1e300 << -1;
    QTest::newRow("infinity") << infinity << 4;
    QTest::newRow("minus infinity") << -infinity << -1;
    QTest::newRow("NaN") << notANumber << -2;
}

void TestDisplayModel::valueToBox()
{
    QFETCH(double, value);
    QFETCH(int, box);
    HistogramBins one, many;
    one.setBoxes(0, 3, 4); // centres 0 ... 3
    many.setBoxes(0, 3, 4);
    one.add(value);
    many.addValues(1, [value](std::size_t) { return value; });
    QVector<int> counts(4);
    if (box >= 0 && box < 4)
        counts[box] = 1;
    for (const HistogramBins *bins : {&one, &many}) {
        QCOMPARE(bins->counts, counts);
        QCOMPARE(bins->under, box == -1 ? 1 : 0);
        QCOMPARE(bins->over, box == 4 ? 1 : 0);
        QCOMPARE(bins->total, 1);
        QCOMPARE(bins->inRangeCount(), box >= 0 && box < 4 ? 1 : 0);
    }
}

void TestDisplayModel::strangeBoxes_data()
{
    QTest::addColumn<double>("first");
    QTest::addColumn<double>("last");
    QTest::addColumn<double>("boxes");
    QTest::addColumn<int>("n");
    QTest::addColumn<int>("inRange"); // of 0, 0.5, 1 and 7
    QTest::newRow("no box") << 0.0 << 1.0 << 0.0 << 0 << 0;
    QTest::newRow("less than none") << 0.0 << 1.0 << -5.0 << 0 << 0;
    QTest::newRow("not a number of boxes") << 0.0 << 1.0 << notANumber << 0 << 0;
    QTest::newRow("one infinite box") << 0.0 << 1.0 << 1.9 << 1 << 4;
    QTest::newRow("one box without a range") << 1.0 << 1.0 << 1.0 << 1 << 4;
    QTest::newRow("more than memory should hold") << 0.0 << 1.0 << 1e9 << 1000000 << 3;
    QTest::newRow("beyond an int") << 0.0 << 1.0 << infinity << 1000000 << 3;
    QTest::newRow("reversed range") << 1.0 << 0.0 << 3.0 << 3 << 3;
    QTest::newRow("boxes without width: only their one value") << 1.0 << 1.0 << 5.0 << 5 << 1;
    QTest::newRow("no numbers") << notANumber << notANumber << 2.0 << 2 << 4;
}

void TestDisplayModel::strangeBoxes()
{
    QFETCH(double, first);
    QFETCH(double, last);
    QFETCH(double, boxes);
    HistogramBins bins;
    bins.setBoxes(first, last, boxes);
    for (const double value : {0.0, 0.5, 1.0, 7.0})
        bins.add(value);
    QTEST(bins.n, "n");
    QCOMPARE(bins.counts.size(), bins.n);
    QTEST(bins.inRangeCount(), "inRange");
    QCOMPARE(bins.under + bins.inRangeCount() + bins.over, bins.total);
    QCOMPARE(bins.largestCount() > 0, bins.inRangeCount() > 0);
}

void TestDisplayModel::countsDoNotDependOnThreads()
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

void TestDisplayModel::setBoxesForgets()
{
    HistogramBins bins;
    QVERIFY(!bins.isSet());
    bins.setBoxes(0, 1, 3);
    QVERIFY(bins.isSet());
    for (const double value : {-9.0, 0.5, 9.0, notANumber})
        bins.add(value);
    bins.setBoxes(0, 1, 3);
    QCOMPARE((QVector<int>{bins.under, bins.over, bins.total, bins.inRangeCount()}), (QVector<int>{0, 0, 0, 0}));
}

void TestDisplayModel::file()
{
    const QTemporaryDir directory;
    HistogramBins bins;
    bins.setBoxes(0, 1, 11);
    bins.under = 7;
    bins.over = 1000;
    bins.counts[10] = 3;
    QVERIFY(bins.write(directory.filePath("map.txt"), "a"));
    QByteArray expected = "-0.15 -0.1 -0.05  7\n"
                          "-0.05 0 0.05  0\n0.05 0.1 0.15  0\n0.15 0.2 0.25  0\n0.25 0.3 0.35  0\n0.35 0.4 0.45  0\n"
                          "0.45 0.5 0.55  0\n0.55 0.6 0.65  0\n0.65 0.7 0.75  0\n0.75 0.8 0.85  0\n0.85 0.9 0.95  0\n"
                          "0.95 1 1.05  3\n1.05 1.1 1.15  1000\n";
    QCOMPARE(contents(directory.filePath("map_a.txt")), expected);
    QCOMPARE(QDir(directory.path()).entryList(QDir::Files).size(), 1);
}

void TestDisplayModel::fileNames_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("written");
    QTest::newRow("suffix kept") << "map.txt"
                                 << "map_HGAlpha.txt";
    QTest::newRow("everything before the last dot") << "run.3.dat"
                                                    << "run.3_HGAlpha.dat";
    QTest::newRow("no suffix: the dot stays") << "map"
                                              << "map_HGAlpha.";
    QTest::newRow("markers of a format string") << "%1 %2.%3"
                                                << "%1 %2_HGAlpha.%3";
    QTest::newRow("not plain ASCII") << QStringLiteral("\u7d50\u679c.dat")
                                     << QStringLiteral("\u7d50\u679c_HGAlpha.dat");
}

void TestDisplayModel::fileNames()
{
    QFETCH(QString, path);
    QFETCH(QString, written);
    const QTemporaryDir directory;
    HistogramBins bins;
    QVERIFY(bins.write(directory.filePath(path), "HGAlpha"));
    QCOMPARE(QDir(directory.path()).entryList(QDir::Files), QStringList{written});
}

void TestDisplayModel::fileThatCannotBeWritten()
{
    const QTemporaryDir directory;
    HistogramBins bins;
    bins.setBoxes(0, 1, 3);
    QVERIFY(!bins.write(directory.filePath("missing/map.txt"), "a"));
    QVERIFY(!bins.write(QString(), "a"));
    QVERIFY(QDir(directory.path()).mkdir("map_a.txt"));
    QVERIFY(!bins.write(directory.filePath("map.txt"), "a"));
    QVERIFY(QDir(directory.path()).entryList(QDir::Files).isEmpty());
}

void TestDisplayModel::fullDiskKeepsThePreviousFile()
{
    const QTemporaryDir directory;
    HistogramBins bins;
    bins.setBoxes(0, 1, 3);
    QVERIFY(bins.write(directory.filePath("map.txt"), "a"));
    const QByteArray before = contents(directory.filePath("map_a.txt"));
    bins.setBoxes(0, 1, 5);
    {
        const SmallDisk disk(20);
        QVERIFY(!bins.write(directory.filePath("map.txt"), "a"));
    }
    QCOMPARE(contents(directory.filePath("map_a.txt")), before);
    QCOMPARE(QDir(directory.path()).entryList(QDir::Files).size(), 1);
}

QTEST_GUILESS_MAIN(TestDisplayModel)
#include "TestDisplayModel.moc"
