#include "spectrum/AMutE.h"
#include "tests/Tables.h"

#include <limits>
#include <random>

namespace
{

constexpr double hc = 12398.424360387684; // eV angstrom

const QByteArray header = "  XAFS step scan\n Mono : Si(111) D= 3.13551 A\n Mode 0 0 1 2\n Offset 0 0 0 0\n";

SpectrumScan parse(const QByteArray &text)
{
    return parseSpectrum(std::string_view(text.constData(), static_cast<std::size_t>(text.size())));
}

/// Independent of the reader: Bragg's law with the ten-decimal pi.
double energyOf(double angle, double spacing)
{
    return 12.398424360387684 / (2 * spacing * std::sin(angle * 3.1415926535 / 180)) * 1000;
}

/// A spectrum of the given energies and values.
AMutE spectrumOf(const QVector<double> &energies, const QVector<double> &mu)
{
    AMutE spectrum;
    for (int i = 0; i < energies.size(); ++i)
        spectrum.addPoint({0.0, energies[i], mu[i]});
    return spectrum;
}

double victoreen(double a, double b, double c, double energy)
{
    const double l = hc / energy;
    return a + b * l * l * l + c * l * l * l * l;
}

double pre(double energy)
{
    return victoreen(0.1, 0.2, -0.05, energy);
}

double post(double energy)
{
    return victoreen(1.2, 0.1, -0.02, energy);
}

/// 8000 to 9000 eV in steps of 10, an exact Victoreen line on each side of an edge of height 1 at 8500 eV.
AMutE edgeSpectrum()
{
    AMutE spectrum;
    for (double energy = 8000; energy <= 9000; energy += 10)
        spectrum.addPoint({0.0, energy, energy < 8500 ? pre(energy) : post(energy)});
    spectrum.setPreEdgeEnd(8400);
    spectrum.setEdgeEnergy(8500);
    spectrum.setPostEdgeStart(8600);
    return spectrum;
}

bool near(double got, double wanted, double tolerance = 1e-9)
{
    return std::abs(got - wanted) <= tolerance * std::max(1.0, std::abs(wanted));
}

} // namespace

class TestSpectrum : public QObject
{
    Q_OBJECT

private slots:
    void dataLines()
    {
        const QByteArray two = "Mode 0 0 1 2\n";
        forRows<QByteArray, int>({{"four tokens are none", header + "10 10 1 100\n", 0},
                                  {"five tokens are one, also without a line end", header + "10 10 1 100 50", 1},
                                  {"blank line between scans", header + "10 10 1 100 50\n\n \n10 9 1 100 50\n", 2},
                                  {"words count as zeros", header + "a b c d e\n", 1},
                                  {"nothing before Offset", "10 10 1 100 50\n" + header, 0},
                                  {"Offset in the middle of a line", two + "x Offset y\n10 10 1 100 50\n", 1},
                                  {"keywords are case sensitive", two + "offset\n10 10 1 100 50\n", 0},
                                  {"a keyword is a whole token", two + "Offset:\n10 10 1 100 50\n", 0},
                                  {"a second Offset line as data", header + "Offset 10 1 100 50\n10 10 1 2 3", 2}},
                                 [](const QByteArray &text, int points) {
                                     QCOMPARE(parse(text).points.size(), points);
                                     QCOMPARE(parse(text).hasData, points > 0);
                                 });
    }

    void modeLines()
    {
        const double inf = std::numeric_limits<double>::infinity();
        const double ln4 = std::log(4.0);
        forRows<const char *, const char *, bool, double>(
            {{"transmission", "Mode 0 0 1 2", "10 10 1 200 50", true, ln4},
             {"the first transmission channel only", "Mode 0 0 1 2 2", "10 10 1 200 50 7", true, ln4},
             {"the last I0 channel", "Mode 0 0 1 2 1", "10 10 1 7 50 200", true, ln4},
             {"fluorescence adds its channels", "Mode 0 0 1 3 3", "10 10 1 100 20 30", true, 0.2 + 0.3},
             {"the first code of 2 or more decides", "Mode 0 0 0 1 3 2", "10 10 1 0 100 20 5", true, 0.2},
             {"an unknown mode gives 0", "Mode 0 0 1 5", "10 10 1 100 20", true, 0.0},
             {"no Mode line gives 0", "", "10 10 1 100 20", true, 0.0},
             {"no I0 channel: not supported", "Mode 0 0 0 2", "10 10 1 100 20", false, 0.0},
             {"an empty Mode line has no I0 channel either", "Mode", "10 10 1 100 20", false, 0.0},
             {"I0 column beyond the line reads 0", "Mode 0 0 2 0 0 1", "10 10 1 50 20", true, -inf},
             {"a word as I0 reads 0", "Mode 0 0 1 2", "10 10 1 x 50", true, -inf},
             {"I of 0 is infinite absorption", "Mode 0 0 1 2", "10 10 1 200 0", true, inf},
             {"no transmission channel within the line", "Mode 0 0 1 0 2", "10 10 1 200 50", true, 0.0},
             {"two Mode lines continue the channel list", "Mode 0 0 1\nMode 0 0 2", "10 10 1 200 50", true, ln4}},
            [](const char *modes, const char *data, bool supported, double mu) {
                const SpectrumScan scan = parse(QByteArray(modes) + "\nOffset\n" + data);
                QCOMPARE(scan.isSupported, supported);
                QCOMPARE(scan.hasData, supported);
                if (supported)
                    QCOMPARE(scan.points.at(0).mu, mu);
            });
    }

    void latticeSpacing()
    {
        const SpectrumScan scan =
            parse("Mode 0 0 1 2\nOffset\n0 12 1 9 9\nx D= 3.13551 A\n0 12 1 9 9\nD=\n0 12 1 9 9\nD=2\n"
                  "0 12 1 9 9 D= 5.5\n0 12 1 9 9\n0 0 1 9 9\n");
        QCOMPARE(scan.points.size(), 6);
        // Neither "D=" without a number nor "D=2" counts; a data line's own D= comes after the data test.
        const double spacings[] = {3.1355316, 3.13551, 3.13551, 3.13551, 5.5};
        for (int i = 0; i < 5; ++i)
            QVERIFY(tables::isClose(scan.points[i].energy, energyOf(12, spacings[i])));
        QVERIFY(std::isinf(scan.points[5].energy) && std::isinf(scan.energy.max)); // angle 0, kept
        QCOMPARE(scan.energy.min, energyOf(12, 5.5));
    }

    void encodings()
    {
        const QByteArray plain = header + "10 12 1 200 50\n", mark = "\xEF\xBB\xBF";
        forRows<QByteArray>({{"CRLF", QByteArray(plain).replace("\n", "\r\n")},
                             {"tabs", QByteArray(plain).replace(" ", "\t")},
                             {"UTF-8 with byte order mark", mark + "Mode 0 0 1 2\nD= 3.13551\nOffset\n10 12 1 200 50"},
                             {"UTF-16", QTextCodec::codecForName("UTF-16")->fromUnicode(QString::fromLatin1(plain))},
                             {"ideographic spaces", QByteArray(plain).replace(" ", "\xE3\x80\x80")},
                             {"Japanese comment", "\xE8\xA9\xA6\xE6\x96\x99 A\n" + plain},
                             {"Shift-JIS comment", "\x8E\x8E\x97\xBF A\n" + plain}},
                            [](const QByteArray &text) {
                                const SpectrumScan scan = parse(text);
                                QCOMPARE(scan.points.size(), 1);
                                QCOMPARE(scan.points[0].energy, energyOf(12, 3.13551));
                                QCOMPARE(scan.points[0].mu, std::log(4.0));
                            });
    }

    void badInput()
    {
        std::mt19937 random(1);
        QByteArray noise(200000, '\0');
        for (char &c : noise)
            c = static_cast<char>(random());
        const QByteArray numbers = QByteArray("1 ").repeated(1000000);
        forRows<QByteArray, int>({{"empty file", "", 0},
                                  {"binary noise", noise, 0},
                                  {"NUL bytes as data", "Mode 0 0 0 2\nOffset\n" + QByteArray(100000, '\0'), 0},
                                  {"half a UTF-16 character", QByteArray("\xFF\xFE\x4D", 3), 0},
                                  {"one long line", QByteArray(100000000, 'x'), 0},
                                  {"many tokens in a data line", header + numbers + "\n10 12 1 200 50\n", 2},
                                  {"many channels", "Mode 0 0 " + numbers + "2\nOffset\n10 12 1 200 50\n", 1}},
                                 [](const QByteArray &text, int n) { QCOMPARE(parse(text).points.size(), n); });
    }

    void unusablePathsLeaveTheSpectrum()
    {
        AMutE spectrum = edgeSpectrum();
        spectrum.setFileName("kept.dat");
        spectrum.setValid(true);
        QTemporaryDir dir;
        for (const QString &path : {dir.path(), dir.filePath("missing"), QString(), QStringLiteral("/dev/zero")}) {
            QVERIFY(!spectrum.read(path));
            QVERIFY(spectrum.valid());
            QCOMPARE(spectrum.pointCount(), 101);
            QCOMPARE(spectrum.fileName(), QString("kept.dat"));
        }
    }

    /// A file that is no spectrum takes the points but leaves the lines; clear() takes both.
    void unusableFileReplacesTheSpectrum()
    {
        QTemporaryDir dir;
        AMutE spectrum = edgeSpectrum();
        spectrum.fitLines();
        spectrum.setValid(true);
        const double jump = spectrum.edgeJump();
        const QString name = QString::fromUtf8("\xE8\xA9\xA6\xE6\x96\x99.dat");
        QVERIFY(tables::writeBytes(dir.filePath(name), "Mode 0 0 0 2\nOffset\n10 12 1 200 50\n"));
        QTest::ignoreMessage(QtDebugMsg, QRegularExpression("No channel for I0"));
        QVERIFY(!spectrum.read(dir.filePath(name)));
        QVERIFY(!spectrum.valid());
        QCOMPARE(spectrum.pointCount(), 0);
        QCOMPARE(spectrum.fileName(), name);
        QCOMPARE(spectrum.energyMin(), 1e300);
        QCOMPARE(spectrum.muMax(), -1e300);
        QVERIFY(jump > 0.5);
        QCOMPARE(spectrum.edgeJump(), jump);
        spectrum.clear();
        QCOMPARE(spectrum.edgeJump(), 0.0);
        QCOMPARE(spectrum.preLine(8300), 0.0);
        QCOMPARE(spectrum.edgeEnergy(), 8500.0);
    }

    void readFitsLinesWithTheShift()
    {
        QTemporaryDir dir;
        const auto angleOf = [](double energy) {
            return std::asin(hc / energy / 2 / 3.1355316) * 180 / 3.1415926535;
        };
        const auto line = [](double energy) {
            return victoreen(0.3, 0.2, -0.03, energy);
        };
        QByteArray text = "Mode 0 0 1 2\nOffset\n";
        for (double energy = 7900; energy < 9000; energy += 20)
            text += "0 " + QByteArray::number(angleOf(energy), 'g', 17) + " 1 1e6 " +
                    QByteArray::number(1e6 * std::exp(-line(energy - 100)), 'g', 17) + "\n";
        QVERIFY(tables::writeBytes(dir.filePath("s.dat"), text));
        AMutE spectrum; // with 8000 and 8500 eV as limits
        spectrum.setDE(100);
        QVERIFY(spectrum.read(dir.filePath("s.dat")));
        QVERIFY(spectrum.valid());
        QVERIFY(near(spectrum.energyMin(), 7900, 1e-12)); // extremes are of the measured energies
        QVERIFY(near(spectrum.energyMax(), 8980, 1e-12));
        QVERIFY(near(spectrum.angleMax(), angleOf(7900), 1e-12));
        QVERIFY(near(spectrum.angleMin(), angleOf(8980), 1e-12));
        QVERIFY(near(spectrum.muMax(), line(7800)) && near(spectrum.muMin(), line(8880)));
        for (const double energy : {7800.0, 7950.0, 8700.0})
            QVERIFY(near(spectrum.preLine(energy), line(energy)) && near(spectrum.postLine(energy), line(energy)));
    }

    /// Of values at 100, 110, 120 ... eV; the second edge is that after a shift by 20 eV.
    void findEdge()
    {
        forRows<QVector<double>, double, double>({{"the steepest rise", {0, 0.1, 0.5, 0.6}, 115, 95},
                                                  {"the first of equal rises", {0, 1, 1, 2}, 105, 85},
                                                  {"falling by less than one counts", {2, 1.5, 1.2}, 115, 95},
                                                  {"falling by one or more never counts", {3, 2, 0}, 50, 40},
                                                  {"one point", {3}, 50, 40},
                                                  {"no point", {}, 0, 0}},
                                                 [](const QVector<double> &mu, double edge, double shiftedBy20) {
                                                     QVector<double> energies;
                                                     for (int i = 0; i < mu.size(); ++i)
                                                         energies << 100.0 + 10.0 * i;
                                                     AMutE spectrum = spectrumOf(energies, mu);
                                                     QCOMPARE(spectrum.findEdge(), edge);
                                                     spectrum.setDE(20);
                                                     QCOMPARE(spectrum.findEdge(), shiftedBy20);
                                                     QCOMPARE(spectrum.edgeEnergy(), 0.0);
                                                 });
    }

    void linesComeBack()
    {
        AMutE spectrum = edgeSpectrum();
        spectrum.fitLines();
        for (const double energy : {8000.0, 8450.0, 9000.0})
            QVERIFY(near(spectrum.preLine(energy), pre(energy)) && near(spectrum.postLine(energy), post(energy)));
        QVERIFY(near(spectrum.preCoefficients().a, 0.1, 1e-7) && near(spectrum.preCoefficients().b, 0.2, 1e-7));
        QVERIFY(near(spectrum.postCoefficients().c, -0.02, 1e-7));
        QVERIFY(near(spectrum.edgeJump(), post(8500) - pre(8500)));

        // The limits are exclusive: a wild point exactly on each of them is in neither range.
        AMutE wild;
        for (const SpectrumPoint &point : spectrum.points())
            wild.addPoint({0.0, point.energy, point.energy == 8400 || point.energy == 8600 ? 1e3 : point.mu});
        wild.setPreEdgeEnd(8400);
        wild.setPostEdgeStart(8600);
        wild.fitLines();
        QVERIFY(near(wild.preLine(8450), pre(8450)) && near(wild.postLine(8550), post(8550)));

        // A shift moves the energies, and the lines only when they are fitted again.
        const double before = spectrum.preLine(8300);
        spectrum.setDE(50);
        QCOMPARE(spectrum.shiftedEnergy(0), 7950.0);
        QCOMPARE(spectrum.preLine(8300), before);
        spectrum.fitLines();
        QVERIFY(std::abs(spectrum.preLine(8300) - before) > 1e-6);
    }

    void emptyFitRangeGivesNaN()
    {
        AMutE spectrum = edgeSpectrum(), empty;
        spectrum.setPreEdgeEnd(8000);
        spectrum.fitLines();
        QVERIFY(std::isnan(spectrum.preLine(8100)) && !std::isnan(spectrum.postLine(8100)));
        QVERIFY(std::isnan(spectrum.valueAt(AMutE::ByBothLines, 3)));
        empty.fitLines();
        QCOMPARE(empty.preLine(8100), 0.0); // without points nothing is fitted
    }

    void typesOfValues()
    {
        AMutE spectrum = edgeSpectrum();
        spectrum.fitLines();
        const double mu = post(8700), less = mu - pre(8700), jump = post(8500) - pre(8500);
        const double wanted[] = {0.0, mu, less, 0.0, less / jump, 1.0, 0.0};
        for (int type = -1; type <= 5; ++type)
            QVERIFY2(near(spectrum.valueAt(type, 70), wanted[type + 1]), qPrintable(QString::number(type)));
        QVERIFY(std::abs(less / jump - 1.0) > 1e-3);
        for (const int index : {-1, 101})
            QCOMPARE(spectrum.valueAt(0, index), 0.0);
    }

    void segments()
    {
        const QVector<double> scan = {100, 110, 110, 120};
        forRows<QVector<double>, double, int>(
            {{"below", scan, 99, 0},
             {"first point", scan, 100, 0},
             {"the first segment that holds a shared end", scan, 110, 0},
             {"last segment", scan, 111, 2},
             {"last point", scan, 120, 2},
             {"above", scan, 121, 2},
             {"not a number", scan, std::nan(""), 0},
             {"empty, above zero", {}, 1, -2},
             {"empty, at zero", {}, 0, 0}},
            [](const QVector<double> &energies, double energy, int index) {
                QCOMPARE(spectrumOf(energies, QVector<double>(energies.size())).indexAt(energy), index);
            });
    }

    void interpolation()
    {
        AMutE spectrum = spectrumOf({100, 110, 130}, {1, 2, 6});
        QCOMPARE(spectrum.muAt(105), 1.5);
        QCOMPARE(spectrum.muAt(120), 4.0);
        QCOMPARE(spectrum.muAt(90), 0.0);  // along the first segment
        QCOMPARE(spectrum.muAt(140), 8.0); // along the last segment
        QCOMPARE(spectrum.valueAtEnergy(0, 120), 4.0);
        QCOMPARE(spectrum.valueAtEnergy(5, 120), 0.0);
        spectrum.setDE(-10); // points now lie at 110, 120, 140
        QCOMPARE(spectrum.muAt(130), 4.0);
        QCOMPARE(spectrumOf({100}, {1}).muAt(100), 0.0);
        QCOMPARE(spectrumOf({}, {}).valueAtEnergy(1, 100), 0.0);
    }

    void valueMinusLine()
    {
        AMutE spectrum = edgeSpectrum();
        spectrum.fitLines();
        forRows<double, bool>({{"below the first point", 7999.9, false},
                               {"at the first point", 8000, true},
                               {"between points", 8453, true},
                               {"at the last point", 9000, true},
                               {"beyond the last point", 9000.1, false},
                               {"not a number", std::nan(""), false}},
                              [&spectrum](double energy, bool isInside) {
                                  for (const bool isPost : {false, true}) {
                                      const double line = isPost ? spectrum.postLine(energy) : spectrum.preLine(energy);
                                      double value = -7;
                                      QCOMPARE(spectrum.valueMinusLine(energy, isPost, &value), isInside);
                                      QVERIFY(near(value, isInside ? spectrum.muAt(energy) - line : -7));
                                  }
                              });
        double none;
        QVERIFY(!AMutE().valueMinusLine(0, false, &none));
    }

    void valueRangeIncludesItsEnds()
    {
        const AMutE spectrum = spectrumOf({100, 110, 120, 130}, {9, 2, 3, -9});
        double min = 1e300, max = -1e300;
        spectrum.valueRange(0, 110, 120, &min, &max);
        QCOMPARE(min, 2.0);
        QCOMPARE(max, 3.0);
        spectrum.valueRange(0, 130, 130, &min, &max);
        QCOMPARE(min, -9.0);
        QCOMPARE(max, 3.0); // only widened
    }
};

QTEST_APPLESS_MAIN(TestSpectrum)
#include "TestSpectrum.moc"
