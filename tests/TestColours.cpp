#include "display/ColourScale.h"

#include <QtTest>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace
{

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

constexpr quint32 rgb(quint32 red, quint32 green, quint32 blue)
{
    return 0xff000000u | red << 16 | green << 8 | blue;
}

ColourScale heatScale(double zmin, double zmax)
{
    ColourScale scale;
    scale.zmin = zmin;
    scale.zmax = zmax;
    scale.idxAtTop = 768;
    return scale;
}

} // namespace

class TestColours : public QObject
{
    Q_OBJECT

private slots:
    void tables_data();
    void tables();
    void lineColoursExtended();
    void valueToColour_data();
    void valueToColour();
    void planeAsSingleValues_data();
    void planeAsSingleValues();
    void notFiniteAndMasked();
};

void TestColours::tables_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<ColourTable>("corners"); // between them, 256 colours each
    const quint32 black = rgb(0, 0, 0), red = rgb(255, 0, 0), green = rgb(0, 255, 0), blue = rgb(0, 0, 255);
    const quint32 white = rgb(255, 255, 255), yellow = rgb(255, 255, 0), cyan = rgb(0, 255, 255);
    const quint32 magenta = rgb(255, 0, 255);
    QTest::newRow("0") << 0 << ColourTable{black, red, yellow, white};
    QTest::newRow("1") << 1 << ColourTable{black, green, cyan, white};
    QTest::newRow("2") << 2 << ColourTable{black, blue, magenta, white};
    QTest::newRow("3") << 3 << ColourTable{red, green, blue};
    QTest::newRow("4") << 4 << ColourTable{red, blue, green};
    QTest::newRow("5") << 5 << ColourTable{green, red, blue};
    QTest::newRow("6") << 6 << ColourTable{green, blue, red};
    QTest::newRow("7") << 7 << ColourTable{blue, red, green};
    QTest::newRow("8") << 8 << ColourTable{blue, green, red};
    QTest::newRow("9") << 9 << ColourTable{red, cyan};
    QTest::newRow("10") << 10 << ColourTable{green, magenta};
    QTest::newRow("11") << 11 << ColourTable{blue, yellow};
    QTest::newRow("12 is 0") << 12 << ColourTable{black, red, yellow, white};
    QTest::newRow("-1 is 0") << -1 << ColourTable{black, red, yellow, white};
}

void TestColours::tables()
{
    QFETCH(const int, type);
    QFETCH(const ColourTable, corners);
    const ColourTable table = colourTable(type);
    QCOMPARE(table.size(), 256 * (corners.size() - 1));
    for (int i = 0; i < table.size(); ++i) {
        const int segment = i / 256;
        for (const int shift : {24, 16, 8, 0}) {
            const auto channel = [shift](quint32 colour) {
                return int(colour >> shift & 0xff);
            };
            const int from = channel(corners.at(segment));
            const int to = channel(corners.at(segment + 1));
            QCOMPARE(channel(table.at(i)), from == to ? from : from < to ? i % 256 : 255 - i % 256);
        }
    }
}

void TestColours::lineColoursExtended()
{
    const ColourTable base = lineColours();
    QCOMPARE(base.size(), 45);
    QCOMPARE(base.at(3), rgb(120, 220, 120));
    QCOMPARE(base.at(12), base.at(3)); // twice in a cycle
    QCOMPARE(base.mid(15, 15), base.mid(0, 15));
    QCOMPARE(base.mid(30), base.mid(0, 15));
    QCOMPARE(extendedColours(base, 40), base);

    const ColourTable few = extendedColours(base, 48);
    QCOMPARE(few.size(), 48);
    QCOMPARE(few.at(45), rgb(255, 0, 0));    // red with black
    QCOMPARE(few.at(46), rgb(170, 0, 255));  // blue with red
    QCOMPARE(few.at(47), rgb(96, 132, 168)); // light green with blue: (120, 220, 210), darkened

    const ColourTable many = extendedColours(base, 140);
    QCOMPARE(many.size(), 140);
    QCOMPARE(many.at(89), rgb(160, 106, 0));  // end of the first pass: black with colour 44
    QCOMPARE(many.at(90), rgb(255, 0, 0));    // the second pass starts over ...
    QCOMPARE(many.at(134), rgb(255, 106, 0)); // ... and runs over the longer list: colour 45 with colour 44

    QCOMPARE(extendedColours({5}, 3), ColourTable({5, rgb(0, 0, 5), rgb(0, 0, 5)}));
    QVERIFY(extendedColours({}, 3).isEmpty());
}

void TestColours::valueToColour_data()
{
    QTest::addColumn<double>("zmin");
    QTest::addColumn<double>("zmax");
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("index"); // of 768 colours
    QTest::newRow("lower limit") << 2.0 << 4.0 << 2.0 << 0;
    QTest::newRow("upper limit") << 2.0 << 4.0 << 4.0 << 767;
    QTest::newRow("middle") << 2.0 << 4.0 << 3.0 << 384;
    QTest::newRow("truncated, not rounded") << 0.0 << 768.0 << 9.99 << 9;
    QTest::newRow("just below the scale") << 0.0 << 768.0 << -0.5 << 0;
    QTest::newRow("below") << 2.0 << 4.0 << 1.0 << 0;
    QTest::newRow("above") << 2.0 << 4.0 << 5.0 << 767;
    QTest::newRow("far below") << 0.0 << 1.0 << -1e300 << 0;
    QTest::newRow("far above") << 0.0 << 1.0 << 1e300 << 767;
    QTest::newRow("-inf") << 0.0 << 1.0 << -inf << 0;
    QTest::newRow("inf") << 0.0 << 1.0 << inf << 767;
    QTest::newRow("nan") << 0.0 << 1.0 << notANumber << 0;
    QTest::newRow("equal limits, below") << 3.0 << 3.0 << 2.9 << 0;
    QTest::newRow("equal limits, on them") << 3.0 << 3.0 << 3.0 << 0;
    QTest::newRow("equal limits, above") << 3.0 << 3.0 << 3.1 << 767;
    QTest::newRow("limits the wrong way round") << 1.0 << 0.0 << 0.25 << 576;
    QTest::newRow("limit nan") << 0.0 << notANumber << 0.5 << 0;
}

void TestColours::valueToColour()
{
    QFETCH(const double, zmin);
    QFETCH(const double, zmax);
    QFETCH(const double, value);
    QFETCH(const int, index);
    ColourScale scale = heatScale(zmin, zmax);
    QCOMPARE(colourIndex(value, scale, 768), index);
    scale.invert = true;
    QCOMPARE(colourIndex(value, scale, 768), 767 - index);
}

void TestColours::planeAsSingleValues_data()
{
    QTest::addColumn<double>("zmin");
    QTest::addColumn<double>("zmax");
    QTest::addColumn<double>("idxAtBottom");
    QTest::addColumn<double>("idxAtTop");
    QTest::addColumn<bool>("invert");
    QTest::newRow("plain") << 0.0 << 1.0 << 0.0 << 768.0 << false;
    QTest::newRow("inverted") << 0.0 << 1.0 << 0.0 << 768.0 << true;
    QTest::newRow("stretched") << -0.3 << 0.7 << -211.3 << 1536.7 << false;
    QTest::newRow("limits and ends exchanged") << 0.9 << 0.1 << 900.0 << -100.0 << true;
    QTest::newRow("equal limits") << 0.5 << 0.5 << 0.0 << 768.0 << false;
    QTest::newRow("limits beyond measure") << -1e308 << 1e308 << 0.0 << 768.0 << false;
}

void TestColours::planeAsSingleValues()
{
    QFETCH(const double, zmin);
    QFETCH(const double, zmax);
    QFETCH(const double, idxAtBottom);
    QFETCH(const double, idxAtTop);
    QFETCH(const bool, invert);
    ColourScale scale = heatScale(zmin, zmax);
    scale.idxAtBottom = idxAtBottom;
    scale.idxAtTop = idxAtTop;
    scale.invert = invert;

    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> uniform(-0.5, 1.5);
    std::vector<double> values(20011); // odd, and enough for two threads
    for (double &value : values)
        value = uniform(random);
    const double specials[] = {0.0, -0.0, 0.5, 1.0, inf, -inf, notANumber, 1e308, -1e308, 5e-324};
    std::copy(std::begin(specials), std::end(specials), values.begin() + 5000);
    values.back() = notANumber; // where pairs of values end

    const ColourTable table = colourTable(0);
    for (const int threads : {1, 2}) {
        std::vector<quint32> pixels(values.size());
        colourPlane(values.data(), values.size(), scale, table, pixels.data(), nullptr, threads);
        for (std::size_t i = 0; i < values.size(); ++i)
            QCOMPARE(pixels[i], table.at(colourIndex(values[i], scale, table.size())));
    }
}

void TestColours::notFiniteAndMasked()
{
    const ColourTable table = colourTable(0);
    ColourScale scale = heatScale(0, 1);
    const double values[] = {notANumber, 0.5, -inf, inf, notANumber, 2.0, 0.5};
    const quint8 mask[] = {0, 0, 0, 0, 1, 1, 1};
    quint32 pixels[7];
    colourPlane(values, 7, scale, table, pixels, mask); // neither colour given
    const quint32 plain[] = {table[0], table[384], table[0], table[767], table[0], table[767], table[384]};
    QVERIFY(std::equal(pixels, pixels + 7, plain));

    scale.notFinite = 0xff808080u;
    scale.masked = 0xffe0e0e0u;
    scale.invert = true; // turns the table round, not the two extra colours
    colourPlane(values, 7, scale, table, pixels, mask);
    const quint32 special[] = {0xff808080u, table[383],  0xff808080u, 0xff808080u,
                               0xffe0e0e0u, 0xffe0e0e0u, 0xffe0e0e0u};
    QVERIFY(std::equal(pixels, pixels + 7, special));
}

QTEST_GUILESS_MAIN(TestColours)
#include "TestColours.moc"
