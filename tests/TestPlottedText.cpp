// The plotted values as text for a spreadsheet: columns, rows and digits.

#include "Tables.h"
#include "analysis/drawing/PlottedText.h"
#include "display/HistogramBins.h"

namespace
{

const double notANumber = qQNaN(), infinity = qInf();

QString mapText(std::vector<double> values, int width, int height, char separator = ' ', const quint8 *mask = nullptr)
{
    const ShownMap map{values.empty() ? nullptr : values.data(), values.size(), {width, height}};
    return QString::fromLatin1(plottedtext::ofMap(map, separator, mask));
}

} // namespace

class TestPlottedText : public QObject
{
    Q_OBJECT

private slots:
    void curves()
    {
        MutsInput input;
        QCOMPARE(plottedtext::of(input), QString("\n"));
        input.xTitle = "Eng.[eV]";
        input.curves = {{"p", Qt::black, QVector<QPointF>{{7100.25, 0.5}, {7101, -1e-7}}},
                        {"q", Qt::black, QVector<QPointF>{{8, 1.0 / 3}}}};
        QCOMPARE(plottedtext::of(input),
                 QString("Eng.[eV]\tp\tEng.[eV]\tq\n7100.25\t0.5\t8\t0.333333\n7101\t-1e-07\t\t\n"));
        const LcfVsMpsInput comparison{{{0.25, 2.75, 0.2, 2.8, 0}}, {}, 2, 3, "MPs", "LCF"};
        QCOMPARE(plottedtext::of(comparison), QString("MPs\tLCF\ta (MPs)\tf1 (LCF)\n2.75\t2.8\t0.25\t0.2\n"));
    }

    void histograms()
    {
        HistogramInput input;
        input.yTitle = "Num.";
        QCOMPARE(plottedtext::of(input), QString("From\tCentre\tTo\tNum.\n"));
        HistogramBins bins;
        bins.setBoxes(1, 2, 3);
        HistogramBins part = bins;
        for (const double value : {0.0, 1.0, 1.5, 1.6, 9.0}) // what lies outside is not drawn, either
            bins.add(value);
        part.add(1.5);
        input.bins = &bins;
        input.parts = {{&part, Qt::red, "Ref 1"}};
        QCOMPARE(plottedtext::of(input), QString("From\tCentre\tTo\tNum.\tRef 1\n0.75\t1\t1.25\t1\t0\n"
                                                 "1.25\t1.5\t1.75\t2\t1\n1.75\t2\t2.25\t0\t0\n"));
    }

    void points()
    {
        const double a[] = {1, -1234567, notANumber}, t[] = {-0.0, infinity, 0.1};
        ScatterInput scatter;
        scatter.xTitle = "a";
        scatter.yTitle = "b";
        QCOMPARE(plottedtext::of(scatter), QString("a\tb\n"));
        scatter.a = a;
        scatter.t = t;
        scatter.count = 3;
        scatter.valenceA = 1;
        QCOMPARE(plottedtext::of(scatter), QString("a\tb\n1\t0\n-1.23457e+06\tinf\nnan\t0.1\n"));
        const double p[] = {1}, q[] = {3}, r[] = {1.5, 7};
        M2M3Input m2m3;
        m2m3.p = {p, 1};
        m2m3.q = {q, 1};
        m2m3.r = {r, 2}; // the second pixel has no p and q: they count as -1
        QCOMPARE(plottedtext::of(m2m3), QString("\t\n2\t0.5\n0\t8\n"));
    }

    void maps()
    {
        QCOMPARE(mapText({1, 2.5, notANumber, -infinity, 1e-9, 6}, 3, 2), QString("1 2.5 nan\n-inf 1e-09 6\n"));
        QCOMPARE(mapText({1, 2}, 2, 1, '\t'), QString("1\t2\n"));
        QCOMPARE(mapText({1, 2, 3}, 2, 3), QString("1 2\n3\n")); // the last row is not whole
        QCOMPARE(mapText({1, 2, 3}, 1, 2), QString("1\n2\n"));
        const quint8 mask[] = {0, 1, 0};
        QCOMPARE(mapText({1, 2, notANumber}, 3, 1, ' ', mask), QString("1 nan nan\n"));
        QCOMPARE(mapText({}, 3, 2), QString());
        QCOMPARE(mapText({1}, 0, 1), QString());
    }
};

QTEST_APPLESS_MAIN(TestPlottedText)
#include "TestPlottedText.moc"
