#include "samples/EdgeModel.h"
#include "samples/NumberText.h"
#include "samples/PortableMath.h"
#include "samples/Random.h"
#include "samples/SampleCommand.h"
#include "samples/SampleWriter.h"
#include "tests/SmallDisk.h"

#include <QtTest>

#include <cmath>
#include <functional>

using namespace sample;

namespace
{

using Row = QVector<double>;

QStringList names(const QString &directory)
{
    return QDir(directory).entryList(QDir::Files, QDir::Name);
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

/// One checksum over all names and contents.
QByteArray checksum(const QString &directory)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const QString &name : names(directory)) {
        hash.addData(name.toLatin1());
        hash.addData(contents(directory + '/' + name));
    }
    return hash.result().toHex();
}

bool make(const QString &directory, const SampleOptions &wanted)
{
    SampleOptions options = wanted;
    options.directory = directory;
    QStringList written;
    QString error;
    return writeSample(options, &written, &error) && written.size() == 15 && error.isEmpty();
}

SampleOptions smallSample(MapFormat format, double noise)
{
    SampleOptions options;
    options.width = 40;
    options.height = 30;
    options.noise = noise;
    options.format = format;
    return options;
}

/// The numbers of every line that `isData` accepts.
QVector<Row> readNumbers(const QString &path, const std::function<bool(const QByteArray &)> &isData)
{
    QVector<Row> rows;
    for (const QByteArray &line : contents(path).split('\n')) {
        if (!isData(line))
            continue;
        Row row;
        for (const QByteArray &token : line.simplified().split(' '))
            row += token.toDouble();
        rows += row;
    }
    return rows;
}

QVector<Row> readTable(const QString &path)
{
    return readNumbers(path, [](const QByteArray &line) { return !line.isEmpty() && !line.startsWith('#'); });
}

/// Least squares for y = sum of c_i basis_i, by Gauss elimination of the normal equations in long double.
QVector<long double> fit(const QVector<QVector<long double>> &basis, const QVector<long double> &y)
{
    const int n = basis.first().size();
    QVector<QVector<long double>> a(n, QVector<long double>(n + 1, 0.0L));
    for (int k = 0; k < y.size(); ++k) {
        for (int i = 0; i < n; ++i) {
            for (int j = 0; j < n; ++j)
                a[i][j] += basis[k][i] * basis[k][j];
            a[i][n] += basis[k][i] * y[k];
        }
    }
    for (int p = 0; p < n; ++p) {
        for (int i = 0; i < n; ++i) {
            const long double factor = i == p ? 0.0L : a[i][p] / a[p][p];
            for (int j = p; i != p && j <= n; ++j)
                a[i][j] -= factor * a[p][j];
        }
    }
    QVector<long double> result;
    for (int i = 0; i < n; ++i)
        result += a[i][n] / a[i][i];
    return result;
}

/// A spectrum as a reader of the file sees it.
struct Spectrum {
    Row energies; // eV
    Row mu;
    QVector<long double> pre, post;

    static QVector<long double> victoreen(double energy)
    {
        const long double ratio = 8345.0L / energy;
        return {1.0L, ratio * ratio * ratio - 1.0L, ratio * ratio * ratio * ratio - 1.0L};
    }

    QVector<long double> fitLine(double from, double to) const
    {
        QVector<QVector<long double>> basis;
        QVector<long double> y;
        for (int i = 0; i < mu.size(); ++i) {
            if (energies[i] > from && energies[i] < to) {
                basis += victoreen(energies[i]);
                y += mu[i];
            }
        }
        return fit(basis, y);
    }

    static double at(const QVector<long double> &line, double energy)
    {
        const QVector<long double> v = victoreen(energy);
        return static_cast<double>(line[0] * v[0] + line[1] * v[1] + line[2] * v[2]);
    }

    double jump() const { return at(post, 8345.0) - at(pre, 8345.0); }

    /// Interpolated absorption above the pre-edge line.
    double abovePre(double energy) const
    {
        int i = 0;
        while (i < energies.size() - 2 && energies[i + 1] < energy)
            ++i;
        const double low = mu[i] - at(pre, energies[i]);
        const double high = mu[i + 1] - at(pre, energies[i + 1]);
        return low + (high - low) / (energies[i + 1] - energies[i]) * (energy - energies[i]);
    }
};

Spectrum readSpectrum(const QString &path)
{
    Spectrum spectrum;
    const QList<QByteArray> header = contents(path).split('\n');
    const QList<QByteArray> mono = header.value(2).simplified().split(' ');
    const double d = mono.value(mono.indexOf("D=") + 1).toDouble();
    const auto isData = [](const QByteArray &line) {
        return line.size() > 60 && line.simplified()[0] <= '9';
    };
    for (const Row &row : readNumbers(path, isData)) {
        spectrum.energies += 12.398424360387684 / (2.0 * d * std::sin(row[1] * 3.1415926535 / 180.0)) * 1000.0;
        spectrum.mu += std::log(row[3] / row[4]);
    }
    spectrum.pre = spectrum.fitLine(0.0, 8295.0);
    spectrum.post = spectrum.fitLine(8445.0, 1e9);
    return spectrum;
}

QVector<Spectrum> readReferences(const QString &directory)
{
    QVector<Spectrum> references;
    for (const char *name : {"/ref1_valence2.dat", "/ref2_valence3.dat", "/ref3_valence4.dat"})
        references += readSpectrum(directory + name);
    return references;
}

QStringList mapNames(const QString &directory)
{
    return QDir(directory).entryList({QStringLiteral("map*eV.txt")}, QDir::Files, QDir::Name);
}

double relativeError(double got, long double wanted)
{
    return static_cast<double>(std::fabs((got - wanted) / wanted));
}

} // namespace

class TestSample : public QObject
{
    Q_OBJECT

private slots:
    void mathAgreesWithLibrary_data();
    void mathAgreesWithLibrary();
    void mathLimits();
    void countsSpread_data();
    void countsSpread();
    void fixedNumbers_data();
    void fixedNumbers();
    void bytesFollowFromTheOptions();
    void mapsHaveNoiseOfTheirOwn();
    void pinnedBytes_data();
    void pinnedBytes();
    void fileShapes_data();
    void fileShapes();
    void truthIsConsistent();
    void absorptionIsTheStatedMixture_data();
    void absorptionIsTheStatedMixture();
    void targetIsTheStatedMixture();
    void energiesSuitTheMethods();
    void arguments_data();
    void arguments();
    void unwritableFileLeavesTheOthersAsTheyWere();
    void fullDiskLeavesTheFilesAsTheyWere();
    void impossibleDirectory();
};

using Function = double (*)(double);
using Exact = long double (*)(long double);
Q_DECLARE_METATYPE(Function)
Q_DECLARE_METATYPE(Exact)
Q_DECLARE_METATYPE(sample::MapFormat)

void TestSample::mathAgreesWithLibrary_data()
{
    QTest::addColumn<Function>("function");
    QTest::addColumn<Exact>("exact");
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::newRow("exp") << Function(portable::exp) << Exact(std::exp) << -699.0 << 699.0;
    QTest::newRow("exp of small numbers") << Function(portable::exp) << Exact(std::exp) << -1.0 << 1.0;
    QTest::newRow("log") << Function(portable::log) << Exact(std::log) << 1e-9 << 1e9;
    QTest::newRow("log around 1") << Function(portable::log) << Exact(std::log) << 0.4 << 2.7;
    QTest::newRow("sin") << Function(portable::sin) << Exact(std::sin) << -3.0 << 3.0;
    QTest::newRow("sin of many turns") << Function(portable::sin) << Exact(std::sin) << -300.0 << 300.0;
    QTest::newRow("asin") << Function(portable::asin) << Exact(std::asin) << -1.0 << 1.0;
}

void TestSample::mathAgreesWithLibrary()
{
    QFETCH(Function, function);
    QFETCH(Exact, exact);
    QFETCH(double, from);
    QFETCH(double, to);
    constexpr int count = 40007; // odd: no argument is a zero of the functions
    for (int i = 0; i <= count; ++i) {
        const double x = from + (to - from) * i / count;
        const double got = function(x);
        QVERIFY2(relativeError(got, exact(x)) < 1e-14, qPrintable(QString::number(x, 'g', 17)));
    }
}

void TestSample::mathLimits()
{
    QCOMPARE(portable::exp(-1e9), 0.0);
    QVERIFY(std::isinf(portable::exp(1e9)));
    QVERIFY(std::isnan(portable::log(0.0)) && std::isnan(portable::log(-1.0)));
    QVERIFY(std::isnan(portable::asin(1.0000001)));
    QCOMPARE(portable::asin(1.0), portable::pi / 2);
    QVERIFY(relativeError(portable::log(1e-310), std::log(static_cast<long double>(1e-310))) <
            1e-14); // below the smallest normal number
}

void TestSample::countsSpread_data()
{
    QTest::addColumn<double>("mean");
    QTest::newRow("a few, counted one by one") << 4.0;
    QTest::newRow("just where the normal distribution takes over") << 31.0;
    QTest::newRow("many") << 40000.0;
}

/// Poisson's distribution: whole numbers whose variance is their mean. Bounds are five standard errors.
void TestSample::countsSpread()
{
    QFETCH(double, mean);
    constexpr int n = 200000;
    Random random(5, 3);
    double sum = 0.0, squares = 0.0;
    for (int i = 0; i < n; ++i) {
        const double value = random.counts(mean);
        QVERIFY(value >= 0.0 && value == std::floor(value));
        sum += value - mean;
        squares += (value - mean) * (value - mean);
    }
    QVERIFY(std::abs(sum / n) < 5.0 * std::sqrt(mean / n));
    QVERIFY(std::abs(squares / n / mean - 1.0) < 5.0 * std::sqrt((2.0 + 1.0 / mean) / n));
}

void TestSample::fixedNumbers_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<int>("width");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("zeros after the point") << 3.05 << 4 << 0 << QByteArray("3.0500");
    QTest::newRow("zero before the point") << 0.062 << 2 << 0 << QByteArray("0.06");
    QTest::newRow("rounds up into a new digit") << 9.996 << 2 << 0 << QByteArray("10.00");
    QTest::newRow("negative") << -0.25 << 1 << 6 << QByteArray("  -0.3");
    QTest::newRow("no minus before zero") << -0.0001 << 2 << 0 << QByteArray("0.00");
    QTest::newRow("no decimals") << 8345.0 << 0 << 0 << QByteArray("8345");
    QTest::newRow("wider than its field") << 1234567.0 << 4 << 5 << QByteArray("1234567.0000");
}

void TestSample::fixedNumbers()
{
    QFETCH(double, value);
    QFETCH(int, decimals);
    QFETCH(int, width);
    QByteArray text;
    appendFixed(&text, value, decimals, width);
    QTEST(text, "text");
}

void TestSample::bytesFollowFromTheOptions()
{
    const SampleOptions options = smallSample(MapFormat::Plain, 40000.0);
    SampleOptions otherSeed = options;
    otherSeed.seed = 2;
    QTemporaryDir first, again, other;
    QVERIFY(make(first.path(), options) && make(again.path(), options) && make(other.path(), otherSeed));
    QCOMPARE(checksum(again.path()), checksum(first.path()));
    for (const QString &name : names(first.path())) {
        const bool same = contents(other.path() + '/' + name) == contents(first.path() + '/' + name);
        QVERIFY2(same == name.endsWith(QLatin1String(".json")), qPrintable(name)); // the jobs know no seed
    }
}

/// The noise of two maps has nothing in common: uncorrelated within five standard errors.
void TestSample::mapsHaveNoiseOfTheirOwn()
{
    QTemporaryDir noisy, exact;
    QVERIFY(make(noisy.path(), smallSample(MapFormat::Plain, 40000.0)));
    QVERIFY(make(exact.path(), smallSample(MapFormat::Plain, 0.0)));
    const QStringList maps = mapNames(noisy.path());
    QVector<Row> deviations; // of I0, per map; without noise the mean is 1e6
    for (int k = 0; k < 2; ++k) {
        const QVector<Row> with = readTable(noisy.path() + '/' + maps[k]);
        const QVector<Row> without = readTable(exact.path() + '/' + maps[k]);
        Row row;
        for (int p = 0; p < with.size(); ++p)
            row += with[p][3] / (0.04 * without[p][3]) - 1.0;
        deviations += row;
    }
    double square0 = 0.0, square1 = 0.0, product = 0.0;
    for (int p = 0; p < deviations[0].size(); ++p) {
        square0 += deviations[0][p] * deviations[0][p];
        square1 += deviations[1][p] * deviations[1][p];
        product += deviations[0][p] * deviations[1][p];
    }
    QVERIFY(square0 > 0.0 && square1 > 0.0);
    QVERIFY(std::abs(product) / std::sqrt(square0 * square1) < 5.0 / std::sqrt(deviations[0].size()));
}

void TestSample::pinnedBytes_data()
{
    QTest::addColumn<MapFormat>("format");
    QTest::addColumn<double>("noise");
    QTest::addColumn<QByteArray>("sum");
    QTest::newRow("plain, noisy") << MapFormat::Plain << 40000.0
                                  << QByteArray("7dd154de93e1fae90f73cc9686bb1bb582a6d0d74a217c1c987e47e3c5e73b20");
    QTest::newRow("plain, few counts") << MapFormat::Plain << 50.0
                                       << QByteArray(
                                              "0f3481fc1bbee54e2c1a9c02ce162bfb733bfbef6214ec168a0506797f5fce35");
    QTest::newRow("column-mapped, exact")
        << MapFormat::ColumnMapped << 0.0
        << QByteArray("d9e4725a76ef468b858679cade0c630af4dcb5f625e4000ecded67b847171c66");
}

/// The bytes of a data set are part of what the maker promises: the same on every machine and with every compiler.
/// When this fails on a new machine, something machine-dependent has crept in. When the data were changed on
/// purpose, put the new checksums here.
void TestSample::pinnedBytes()
{
    QFETCH(MapFormat, format);
    QFETCH(double, noise);
    QTemporaryDir directory;
    QVERIFY(make(directory.path(), smallSample(format, noise)));
    QTEST(checksum(directory.path()), "sum");
}

void TestSample::fileShapes_data()
{
    QTest::addColumn<MapFormat>("format");
    QTest::addColumn<QList<QByteArray>>("header");
    QTest::addColumn<int>("columns");
    QTest::newRow("plain") << MapFormat::Plain
                           << QList<QByteArray>{"# 1301", "# ENERGY = 8260.000 eV", "# AXIS 0 x um 0.00 0.50 39",
                                                "# AXIS 1 y um 0.00 0.50 29"}
                           << 4;
    QTest::newRow("column-mapped") << MapFormat::ColumnMapped
                                   << QList<QByteArray>{"# 2003901", "# ENERGY = 8260.000 eV", "# time :0", "# I0 :1",
                                                        "# I :2"}
                                   << 5;
}

void TestSample::fileShapes()
{
    QFETCH(MapFormat, format);
    QFETCH(QList<QByteArray>, header);
    QFETCH(int, columns);
    QTemporaryDir directory;
    QVERIFY(make(directory.path(), smallSample(format, 0.0)));
    const QStringList maps = mapNames(directory.path());
    QCOMPARE(maps.size(), 8);
    QCOMPARE(contents(directory.path() + '/' + maps[0]).split('\n').mid(0, header.size()), header);
    for (const QString &name : maps + QStringList{QStringLiteral("truth.txt")}) {
        const QVector<Row> rows = readTable(directory.path() + '/' + name);
        QCOMPARE(rows.size(), 40 * 30);
        for (int i = 0; i < rows.size(); ++i) {
            QCOMPARE(rows[i].size(), name == QLatin1String("truth.txt") ? 7 : columns);
            QVERIFY(rows[i][0] == 0.5 * (i % 40) && rows[i][1] == 0.5 * (i / 40)); // x fastest
        }
    }
    for (const Spectrum &spectrum : readReferences(directory.path())) {
        QVERIFY(spectrum.energies.size() > 400 && spectrum.energies.size() < 500);
        QVERIFY(std::is_sorted(spectrum.energies.begin(), spectrum.energies.end()));
        QVERIFY(std::abs(spectrum.energies.first() - 8145.0) < 0.001);
        QVERIFY(std::abs(spectrum.energies.last() - 9145.0) < 0.001);
    }
}

void TestSample::truthIsConsistent()
{
    QTemporaryDir directory;
    SampleOptions options;
    QVERIFY(make(directory.path(), options));
    int empty = 0, twoReferences = 0, third = 0;
    double thickest = 0.0;
    for (const Row &row : readTable(directory.path() + QStringLiteral("/truth.txt"))) {
        const double sum = row[2] + row[3] + row[4];
        if (row[5] == 0.0) {
            QVERIFY(sum == 0.0 && row[6] == 0.0);
            ++empty;
            continue;
        }
        QVERIFY(std::abs(sum - 1.0) < 1e-12);
        QVERIFY(qMin(row[2], qMin(row[3], row[4])) >= 0.0 && row[5] > 0.0);
        QVERIFY(std::abs(row[6] - (2.0 * row[2] + 3.0 * row[3] + 4.0 * row[4])) < 1e-9);
        ++(row[4] == 0.0 ? twoReferences : third);
        thickest = qMax(thickest, row[5]);
    }
    // Enough of everything that the methods are to be judged by: background, two-reference pixels, the third one.
    const int pixels = options.width * options.height;
    QVERIFY(empty > pixels / 4 && twoReferences > pixels / 4 && third > pixels / 20 && twoReferences > 2 * third);
    QVERIFY(thickest > 0.7 && thickest < 1.6);
}

void TestSample::absorptionIsTheStatedMixture_data()
{
    QTest::addColumn<MapFormat>("format");
    QTest::addColumn<int>("i");
    QTest::addColumn<int>("i0");
    QTest::newRow("plain") << MapFormat::Plain << 2 << 3;
    QTest::newRow("column-mapped") << MapFormat::ColumnMapped << 4 << 3;
}

/// What is left of a pixel's absorption after taking away the stated mixture of the reference files is a straight
/// line over the energy, and a small positive one.
void TestSample::absorptionIsTheStatedMixture()
{
    QFETCH(MapFormat, format);
    QFETCH(int, i);
    QFETCH(int, i0);
    QTemporaryDir directory;
    QVERIFY(make(directory.path(), smallSample(format, 0.0)));
    const QVector<Spectrum> references = readReferences(directory.path());
    QVector<QVector<Row>> maps;
    for (const QString &name : mapNames(directory.path()))
        maps += readTable(directory.path() + '/' + name);
    const QVector<Row> truth = readTable(directory.path() + QStringLiteral("/truth.txt"));
    QVector<Row> normalized; // per energy and reference
    QVector<QVector<long double>> line;
    for (double energy : mapEnergies) {
        Row row;
        for (const Spectrum &reference : references)
            row += reference.abovePre(energy) / reference.jump();
        normalized += row;
        line += {1.0L, static_cast<long double>(energy) - 8345.0L};
    }
    for (int p = 0; p < truth.size(); ++p) {
        QVector<long double> rest;
        for (int k = 0; k < maps.size(); ++k) {
            const double absorption = std::log(maps[k][p][i0] / maps[k][p][i]);
            double mixture = 0.0;
            for (int j = 0; j < 3; ++j)
                mixture += truth[p][5] * truth[p][2 + j] * normalized[k][j];
            rest += absorption - mixture;
        }
        const QVector<long double> straight = fit(line, rest);
        QVERIFY2(straight[0] > 0.1L && straight[0] < 0.5L && straight[1] < 0.0L, qPrintable(QString::number(p)));
        for (int k = 0; k < rest.size(); ++k) {
            const long double off = rest[k] - straight[0] * line[k][0] - straight[1] * line[k][1];
            QVERIFY2(std::fabs(off) < 1e-7L, qPrintable(QStringLiteral("pixel %1, map %2").arg(p).arg(k + 1)));
        }
    }
}

void TestSample::targetIsTheStatedMixture()
{
    QTemporaryDir directory;
    QVERIFY(make(directory.path(), smallSample(MapFormat::Plain, 0.0)));
    const QVector<Spectrum> references = readReferences(directory.path());
    const Spectrum target = readSpectrum(directory.path() + QStringLiteral("/target.dat"));
    const QByteArray truth = contents(directory.path() + QStringLiteral("/truth.txt"));
    QVERIFY(truth.contains("\n# edge jumps of the references: 1.100 0.860 1.320\n"));
    QVERIFY(truth.contains("\n# target: fractions 0.350 0.500 0.150, thickness 0.900, valence 2.800\n"));
    const double jumps[] = {1.100, 0.860, 1.320};
    for (int j = 0; j < 3; ++j)
        QVERIFY(std::abs(references[j].jump() - jumps[j]) < 1e-8);
    for (double energy : target.energies) {
        const double mixture = 0.350 * references[0].abovePre(energy) / jumps[0] +
                               0.500 * references[1].abovePre(energy) / jumps[1] +
                               0.150 * references[2].abovePre(energy) / jumps[2];
        QVERIFY2(std::abs(target.abovePre(energy) - 0.900 * mixture) < 1e-7, qPrintable(QString::number(energy)));
    }
}

/// The four-points method is right only where the normalised references agree at the anchors; its valence holds for
/// the third reference too because they are evenly spaced at the V point.
void TestSample::energiesSuitTheMethods()
{
    const EdgeModel model;
    for (int k = 0; k < mapCount; ++k) {
        const double n[] = {model.normalized(0, mapEnergies[k]), model.normalized(1, mapEnergies[k]),
                            model.normalized(2, mapEnergies[k])};
        if (isAnchor[k])
            QVERIFY(std::abs(n[0] - n[1]) < 5e-4 && std::abs(n[2] - n[1]) < 0.06);
        if (k == vPoint) {
            QVERIFY(n[0] - n[1] > 0.6);
            QVERIFY(std::abs((n[0] - n[1]) / (n[1] - n[2]) - 1.0) < 0.03);
        }
        QVERIFY(std::any_of(model.scan().begin(), model.scan().end(), [k](const ScanStep &step) {
            return std::abs(step.energyEv - mapEnergies[k]) < 1e-5; // interpolating the spectrum loses nothing
        }));
    }
}

void TestSample::arguments_data()
{
    QTest::addColumn<QStringList>("extra");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("names");
    const auto row = [](const char *name, const char *arguments, int code, const char *names) {
        QTest::newRow(name) << QString::fromLatin1(arguments).split(' ') << code << QString::fromLatin1(names);
    };
    row("all of them", "--size 5x4 --seed 18446744073709551615 --noise 0 --format 2003901", 0, "truth.txt");
    row("help", "--help", 0, "--noise");
    row("unknown option", "--colour red", 2, "colour");
    row("value missing", "--seed", 2, "seed");
    row("stray argument", "stray", 2, "'stray'");
    row("empty directory", "--out=", 2, "--out");
    row("one side only", "--size 128", 2, "--size");
    row("side too small", "--size 3x100", 2, "--size");
    row("side too large", "--size 100x16385", 2, "--size");
    row("size with a line feed", "--size 10x10\n", 2, "--size");
    row("negative seed", "--seed=-1", 2, "--seed");
    row("seed that does not fit", "--seed 18446744073709551616", 2, "--seed");
    row("negative noise", "--noise=-5", 2, "--noise");
    row("noise without end", "--noise inf", 2, "--noise");
    row("unknown format", "--format 1302", 2, "'1302'");
}

void TestSample::arguments()
{
    QFETCH(QStringList, extra);
    QFETCH(int, code);
    QFETCH(QString, names);
    QTemporaryDir directory;
    QString outText, errText;
    QTextStream out(&outText), err(&errText);
    const QStringList arguments{QStringLiteral("flokluk-sample"), QStringLiteral("--out"), directory.path()};
    QCOMPARE(runCommand(arguments + extra, out, err), code);
    QVERIFY2((code == 0 ? outText : errText).contains(names), qPrintable(outText + errText));
    QCOMPARE(errText.count('\n'), code == 0 ? 0 : 1);
    if (code != 0)
        QVERIFY(outText.isEmpty() && QDir(directory.path()).isEmpty());
}

void TestSample::unwritableFileLeavesTheOthersAsTheyWere()
{
    QTemporaryDir directory;
    QVERIFY(make(directory.path(), smallSample(MapFormat::Plain, 0.0)));
    QDir dir(directory.path());
    QVERIFY(dir.remove(QStringLiteral("target.dat")) && dir.mkdir(QStringLiteral("target.dat")));
    const QByteArray before = checksum(directory.path());
    QString outText, errText;
    QTextStream out(&outText), err(&errText);
    const QStringList arguments{QStringLiteral("flokluk-sample"), QStringLiteral("--out"), directory.path()};
    QCOMPARE(runCommand(arguments, out, err), 3);
    QVERIFY2(errText.contains(QLatin1String("target.dat")) && errText.count('\n') == 1, qPrintable(errText));
    QVERIFY(outText.isEmpty());
    QCOMPARE(checksum(directory.path()), before);
}

void TestSample::fullDiskLeavesTheFilesAsTheyWere()
{
    QTemporaryDir directory;
    QVERIFY(make(directory.path(), smallSample(MapFormat::Plain, 0.0)));
    const QByteArray before = checksum(directory.path());
    QString outText, errText;
    QTextStream out(&outText), err(&errText);
    const SmallDisk disk(1000);
    QCOMPARE(runCommand({QStringLiteral("flokluk-sample"), QStringLiteral("--out"), directory.path()}, out, err), 3);
    QCOMPARE(checksum(directory.path()), before);
}

void TestSample::impossibleDirectory()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    QString outText, errText;
    QTextStream out(&outText), err(&errText);
    const QString inside = file.fileName() + QStringLiteral("/inside");
    QCOMPARE(runCommand({QStringLiteral("flokluk-sample"), QStringLiteral("--out"), inside}, out, err), 3);
    QVERIFY2(errText.contains(QDir::toNativeSeparators(inside)) && errText.count('\n') == 1, qPrintable(errText));
}

QTEST_GUILESS_MAIN(TestSample)
#include "TestSample.moc"
