#include "batch/BatchCommand.h"
#include "batch/JobReader.h"
#include "samples/SampleWriter.h"

#include <QtTest>

#include <cmath>

/// Jobs run on a small sample without noise.
class TestBatch : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void resultFile();
    void targetComesBack();
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

/// The first reference as the target is one part of A and nothing of B; the references meet at the anchor energies
/// nearly, not exactly.
void TestBatch::targetComesBack()
{
    QByteArray job = sampleJob();
    QVERIFY(job.contains("target.dat"));
    for (const auto &reference : {qMakePair(QByteArray("ref1_valence2.dat"), 1.0), {"ref2_valence3.dat", 0.0}}) {
        QCOMPARE(run(QByteArray(job).replace("target.dat", reference.first)), 0);
        const QRegularExpression text("Target: a = ([^,]+), Valence = ([^,]+), t/ts");
        const QRegularExpressionMatch match = text.match(m_output);
        QVERIFY(match.hasMatch());
        QVERIFY2(std::abs(match.captured(1).toDouble() - reference.second) < 0.1, qPrintable(match.captured(1)));
        const double a = match.captured(1).toDouble();
        QVERIFY(std::abs(match.captured(2).toDouble() - (2 * a + 3 * (1 - a))) < 1e-4);
    }
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
