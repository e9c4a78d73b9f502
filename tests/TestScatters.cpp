// The graphs with a point for every pixel.

#include "GraphTools.h"

#include <QPicture>

class TestScatters : public QObject
{
    Q_OBJECT

private slots:
    void scatter()
    {
        Graph graph;
        const Doubles a = {0.25, 0.25, 0.61, notANumber, 1e300, 0.9};
        const Doubles t = {1.23, 1.23, -0.3, 1, infinity, -40};
        graph.draw(scatterOf(a, t));
        QCOMPARE(graph.range(), QString("1.5 3.5 -0.5 2"));
        for (const QPoint &centre : {graph.pixelOf(2.75, 1.23), graph.pixelOf(2.39, -0.3)}) {
            for (const QPoint &offset : {QPoint(0, 0), QPoint(1, 0), QPoint(-1, 0), QPoint(0, 1), QPoint(0, -1)})
                QCOMPARE(graph.image.pixelColor(centre + offset), black);
        }
        QCOMPARE(graph.count(black), 10); // and none of those that have no place
        for (int i = 0; i <= 10; ++i)     // every 0.1, both ways
            QCOMPARE(graph.wrong({{2 + i * 0.1, 1.95, grid}, {1.6, i * 0.1, grid}}), QString());
        QCOMPARE(graph.wrong({{1.9, 1.95, white}, {3.1, 1.95, white}, {1.6, 1.1, white}, {1.6, -0.1, white}}),
                 QString());
    }

    /// Points are placed and painted in the pixels of the device.
    void scatterOnFineScreen()
    {
        Graph graph;
        const Doubles a = {0.25}, t = {1.23};
        graph.draw(scatterOf(a, t), 2);
        const QPoint centre(numeric::truncToInt(2 * graph.cc().r2sx(2.75)),
                            numeric::truncToInt(2 * graph.cc().r2sy(1.23)));
        for (const QPoint &offset : {QPoint(0, 0), QPoint(2, 0), QPoint(0, -2), QPoint(1, 1)})
            QCOMPARE(graph.image.pixelColor(centre + offset), black);
        for (const QPoint &offset : {QPoint(2, 2), QPoint(3, 0)})
            QVERIFY(graph.image.pixelColor(centre + offset) != black);
    }

    /// As for a printer or a file of vectors, which have no pixels to count.
    void scatterAsVectors()
    {
        Graph graph;
        graph.paint([](QStylePainter *) {}); // places the plot
        QPicture vectors;
        QStylePainter p;
        p.begin(&vectors, graph.display.area());
        const Doubles a = {0.25}, t = {1.23};
        drawScatter(&graph.display, &p, scatterOf(a, t));
        p.end();
        graph.paint([&](QStylePainter *painter) {
            graph.cc().setMargins();
            painter->drawPicture(0, 0, vectors);
        });
        QCOMPARE(graph.wrong({{2.75, 1.23, black}, {2.75, 1.3, white}, {2.9, 1.3, grid}}), QString());
    }

    /// The values change where they stand: seen only when something says that they, or their places, are others.
    void keptClouds()
    {
        forRows<std::function<void(Graph *, M2M3Input *)>, bool>(
            {{"nothing", [](Graph *, M2M3Input *) {}, false},
             {"revision", [](Graph *, M2M3Input *input) { ++input->revision; }, true},
             {"revision unknown", [](Graph *, M2M3Input *input) { input->revision = 0; }, true},
             {"zoom", [](Graph *graph, M2M3Input *) { graph->cc().setRealX(-1, 3); }, true},
             {"size", [](Graph *graph, M2M3Input *) { graph->display.area()->resize(410, 300); }, true},
             {"colour", [](Graph *, M2M3Input *input) { input->isBlue = true; }, true}},
            [](const std::function<void(Graph *, M2M3Input *)> &change, bool readsAgain) {
                const Doubles p = {0, 0, 0}, q = {0, 2, 1};
                double r[] = {0, 2, 0.25};
                M2M3Input input = m2m3Of(p, q, {});
                input.r = {r, 3};
                input.revision = 7;
                ScatterCache cache;
                Graph graph;
                graph.draw(input, 1, &cache);
                QCOMPARE(graph.at(1, 0.25), red);
                const QString before = textOf(naturalRange(input, &cache));
                r[2] = 1.5;
                r[1] = 2.1;
                change(&graph, &input);
                graph.draw(input, 1, &cache);
                QCOMPARE(graph.at(1, 1.5) == (input.isBlue ? blue : red), readsAgain);
                QCOMPARE(graph.at(1, 0.25) == red, !readsAgain);
                QCOMPARE(textOf(naturalRange(input, &cache)) == before, input.revision == 7);
            });
    }

    void m2m3Lines()
    {
        const M2M3Line first = referenceLine({1, 3, 2});
        QCOMPARE(first.slope, 0.5);
        QCOMPARE(first.offset, 0.0);
        const M2M3Line mixture = mixtureLine({1, 3, 2}, {0, 1, 3}); // through (2, 1) and (1, 3)
        QCOMPARE(mixture.slope, -2.0);
        QCOMPARE(mixture.offset, 5.0);
        QVERIFY(std::isinf(referenceLine({1, 1, 2}).slope));

        Graph graph;
        const Doubles p = {0, 0}, q = {-1, 4}, r = {4, -1};
        graph.draw(m2m3Of(p, q, r));
        QCOMPARE(graph.range(), QString("-1.5 4.5 -1.5 4.5"));
        QCOMPARE(graph.wrong({{4, 2, firstReferenceColour},
                              {-1, -0.5, firstReferenceColour},
                              {1.3, 3.9, secondReferenceColour},
                              {1.75, 1.5, mixtureColour},
                              {0, 3, black},
                              {3, 0, black},
                              {-1, 4, red},
                              {4, -1, red}}),
                 QString());
    }

    void m2m3Points()
    {
        Graph graph;
        const Doubles p = {1, 1, notANumber}, q = {3, 4}, r = {2, 2, 2, infinity};
        M2M3Input input = m2m3Of(p, q, r);
        input.isBlue = true;
        graph.draw(input);
        // (2, 1), (3, 1), (notANumber, notANumber) and, of the last pixel that only the V point has, (0, infinite).
        QCOMPARE(graph.range(), QString("1.9 3.1 0.9 1.1"));
        QCOMPARE(graph.wrong({{2, 1, blue}, {3, 1, blue}}), QString());
        QCOMPARE(graph.count(blue), 10);

        const Doubles longer = {2, 2, 2, 9}; // p and q of the fourth pixel count as -1
        input.r = pixels(longer);
        graph.draw(input);
        QCOMPARE(graph.at(0, 10), blue);
    }
};

QTEST_MAIN(TestScatters)
#include "TestScatters.moc"
