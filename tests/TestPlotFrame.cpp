#include "display/PlotFrame.h"

#include <QtTest>

#include <cmath>
#include <limits>

using Doubles = QVector<double>;

namespace
{
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
}

class TestPlotFrame : public QObject
{
    Q_OBJECT

private slots:
    void gridLines_data();
    void gridLines();
    void cutLines_data();
    void cutLines();
};

void TestPlotFrame::gridLines_data()
{
    constexpr double most = std::numeric_limits<double>::max();
    QTest::addColumn<Doubles>("lines"); // origin, step, from, below
    QTest::addColumn<double>("pixelsPerUnit");
    QTest::addColumn<Doubles>("visible"); // lowest, highest
    QTest::addColumn<Doubles>("values");
    QTest::newRow("ends included") << Doubles{0, 1, -most, most} << 30.0 << Doubles{-2, 1} << Doubles{-2, -1, 0, 1};
    QTest::newRow("downwards") << Doubles{0, 1, -most, most} << -30.0 << Doubles{0.5, 2} << Doubles{1, 2};
    QTest::newRow("4 pixels apart") << Doubles{0, 1, 0, 3} << 4.0 << Doubles{-9, 9} << Doubles{0, 1, 2};
    QTest::newRow("closer: thinned") << Doubles{1, 1, 1, 20} << 3.9 << Doubles{-99, 99} << Doubles{1, 11};
    QTest::newRow("valences") << Doubles{2, 0.5, 2, 3.05} << 100.0 << Doubles{1.8, 3.2} << Doubles{2, 2.5, 3};
    QTest::newRow("from the wrong end") << Doubles{3, 0.1, 3, 2.05} << 100.0 << Doubles{1, 4} << Doubles();
    QTest::newRow("10 to the 12th") << Doubles{0, 0.1, 0, 1e12} << 3.4e-10 << Doubles{0, 1e12}
                                    << Doubles{0, 1e11, 2e11, 3e11, 4e11, 5e11, 6e11, 7e11, 8e11, 9e11};
    QTest::newRow("no step") << Doubles{0, 0, 0, 1} << 1.0 << Doubles{0, 1} << Doubles();
    QTest::newRow("no scale") << Doubles{0, 1, 0, 1} << notANumber << Doubles{0, 1} << Doubles();
    QTest::newRow("no origin") << Doubles{notANumber, 1, 0, 1} << 30.0 << Doubles{0, 1} << Doubles();
}

void TestPlotFrame::gridLines()
{
    QFETCH(const Doubles, lines);
    QFETCH(const double, pixelsPerUnit);
    QFETCH(const Doubles, visible);
    QFETCH(const Doubles, values);
    const Doubles got =
        plot::visibleLines({lines[0], lines[1], lines[2], lines[3]}, pixelsPerUnit, visible[0], visible[1]);
    QCOMPARE(got.size(), values.size());
    for (int i = 0; i < got.size(); ++i)
        QVERIFY(std::abs(got[i] - values[i]) <= 1e-12 * std::abs(values[i]));
}

void TestPlotFrame::cutLines_data()
{
    QTest::addColumn<QLineF>("line");
    QTest::addColumn<QLineF>("cut"); // to (0, 0) ... (10, 5); null when nothing remains
    QTest::newRow("inside") << QLineF(1, 1, 9, 4) << QLineF(1, 1, 9, 4);
    QTest::newRow("across") << QLineF(-10, 2, 20, 2) << QLineF(0, 2, 10, 2);
    QTest::newRow("backwards, slanting") << QLineF(12, 6, 2, 1) << QLineF(10, 5, 2, 1);
    QTest::newRow("from far away") << QLineF(-1e15, 2.5, 5, 2.5) << QLineF(0, 2.5, 5, 2.5);
    QTest::newRow("past a corner") << QLineF(-2, 4, 3, 9) << QLineF();
    QTest::newRow("beside") << QLineF(11, 0, 11, 5) << QLineF();
    QTest::newRow("nan") << QLineF(1, 1, notANumber, 4) << QLineF();
    QTest::newRow("too long") << QLineF(-1e308, 1, 1e308, 1) << QLineF();
}

void TestPlotFrame::cutLines()
{
    QFETCH(QLineF, line);
    QFETCH(const QLineF, cut);
    QCOMPARE(plot::clipLine(QRectF(0, 0, 10, 5), &line), !cut.isNull());
    if (!cut.isNull())
        QCOMPARE(line, cut);
}

QTEST_APPLESS_MAIN(TestPlotFrame)
#include "TestPlotFrame.moc"
