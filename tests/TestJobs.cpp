#include "AnalystTools.h"
#include "BatchTools.h"
#include "analysis/job/JobReader.h"
#include "analysis/model/TakingPart.h"
#include "analysis/panel/PanelSettings.h"
#include "batch/JobRunner.h"

#include <QJsonDocument>
#include <QtTest>

/// What jobs may say, what is found wrong in them, and what the panel makes of them.
class TestJobs : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(m_sample.make()); }
    void wrongJobs_data();
    void wrongJobs();
    void allMistakesAtOnce();
    void nearestWords();
    void commandLine_data();
    void commandLine();
    void settingsReachTheControls();
    void edgeOfTheJob_data();
    void edgeOfTheJob();
    void oneJobLeavesNothingForTheNext();
    void copiedConditionsGiveTheSameResult();
    void unfinishedConditionsCanBeShown();

private:
    batchtools::SampleJobs m_sample;
};

void TestJobs::wrongJobs_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *name, const char *before, const char *after, const char *message) {
        QTest::newRow(name) << QByteArray(before) << QByteArray(after) << QString::fromLatin1(message);
    };
    row("not JSON", "\"references\":", "\"references\"", "not JSON: .* at line [0-9]+, column [0-9]+");
    row("misspelt key", "\"references\"", "\"referenses\"", "referenses is no known key.*\"references\"");
    row("misspelt inner key", "\"dE\"", "\"De\"", "references\\[0\\]\\.De is no known key.*\"dE\"");
    row("misspelt output", "\"result\"", "\"results\"", "output\\.results is no known key.*\"result\"");
    row("misspelt setting", "\"EdgeE\"", "\"EdgeeE\"", "settings\\.EdgeeE is no known key.*\"EdgeE\"");
    row("a button is no setting", "\"EdgeE\"", "\"WriteB\"", "settings\\.WriteB is no known key");
    row("a read-only field is no setting", "\"EdgeE\"", "\"LCFRes\"", "settings\\.LCFRes is no known key");
    row("number as text", "\"valence\": 2", "\"valence\": \"2\"", "references\\[0\\]\\.valence must be a number");
    row("text as number", "\"ref1_valence2.dat\"", "5", "references\\[0\\]\\.file must be a text");
    row("truth as number", "\"vPoint\": true", "\"vPoint\": 1", "energies\\[2\\]\\.vPoint must be true or false");
    row("field set to a truth", "\"EdgeE\": 8345", "\"EdgeE\": true", "settings\\.EdgeE must be a number");
    row("field set to a word", "\"EdgeE\": 8345", "\"EdgeE\": \"Ni\"", "settings\\.EdgeE must be a number");
    row("button set to a number", "\"TypeTMKisLS\": true", "\"TypeTMKisLS\": 1", "TypeTMKisLS must be true or false");
    row("two of one group", "\"TypeTMKisLS\": true", "\"TypeTMKisLS\": true, \"TypeTMKisExact\": true",
        "only one of .*TypeTMKisExact.* can be true");
    row("none of a group", "\"TypeTMKisLS\": true", "\"TypeTMKisLS\": false", "one of .*TypeTMKisExact.* must be true");
    row("missing spectrum", "ref2_valence3.dat", "nothing.dat",
        "references\\[1\\]\\.file: .*nothing.dat cannot be read");
    row("a map as spectrum", "ref2_valence3.dat", "truth.txt", "references\\[1\\]\\.file: .*truth.txt is no spectrum");
    row("a map as target", "target.dat", "truth.txt", "target\\.file: .*truth.txt is no spectrum");
    row("missing map", "map3", "nomap3", "energies\\[2\\]\\.map: .*nomap3.* cannot be read");
    row("a map file that is none", "map1_8260.000eV.txt", "truth.txt", "energies\\[0\\]\\.map: .*truth.txt is no map");
    row("empty name", "\"four-points.dat\"", "\"\"", "output\\.result must not be empty");
    row("nothing to calculate", "\"use\": true, \"vPoint\"", "\"use\": false, \"vPoint\"", "no map that could be");
}

void TestJobs::wrongJobs()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    QFETCH(QString, message);
    const QByteArray job = batchtools::read(m_sample.path("four-points.json"));
    QVERIFY2(job.contains(before), "the sample's job has changed");
    QCOMPARE(m_sample.runJob(QByteArray(job).replace(before, after)), 2);
    const QStringList found = m_sample.mistakes().filter(QRegularExpression(message));
    QVERIFY2(found.size() == 1, qPrintable(m_sample.err));
    QVERIFY2(found.first().startsWith("flokluk-batch: " + m_sample.path("job.json") + ": "), qPrintable(found.first()));
    QCOMPARE(m_sample.out, QString());
    QVERIFY(!m_sample.hasResults());
}

void TestJobs::allMistakesAtOnce()
{
    const QByteArray job = R"({"references": [{"file": "target.dat"}, 7], "energies": [{"energy": "x", "map": "none"}],
        "settings": {"EdgeFixd": true}, "extra": 1})";
    QCOMPARE(m_sample.runJob(job), 2);
    const char *const expected[] = {
        "extra is no known key",
        "references[0].valence is missing",
        "references[1] must be an object",
        "energies[0].energy must be a number",
        "settings.EdgeFixd is no known key; did you mean \"EdgeFixed\"?",
        "energies[0].map: ",
    };
    const QStringList found = m_sample.mistakes();
    for (const char *const sentence : expected)
        QVERIFY2(found.filter(QLatin1String(sentence)).size() == 1, qPrintable(m_sample.err));
    QCOMPARE(found.size(), 6);
}

void TestJobs::nearestWords()
{
    const QStringList known = {"energy", "map", "use", "vPoint", "lcf"};
    QCOMPARE(nearestWord("vpoint", known), QString("vPoint"));
    QCOMPARE(nearestWord("enrgy", known), QString("energy"));
    QCOMPARE(nearestWord("mpa", known), QString("map"));
}

void TestJobs::commandLine_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("text");
    QTest::newRow("help") << "--help" << 0 << "--pictures";
    QTest::newRow("version") << "--version" << 0 << "flokluk-batch 0.";
    QTest::newRow("no job") << "--check" << 2 << "no job file";
    QTest::newRow("unknown option") << "--pictres x a.json" << 2 << "pictres";
    QTest::newRow("no processes") << "--jobs 0 a.json" << 2 << "--jobs";
    QTest::newRow("processes in words") << "--jobs two a.json" << 2 << "--jobs";
    QTest::newRow("two windows") << "--show a.json b.json" << 2 << "--show";
    QTest::newRow("window and pictures") << "--show --pictures x a.json" << 2 << "--show";
    QTest::newRow("no such job") << "nothing.json" << 2 << "nothing.json: the job file cannot be read";
}

void TestJobs::commandLine()
{
    QFETCH(QString, arguments);
    QFETCH(int, code);
    QFETCH(QString, text);
    QCOMPARE(m_sample.run(arguments.split(' ')), code);
    QVERIFY2((code == 0 ? m_sample.out : m_sample.err).contains(text), qPrintable(m_sample.out + m_sample.err));
    QCOMPARE(parseBatchOptions({"flokluk-batch", "-e", "-j", "a"}).japanese, true);
    QCOMPARE(parseBatchOptions({"flokluk-batch", "-j", "-e", "a"}).japanese, false);
    QCOMPARE(parseBatchOptions({"flokluk-batch", "a"}).japanese, false);
}

void TestJobs::settingsReachTheControls()
{
    const Job job = readJob(m_sample.path("non-equivalent.json")).job;
    paneltools::User user;
    Job other = job;
    other.settings = {{"TypeNonEquiv", true},   {"NonEquivBGVic", true}, {"HgAAuto", false},  {"HgAFrom", 1.25},
                      {"HgTBoxes", "31"},       {"RecC1", false},        {"MapRatio2", true}, {"MaskBelow", ""},
                      {"SubPostEforRef", true}, {"PreEEndDE", -40}};
    QCOMPARE(PanelSettings(&user.panel).mistakes(other.settings), QStringList());
    QCOMPARE(user.panel.load(other), QStringList());
    QCOMPARE(user.takeMessages(), QString()); // nothing was calculated meanwhile
    QVERIFY(!user.find<QRadioButton>("TypeFourPs")->isChecked());
    QVERIFY(user.find<QRadioButton>("NonEquivBGVic")->isChecked());
    QCOMPARE(user.field("HgAFrom")->text(), QString("1.25"));
    QCOMPARE(user.field("HgTBoxes")->text(), QString("31"));
    QCOMPARE(user.field("MaskBelow")->text(), QString());
    QVERIFY(!user.find<QCheckBox>("RecC1")->isChecked());
    // The rows' values belong to the settings: the post-edge line, fitted with the job's ranges.
    const double edge = user.field("EdgeE")->text().toDouble();
    const AMutE reference = paneltools::spectrumOf(m_sample.path("ref1_valence2.dat"), edge, -40);
    QCOMPARE(user.rowText(1, "Mut1"), paneltools::shownValue(reference, job.energies[0].energy, true));
    QCOMPARE(user.row(3)->isVPoint(), job.energies[2].vPoint);
    QCOMPARE(user.reference(3)->valence(), 4.0);
    QVERIFY(!user.reference(4)->isUsed());
}

void TestJobs::edgeOfTheJob_data()
{
    QTest::addColumn<QByteArray>("setting");
    QTest::addColumn<double>("edge"); // 0: the one found in the target, which is read last
    QTest::newRow("given") << QByteArray("{\"EdgeE\": 8344.5}") << 8344.5;
    QTest::newRow("given and kept") << QByteArray("{\"EdgeE\": 8344.5, \"EdgeFixed\": true}") << 8344.5;
    QTest::newRow("found") << QByteArray("{}") << 0.0;
    QTest::newRow("the panel's own kept") << QByteArray("{\"EdgeFixed\": true}") << 8350.0;
}

void TestJobs::edgeOfTheJob()
{
    QFETCH(QByteArray, setting);
    QFETCH(double, edge);
    Job job = readJob(m_sample.path("non-equivalent.json")).job;
    job.settings = QJsonDocument::fromJson(setting).object();
    FourPs panel;
    QCOMPARE(panel.load(job), QStringList());
    if (edge == 0.0)
        edge = paneltools::sixDigits(panel.input().target.spectrum.findEdge()).toDouble();
    QCOMPARE(panel.job().settings.value("EdgeE").toDouble(), edge);
    QCOMPARE(panel.input().references.first().spectrum.edgeEnergy(), edge);
}

void TestJobs::oneJobLeavesNothingForTheNext()
{
    const Job full = readJob(m_sample.path("non-equivalent.json")).job;
    Job small = full;
    small.references.resize(2);
    small.target = {};
    small.energies.resize(3);
    small.energies[1].map.clear();
    FourPs panel;
    QCOMPARE(panel.load(full), QStringList());
    QCOMPARE(panel.load(small), QStringList());
    QCOMPARE(takingPart(panel.input()).valid().size(), 2);
    QVERIFY(!panel.input().target.spectrum.valid());
    QVERIFY(!panel.input().points[1].map);
    QVERIFY(!panel.input().points[3].map && !panel.input().points[3].isUsed);
    QCOMPARE(panel.job().energies.size(), 3);
}

/// What a user has set by hand runs again from the clipboard, to the last byte.
void TestJobs::copiedConditionsGiveTheSameResult()
{
    paneltools::SampleFiles files;
    QVERIFY(files.make());
    paneltools::Analyst user(files);
    user.click("RecC1");
    user.click("HgTAuto");
    user.type("HgTTo", "1.75");
    user.type("PreEEndDE", "-45.5");
    user.type("EdgeE", "8344.25");
    user.panel.calcBoth();
    QCOMPARE(user.writeTo(files.path("hand.dat")), QString());
    user.click("CopyConditions");

    const QByteArray copied = QApplication::clipboard()->text().toUtf8();
    QVERIFY2(copied.contains("hand.dat"), copied.constData());
    QCOMPARE(m_sample.runJob(QByteArray(copied).replace("hand.dat", "again.dat")), 0);
    QCOMPARE(m_sample.mistakes(), QStringList());
    for (const char *const part : {".dat", "_HGAlpha.dat", "_HGThick.dat"}) {
        const QByteArray hand = batchtools::read(files.path(QLatin1String("hand") + QLatin1String(part)));
        QVERIFY(hand.size() > 100);
        QCOMPARE(batchtools::read(files.path(QLatin1String("again") + QLatin1String(part))), hand);
    }
}

/// The second of two references that are to be used has a file, and nothing else does.
void TestJobs::unfinishedConditionsCanBeShown()
{
    paneltools::User user;
    user.load(user.reference(2), m_sample.path("ref2_valence3.dat"));
    const QString path = m_sample.path("job.json");
    QVERIFY(batchtools::write(path, user.panel.job().toJson()));
    FourPs panel;
    QCOMPARE(loadJob(readJob(path), &panel, {}), QStringList());
    QVERIFY(panel.input().references[0].isUsed && panel.input().references[1].spectrum.valid());
    QCOMPARE(m_sample.run({path}), 2);
    QCOMPARE(m_sample.mistakes().filter("references[0].file is missing").size(), 1);
    QCOMPARE(m_sample.mistakes().filter("nothing to calculate").size(), 1);
}

QTEST_MAIN(TestJobs)
#include "TestJobs.moc"
