#include "analysis/methods/NonEquivalent.h"
#include "mapdata/MapFileReader.h"
#include "samples/EdgeModel.h"
#include "samples/NumberText.h"
#include "samples/PortableMath.h"
#include "samples/Random.h"
#include "samples/SampleCommand.h"
#include "samples/SampleTexts.h"
#include "samples/SampleWriter.h"
#include "tests/SmallDisk.h"
#include "tests/Tables.h"

#include <algorithm>
#include <numeric>

using namespace sample;
using namespace tables;

namespace
{

constexpr int width = 40, height = 30;

SampleOptions smallSample(MapFormat format, double noise, quint64 seed = 1)
{
    return {QString(), width, height, seed, noise, format};
}

/// A data set in a folder of its own.
class Folder
{
public:
    explicit Folder(SampleOptions options)
    {
        options.directory = m_dir.path();
        QStringList written;
        QString error;
        if (!writeSample(options, &written, &error) || written.size() != 15 || !error.isEmpty())
            qFatal("no data set: %s", qPrintable(error));
    }
    QString path(const QString &name = QString()) const { return m_dir.filePath(name); }
    /// One checksum over all names and contents.
    QByteArray checksum() const
    {
        QCryptographicHash hash(QCryptographicHash::Sha256);
        for (const QString &name : QDir(path()).entryList(QDir::Files, QDir::Name)) {
            hash.addData(name.toLatin1());
            hash.addData(bytesOf(path(name)));
        }
        return hash.result().toHex();
    }
    /// The pixels of truth.txt: x, y, three fractions, thickness, valence.
    QVector<QVector<double>> truth() const
    {
        QVector<QVector<double>> rows;
        for (const QByteArray &line : bytesOf(path("truth.txt")).split('\n')) {
            QVector<double> row;
            for (const QByteArray &token : line.simplified().split(' '))
                row += token.toDouble();
            if (!line.isEmpty() && !line.startsWith('#'))
                rows += row;
        }
        return rows;
    }
    /// With lines fitted as the data are to be analysed.
    AMutE spectrum(const QByteArray &name) const
    {
        AMutE spectrum;
        spectrum.setPreEdgeEnd(edgeEnergy + preEdgeEnd);
        spectrum.setEdgeEnergy(edgeEnergy);
        spectrum.setPostEdgeStart(edgeEnergy + postEdgeStart);
        spectrum.read(path(name));
        return spectrum;
    }

private:
    QTemporaryDir m_dir;
};

struct Outcome {
    int code = -1;
    QString out, err;
};

Outcome run(const QStringList &arguments)
{
    Outcome outcome;
    QTextStream out(&outcome.out), err(&outcome.err);
    outcome.code = runCommand(QStringList{"flokluk-sample"} + arguments, out, err);
    return outcome;
}

} // namespace

class TestSample : public QObject
{
    Q_OBJECT

private slots:
    void mathAgreesWithLibrary()
    {
        forRows<double (*)(double), long double (*)(long double), double, double>(
            {{"exp", portable::exp, std::exp, -699, 699},
             {"exp of small numbers", portable::exp, std::exp, -1, 1},
             {"log", portable::log, std::log, 1e-9, 1e9},
             {"log around 1", portable::log, std::log, 0.4, 2.7},
             {"log below the smallest normal number", portable::log, std::log, 1e-310, 1.1e-310},
             {"sin", portable::sin, std::sin, -3, 3},
             {"sin of many turns", portable::sin, std::sin, -300, 300},
             {"asin", portable::asin, std::asin, -1, 1}},
            [](auto function, auto exact, double from, double to) {
                constexpr int count = 40007; // odd: no argument is a zero of the functions
                for (int i = 0; i <= count; ++i) {
                    const double x = from + (to - from) * i / count;
                    QVERIFY2(isClose(function(x), static_cast<double>(exact(x)), 1e-14),
                             qPrintable(QString::number(x, 'g', 17)));
                }
            });
        QCOMPARE(portable::exp(-1e9), 0.0);
        QVERIFY(std::isinf(portable::exp(1e9)));
        QVERIFY(std::isnan(portable::log(0.0)) && std::isnan(portable::log(-1.0)));
        QVERIFY(std::isnan(portable::asin(1.0000001)));
    }

    /// Poisson's distribution: whole numbers whose variance is their mean. Bounds are five standard errors. Few are
    /// counted one by one, from 31 on the normal distribution takes over.
    void countsSpread()
    {
        for (const double mean : {4.0, 31.0, 40000.0}) {
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
    }

    void fixedNumbers()
    {
        forRows<double, int, int, const char *>({{"zeros after the point", 3.05, 4, 0, "3.0500"},
                                                 {"zero before the point", 0.062, 2, 0, "0.06"},
                                                 {"rounds up into a new digit", 9.996, 2, 0, "10.00"},
                                                 {"negative", -0.25, 1, 6, "  -0.3"},
                                                 {"no minus before zero", -0.0001, 2, 0, "0.00"},
                                                 {"no decimals", 8345.0, 0, 0, "8345"},
                                                 {"wider than its field", 1234567.0, 1, 5, "1234567.0"}},
                                                [](double value, int decimals, int columns, const char *wanted) {
                                                    QByteArray text;
                                                    appendFixed(&text, value, decimals, columns);
                                                    QCOMPARE(text, QByteArray(wanted));
                                                });
    }

    /// The noise of two maps has nothing in common: uncorrelated within five standard errors.
    void mapsHaveNoiseOfTheirOwn()
    {
        const Folder noisy(smallSample(MapFormat::Plain, 40000.0)), exact(smallSample(MapFormat::Plain, 0.0));
        QVector<double> deviations[2]; // of I0; without noise the mean is 1e6
        for (const int k : {0, 1}) {
            A2DData with, without;
            QVERIFY(loadMapFile(noisy.path(mapFileName(k)), &with).loaded);
            QVERIFY(loadMapFile(exact.path(mapFileName(k)), &without).loaded);
            for (std::size_t p = 0; p < width * height; ++p)
                deviations[k] += with.I0()[p] / (0.04 * without.I0()[p]) - 1.0;
        }
        const auto product = [&deviations](int i, int j) {
            return std::inner_product(deviations[i].begin(), deviations[i].end(), deviations[j].begin(), 0.0);
        };
        QVERIFY(product(0, 0) > 0.0 && product(1, 1) > 0.0);
        QVERIFY(std::abs(product(0, 1)) < 5.0 * std::sqrt(product(0, 0) * product(1, 1) / (width * height)));
    }

    void seedDecides()
    {
        const Folder first(smallSample(MapFormat::Plain, 40000.0)), other(smallSample(MapFormat::Plain, 40000.0, 2));
        for (const QString &name : QDir(first.path()).entryList(QDir::Files)) {
            const bool same = bytesOf(other.path(name)) == bytesOf(first.path(name));
            QVERIFY2(same == name.endsWith(QLatin1String(".json")), qPrintable(name)); // the jobs know no seed
        }
    }

    /// The bytes of a data set are part of what the maker promises: the same on every machine and with every compiler.
    /// When this fails on a new machine, something machine-dependent has crept in. When the data were changed on
    /// purpose, put the new checksums here.
    void pinnedBytes()
    {
        const auto plain = MapFormat::Plain, mapped = MapFormat::ColumnMapped;
        forRows<MapFormat, double, const char *>(
            {{"noisy", plain, 40000.0, "7dd154de93e1fae90f73cc9686bb1bb582a6d0d74a217c1c987e47e3c5e73b20"},
             {"few counts", plain, 50.0, "0f3481fc1bbee54e2c1a9c02ce162bfb733bfbef6214ec168a0506797f5fce35"},
             {"exact", mapped, 0.0, "d9e4725a76ef468b858679cade0c630af4dcb5f625e4000ecded67b847171c66"}},
            [](MapFormat format, double noise, const char *sum) {
                QCOMPARE(Folder(smallSample(format, noise)).checksum(), QByteArray(sum));
            });
    }

    /// What the program reads from an exact data set is what truth.txt says.
    void truthComesBack()
    {
        forRows<MapFormat, const char *>(
            {{"plain", MapFormat::Plain,
              "# 1301;# ENERGY = 8345.400 eV;# AXIS 0 x um 0.00 0.50 39;# AXIS 1 y um 0.00 0.50 29"},
             {"mapped", MapFormat::ColumnMapped, "# 2003901;# ENERGY = 8345.400 eV;# time :0;# I0 :1;# I :2"}},
            [](MapFormat format, const char *header) {
                const Folder folder(smallSample(format, 0.0));
                std::vector<A2DData> maps(mapCount);
                NonEquivalentMapInput input;
                for (A2DData &map : maps) {
                    QVERIFY(loadMapFile(folder.path(mapFileName(static_cast<int>(input.maps.size()))), &map).loaded);
                    QVERIFY(map.nx() == width && map.ny() == height && map.count() == width * height);
                    input.maps.push_back(&map);
                }
                QCOMPARE(maps[vPoint].headerLines().join(';'), QString(header));
                const AMutE spectra[] = {folder.spectrum(referenceFileName(0)), folder.spectrum(referenceFileName(1)),
                                         folder.spectrum(referenceFileName(2))};
                for (int j = 0; j < referenceCount; ++j)
                    QVERIFY(std::abs(spectra[j].edgeJump() - edgeJumps[j]) < 1e-8);
                const std::vector<double> energies(mapEnergies, mapEnergies + mapCount);
                input.references = prepareNonEquivalent(energies, {&spectra[0], &spectra[1], &spectra[2]}, false);
                input.valences.assign(valences, valences + referenceCount);

                const auto truth = folder.truth();
                QCOMPARE(truth.size(), width * height);
                std::vector<std::vector<double>> results(ResultPosition::count, std::vector<double>(width * height));
                NonEquivalentPlanes planes;
                for (std::size_t i = 0; i < planes.size(); ++i)
                    planes[i] = results[i].data();
                solveNonEquivalentMap(input, width * height, planes);
                for (std::size_t p = 0; p < width * height; ++p) {
                    const QVector<double> &pixel = truth[static_cast<int>(p)];
                    QVERIFY(maps[0].x()[p] == pixel[0] && pixel[0] == pixelPitch * static_cast<double>(p % width));
                    QVERIFY(maps[0].y()[p] == pixel[1] && pixel[1] == pixelPitch * static_cast<double>(p / width));
                    for (std::size_t j = 0; j < referenceCount; ++j)
                        QVERIFY(std::abs(results[ResultPosition::dMut + j][p] -
                                         pixel[5] * pixel[2 + static_cast<int>(j)]) < 1e-6);
                    QVERIFY(results[ResultPosition::mut0][p] > 0.1); // a background that rises to lower energies
                    QVERIFY(results[ResultPosition::c1][p] < 0.0);
                }
            });
    }

    void targetIsTheStatedMixture()
    {
        const Folder folder(smallSample(MapFormat::Plain, 0.0));
        const QByteArray truth = bytesOf(folder.path("truth.txt"));
        QVERIFY(truth.contains("\n# edge jumps of the references: 1.100 0.860 1.320\n"));
        QVERIFY(truth.contains("\n# target: fractions 0.350 0.500 0.150, thickness 0.900, valence 2.800\n"));
        const AMutE target = folder.spectrum(targetFileName());
        QVERIFY(target.pointCount() > 400 && target.pointCount() < 500);
        QVERIFY(std::abs(target.energyMin() - 8145.0) < 0.001 && std::abs(target.energyMax() - 9145.0) < 0.001);
        QVector<double> mixture(target.pointCount());
        for (int j = 0; j < referenceCount; ++j) {
            const AMutE reference = folder.spectrum(referenceFileName(j));
            for (int i = 0; i < mixture.size(); ++i)
                mixture[i] += targetThickness * targetFractions[j] *
                              reference.valueAtEnergy(AMutE::PreSubtracted, target.points().at(i).energy) /
                              edgeJumps[j];
        }
        for (int i = 0; i < mixture.size(); ++i) {
            QVERIFY(i == 0 || target.points().at(i).energy > target.points().at(i - 1).energy);
            QVERIFY(std::abs(target.valueAt(AMutE::PreSubtracted, i) - mixture.at(i)) < 1e-7);
        }
    }

    void truthIsConsistent()
    {
        const SampleOptions options;
        int empty = 0, twoReferences = 0, third = 0;
        double thickest = 0.0;
        for (const QVector<double> &row : Folder(options).truth()) {
            const double sum = row[2] + row[3] + row[4];
            ++(row[5] == 0.0 ? empty : row[4] == 0.0 ? twoReferences : third);
            QVERIFY(std::abs(sum - (row[5] == 0.0 ? 0.0 : 1.0)) < 1e-12);
            QVERIFY(qMin(row[2], qMin(row[3], row[4])) >= 0.0 && row[5] >= 0.0);
            QVERIFY(std::abs(row[6] - (2.0 * row[2] + 3.0 * row[3] + 4.0 * row[4])) < 1e-9);
            thickest = qMax(thickest, row[5]);
        }
        // Enough of everything that the methods are to be judged by: background, two references, the third one.
        const int pixels = options.width * options.height;
        QVERIFY(empty > pixels / 4 && twoReferences > pixels / 4 && third > pixels / 20 && twoReferences > 2 * third);
        QVERIFY(thickest > 0.7 && thickest < 1.6);
    }

    /// The four-points method is right only where the normalised references agree at the anchors; its valence holds for
    /// the third reference too because they are evenly spaced at the V point.
    void energiesSuitTheMethods()
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

    void arguments()
    {
        forRows<const char *, int, const char *>(
            {{"all of them", "--size 5x4 --seed 18446744073709551615 --noise 0 --format 2003901", 0, "truth.txt"},
             {"help", "--help", 0, "--noise"},
             {"unknown option", "--colour red", 2, "colour"},
             {"value missing", "--seed", 2, "seed"},
             {"stray argument", "stray", 2, "'stray'"},
             {"empty directory", "--out=", 2, "--out"},
             {"one side only", "--size 128", 2, "--size"},
             {"side too small", "--size 3x100", 2, "--size"},
             {"side too large", "--size 100x16385", 2, "--size"},
             {"size with a line feed", "--size 10x10\n", 2, "--size"},
             {"negative seed", "--seed=-1", 2, "--seed"},
             {"seed that does not fit", "--seed 18446744073709551616", 2, "--seed"},
             {"negative noise", "--noise=-5", 2, "--noise"},
             {"noise without end", "--noise inf", 2, "--noise"},
             {"unknown format", "--format 1302", 2, "'1302'"}},
            [](const char *arguments, int code, const char *says) {
                const QTemporaryDir directory;
                const Outcome outcome = run(QStringList{"--out", directory.path()} + QString(arguments).split(' '));
                QCOMPARE(outcome.code, code);
                QVERIFY2((code == 0 ? outcome.out : outcome.err).contains(says), qPrintable(outcome.err));
                QCOMPARE(outcome.err.count('\n'), code == 0 ? 0 : 1);
                if (code != 0)
                    QVERIFY(outcome.out.isEmpty() && QDir(directory.path()).isEmpty());
            });
    }

    /// One file that cannot be written leaves all the others as they were, and so does a full disk.
    void whatCannotBeWritten()
    {
        const Folder folder(smallSample(MapFormat::Plain, 0.0));
        QDir dir(folder.path());
        QVERIFY(dir.remove("target.dat") && dir.mkdir("target.dat"));
        const QByteArray before = folder.checksum();
        for (const QString &inside : {QString(), QStringLiteral("truth.txt/inside")}) {
            const Outcome outcome = run({"--out", folder.path(inside)});
            QCOMPARE(outcome.code, 3);
            const QString named = inside.isEmpty() ? QStringLiteral("target.dat") : folder.path(inside);
            QVERIFY2(outcome.err.contains(named) && outcome.err.count('\n') == 1, qPrintable(outcome.err));
            QVERIFY(outcome.out.isEmpty());
            QCOMPARE(folder.checksum(), before);
        }
        QVERIFY(dir.rmdir("target.dat"));
        const SmallDisk disk(1000);
        QCOMPARE(run({"--out", folder.path()}).code, 3);
        QCOMPARE(folder.checksum(), before);
    }
};

QTEST_GUILESS_MAIN(TestSample)
#include "TestSample.moc"
