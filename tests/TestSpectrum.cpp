#include "spectrum/AMutE.h"

#include <QtTest>

#include <cmath>
#include <limits>

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

/// 8000 to 9000 eV in steps of 10, an exact Victoreen line on each side of an edge of height 1 at 8500 eV.
AMutE edgeSpectrum()
{
    AMutE spectrum;
    for (double energy = 8000; energy <= 9000; energy += 10) {
        const double pre = victoreen(0.1, 0.2, -0.05, energy);
        const double post = victoreen(1.2, 0.1, -0.02, energy);
        spectrum.addPoint({0.0, energy, energy < 8500 ? pre : post});
    }
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
    void dataLines_data();
    void dataLines();
    void modeLines_data();
    void modeLines();
    void latticeSpacing();
    void infiniteEnergyIsKept();
    void encodings_data();
    void encodings();
    void badInput_data();
    void badInput();
    void manyTokensInALine();
    void longSingleLine();
    void unusablePathsLeaveTheSpectrum();
    void unusableFileReplacesTheSpectrum();
    void readFitsLinesWithTheShift();
    void findEdge_data();
    void findEdge();
    void linesComeBack();
    void emptyFitRangeGivesNaN();
    void typesOfValues();
    void segments_data();
    void segments();
    void interpolation();
    void valueMinusLine_data();
    void valueMinusLine();
    void valueRangeIncludesItsEnds();
    void shiftMovesEnergiesNotLines();
};

void TestSpectrum::dataLines_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("points");
    QTest::newRow("four tokens are none") << QByteArray(header + "10 10 1 100\n") << 0;
    QTest::newRow("five tokens are one, also without a line end") << QByteArray(header + "10 10 1 100 50") << 1;
    QTest::newRow("blank line between scans") << QByteArray(header + "10 10 1 100 50\n\n \n10 9 1 100 50\n") << 2;
    QTest::newRow("words count as zeros") << QByteArray(header + "a b c d e\n") << 1;
    QTest::newRow("nothing before Offset") << QByteArray("10 10 1 100 50\n" + header) << 0;
    QTest::newRow("Offset in the middle of a line") << QByteArray("Mode 0 0 1 2\nx Offset y\n10 10 1 100 50\n") << 1;
    QTest::newRow("keywords are case sensitive") << QByteArray("Mode 0 0 1 2\noffset\n10 10 1 100 50\n") << 0;
    QTest::newRow("a keyword is a whole token") << QByteArray("Mode 0 0 1 2\nOffset:\n10 10 1 100 50\n") << 0;
    QTest::newRow("a second Offset line with five tokens is data as well")
        << QByteArray(header + "Offset 10 1 100 50\n10 10 1 100 50\n") << 2;
}

void TestSpectrum::dataLines()
{
    QFETCH(QByteArray, text);
    QFETCH(int, points);
    const SpectrumScan scan = parse(text);
    QCOMPARE(scan.points.size(), points);
    QCOMPARE(scan.hasData, points > 0);
}

void TestSpectrum::modeLines_data()
{
    QTest::addColumn<QByteArray>("modes");
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<bool>("supported");
    QTest::addColumn<double>("mu");
    const double inf = std::numeric_limits<double>::infinity();
    QTest::newRow("transmission") << QByteArray("Mode 0 0 1 2") << QByteArray("10 10 1 200 50") << true
                                  << std::log(4.0);
    QTest::newRow("the first transmission channel only")
        << QByteArray("Mode 0 0 1 2 2") << QByteArray("10 10 1 200 50 7") << true << std::log(4.0);
    QTest::newRow("the last I0 channel") << QByteArray("Mode 0 0 1 2 1") << QByteArray("10 10 1 7 50 200") << true
                                         << std::log(4.0);
    QTest::newRow("fluorescence adds its channels")
        << QByteArray("Mode 0 0 1 3 3") << QByteArray("10 10 1 100 20 30") << true << 20.0 / 100 + 30.0 / 100;
    QTest::newRow("the first code of 2 or more decides, 0 and 1 do not")
        << QByteArray("Mode 0 0 0 1 3 2") << QByteArray("10 10 1 0 100 20 5") << true << 0.2;
    QTest::newRow("an unknown mode gives 0")
        << QByteArray("Mode 0 0 1 5") << QByteArray("10 10 1 100 20") << true << 0.0;
    QTest::newRow("no Mode line gives 0") << QByteArray("") << QByteArray("10 10 1 100 20") << true << 0.0;
    QTest::newRow("no I0 channel: not supported")
        << QByteArray("Mode 0 0 0 2") << QByteArray("10 10 1 100 20") << false << 0.0;
    QTest::newRow("an empty Mode line has no I0 channel either")
        << QByteArray("Mode") << QByteArray("10 10 1 100 20") << false << 0.0;
    QTest::newRow("I0 column beyond the line reads 0")
        << QByteArray("Mode 0 0 2 0 0 1") << QByteArray("10 10 1 50 20") << true << -inf;
    QTest::newRow("a word as I0 reads 0") << QByteArray("Mode 0 0 1 2") << QByteArray("10 10 1 x 50") << true << -inf;
    QTest::newRow("I of 0 is infinite absorption")
        << QByteArray("Mode 0 0 1 2") << QByteArray("10 10 1 200 0") << true << inf;
    QTest::newRow("no transmission channel within the line")
        << QByteArray("Mode 0 0 1 0 2") << QByteArray("10 10 1 200 50") << true << 0.0;
    QTest::newRow("two Mode lines continue the channel list")
        << QByteArray("Mode 0 0 1\nMode 0 0 2") << QByteArray("10 10 1 200 50") << true << std::log(4.0);
}

void TestSpectrum::modeLines()
{
    QFETCH(QByteArray, modes);
    QFETCH(QByteArray, data);
    QFETCH(bool, supported);
    QFETCH(double, mu);
    const SpectrumScan scan = parse(modes + "\nOffset\n" + data);
    QCOMPARE(scan.isSupported, supported);
    QCOMPARE(scan.hasData, supported);
    if (supported)
        QCOMPARE(scan.points.at(0).mu, mu);
}

void TestSpectrum::latticeSpacing()
{
    const SpectrumScan scan =
        parse("Mode 0 0 1 2\nOffset\n0 12 1 9 9\nx D= 3.13551 A\n0 12 1 9 9\nD=\n0 12 1 9 9\nD=2\n"
              "0 12 1 9 9 D= 5.5\n0 12 1 9 9\n");
    QCOMPARE(scan.points.size(), 5);
    QCOMPARE(scan.points[0].energy, energyOf(12, 3.1355316));
    QCOMPARE(scan.points[1].energy, energyOf(12, 3.13551));
    QCOMPARE(scan.points[2].energy, energyOf(12, 3.13551)); // a D= without a number changes nothing, nor does "D=2"
    QCOMPARE(scan.points[3].energy, energyOf(12, 3.13551)); // its own D= comes after the data test
    QCOMPARE(scan.points[4].energy, energyOf(12, 5.5));
    QVERIFY(scan.points[0].energy != scan.points[1].energy);
}

void TestSpectrum::infiniteEnergyIsKept()
{
    const SpectrumScan scan = parse(header + "0 0 1 100 50\n0 12 1 100 50\n");
    QVERIFY(std::isinf(scan.points[0].energy));
    QVERIFY(std::isinf(scan.energy.max));
    QCOMPARE(scan.energy.min, energyOf(12, 3.13551));
}

void TestSpectrum::encodings_data()
{
    QTest::addColumn<QByteArray>("text");
    const QByteArray plain = header + "10 12 1 200 50\n";
    QTest::newRow("CRLF") << QByteArray(plain).replace("\n", "\r\n");
    QTest::newRow("tabs") << QByteArray(plain).replace(" ", "\t");
    QTest::newRow("UTF-8 with byte order mark") << QByteArray("\xEF\xBB\xBF" + plain);
    QTest::newRow("byte order mark before the first keyword")
        << QByteArray("\xEF\xBB\xBFMode 0 0 1 2\nD= 3.13551\nOffset\n10 12 1 200 50");
    QTest::newRow("UTF-16") << QTextCodec::codecForName("UTF-16")->fromUnicode(QString::fromLatin1(plain));
    QTest::newRow("ideographic spaces") << QByteArray(plain).replace(" ", "\xE3\x80\x80");
    QTest::newRow("Japanese comment") << QByteArray("\xE8\xA9\xA6\xE6\x96\x99 A\n" + plain);
    QTest::newRow("Shift-JIS comment") << QByteArray("\x8E\x8E\x97\xBF A\n" + plain);
}

void TestSpectrum::encodings()
{
    QFETCH(QByteArray, text);
    const SpectrumScan scan = parse(text);
    QVERIFY(scan.hasData);
    QCOMPARE(scan.points.size(), 1);
    QCOMPARE(scan.points[0].energy, energyOf(12, 3.13551));
    QCOMPARE(scan.points[0].mu, std::log(4.0));
}

void TestSpectrum::badInput_data()
{
    QTest::addColumn<QByteArray>("text");
    QByteArray noise;
    quint32 state = 1;
    for (int i = 0; i < 200000; ++i) {
        state = state * 1664525u + 1013904223u;
        noise += static_cast<char>(state >> 24);
    }
    QTest::newRow("empty file") << QByteArray();
    QTest::newRow("binary noise") << noise;
    QTest::newRow("NUL bytes") << QByteArray(100000, '\0');
    QTest::newRow("NUL bytes as data") << QByteArray("Mode 0 0 0 2\nOffset\n" + QByteArray(100000, '\0'));
    QTest::newRow("half a UTF-16 character") << QByteArray("\xFF\xFE\x4D", 3);
}

void TestSpectrum::badInput()
{
    QFETCH(QByteArray, text);
    QVERIFY(!parse(text).hasData);
}

void TestSpectrum::manyTokensInALine()
{
    QByteArray numbers;
    for (int i = 0; i < 1000000; ++i)
        numbers += "1 ";
    const SpectrumScan scan = parse(header + numbers + "\n10 12 1 200 50\n");
    QCOMPARE(scan.points.size(), 2);
    QCOMPARE(scan.points[0].mu, 0.0);
    QCOMPARE(parse("Mode 0 0 " + numbers + "2\nOffset\n10 12 1 200 50\n").points.size(), 1);
}

void TestSpectrum::longSingleLine()
{
    QVERIFY(!parse(QByteArray(100000000, 'x')).hasData);
}

void TestSpectrum::unusablePathsLeaveTheSpectrum()
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

void TestSpectrum::unusableFileReplacesTheSpectrum()
{
    QTemporaryDir dir;
    AMutE spectrum = edgeSpectrum();
    spectrum.setValid(true);
    QFile file(dir.filePath(QString::fromUtf8("\xE8\xA9\xA6\xE6\x96\x99.dat")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("Mode 0 0 0 2\nOffset\n10 12 1 200 50\n");
    file.close();
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("No channel for I0"));
    QVERIFY(!spectrum.read(file.fileName()));
    QVERIFY(!spectrum.valid());
    QCOMPARE(spectrum.pointCount(), 0);
    QCOMPARE(spectrum.fileName(), QString::fromUtf8("\xE8\xA9\xA6\xE6\x96\x99.dat"));
    QCOMPARE(spectrum.energyMin(), 1e300);
    QCOMPARE(spectrum.muMax(), -1e300);
}

void TestSpectrum::readFitsLinesWithTheShift()
{
    QTemporaryDir dir;
    QFile file(dir.filePath("s.dat"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("Mode 0 0 1 2\nOffset\n");
    for (double energy = 7900; energy < 9000; energy += 20) {
        const double angle = std::asin(hc / energy / 2 / 3.1355316) * 180 / 3.1415926535;
        const double mu = victoreen(0.3, 0.2, -0.03, energy - 100);
        file.write("0 " + QByteArray::number(angle, 'g', 17) + " 1 1e6 " +
                   QByteArray::number(1e6 * std::exp(-mu), 'g', 17) + "\n");
    }
    file.close();
    AMutE spectrum;
    QCOMPARE(spectrum.preEdgeEnd(), 8000.0);
    QCOMPARE(spectrum.postEdgeStart(), 8500.0);
    spectrum.setDE(100);
    QVERIFY(spectrum.read(file.fileName()));
    QVERIFY(spectrum.valid());
    QVERIFY(near(spectrum.energyMin(), 7900, 1e-12)); // extremes are of the measured energies
    QVERIFY(near(spectrum.energyMax(), 8980, 1e-12));
    QVERIFY(near(spectrum.angleMax(), std::asin(hc / 7900 / 2 / 3.1355316) * 180 / 3.1415926535, 1e-12));
    QVERIFY(near(spectrum.angleMin(), std::asin(hc / 8980 / 2 / 3.1355316) * 180 / 3.1415926535, 1e-12));
    QVERIFY(near(spectrum.muMax(), victoreen(0.3, 0.2, -0.03, 7800)));
    QVERIFY(near(spectrum.muMin(), victoreen(0.3, 0.2, -0.03, 8880)));
    for (const double energy : {7800.0, 7950.0, 8700.0}) {
        QVERIFY(near(spectrum.preLine(energy), victoreen(0.3, 0.2, -0.03, energy)));
        QVERIFY(near(spectrum.postLine(energy), victoreen(0.3, 0.2, -0.03, energy)));
    }
}

void TestSpectrum::findEdge_data()
{
    QTest::addColumn<QVector<double>>("mu");
    QTest::addColumn<double>("edge"); // energies are 100, 110, 120, ...
    QTest::newRow("the steepest rise") << QVector<double>{0, 0.1, 0.5, 0.6} << 115.0;
    QTest::newRow("the first of equal rises") << QVector<double>{0, 1, 1, 2} << 105.0;
    QTest::newRow("falling by less than one counts") << QVector<double>{2, 1.5, 1.2} << 115.0;
    QTest::newRow("falling by one or more never counts") << QVector<double>{3, 2, 0} << 50.0;
    QTest::newRow("one point") << QVector<double>{3} << 50.0;
    QTest::newRow("no point") << QVector<double>{} << 0.0;
}

void TestSpectrum::findEdge()
{
    QFETCH(QVector<double>, mu);
    QFETCH(double, edge);
    QVector<double> energies;
    for (int i = 0; i < mu.size(); ++i)
        energies << 100.0 + 10.0 * i;
    AMutE spectrum = spectrumOf(energies, mu);
    QCOMPARE(spectrum.findEdge(), edge);
    if (mu.size() > 1) {
        spectrum.setDE(20);
        QCOMPARE(spectrum.findEdge(), edge == 50.0 ? 40.0 : edge - 20.0);
    }
    QCOMPARE(spectrum.edgeEnergy(), 0.0);
}

void TestSpectrum::linesComeBack()
{
    AMutE spectrum = edgeSpectrum();
    spectrum.fitLines();
    for (const double energy : {8000.0, 8450.0, 9000.0}) {
        QVERIFY(near(spectrum.preLine(energy), victoreen(0.1, 0.2, -0.05, energy)));
        QVERIFY(near(spectrum.postLine(energy), victoreen(1.2, 0.1, -0.02, energy)));
    }
    QVERIFY(near(spectrum.preCoefficients().a, 0.1, 1e-7));
    QVERIFY(near(spectrum.preCoefficients().b, 0.2, 1e-7));
    QVERIFY(near(spectrum.postCoefficients().c, -0.02, 1e-7));
    QCOMPARE(spectrum.muMin(), victoreen(0.1, 0.2, -0.05, 8490));
    QVERIFY(near(spectrum.edgeJump(), victoreen(1.2, 0.1, -0.02, 8500) - victoreen(0.1, 0.2, -0.05, 8500)));

    // The limits are exclusive: a wild point exactly on each of them is in neither range.
    AMutE wild;
    for (const SpectrumPoint &point : spectrum.points())
        wild.addPoint({0.0, point.energy, point.energy == 8400 || point.energy == 8600 ? 1e3 : point.mu});
    wild.setPreEdgeEnd(8400);
    wild.setPostEdgeStart(8600);
    wild.fitLines();
    QVERIFY(near(wild.preLine(8450), victoreen(0.1, 0.2, -0.05, 8450)));
    QVERIFY(near(wild.postLine(8550), victoreen(1.2, 0.1, -0.02, 8550)));
}

void TestSpectrum::emptyFitRangeGivesNaN()
{
    AMutE spectrum = edgeSpectrum();
    spectrum.setPreEdgeEnd(8000);
    spectrum.fitLines();
    QVERIFY(std::isnan(spectrum.preLine(8100)));
    QVERIFY(!std::isnan(spectrum.postLine(8100)));
    QVERIFY(std::isnan(spectrum.valueAt(AMutE::ByBothLines, 3)));

    AMutE empty;
    empty.fitLines();
    QCOMPARE(empty.preLine(8100), 0.0); // without points nothing is fitted
}

void TestSpectrum::typesOfValues()
{
    AMutE spectrum = edgeSpectrum();
    spectrum.fitLines();
    const int i = 70;
    const double energy = 8700;
    const double mu = victoreen(1.2, 0.1, -0.02, energy);
    const double pre = victoreen(0.1, 0.2, -0.05, energy);
    QVERIFY(near(spectrum.valueAt(0, i), mu));
    QVERIFY(near(spectrum.valueAt(1, i), mu - pre));
    QVERIFY(near(spectrum.valueAt(2, i), 0.0));
    QVERIFY(near(spectrum.valueAt(3, i),
                 (mu - pre) / (victoreen(1.2, 0.1, -0.02, 8500) - victoreen(0.1, 0.2, -0.05, 8500))));
    QVERIFY(near(spectrum.valueAt(4, i), 1.0));
    QVERIFY(std::abs(spectrum.valueAt(3, i) - spectrum.valueAt(4, i)) > 1e-3);
    for (const int type : {-1, 5})
        QCOMPARE(spectrum.valueAt(type, i), 0.0);
    for (const int index : {-1, 101})
        QCOMPARE(spectrum.valueAt(0, index), 0.0);
}

void TestSpectrum::segments_data()
{
    QTest::addColumn<QVector<double>>("energies");
    QTest::addColumn<double>("energy");
    QTest::addColumn<int>("index");
    const QVector<double> scan = {100, 110, 110, 120};
    QTest::newRow("below") << scan << 99.0 << 0;
    QTest::newRow("first point") << scan << 100.0 << 0;
    QTest::newRow("the first segment that holds a shared end") << scan << 110.0 << 0;
    QTest::newRow("last segment") << scan << 111.0 << 2;
    QTest::newRow("last point") << scan << 120.0 << 2;
    QTest::newRow("above") << scan << 121.0 << 2;
    QTest::newRow("not a number") << scan << std::nan("") << 0;
    QTest::newRow("empty, above zero") << QVector<double>() << 1.0 << -2;
    QTest::newRow("empty, at zero") << QVector<double>() << 0.0 << 0;
}

void TestSpectrum::segments()
{
    QFETCH(QVector<double>, energies);
    QFETCH(double, energy);
    QFETCH(int, index);
    QCOMPARE(spectrumOf(energies, QVector<double>(energies.size())).indexAt(energy), index);
}

void TestSpectrum::interpolation()
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

void TestSpectrum::valueMinusLine_data()
{
    QTest::addColumn<double>("energy");
    QTest::addColumn<bool>("found");
    QTest::newRow("below the first point") << 7999.9 << false;
    QTest::newRow("at the first point") << 8000.0 << true;
    QTest::newRow("between points") << 8453.0 << true;
    QTest::newRow("at the last point") << 9000.0 << true;
    QTest::newRow("beyond the last point") << 9000.1 << false;
    QTest::newRow("not a number") << std::nan("") << false;
}

void TestSpectrum::valueMinusLine()
{
    QFETCH(double, energy);
    QFETCH(bool, found);
    AMutE spectrum = edgeSpectrum();
    spectrum.fitLines();
    double pre = -7;
    double post = -7;
    QCOMPARE(spectrum.valueMinusLine(energy, false, &pre), found);
    QCOMPARE(spectrum.valueMinusLine(energy, true, &post), found);
    QVERIFY(near(pre, found ? spectrum.muAt(energy) - spectrum.preLine(energy) : -7));
    QVERIFY(near(post, found ? spectrum.muAt(energy) - spectrum.postLine(energy) : -7));
    QVERIFY(!AMutE().valueMinusLine(energy, false, &pre));
}

void TestSpectrum::valueRangeIncludesItsEnds()
{
    const AMutE spectrum = spectrumOf({100, 110, 120, 130}, {9, 2, 3, -9});
    double min = 1e300;
    double max = -1e300;
    spectrum.valueRange(0, 110, 120, &min, &max);
    QCOMPARE(min, 2.0);
    QCOMPARE(max, 3.0);
    spectrum.valueRange(0, 130, 130, &min, &max);
    QCOMPARE(min, -9.0);
    QCOMPARE(max, 3.0); // only widened
}

void TestSpectrum::shiftMovesEnergiesNotLines()
{
    AMutE spectrum = edgeSpectrum();
    spectrum.fitLines();
    const double before = spectrum.preLine(8300);
    spectrum.setDE(50);
    QCOMPARE(spectrum.shiftedEnergy(0), 7950.0);
    QCOMPARE(spectrum.preLine(8300), before);
    spectrum.fitLines();
    QVERIFY(std::abs(spectrum.preLine(8300) - before) > 1e-6);
}

QTEST_APPLESS_MAIN(TestSpectrum)
#include "TestSpectrum.moc"
