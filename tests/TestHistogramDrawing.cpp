#include "DrawingHelpers.h"

#include "analysis/drawing/HistogramDrawing.h"
#include "display/DispABase.h"
#include "display/HistogramBins.h"
#include "display/PlotFrame.h"

#include <QtTest>

using namespace resultdrawing;
using Doubles = QVector<double>;
using Graph = Canvas<DispABase>;

namespace
{

const QColor white(Qt::white);

HistogramBins binsOf(double first, double last, const QVector<int> &counts)
{
    HistogramBins bins;
    bins.setBoxes(first, last, counts.size());
    bins.counts = counts;
    return bins;
}

} // namespace

class TestHistogramDrawing : public QObject
{
    Q_OBJECT

private slots:
    void histogramBoxes();
    void histogramParts();
    void histogramOfManyBoxes();
};

void TestHistogramDrawing::histogramBoxes()
{
    Graph graph;
    const HistogramBins bins = binsOf(0, 4, {3, 100, 0, 40, 7});
    HistogramInput input;
    input.bins = &bins;
    input.range = {0, 4};
    graph.paint([&](QStylePainter *p) { drawHistogram(&graph.display, p, input); });
    QCOMPARE(graph.range(), (Doubles{0, -10, 4, 110}));
    QCOMPARE(graph.at(1.25, 95), boxColour);
    QCOMPARE(graph.at(1.25, 1.5), boxColour);
    QCOMPARE(graph.at(1.25, 100), boxOutlineColour);
    QCOMPARE(graph.at(0.5, 60), boxOutlineColour);
    QCOMPARE(graph.at(1.25, 103), white);
    QCOMPARE(graph.at(2.05, 5), white); // the empty box
    QCOMPARE(graph.at(3.05, 35), boxColour);
    QCOMPARE(graph.at(3.05, 43), white);
    QCOMPARE(graph.at(3.75, 3.5), boxColour);
    QCOMPARE(graph.at(2.0, 55), plot::gridColour); // 0.1 is 8.5 pixels: the step is 0.5
    QCOMPARE(graph.at(2.2, 55), white);
    QCOMPARE(graph.at(2.1, 50), plot::gridColour); // counts in tens

    const HistogramBins empty = binsOf(0, 4, {0, 0});
    input.bins = &empty;
    Graph other;
    other.paint([&](QStylePainter *p) { drawHistogram(&other.display, p, input); });
    QCOMPARE(other.range(), (Doubles{0, -0.1, 4, 1.1}));
    QVERIFY(!other.display.area()->scaleFixed); // the first counts give the range
    graph.cc().setRealArea(1, 0, 2, 50);
    graph.paint([&](QStylePainter *p) { drawHistogram(&graph.display, p, input); });
    QCOMPARE(graph.range(), (Doubles{1, 0, 2, 50})); // the user's zoom stays
}

void TestHistogramDrawing::histogramParts()
{
    Graph graph;
    const HistogramBins bins = binsOf(0, 4, {0, 100, 50, 0, 0});
    const HistogramBins part = binsOf(0, 4, {0, 30, 200, 0, 0});
    HistogramInput input;
    input.bins = &bins;
    input.range = {0, 4};
    input.parts = {{&part, QColor(255, 0, 0), QStringLiteral("Ref 1")}};
    graph.paint([&](QStylePainter *p) { drawHistogram(&graph.display, p, input); });
    QCOMPARE(graph.range(), (Doubles{0, -20, 4, 220})); // the part's largest count
    QCOMPARE(graph.at(1, 30), QColor(255, 0, 0));
    QCOMPARE(graph.at(2, 200), QColor(255, 0, 0));
    QCOMPARE(graph.at(1, 60), boxColour);
    QCOMPARE(graph.at(2, 150), plot::gridColour); // an outline, not a box
}

void TestHistogramDrawing::histogramOfManyBoxes()
{
    QVector<int> counts(100000);
    counts[50000] = 1000;
    counts[50001] = 1; // in the same pixel
    for (int i = 70000; i < 80000; ++i)
        counts[i] = 500;
    const HistogramBins bins = binsOf(0, 1, counts);
    HistogramInput input;
    input.bins = &bins;
    input.range = {0, 1};
    Graph graph;
    graph.paint([&](QStylePainter *p) { drawHistogram(&graph.display, p, input); });
    QCOMPARE(graph.at(0.5, 501), boxOutlineColour); // a 300th of a pixel wide, but not lost
    QCOMPARE(graph.at(0.75, 495), boxColour);
    QCOMPARE(graph.at(0.75, 505), white);
    QCOMPARE(graph.at(0.65, 5), white);

    const HistogramBins one = binsOf(0, 1, {7}); // one box is infinitely wide
    input.bins = &one;
    graph.display.clearScale();
    graph.paint([&](QStylePainter *p) { drawHistogram(&graph.display, p, input); });
    QCOMPARE(graph.at(0.07, 5), boxColour);
    QCOMPARE(graph.at(0.93, 5), boxColour);
}

QTEST_MAIN(TestHistogramDrawing)
#include "TestHistogramDrawing.moc"
