#include "analysis/FieldNumber.h"
#include "analysis/FourPoints.h"
#include "analysis/Statistics.h"
#include "batch/BatchCommand.h"
#include "batch/JobReader.h"
#include "mapdata/MapFileReader.h"
#include "samples/SampleWriter.h"
#include "spectrum/AMutE.h"

#include <QtTest>

#include <cmath>

/// Jobs run on a small sample without noise.
class TestBatch : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void resultFile();
    void numbers_data();
    void numbers();
    void wrongJobs_data();
    void wrongJobs();
    void unwritableResult();
    void worstOutcomeOfSeveralJobs();
    void nearestWords();

private:
    /// Writes the job beside the sample and runs it.
    int run(const QByteArray &json);
    QByteArray sampleJob() const;
    QString path(const char *name) const { return m_dir.filePath(QLatin1String(name)); }

    QTemporaryDir m_dir;
    QString m_output;
    QString m_error;
};

void TestBatch::initTestCase()
{
    sample::SampleOptions options;
    options.directory = m_dir.path();
    options.width = 16;
    options.height = 12;
    options.noise = 0;
    QStringList written;
    QString error;
    QVERIFY2(sample::writeSample(options, &written, &error), qPrintable(error));
}

QByteArray TestBatch::sampleJob() const
{
    QFile file(path("four-points.json"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

int TestBatch::run(const QByteArray &json)
{
    QFile file(path("job.json"));
    if (!file.open(QIODevice::WriteOnly))
        return -1;
    file.write(json);
    file.close();
    m_output.clear();
    m_error.clear();
    QTextStream out(&m_output);
    QTextStream err(&m_error);
    return runBatchCommand({file.fileName()}, &out, &err);
}

void TestBatch::resultFile()
{
    QFile::remove(path("four-points.dat"));
    QCOMPARE(run(sampleJob()), 0);
    QCOMPARE(m_error, QString());
    QVERIFY(m_output.contains("Map: 16 x 12 pixels"));
    QFile file(path("four-points.dat"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QList<QByteArray> lines = file.readAll().split('\n');
    int pixels = 0;
    for (const QByteArray &line : lines)
        pixels += line.startsWith(' ');
    QCOMPARE(pixels, 16 * 12);
    QVERIFY(lines.first().startsWith("# 1301"));
}

void TestBatch::numbers_data()
{
    QTest::addColumn<QByteArray>("settings");
    QTest::addColumn<double>("edge"); // NaN: the one found last
    QTest::addColumn<double>("dE");   // of the first reference
    QTest::addColumn<bool>("exact");
    QTest::addColumn<bool>("postFromReferences");
    QTest::addColumn<bool>("postFromTarget");
    QTest::newRow("as it is") << QByteArray("\"EdgeE\": 8345") << 8345.0 << 0.0 << false << false << false;
    QTest::newRow("edge found last, default offsets") << QByteArray() << std::nan("") << 0.0 << false << false << false;
    QTest::newRow("shifted reference") << QByteArray("\"EdgeE\": 8345") << 8345.0 << 1.5 << false << false << false;
    QTest::newRow("exact") << QByteArray("\"EdgeE\": 8345, \"TypeTMKisExact\": true") << 8345.0 << 0.0 << true << false
                           << false;
    QTest::newRow("post-edge line from the references")
        << QByteArray("\"EdgeE\": 8345, \"SubPostEforRef\": true") << 8345.0 << 0.0 << false << true << false;
    QTest::newRow("post-edge line from the target")
        << QByteArray("\"EdgeE\": 8345, \"SubPostEforTarget\": true") << 8345.0 << 0.0 << false << false << true;
}

/// What a job prints and writes against the same analysis made here from the models alone.
void TestBatch::numbers()
{
    QFETCH(QByteArray, settings);
    QFETCH(double, edge);
    QFETCH(double, dE);
    QFETCH(bool, exact);
    QFETCH(bool, postFromReferences);
    QFETCH(bool, postFromTarget);

    // The spectra, with values as fields show them.
    AMutE a, b, target;
    a.setDE(dE);
    QVERIFY(a.read(path("ref1_valence2.dat")) && b.read(path("ref2_valence3.dat")) && target.read(path("target.dat")));
    if (std::isnan(edge))
        edge = fieldText(target.findEdge()).toDouble();
    for (AMutE *const spectrum : {&a, &b, &target}) {
        spectrum->setPreEdgeEnd(edge - 50);
        spectrum->setEdgeEnergy(edge);
        spectrum->setPostEdgeStart(edge + 100);
        spectrum->fitLines();
    }
    const auto field = [](const AMutE &spectrum, double energy, bool post) {
        const double line = post ? spectrum.postLine(energy) : spectrum.preLine(energy);
        return QString::number(spectrum.muAt(energy) - line, 'g', 6).toDouble();
    };

    // Three anchors and the V point out of the sample's energies, the V point not last.
    const QStringList files = QDir(m_dir.path()).entryList({"map*.txt"}, QDir::Files, QDir::Name);
    QByteArray energies;
    FourPointsReferences references;
    std::vector<double> x, pixel;
    for (const int i : {0, 1, 6, 2}) {
        const double energy = files[i].mid(5, 8).toDouble();
        references.energies.push_back(energy);
        references.a.push_back(field(a, energy, postFromReferences));
        references.b.push_back(field(b, energy, postFromReferences));
        x.push_back(field(target, energy, postFromTarget));
        A2DData map;
        QVERIFY(loadMapFile(m_dir.filePath(files[i]), &map).loaded);
        pixel.push_back(map.absorption(100));
    }
    for (const int i : {0, 1, 2, 3, 6})
        energies += QStringLiteral("%1{\"energy\": %2, \"map\": \"%3\", \"use\": %4, \"vPoint\": %5}")
                        .arg(QLatin1String(i ? "," : ""), files[i].mid(5, 8), files[i],
                             QLatin1String(i == 3 ? "false" : "true"), QLatin1String(i == 2 ? "true" : "false"))
                        .toUtf8();
    references.r = a.edgeJump() / b.edgeJump();
    numeric::LinearSystem work(3);
    const auto variant = exact ? FourPointsVariant::Exact : FourPointsVariant::LeastSquares;
    const FourPointsResult wanted = solveFourPoints(variant, references, x.data(), &work);
    const FourPointsResult wantedPixel = solveFourPoints(variant, references, pixel.data(), &work);

    QCOMPARE(
        run("{\"references\": [{\"file\": \"ref1_valence2.dat\", \"valence\": 2.5, \"dE\": " + QByteArray::number(dE) +
            "}, {\"file\": \"ref3_valence4.dat\", \"valence\": 9, \"use\": false}, "
            "{\"file\": \"ref2_valence3.dat\", \"valence\": 3.5}], \"target\": {\"file\": \"target.dat\"}, "
            "\"energies\": [" +
            energies + "], \"settings\": {" + settings +
            "}, "
            "\"output\": {\"result\": \"numbers.dat\"}}"),
        0);
    const auto valence = [](double fraction) {
        return 2.5 * fraction + 3.5 * (1 - fraction);
    };
    QVERIFY2(m_output.contains(QStringLiteral("\nTarget: a = %1, Valence = %2, t/ts = %3\n")
                                   .arg(fieldText(wanted.a), fieldText(valence(wanted.a)), fieldText(wanted.t))),
             qPrintable(m_output));
    QVERIFY(m_output.contains("\nEdge jump of ref2_valence3.dat: " + fieldText(b.edgeJump()) + '\n'));
    QFile file(path("numbers.dat"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QStringList lines = QString::fromUtf8(file.readAll()).split('\n');
    const QStringList tokens = lines[lines.indexOf(QString()) + 1 + 100 + 100 / 16].simplified().split(' ');
    QCOMPARE(tokens.mid(2),
             QStringList({fieldText(wantedPixel.a), fieldText(valence(wantedPixel.a)), fieldText(wantedPixel.t)}));

    // The summary of the map is the one of the file's own column.
    FiniteSummaryBuilder builder;
    for (const QString &line : lines) {
        if (line.startsWith(' '))
            builder.add(line.simplified().split(' ').at(3).toDouble());
    }
    const QRegularExpressionMatch match = QRegularExpression("Valence: mean ([^,]+), standard").match(m_output);
    QVERIFY(std::abs(match.captured(1).toDouble() - builder.summary().mean) < 1e-4 * std::abs(builder.summary().mean));
}

void TestBatch::wrongJobs_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *name, const char *before, const char *after, const char *message) {
        QTest::newRow(name) << QByteArray(before) << QByteArray(after) << QString::fromLatin1(message);
    };
    row("not JSON", "\"references\":", "\"references\"", "not JSON: .* at line [0-9]+, column [0-9]+");
    row("misspelt key", "\"references\"", "\"referenses\"", "referenses is no known key.*\"references\"");
    row("misspelt inner key", "\"valence\"", "\"valens\"", "references\\[0\\]\\.valens is no known key.*\"valence\"");
    row("misspelt setting", "\"EdgeE\"", "\"EdgeeE\"", "settings\\.EdgeeE is no known key.*\"EdgeE\"");
    row("number as text", "\"valence\": 2", "\"valence\": \"2\"", "references\\[0\\]\\.valence must be a number");
    row("text as number", "\"ref1_valence2.dat\"", "5", "references\\[0\\]\\.file must be a text");
    row("missing spectrum", "ref2_valence3.dat", "nothing.dat", "references\\[1\\]\\.file: .*nothing.dat is missing");
    row("a map as spectrum", "ref2_valence3.dat", "truth.txt",
        "references\\[1\\]\\.file: .*truth.txt is missing or no");
    row("a spectrum as target is a map", "target.dat", "truth.txt", "target\\.file: .*truth.txt");
    row("no V point", "\"vPoint\": true", "\"vPoint\": false", "energies: none that is used");
    row("one reference", "\"use\": true", "\"use\": false", "references: .* two that are used");
    row("two V points", "\"vPoint\": false", "\"vPoint\": true", "energies: more than one");
    row("V point without a map", "\"map\": \"map3_8345.400eV.txt\", ", "", "none that is used for the map");
    row("both solutions", "\"TypeTMKisLS\": true", "\"TypeTMKisLS\": true, \"TypeTMKisExact\": true",
        "one of TypeTMKis");
    row("missing map", "map3", "nomap3", "energies\\[2\\]\\.map: .*nomap3");
    row("a map file that is none", "map1_8260.000eV.txt", "truth.txt",
        "energies\\[0\\]\\.map: .*truth.txt is missing or no");
}

void TestBatch::wrongJobs()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    QFETCH(QString, message);
    QFile::remove(path("four-points.dat"));
    QVERIFY2(sampleJob().contains(before), "the sample's job has changed");
    QCOMPARE(run(sampleJob().replace(before, after)), 2);
    QVERIFY2(QRegularExpression(message).match(m_error).hasMatch(), qPrintable(m_error));
    QVERIFY(m_error.startsWith("flokluk-batch: " + path("job.json") + ": "));
    QCOMPARE(m_error.count('\n'), 1);
    QVERIFY(!QFile::exists(path("four-points.dat")));
}

void TestBatch::unwritableResult()
{
    QCOMPARE(run(sampleJob().replace("four-points.dat", "missing/four-points.dat")), 3);
    QVERIFY2(m_error.contains("output.result"), qPrintable(m_error));
}

void TestBatch::worstOutcomeOfSeveralJobs()
{
    QString output;
    QString error;
    QTextStream out(&output);
    QTextStream err(&error);
    QCOMPARE(runBatchCommand({path("nothing.json"), path("four-points.json")}, &out, &err), 2);
    QVERIFY(error.contains("nothing.json: the job file cannot be read"));
    QVERIFY(output.contains("Map: 16 x 12 pixels")); // the second job ran all the same
    QCOMPARE(runBatchCommand({}, &out, &err), 2);
}

void TestBatch::nearestWords()
{
    const QStringList known = {"energy", "map", "use", "vPoint", "lcf"};
    QCOMPARE(nearestWord("vpoint", known), QString("vPoint"));
    QCOMPARE(nearestWord("enrgy", known), QString("energy"));
    QCOMPARE(nearestWord("mpa", known), QString("map"));
}

QTEST_GUILESS_MAIN(TestBatch)
#include "TestBatch.moc"
