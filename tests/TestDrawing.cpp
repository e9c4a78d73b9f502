// The pictures of the results: single places of each, what they offer as range, and input of any kind.

#include "GraphTools.h"

#include "spectrum/AMutE.h"

namespace
{

/// Every kind of input, made of such a range and such values; `bins` is filled for them.
std::vector<Input> oddInputs(const ValueRange &range, const Doubles &values, HistogramBins *bins)
{
    LcfVsMpsInput comparison = comparisonOf({}, range.min, range.max);
    QPolygonF points;
    for (int i = 0; i < values.size(); ++i) {
        comparison.records.append({values[i], values[i], values[i], values[i], -7});
        points << QPointF(i % 2 ? range.max : range.min, values[i]) << QPointF(values[i], i);
    }
    ScatterInput scatter = scatterOf(values, values);
    scatter.valenceA = range.min;
    scatter.valenceB = range.max;
    scatter.valences = scatter.amounts = range;
    M2M3Input m2m3 = m2m3Of(values, values, values);
    m2m3.q.count = 2;
    m2m3.first = m2m3.second = {range.min, range.max, range.min};
    MutsInput muts = mutsOf(points, range.min, range.max);
    muts.pointEnergies = muts.markedEnergies = values;
    bins->setBoxes(range.min, range.max, 20);
    bins->addValues(static_cast<std::size_t>(values.size()), [&](std::size_t i) { return values[int(i)]; });
    HistogramInput histogram = histogramOf(*bins, range);
    histogram.parts = {{bins, red, QString()}};
    return {comparison, scatter, m2m3, muts, histogram};
}

} // namespace

class TestDrawing : public QObject
{
    Q_OBJECT

private slots:
    /// Not even the scale; and the range stays open for the first results.
    void nothingToDraw()
    {
        const HistogramBins unset;
        for (const Input &input :
             {Input(comparisonOf({})), Input(ScatterInput()), Input(M2M3Input()), Input(histogramOf(unset, {0, 1}))}) {
            Graph graph;
            graph.draw(input);
            QImage paper(graph.image.size(), graph.image.format());
            paper.fill(white);
            QCOMPARE(graph.image, paper);
            QVERIFY(!graph.display.area()->scaleFixed);
            QCOMPARE(rangeOf(input), QString("none"));
        }
    }

    /// Whatever the user types and the methods find, a display comes back; the sanitizers see what goes wrong within.
    void oddInput()
    {
        const Doubles values = {0.5, notANumber, infinity, -infinity, 1e308, -1e308, 1e-320, 0, -0.0, 3e9, 7};
        const ValueRange ranges[] = {{0, 1},        {0, 0},          {1, 0},           {0, 1e12},
                                     {0, 1e300},    {-1e308, 1e308}, {notANumber, 1},  {0, notANumber},
                                     {0, infinity}, {0, 1e-300},     {5e9, 5e9 + 1e-6}};
        for (const QSize &size : {QSize(400, 300), QSize(0, 0), QSize(1, 1), QSize(7, 300), QSize(300, 5)}) {
            for (const ValueRange &range : ranges) {
                HistogramBins bins;
                for (const Input &input : oddInputs(range, values, &bins)) {
                    Graph graph(size);
                    graph.draw(input);
                    for (const ValueRange &zoomed : ranges) { // as a user who zooms and pans gets there
                        graph.display.area()->scaleFixed = true;
                        graph.cc().setRealArea(zoomed.min, zoomed.min, zoomed.max, zoomed.max);
                        graph.draw(input);
                        QVERIFY(size.width() < 400 || graph.image.pixelColor(0, 0) == white);
                    }
                }
            }
        }
    }

    /// What a zoom survives: the same range, and in a histogram other counts.
    void zoomSurvives()
    {
        const HistogramBins few = binsOf(0, 4, {1, 2, 3}), many = binsOf(0, 4, {10, 20, 30});
        const Doubles a = {0.5}, t = {1}, other = {9};
        ScatterInput otherRange = scatterOf(a, t);
        otherRange.amounts.max = 9;
        const QPolygonF low = QVector<QPointF>{{1, 1}, {2, 2}}, high = QVector<QPointF>{{1, 1}, {2, 3}};
        forRows<Input, Input, bool>(
            {{"comparison, another record", comparisonOf({{}}), comparisonOf({{}, {}}), true},
             {"comparison, another valence", comparisonOf({{}}), comparisonOf({{}}, 2, 4), false},
             {"histogram, other counts", histogramOf(few, {0, 4}), histogramOf(many, {0, 4}), true},
             {"histogram, another range", histogramOf(few, {0, 4}), histogramOf(few, {0, 5}), false},
             {"scatter, other points", scatterOf(a, t), scatterOf(a, other), true},
             {"scatter, another range", scatterOf(a, t), otherRange, false},
             {"M2/M3, another extent", m2m3Of(a, a, t), m2m3Of(a, a, other), false},
             {"spectra, another value", mutsOf(low), mutsOf(high), false}},
            [](const Input &first, const Input &second, bool survives) {
                Graph graph;
                graph.draw(first);
                QCOMPARE(graph.range(), rangeOf(first));
                graph.cc().setRealArea(0.25, 0.5, 0.75, 1);
                graph.draw(first);
                QCOMPARE(graph.range(), QString("0.25 0.75 0.5 1"));
                graph.draw(second);
                QCOMPARE(graph.range(), survives ? QString("0.25 0.75 0.5 1") : rangeOf(second));
            });
    }

    void comparison()
    {
        Graph graph;
        graph.draw(comparisonOf({{0, 2.25, 0, 2.65, 0}, {0, 2.65, 0, 2.25, 3}, {0, 2.75, 0, 2.45, 0}}));
        QCOMPARE(graph.range(), QString("1.8 3.2 1.8 3.2"));
        QCOMPARE(graph.wrong({{2.25, 2.65, blue},
                              {2.65, 2.25, QColor(120, 220, 120)}, // the palette starts again
                              {2.75, 2.45, newestRecordColour},
                              {2.5, 2.5, agreementColour},
                              {1.95, 1.95, white}, // the diagonal and the grid end at the references
                              {3.05, 3.05, white},
                              {1.9, 1.85, white},
                              {3.1, 1.85, white}}),
                 QString());
        for (const double valence : {2.0, 2.1, 2.9, 3.0})
            QCOMPARE(graph.wrong({{valence, 1.85, grid}, {1.85, valence, grid}}), QString());
        QVERIFY(graph.at(2.25, 2.65 + 5 / 182.0) != blue); // circles of 3 pixels, 182 pixels per unit
    }

    void newestComparison()
    {
        Graph graph;
        graph.draw(comparisonOf({{0, 2.2, 0, 2.7, 1}}));
        QCOMPARE(graph.at(2.2, 2.7), newestRecordColour); // over its own colour
        QCOMPARE(graph.count(QColor(120, 220, 120)), 0);

        // The newest where another one is, and one that cannot be shown.
        LcfVsMpsInput input = comparisonOf({{0, 2.2, 0, 2.7, 1}, {0, 2.8, 0, 2.2, 0}, {0, 2.2, 0, 2.7, 0}});
        graph.draw(input);
        QCOMPARE(graph.at(2.2, 2.7), newestRecordColour);
        input.records.append({0, notANumber, 0, infinity, 0});
        graph.draw(input);
        QCOMPARE(graph.at(2.2, 2.7), blue);
        QCOMPARE(graph.count(newestRecordColour), 0);
    }

    void mutsCurves()
    {
        const QColor outlineColour(150, 150, 150);
        Graph graph;
        MutsInput input = mutsOf(QVector<QPointF>{{0, 1}, {50, 1}, {60, notANumber}, {70, 1}, {100, 1}});
        const QColor magenta(Qt::magenta), green(Qt::green);
        input.curves += {{QStringLiteral("dashed"), magenta, QVector<QPointF>{{0, 0.5}, {100, 0.5}}, Qt::DashLine},
                         {QStringLiteral("not loaded"), green, {}},
                         {QStringLiteral("other"), blue, QVector<QPointF>{{0, 0}, {100, 0}}}};
        input.pointEnergies = {33};
        input.markedEnergies = {78};
        input.edgeEnergy = 44;
        graph.draw(input);
        QCOMPARE(graph.range(), QString("0 100 -0.05 1.05"));
        QCOMPARE(graph.wrong({{25, 1, red},
                              {85, 1, red},
                              {65, 1, mutsGridColour}, // a gap where there is no value
                              {45, 0, blue},
                              {33, 0.25, pointEnergyColour},
                              {78, 0.25, markedEnergyColour},
                              {44, 0.25, red},           // the edge
                              {25, 0.7, mutsGridColour}, // every tenth
                              {25, 0.75, white},
                              {50, 0.25, mutsGridColour}, // every 10 eV
                              {55, 0.25, white}}),
                 QString());
        QVERIFY(graph.at(55, 1).green() > 200);
        const auto tick = [&](int dx, int dy, double x, double y) {
            return graph.image.pixelColor(graph.pixelOf(x, y) + QPoint(dx, dy)) == outlineColour;
        };
        QVERIFY(tick(3, 0, 0, 0.6) && !tick(3, 0, 0, 0.65) && tick(0, -3, 60, -0.05) && !tick(0, -3, 65, -0.05));
        const int dashes = graph.count(magenta);
        QVERIFY(dashes > 200 && dashes < 320); // of 340 pixels in a row and those of the legend
        QCOMPARE(graph.count(green), 0);
    }

    void mutsRange()
    {
        const QPolygonF points = QVector<QPointF>{{10, 0}, {20, 2}, {30, 10}, {40, infinity}, {notANumber, 50}};
        forRows<MutsInput, const char *>(
            {{"all energies", mutsOf(points), "10 30 -0.5 10.5"},
             {"window", mutsOf(points, 5, 25), "5 25 -0.1 2.1"},
             {"window without points", mutsOf(points, 50, 60), "none"},
             {"level", mutsOf(QVector<QPointF>{{1, 3}, {2, 3}}), "1 2 2.5 3.5"},
             {"one point", mutsOf(QVector<QPointF>{{1, 3}}), "0.5 1.5 2.5 3.5"},
             {"none", MutsInput(), "none"}},
            [](const MutsInput &input, const char *range) { QCOMPARE(rangeOf(input), QString(range)); });
    }

    /// The names stand where no curve is, whichever corner that leaves.
    void mutsLegend()
    {
        for (const QPolygonF &steps : {QPolygonF(QVector<QPointF>{{0, 0}, {20, 0}, {20, 1}, {100, 1}}),
                                       QPolygonF(QVector<QPointF>{{0, 1}, {70, 1}, {70, 0}, {100, 0}})}) {
            Graph graph;
            MutsInput input = mutsOf(steps);
            input.curves += {{QStringLiteral("one point"), blue, QVector<QPointF>{{50, 0.5}}},
                             {QStringLiteral("a name of some length"), red, steps}};
            graph.draw(input);
            for (int at = 2; at < 100; at += 5)
                QCOMPARE(graph.at(at, at < steps[1].x() ? steps[0].y() : steps[3].y()), red);
            QVERIFY(graph.count(blue) > 30); // its sample line
        }
    }

    void pointsOfSpectrum()
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

    void histogramBoxes()
    {
        Graph graph;
        const HistogramBins bins = binsOf(0, 4, {3, 100, 0, 40, 7});
        graph.draw(histogramOf(bins, {0, 4}));
        QCOMPARE(graph.range(), QString("0 4 -10 110"));
        QCOMPARE(graph.wrong({{1.25, 95, boxColour},
                              {1.25, 1.5, boxColour},
                              {1.25, 100, boxOutlineColour},
                              {0.5, 60, boxOutlineColour},
                              {1.25, 103, white},
                              {2.05, 5, white}, // the empty box
                              {3.05, 35, boxColour},
                              {3.05, 43, white},
                              {3.75, 3.5, boxColour},
                              {2.0, 55, grid}, // 0.1 is 8.5 pixels: the step is 0.5
                              {2.2, 55, white},
                              {2.1, 50, grid}}), // counts in tens
                 QString());

        HistogramInput input = histogramOf(bins, {0, 4}); // a part: an outline, not a box
        const HistogramBins part = binsOf(0, 4, {0, 30, 200, 0, 0});
        input.parts = {{&part, red, QStringLiteral("Ref 1")}};
        graph.draw(input);
        QCOMPARE(graph.range(), QString("0 4 -20 220")); // the part's largest count
        QCOMPARE(graph.wrong({{1, 30, red}, {2, 200, red}, {1.3, 60, boxColour}, {2, 150, grid}}), QString());
    }

    void histogramOfManyBoxes()
    {
        QVector<int> counts(100000);
        counts[50000] = 1000;
        counts[50001] = 1; // in the same pixel
        for (int i = 70000; i < 80000; ++i)
            counts[i] = 500;
        Graph graph;
        graph.draw(histogramOf(binsOf(0, 1, counts), {0, 1}));
        QCOMPARE(graph.wrong({{0.5, 501, boxOutlineColour}, // a 300th of a pixel wide, but not lost
                              {0.75, 495, boxColour},
                              {0.75, 505, white},
                              {0.65, 5, white}}),
                 QString());
        graph.draw(histogramOf(binsOf(0, 1, {7}), {0, 1})); // one box is infinitely wide
        QCOMPARE(graph.wrong({{0.07, 5, boxColour}, {0.93, 5, boxColour}}), QString());
        QCOMPARE(rangeOf(histogramOf(binsOf(0, 4, {0, 0}), {0, 4})), QString("0 4 -0.1 1.1")); // nothing counted
    }
};

QTEST_MAIN(TestDrawing)
#include "TestDrawing.moc"
