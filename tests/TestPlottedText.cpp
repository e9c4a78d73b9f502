// The plotted values as text for a spreadsheet: columns, rows and digits.

#include "analysis/drawing/PlottedText.h"

#include <QtTest>

#include <limits>

namespace
{

MutsCurve curve(const QString &name, const QVector<QPointF> &points)
{
    return {name, Qt::black, points};
}

HistogramBins binsWithCounts()
{
    HistogramBins bins;
    bins.setBoxes(1, 2, 3);
    const double values[] = {0, 1, 1.5, 1.6, 9};
    bins.addValues(5, [&values](std::size_t i) { return values[i]; });
    return bins;
}

QString pointsText(std::vector<double> x, std::vector<double> y)
{
    return plottedtext::ofPoints(QStringLiteral("a"), QStringLiteral("b"), x.data(), y.data(), x.size());
}

QString mapText(std::vector<double> values, int width, int height, char separator = ' ')
{
    ShownMap map;
    map.values = values.empty() ? nullptr : values.data();
    map.count = values.size();
    map.width = width;
    map.height = height;
    return QString::fromLatin1(plottedtext::ofMap(map, separator));
}

} // namespace

class TestPlottedText : public QObject
{
    Q_OBJECT

private slots:
    void texts_data();
    void texts();
};

void TestPlottedText::texts_data()
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    QTest::newRow("no curve") << plottedtext::ofCurves({}) << "\n";
    QTest::newRow("curves of different lengths")
        << plottedtext::ofCurves({curve("p", {{7100.25, 0.5}, {7101, -1e-7}}), curve("q", {{8, 1.0 / 3}})})
        << "Eng.[eV]\tp\tEng.[eV]\tq\n7100.25\t0.5\t8\t0.333333\n7101\t-1e-07\t\t\n";
    // Boxes centred on 1, 1.5 and 2; what lies outside is not drawn, either.
    QTest::newRow("histogram") << plottedtext::ofHistogram(binsWithCounts())
                               << "From\tCentre\tTo\tNum.\n0.75\t1\t1.25\t1\n1.25\t1.5\t1.75\t2\n1.75\t2\t2.25\t0\n";
    QTest::newRow("histogram not counted") << plottedtext::ofHistogram({}) << "From\tCentre\tTo\tNum.\n";
    ComparisonRecord record;
    record.a = 0.25;
    record.valence = 2.75;
    record.lcfFraction = 0.2;
    record.lcfValence = 2.8;
    QTest::newRow("comparison") << plottedtext::ofComparison({record, record})
                                << "MPs\tLCF\ta (MPs)\tf1 (LCF)\n2.75\t2.8\t0.25\t0.2\n2.75\t2.8\t0.25\t0.2\n";
    QTest::newRow("no points") << pointsText({}, {}) << "a\tb\n";
    QTest::newRow("points") << pointsText({1, 1234567, nan}, {-0.0, infinity, 0.1})
                            << "a\tb\n1\t0\n1.23457e+06\tinf\nnan\t0.1\n";
    QTest::newRow("map") << mapText({1, 2.5, nan, -infinity, 1e-9, 6}, 3, 2) << "1 2.5 nan\n-inf 1e-09 6\n";
    QTest::newRow("map with tabs") << mapText({1, 2}, 2, 1, '\t') << "1\t2\n";
    QTest::newRow("map whose last row is not whole") << mapText({1, 2, 3}, 2, 2) << "1 2\n";
    QTest::newRow("more values than rows") << mapText({1, 2, 3}, 1, 2) << "1\n2\n";
    QTest::newRow("no map") << mapText({}, 3, 2) << QString();
    QTest::newRow("no columns") << mapText({1}, 0, 1) << QString();
}

void TestPlottedText::texts()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(text, expected);
}

QTEST_APPLESS_MAIN(TestPlottedText)
#include "TestPlottedText.moc"
