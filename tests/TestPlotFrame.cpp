#include "Tables.h"
#include "display/FreePlace.h"
#include "display/PlotFrame.h"
#include "display/WideLine.h"

#include <QImage>
#include <QPainter>

#include <cmath>
#include <limits>

const double notANumber = qQNaN();

class TestPlotFrame : public QObject
{
    Q_OBJECT

private slots:
    void gridLines()
    {
        constexpr double most = std::numeric_limits<double>::max();
        forRows<plot::GridLines, double, double, double, QVector<double>>(
            {{"ends included", {0, 1, -most, most}, 30, -2, 1, {-2, -1, 0, 1}},
             {"downwards", {0, 1, -most, most}, -30, 0.5, 2, {1, 2}},
             {"3 pixels apart", {0, 1, 0, 3}, 3, -9, 9, {0, 1, 2}},
             {"closer: thinned", {1, 1, 1, 20}, 2.9, -99, 99, {1, 11}},
             {"valences", {2, 0.5, 2, 3.05}, 100, 1.8, 3.2, {2, 2.5, 3}},
             {"from the wrong end", {3, 0.1, 3, 2.05}, 100, 1, 4, {}},
             {"10 to the 12th", {0, 0.1, 0, 1e12}, 6e-11, 0, 1e12, {0, 5e11}},
             {"no step", {0, 0, 0, 1}, 1, 0, 1, {}},
             {"no scale", {0, 1, 0, 1}, notANumber, 0, 1, {}},
             {"no origin", {notANumber, 1, 0, 1}, 30, 0, 1, {}}},
            [](const plot::GridLines &lines, double pixelsPerUnit, double lowest, double highest,
               const QVector<double> &values) {
                const auto got = plot::visibleLines(lines, pixelsPerUnit, lowest, highest);
                QCOMPARE(got.size(), values.size());
                for (int i = 0; i < got.size(); ++i)
                    QVERIFY(tables::isClose(got[i], values[i]));
            });
    }

    /// Strip by strip, and yet the painter's own line, but for the shade of single pixels at its edge.
    void wideLines()
    {
        forRows<double, double, double>({{"steps of a histogram", 1.5, 0, 1},
                                         {"waves", 2, 40, 1},
                                         {"sharp corners", 2, 1e9, 1},
                                         {"enlarged", 2, 40, 2.68}},
                                        [](double width, double gentle, double scale) {
                                            QPolygonF line;
                                            for (int i = 0; i < 700; ++i) {
                                                const double wave = 100 + 60 * std::sin(i / std::max(gentle, 1.0));
                                                line << QPointF(10 + i / 2.0, gentle > 1e6 ? 100 + i % 90 : wave);
                                                if (gentle == 0)
                                                    line << QPointF(line.last().x(), 100 + 60 * std::sin(i + 1.0));
                                            }
                                            const auto painted = [&](auto draw) {
                                                QImage image(1000, 600, QImage::Format_RGB32);
                                                image.fill(Qt::white);
                                                QPainter p(&image);
                                                p.setRenderHint(QPainter::Antialiasing);
                                                p.scale(scale, scale);
                                                p.setPen(
                                                    QPen(Qt::black, width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
                                                draw(&p);
                                                return image;
                                            };
                                            const QImage ours = painted([&](QPainter *p) { drawWideLine(p, line); });
                                            const QImage plain = painted([&](QPainter *p) { p->drawPolyline(line); });
                                            int others = 0, inked = 0;
                                            for (int i = 0; i < 1000 * 600; ++i) {
                                                const int l = qGray(ours.pixel(i % 1000, i / 1000));
                                                const int r = qGray(plain.pixel(i % 1000, i / 1000));
                                                inked += r < 255;
                                                others += std::abs(l - r) > 48;
                                                QVERIFY2(std::abs(l - r) < 128, qPrintable(QString::number(i)));
                                            }
                                            QVERIFY(inked > 500 && others * 100 < inked);
                                        });
    }

    /// 1, 2 or 5 times a power of ten, the first more than 20 pixels apart.
    void tickSteps()
    {
        forRows<double, ValueRange, double>({{"energies", 340, {8145, 9145}, 100},
                                             {"absorption", 255, {-0.02, 0.31}, 0.05},
                                             {"just 20 pixels are too close", 200, {0, 10}, 2},
                                             {"downwards", 255, {2, 0}, 0.2},
                                             {"tiny", 300, {1e-9, 4e-9}, 5e-10},
                                             {"no range", 300, {1, 1}, 0},
                                             {"no number", 300, {0, notANumber}, 0}},
                                            [](double pixels, const ValueRange &range, double step) {
                                                QVERIFY(tables::isClose(plot::tickStep(pixels, range), step));
                                            });
    }

    void cutLines()
    {
        // line, cut: to (0, 0) ... (10, 5); null when nothing remains
        forRows<QLineF, QLineF>({{"inside", {1, 1, 9, 4}, {1, 1, 9, 4}},
                                 {"across", {-10, 2, 20, 2}, {0, 2, 10, 2}},
                                 {"backwards, slanting", {12, 6, 2, 1}, {10, 5, 2, 1}},
                                 {"from far away", {-1e15, 2.5, 5, 2.5}, {0, 2.5, 5, 2.5}},
                                 {"past a corner", {-2, 4, 3, 9}, {}},
                                 {"beside", {11, 0, 11, 5}, {}},
                                 {"nan", {1, 1, notANumber, 4}, {}},
                                 {"too long", {-1e308, 1, 1e308, 1}, {}}},
                                [](QLineF line, const QLineF &cut) {
                                    QCOMPARE(plot::clipLine(QRectF(0, 0, 10, 5), &line), !cut.isNull());
                                    QVERIFY(cut.isNull() || line == cut);
                                });
    }

    void freePlaces()
    {
        const QPolygonF low = QVector<QPointF>{{0, 95}, {100, 95}}, end = QVector<QPointF>{{90, 0}, {90, 100}};
        const QPolygonF touching = QVector<QPointF>{{79.5, 0}, {79.5, 20}}, high = QVector<QPointF>{{0, 5}, {100, 5}};
        forRows<QVector<QPolygonF>, QPointF>({{"nothing drawn: the first", {}, {80, 80}},
                                              {"beside a line", {low}, {80, 0}},
                                              {"beside both", {low, end}, {0, 0}},
                                              {"a line that touches counts", {low, touching}, {0, 0}},
                                              {"least covered", {low, high, end, high}, {0, 80}}},
                                             [](const QVector<QPolygonF> &lines, const QPointF &place) {
                                                 const QVector<QPointF> places = {{80, 80}, {80, 0}, {0, 0}, {0, 80}};
                                                 QCOMPARE(freePlace(places, QSizeF(20, 20), lines),
                                                          QRectF(place, QSizeF(20, 20)));
                                             });
    }
};

QTEST_APPLESS_MAIN(TestPlotFrame)
#include "TestPlotFrame.moc"
