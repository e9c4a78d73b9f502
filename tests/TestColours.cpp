#include "Tables.h"
#include "display/ColourScale.h"

#include <random>

namespace
{

const double inf = qInf(), notANumber = qQNaN();

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
    /// Every sixteenth of the scale is as much lighter as the others (CIE 1976 L*), so that no step seems an edge.
    void evenScale()
    {
        const auto lightness = [](quint32 colour) {
            const auto linear = [colour](int shift) {
                const double part = double(colour >> shift & 0xff) / 255;
                return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
            };
            return 116 * std::cbrt(0.2126 * linear(16) + 0.7152 * linear(8) + 0.0722 * linear(0)) - 16;
        };
        const ColourTable table = evenColours();
        QCOMPARE(table.size(), 256);
        const double rise = (lightness(table[255]) - lightness(table[0])) / 17;
        QVERIFY(rise > 4);
        for (int i = 0; i < 255; i += 15)
            QVERIFY(qAbs(lightness(table[i + 15]) - lightness(table[i]) - rise) < 0.3 * rise);
    }

    void colourTables()
    {
        const quint32 black = rgb(0, 0, 0), red = rgb(255, 0, 0), green = rgb(0, 255, 0), blue = rgb(0, 0, 255);
        const quint32 white = rgb(255, 255, 255), yellow = rgb(255, 255, 0), cyan = rgb(0, 255, 255);
        const quint32 magenta = rgb(255, 0, 255);
        // corners: between them, 256 colours each
        forRows<int, ColourTable>({{"type 0", 0, {black, red, yellow, white}},
                                   {"type 1", 1, {black, green, cyan, white}},
                                   {"type 2", 2, {black, blue, magenta, white}},
                                   {"type 3", 3, {red, green, blue}},
                                   {"type 4", 4, {red, blue, green}},
                                   {"type 5", 5, {green, red, blue}},
                                   {"type 6", 6, {green, blue, red}},
                                   {"type 7", 7, {blue, red, green}},
                                   {"type 8", 8, {blue, green, red}},
                                   {"type 9", 9, {red, cyan}},
                                   {"type 10", 10, {green, magenta}},
                                   {"type 11", 11, {blue, yellow}},
                                   {"type 12", 12, {black, red, yellow, white}},
                                   {"type -1", -1, {black, red, yellow, white}}},
                                  [](int type, const ColourTable &corners) {
                                      const ColourTable table = colourTable(type);
                                      QCOMPARE(table.size(), 256 * (corners.size() - 1));
                                      for (int i = 0; i < table.size(); ++i) {
                                          for (const int shift : {24, 16, 8, 0}) {
                                              const auto channel = [shift](quint32 colour) {
                                                  return int(colour >> shift & 0xff);
                                              };
                                              const int from = channel(corners.at(i / 256));
                                              const int to = channel(corners.at(i / 256 + 1));
                                              QCOMPARE(channel(table.at(i)), from + (i % 256) * (to - from) / 255);
                                          }
                                      }
                                  });
    }

    void lineColoursExtended()
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

    void valueToColour()
    {
        // index: of 768 colours
        forRows<double, double, double, int>({{"lower limit", 2, 4, 2, 0},
                                              {"upper limit", 2, 4, 4, 767},
                                              {"middle", 2, 4, 3, 384},
                                              {"truncated, not rounded", 0, 768, 9.99, 9},
                                              {"just below the scale", 0, 768, -0.5, 0},
                                              {"below", 2, 4, 1, 0},
                                              {"above", 2, 4, 5, 767},
                                              {"far below", 0, 1, -1e300, 0},
                                              {"far above", 0, 1, 1e300, 767},
                                              {"-inf", 0, 1, -inf, 0},
                                              {"inf", 0, 1, inf, 767},
                                              {"nan", 0, 1, notANumber, 0},
                                              {"equal limits, below", 3, 3, 2.9, 0},
                                              {"equal limits, on them", 3, 3, 3, 0},
                                              {"equal limits, above", 3, 3, 3.1, 767},
                                              {"limits the wrong way round", 1, 0, 0.25, 576},
                                              {"limit nan", 0, notANumber, 0.5, 0}},
                                             [](double zmin, double zmax, double value, int index) {
                                                 ColourScale scale = heatScale(zmin, zmax);
                                                 QCOMPARE(colourIndex(value, scale, 768), index);
                                                 scale.invert = true;
                                                 QCOMPARE(colourIndex(value, scale, 768), 767 - index);
                                             });
    }

    void planeAsSingleValues()
    {
        std::mt19937_64 random(7);
        std::uniform_real_distribution<double> uniform(-0.5, 1.5);
        std::vector<double> values(20011); // odd, and enough for two threads
        for (double &value : values)
            value = uniform(random);
        const double specials[] = {0.0, -0.0, 0.5, 1.0, inf, -inf, notANumber, 1e308, -1e308, 5e-324};
        std::copy(std::begin(specials), std::end(specials), values.begin() + 5000);
        values.back() = notANumber; // where pairs of values end
        forRows<ColourScale>({{"plain", {0, 1, 0, 768, false, {}, {}}},
                              {"inverted", {0, 1, 0, 768, true, {}, {}}},
                              {"stretched", {-0.3, 0.7, -211.3, 1536.7, false, {}, {}}},
                              {"limits and ends exchanged", {0.9, 0.1, 900, -100, true, {}, {}}},
                              {"equal limits", {0.5, 0.5, 0, 768, false, {}, {}}},
                              {"limits beyond measure", {-1e308, 1e308, 0, 768, false, {}, {}}}},
                             [&values](const ColourScale &scale) {
                                 const ColourTable table = colourTable(0);
                                 for (const int threads : {1, 2}) {
                                     std::vector<quint32> pixels(values.size());
                                     colourPlane(values.data(), values.size(), scale, table, pixels.data(), nullptr,
                                                 threads);
                                     for (std::size_t i = 0; i < values.size(); ++i)
                                         QCOMPARE(pixels[i], table.at(colourIndex(values[i], scale, table.size())));
                                 }
                             });
    }

    void notFiniteAndMasked()
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
};

QTEST_GUILESS_MAIN(TestColours)
#include "TestColours.moc"
