#include "AnalystTools.h"
#include "BatchTools.h"

#include <QBuffer>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QtTest>

#include <csignal>

#include <unistd.h>

/// Jobs run on a small sample without noise: results, files, exit codes, processes.
class TestBatch : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void sampleAgainstItsTruth_data();
    void sampleAgainstItsTruth();
    void sameFilesAsThePanel_data();
    void sameFilesAsThePanel();
    void report();
    void pictures();
    void refusals_data();
    void refusals();
    void targetByFitAlone();
    void unwritableOutputs_data();
    void unwritableOutputs();
    void worstOutcomeOfSeveralJobs();
    void checkWritesNothing();
    void progressOnATerminal_data();
    void progressOnATerminal();
    void overwritingOutputs_data();
    void overwritingOutputs();
    void parallelJobsAreAsSerialOnes();
    void interruptedRunIsRepeated();

private:
    QByteArray job(const char *name) const { return batchtools::read(m_sample.path(QLatin1String(name))); }
    int start(const QStringList &arguments, QByteArray *out);

    batchtools::SampleJobs m_sample;
};

void TestBatch::initTestCase()
{
    QVERIFY(m_sample.make());
}

void TestBatch::sampleAgainstItsTruth_data()
{
    QTest::addColumn<QString>("method");
    QTest::addColumn<int>("valenceColumn");
    QTest::addColumn<int>("fractions");
    QTest::addColumn<double>("tolerance");
    QTest::newRow("four points") << "four-points" << 3 << 1 << 0.02;         // which the edges' own shapes leave
    QTest::newRow("non-equivalent") << "non-equivalent" << 13 << 3 << 0.005; // counts are whole
}

void TestBatch::sampleAgainstItsTruth()
{
    QFETCH(QString, method);
    QFETCH(int, valenceColumn);
    QFETCH(int, fractions);
    QFETCH(double, tolerance);
    QCOMPARE(m_sample.run({m_sample.path(method + ".json")}), 0);
    QVERIFY(m_sample.out.contains("Result of LCF :: "));
    const QVector<paneltools::TruePixel> truth = paneltools::readTruth(m_sample.path("truth.txt"));
    int pixel = 0, compared = 0;
    for (const QByteArray &line : batchtools::read(m_sample.path(method + ".dat")).split('\n')) {
        const QList<QByteArray> words = line.simplified().split(' ');
        if (words.size() < 5 || line.startsWith('#'))
            continue;
        const paneltools::TruePixel &wanted = truth.at(pixel++);
        QCOMPARE(words[0].toDouble(), wanted.x);
        QCOMPARE(words[1].toDouble(), wanted.y);
        if (wanted.thickness < 0.2 || (fractions == 1 && wanted.fractions[2] > 0))
            continue;
        ++compared;
        QVERIFY2(qAbs(words[valenceColumn].toDouble() - wanted.valence) < tolerance, line.constData());
        for (int j = 0; j < fractions; ++j)
            QVERIFY2(qAbs(words[2 + j].toDouble() - wanted.fractions[j]) < tolerance, line.constData());
    }
    QCOMPARE(pixel, truth.size());
    QVERIFY(compared > 50);
}

void TestBatch::sameFilesAsThePanel_data()
{
    QTest::addColumn<QString>("method");
    QTest::addColumn<QString>("control");
    QTest::newRow("four points") << "four-points"
                                 << "TypeFourPs";
    QTest::newRow("non-equivalent") << "non-equivalent"
                                    << "TypeNonEquiv";
}

void TestBatch::sameFilesAsThePanel()
{
    QFETCH(QString, method);
    QFETCH(QString, control);
    paneltools::SampleFiles files;
    QVERIFY(files.make(16, 12));
    paneltools::Analyst user(files, control.toLatin1().constData());
    QCOMPARE(user.writeTo(files.path("hand.dat")), QString());
    QCOMPARE(m_sample.run({m_sample.path(method + ".json")}), 0);
    for (const char *const part : {"", "_HGAlpha", "_HGThick"}) {
        const QByteArray hand = batchtools::read(files.path("hand" + QLatin1String(part) + ".dat"));
        QVERIFY(hand.size() > 100);
        QCOMPARE(batchtools::read(m_sample.path(method + QLatin1String(part) + ".dat")), hand);
    }
}

void TestBatch::report()
{
    m_sample.removeResults();
    QCOMPARE(m_sample.run({m_sample.path("four-points.json"), m_sample.path("non-equivalent.json"), "--report",
                           m_sample.path("all.json")}),
             0);
    const auto reportOf = [this](const char *name) {
        return QJsonDocument::fromJson(batchtools::read(m_sample.path(QLatin1String(name)))).object();
    };
    const QJsonObject fourPoints = reportOf("all_four-points.json");
    const QJsonObject nonEquivalent = reportOf("all_non-equivalent.json");
    QVERIFY(!QFile::exists(m_sample.path("four-points-report.json"))); // the command line's name in its place

    paneltools::SampleFiles files;
    QVERIFY(files.make(16, 12));
    paneltools::Analyst user(files);
    const QJsonObject target = nonEquivalent["target"].toObject();
    const QJsonObject result = target["nonEquivalent"].toObject();
    QCOMPARE(paneltools::sixDigits(result["fractions"].toArray()[2].toDouble()), user.ratio(3));
    QCOMPARE(paneltools::sixDigits(result["amounts"].toArray()[0].toDouble()), user.amount(1));
    QCOMPARE(result["fractions"].toArray().size(), 3);
    QVERIFY(qAbs(result["valence"].toDouble() - 2.8) < 0.001);
    QVERIFY(qAbs(target["lcf"].toObject()["valence"].toDouble() - 2.8) < 0.01);
    QVERIFY(!target.contains("fourPoints"));
    QVERIFY(fourPoints["target"].toObject()["fourPoints"].toObject().contains("t/ts"));
    QCOMPARE(nonEquivalent["edge"].toDouble(), 8345.0);
    QCOMPARE(nonEquivalent["references"].toArray()[1].toObject()["edgeJump"].toDouble(), user.jump(2));
    QVERIFY(nonEquivalent["errors"].toArray().isEmpty());

    const QJsonObject map = nonEquivalent["map"].toObject();
    QCOMPARE(map["pixels"].toInt(), 16 * 12);
    const QJsonObject quantities = map["quantities"].toObject();
    const char *const computed = "Amount C1 Ratio 1 Ratio 2 Ratio 3 Valence dMut 1 dMut 2 dMut 3 mut0";
    QCOMPARE(quantities.keys().join(' '), QString(computed)); // three references, linear background
    double sum = 0.0;
    for (std::size_t i = 0; i < user.results().count(); ++i)
        sum += user.results().t()[i];
    QVERIFY(qAbs(quantities["Amount"].toObject()["mean"].toDouble() - sum / (16 * 12)) < 1e-12);
    QCOMPARE(fourPoints["map"].toObject()["quantities"].toObject().keys().join(' '),
             QString("Amount Ratio 1 Ratio 2 Valence"));
}

void TestBatch::pictures()
{
    QTemporaryDir folder;
    const QString pictures = folder.filePath("a/b");
    QCOMPARE(m_sample.run({m_sample.path("four-points.json"), "--pictures", pictures}), 0);
    const QStringList names = QDir(pictures).entryList(QDir::Files, QDir::Name);
    QStringList expected;
    for (const char *const name :
         {"DMutVorA",   "Data_1",     "Data_2",      "Data_3",   "Data_4",   "Data_5", "Data_6",
          "Data_7",     "Data_8",     "HistA",       "HistDMut", "LcfVsMps", "M2M3",   "Map_Amount",
          "Map_Ratio1", "Map_Ratio2", "Map_Valence", "Muts",     "Ref1",     "Ref2",   "Target"})
        expected << QStringLiteral("four-points_%1.png").arg(QLatin1String(name));
    QCOMPARE(names, expected);
    QVector<QByteArray> contents;
    for (const QString &name : names) {
        const QImage image(QDir(pictures).filePath(name));
        QVERIFY2(image.width() > 400 && image.height() > 300, qPrintable(name));
        const QByteArray bytes = batchtools::read(QDir(pictures).filePath(name));
        QVERIFY2(!contents.contains(bytes), qPrintable(name)); // each shows something else
        contents << bytes;
    }
}

void TestBatch::refusals_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::addColumn<QString>("message");
    QTest::addColumn<bool>("writes");
    QTest::newRow("no V point") << QByteArray("\"vPoint\": true") << QByteArray("\"vPoint\": false")
                                << "V Point is not selected" << false;
    QTest::newRow("one reference") << QByteArray("\"ref2_valence3.dat\", \"use\": true")
                                   << QByteArray("\"ref2_valence3.dat\", \"use\": false")
                                   << "Number of valied Ref Files is 1, which is less than 2." << false;
    QTest::newRow("no fit, but a map") << QByteArray("\"lcf\": true}") << QByteArray("\"lcf\": false, \"use\": true}")
                                       << QString() << true;
}

void TestBatch::refusals()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    QFETCH(QString, message);
    QFETCH(bool, writes);
    m_sample.removeResults();
    const QByteArray text = job("four-points.json");
    QVERIFY(text.contains(before));
    QCOMPARE(m_sample.runJob(QByteArray(text).replace(before, after)), writes ? 0 : 1);
    QCOMPARE(m_sample.mistakes().filter(message).isEmpty(), writes);
    QVERIFY(m_sample.out.contains(message)); // the panel says it too
    QCOMPARE(QFile::exists(m_sample.path("four-points.dat")), writes);
    QVERIFY(QFile::exists(m_sample.path("four-points-report.json"))); // which says what happened
}

/// Without a used energy the target is not asked for by the four-points method, which would refuse.
void TestBatch::targetByFitAlone()
{
    const QByteArray text = job("four-points.json").replace("\"use\": true, \"vPoint\"", "\"use\": false, \"vPoint\"");
    QCOMPARE(m_sample.runJob(QByteArray(text).replace("\"result\": \"four-points.dat\", ", "")), 0);
    QVERIFY(m_sample.out.contains("Result of LCF :: "));
}

void TestBatch::unwritableOutputs_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::addColumn<QString>("message");
    QTest::newRow("result") << QByteArray("\"four-points.dat\"") << QByteArray("\"missing/r.dat\"")
                            << "Can't open the file [";
    QTest::newRow("pictures") << QByteArray("\"pictures\": \"pictures\"") << QByteArray("\"pictures\": \"truth.txt/p\"")
                              << "cannot make the folder";
    QTest::newRow("report") << QByteArray("\"four-points-report.json\"") << QByteArray("\"missing/r.json\"")
                            << "cannot write the report";
}

void TestBatch::unwritableOutputs()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    QFETCH(QString, message);
    const QByteArray text = job("four-points.json");
    QVERIFY(text.contains(before));
    QCOMPARE(m_sample.runJob(QByteArray(text).replace(before, after)), 3);
    QVERIFY2(!m_sample.mistakes().filter(message).isEmpty(), qPrintable(m_sample.err));
}

void TestBatch::worstOutcomeOfSeveralJobs()
{
    m_sample.removeResults();
    QCOMPARE(m_sample.run({m_sample.path("nothing.json"), m_sample.path("four-points.json")}), 2);
    QVERIFY(m_sample.err.contains("nothing.json: the job file cannot be read"));
    QVERIFY(QFile::exists(m_sample.path("four-points.dat"))); // the second job ran all the same
}

void TestBatch::checkWritesNothing()
{
    m_sample.removeResults();
    QCOMPARE(m_sample.run({"--check", m_sample.path("four-points.json"), m_sample.path("non-equivalent.json")}), 0);
    QCOMPARE(m_sample.out.count(": no mistakes\n"), 2);
    QVERIFY(!m_sample.hasResults());
}

void TestBatch::progressOnATerminal_data()
{
    QTest::addColumn<QByteArray>("job");
    QTest::addColumn<QByteArray>("end");
    QTest::newRow("good") << QByteArray("four-points.json") << QByteArray("[####################] done in 0.");
    QTest::newRow("wrong") << QByteArray("nothing.json") << QByteArray("[....................] failed after 0.");
}

/// The bar's line ends before anything else is printed.
void TestBatch::progressOnATerminal()
{
    QFETCH(QByteArray, job);
    QFETCH(QByteArray, end);
    QBuffer terminal;
    QVERIFY(terminal.open(QIODevice::WriteOnly));
    QTextStream out(&terminal), err(&terminal);
    runBatchCommand(parseBatchOptions({"flokluk-batch", "--check", m_sample.path(job)}), &out, &err, true);
    const QList<QByteArray> lines = terminal.data().split('\n');
    QCOMPARE(lines.size(), 3); // the bar, the outcome, nothing
    QVERIFY2(lines[0].split('\r').last().startsWith("\033[K" + job + ' ' + end), lines[0].constData());
}

void TestBatch::overwritingOutputs_data()
{
    QTest::addColumn<QByteArray>("report"); // of twin.json, which has the result file of four-points.json
    QTest::addColumn<QString>("other");     // job that runs with it
    QTest::addColumn<QString>("message");
    QTest::newRow("two jobs, one file") << QByteArray("twin-report.json") << "four-points.json"
                                        << "four-points.dat cannot be written: it is an output of .*four-points.json";
    QTest::newRow("one job, one file") << QByteArray("x/../four-points.dat") << "non-equivalent.json"
                                       << "four-points.dat cannot be written: it is an output of .*twin.json";
    QTest::newRow("its own spectrum") << QByteArray("target.dat") << "non-equivalent.json"
                                      << "target.dat cannot be written: it is an input of ";
    QTest::newRow("another job") << QByteArray("non-equivalent.json") << "non-equivalent.json"
                                 << "cannot be written: it is an input of .*non-equivalent.json";
}

void TestBatch::overwritingOutputs()
{
    QFETCH(QByteArray, report);
    QFETCH(QString, other);
    QFETCH(QString, message);
    m_sample.removeResults();
    QVERIFY(batchtools::write(m_sample.path("twin.json"),
                              job("four-points.json").replace("four-points-report.json", report)));
    const QByteArray target = job("target.dat");
    QCOMPARE(m_sample.run({m_sample.path(other), m_sample.path("twin.json")}), 2);
    const QStringList found = m_sample.mistakes();
    QCOMPARE(found.size(), 1);
    QVERIFY2(found.filter(QRegularExpression("twin.json: .*" + message)).size() == 1, qPrintable(m_sample.err));
    QCOMPARE(job("target.dat"), target);
}

/// Runs the program itself.
int TestBatch::start(const QStringList &arguments, QByteArray *out)
{
    QProcess process;
    process.start(QStringLiteral(FLOKLUK_BATCH), arguments);
    const bool finished = process.waitForFinished(120000) && process.exitStatus() == QProcess::NormalExit;
    *out = process.readAllStandardOutput();
    return finished ? process.exitCode() : -1;
}

void TestBatch::parallelJobsAreAsSerialOnes()
{
    QVERIFY(batchtools::write(m_sample.path("refused.json"), job("four-points.json")
                                                                 .replace("\"vPoint\": true", "\"vPoint\": false")
                                                                 .replace("\"four-points", "\"refused")
                                                                 .replace("\"pictures\": \"pictures\", ", "")));
    QStringList jobs;
    for (const char *const name : {"four-points.json", "nothing.json", "refused.json", "non-equivalent.json"})
        jobs << m_sample.path(QLatin1String(name));
    const auto contents = [this] {
        QMap<QString, QByteArray> files;
        for (const QString &name : QDir(m_sample.path(".")).entryList({"*.dat"}))
            files.insert(name, batchtools::read(m_sample.path(name)));
        for (const QString &name : QDir(m_sample.path("pictures")).entryList({"*.png"}))
            files.insert(name, batchtools::read(m_sample.path("pictures/" + name)));
        return files;
    };
    m_sample.removeResults();
    QByteArray serialOut, parallelOut;
    QCOMPARE(start(jobs, &serialOut), 2);
    const QMap<QString, QByteArray> serial = contents();
    m_sample.removeResults();
    QCOMPARE(start(QStringList{"--jobs", "3"} + jobs, &parallelOut), 2);
    QCOMPARE(parallelOut, serialOut);
    QVERIFY(serialOut.contains("V Point is not selected"));
    QVERIFY(serial.contains("non-equivalent.dat") && serial.contains("four-points_Muts.png"));
    QCOMPARE(contents(), serial);
}

/// A run that is killed while it works leaves no half file behind, and running it again gives what it would have given.
void TestBatch::interruptedRunIsRepeated()
{
    batchtools::SampleJobs large;
    QVERIFY(large.make(256, 192));
    const QByteArray text =
        batchtools::read(large.path("non-equivalent.json")).replace("\"pictures\": \"pictures\", ", "");
    QVERIFY(batchtools::write(large.path("non-equivalent.json"), text));
    QCOMPARE(large.run({large.path("non-equivalent.json")}), 0);
    const QByteArray whole = batchtools::read(large.path("non-equivalent.dat"));
    QVERIFY(whole.size() > 1000000);

    for (const char *const moment : {"reading map5", "calculating", "writing non-equivalent.dat"}) {
        large.removeResults();
        QProcess process;
        process.setReadChannel(QProcess::StandardError);
        process.start(QStringLiteral(FLOKLUK_BATCH), {large.path("non-equivalent.json")});
        QByteArray seen;
        while (!seen.contains(moment) && process.waitForReadyRead(60000))
            seen += process.readAll();
        QVERIFY2(seen.contains(moment), seen.constData());
        process.kill();
        QVERIFY(process.waitForFinished(60000));
        const QByteArray left = batchtools::read(large.path("non-equivalent.dat"));
        QVERIFY2(left.isEmpty() || left == whole, moment);
        QCOMPARE(large.run({large.path("non-equivalent.json")}), 0);
        QCOMPARE(batchtools::read(large.path("non-equivalent.dat")), whole);
    }
}

QTEST_MAIN(TestBatch)
#include "TestBatch.moc"
