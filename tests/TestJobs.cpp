#include "BatchTools.h"
#include "analysis/job/JobReader.h"
#include "analysis/job/SettingNames.h"
#include "analysis/model/TakingPart.h"
#include "analysis/panel/PanelSettings.h"
#include "batch/JobRunner.h"

#include <QJsonDocument>

using namespace paneltools;

/// What jobs may say, what is found wrong in them, and what the panel makes of them.
class TestJobs : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(m_sample.make()); }

    void wrongJobs()
    {
        // edit: of the sample's job; message: its parts; ' stands for "
        forRows<const char *, const char *>(
            {{"not JSON", "'references': => 'references'", "not JSON: ... at line ...column "},
             {"misspelt key", "'references' => 'referenses'", "referenses is no known key; did you mean 'references'?"},
             {"misspelt inner key", "'dE' => 'De'", "references[0].De is no known key; did you mean 'dE'?"},
             {"misspelt output", "'result' => 'results'", "output.results is no known key; did you mean 'result'?"},
             {"misspelt setting", "'EdgeE' => 'EdgeeE'", "settings.EdgeeE is no known key; did you mean 'EdgeE'?"},
             {"exchanged letters", "'map' => 'mpa'", "energies[0].mpa is no known key; did you mean 'map'?"},
             {"a key of two lines", "'EdgeE' => 'Edge\\nE'", "settings.Edge\uFFFDE is no known key"},
             {"a button is no setting", "'EdgeE' => 'WriteB'", "settings.WriteB is no known key"},
             {"a read-only field is no setting", "'EdgeE' => 'LCFRes'", "settings.LCFRes is no known key"},
             {"number as text", "'valence': 2 => 'valence': '2'", "references[0].valence must be a number"},
             {"text as number", "'ref1_valence2.dat' => 5", "references[0].file must be a text"},
             {"truth as number", "'vPoint': true => 'vPoint': 1", "energies[2].vPoint must be true or false"},
             {"field set to a truth", "'EdgeE': 8345 => 'EdgeE': true", "settings.EdgeE must be a number"},
             {"one box", "'EdgeE': 8345 => 'HgABoxes': 1",
              "settings.HgABoxes must be a whole number from 2 to 1000000"},
             {"half a box", "'EdgeE': 8345 => 'HgTBoxes': '2.5'", "settings.HgTBoxes must be a whole number from"},
             {"field set to a word", "'EdgeE': 8345 => 'EdgeE': 'Ni'", "settings.EdgeE must be a number"},
             {"button set to a number", "'TypeTMKisLS': true => 'TypeTMKisLS': 1", "TypeTMKisLS must be true or false"},
             {"two of one group", "'TypeTMKisLS': true => 'TypeTMKisLS': true, 'TypeTMKisExact': true",
              "only one of ...TypeTMKisExact... can be true"},
             {"none of a group", "'TypeTMKisLS': true => 'TypeTMKisLS': false",
              "one of ...TypeTMKisExact... must be true"},
             {"missing spectrum", "ref2_valence3.dat => nothing.dat",
              "references[1].file: ...nothing.dat: no such file"},
             {"a folder as spectrum", "'ref2_valence3.dat' => '.'", "references[1].file: ...cannot be read"},
             {"a map as spectrum", "ref2_valence3.dat => truth.txt", "references[1].file: ...truth.txt is no spectrum"},
             {"a map as target", "target.dat => truth.txt", "target.file: ...truth.txt is no spectrum"},
             {"missing map", "map3 => nomap3", "energies[2].map: ...nomap3... no such file"},
             {"a map file that is none", "map1_8260.000eV.txt => truth.txt", "energies[0].map: ...truth.txt is no map"},
             {"a key twice", "'valence': 2 => 'valence': 2, 'valenc\\u0065': 2",
              "references[0].valence is given twice"},
             {"no number in JSON", "'dE': 0}, => 'dE': 1.},", "references[0].dE: 1. is no number in JSON"},
             {"control character", "target.dat => target\\u0007.dat", "target.file holds a control character"},
             {"not UTF-16", "four-points.dat => \\ud800.dat", "output.result is no Unicode"},
             {"empty name", "'four-points.dat' => ''", "output.result must not be empty"},
             {"half a rectangle", "'output' => 'regions': [{'name': 'a', 'rectangle': [0, 1, 2.5, 3]}], 'output'",
              "regions[0].rectangle must be four whole numbers"},
             {"a region of nothing", "'output' => 'regions': [{'name': 'a'}], 'output'",
              "regions[0].rectangle is missing, and so is above"},
             {"beside the map", "'output' => 'regions': [{'name': 'a', 'rectangle': [16, 0, 20, 3]}], 'output'",
              "regions[0].rectangle lies beside the map of 16 x 12 pixels"},
             {"two regions of one name",
              "'output' => 'regions': [{'name': 'a', 'above': 1}, {'name': 'a', 'above': 2}], 'output'",
              "regions[1].name: regions[0] has the same name"},
             {"fractions of no file", "'result' => 'qualityFractions': true, 'result'",
              "output.qualityFractions: there is no output.quality"},
             {"nothing to calculate", "'use': true, 'vPoint' => 'use': false, 'vPoint'", "no map that could be"}},
            [this](const char *edit, const char *message) {
                QCOMPARE(m_sample.runJob(batchtools::edited(m_sample.text("four-points.json"), edit)), 2);
                QStringList found = m_sample.mistakes();
                for (const QString &part : QString(message).replace('\'', '"').split("..."))
                    found = found.filter(part);
                QVERIFY2(found.size() == 1, qPrintable(m_sample.err));
                QVERIFY(found.first().startsWith("flokluk-batch: " + m_sample.path("job.json") + ": "));
                QCOMPARE(m_sample.out, QString());
                QCOMPARE(m_sample.results(), QStringList());
            });
    }

    void allMistakesAtOnce()
    {
        QCOMPARE(m_sample.runJob(R"({"references": [{"file": "target.dat"}, 7], "energies": [{"energy": "x",
            "map": "none"}], "settings": {"EdgeFixd": true}, "extra": 1})"),
                 2);
        const QStringList found = m_sample.mistakes();
        for (const char *const sentence :
             {"extra is no known key", "references[0].valence is missing", "references[1] must be an object",
              "energies[0].energy must be a number", "settings.EdgeFixd is no known key; did you mean \"EdgeFixed\"?",
              "energies[0].map: "})
            QVERIFY2(found.filter(QLatin1String(sentence)).size() == 1, qPrintable(m_sample.err));
        QCOMPARE(found.size(), 6);
        const QString job = m_sample.text("four-points.json");
        QCOMPARE(m_sample.runJob(QByteArray(reinterpret_cast<const char *>(job.utf16()), 2 * job.size())), 2);
        QCOMPARE(m_sample.mistakes().filter("must be UTF-8").size(), 1);
    }

    void commandLine()
    {
        forRows<QString, int, QString>({{"help", "--help", 0, "--pictures"},
                                        {"version", "--version", 0, "flokluk-batch 1."},
                                        {"no job", "--check", 2, "no job file"},
                                        {"unknown option", "--pictres x a.json", 2, "pictres"},
                                        {"no processes", "--jobs 0 a.json", 2, "--jobs"},
                                        {"processes in words", "--jobs two a.json", 2, "--jobs"},
                                        {"two windows", "--show a.json b.json", 2, "--show"},
                                        {"window and pictures", "--show --pictures x a.json", 2, "--show"},
                                        {"no such job", "nothing.json", 2, "nothing.json: no such file"}},
                                       [this](const QString &arguments, int code, const QString &text) {
                                           QCOMPARE(m_sample.run(arguments.split(' ')), code);
                                           QVERIFY2((code == 0 ? m_sample.out : m_sample.err).contains(text),
                                                    qPrintable(m_sample.out + m_sample.err));
                                       });
        QCOMPARE(parseBatchOptions({"flokluk-batch", "-e", "-j", "a"}).japanese, true);
        QCOMPARE(parseBatchOptions({"flokluk-batch", "-j", "-e", "a"}).japanese, false);
        QCOMPARE(parseBatchOptions({"flokluk-batch", "a"}).japanese, false);
    }

    /// However many files a job has, loading it ends in one calculation, which a scope holds back.
    void settingsReachTheControls()
    {
        User user;
        Job job = nonEquivalent();
        job.settings = {{"TypeNonEquiv", true},   {"NonEquivBGVic", true}, {"HgAAuto", false},  {"HgAFrom", 1.25},
                        {"HgTBoxes", "31"},       {"RecC1", false},        {"MapRatio2", true}, {"MaskBelow", ""},
                        {"SubPostEforRef", true}, {"PreEEndDE", -40}};
        QCOMPARE(PanelSettings(&user.panel).names(), settingNames()); // of the controls, and of the form
        QCOMPARE(PanelSettings(&user.panel).mistakes(job.settings), QStringList());
        {
            const Recalculation::Scope held(user.panel.recalculation());
            QCOMPARE(user.panel.load(job), QStringList());
            QCOMPARE(user.takeMessages(), QString());
        }
        QCOMPARE(user.takeMessages().count("Result of LCF :: "), 1);
        QCOMPARE(user.panel.load(job), QStringList());
        QCOMPARE(user.takeMessages().count("Result of LCF :: "), 1);
        const QJsonObject present = user.panel.job().settings;
        for (const QString &name : job.settings.keys())
            QCOMPARE(name + present[name].toVariant().toString(), name + job.settings[name].toVariant().toString());
        QVERIFY(!user.find<QRadioButton>("TypeFourPs")->isChecked());
        // The rows' values belong to the settings: the post-edge line, fitted with the job's ranges.
        const double edge = user.field("EdgeE")->text().toDouble();
        const AMutE reference = spectrumOf(m_sample.path("ref1_valence2.dat"), edge, -40);
        QCOMPARE(user.rowText(1, "Mut1"), shownValue(reference, job.energies[0].energy, true));
        QCOMPARE(user.row(3)->isVPoint(), job.energies[2].vPoint);
        QCOMPARE(user.reference(3)->valence(), 4.0);
        QVERIFY(!user.reference(4)->isUsed());
    }

    void edgeOfTheJob()
    {
        // Instead of 0: the edge found in the target, which is read last.
        forRows<const char *, double>({{"given", "{\"EdgeE\": 8344.5}", 8344.5},
                                       {"given and kept", "{\"EdgeE\": 8344.5, \"EdgeFixed\": true}", 8344.5},
                                       {"found", "{}", 0.0},
                                       {"the panel's own kept", "{\"EdgeFixed\": true}", 8350.0}},
                                      [this](const char *settings, double given) {
                                          Job job = nonEquivalent();
                                          job.settings = QJsonDocument::fromJson(settings).object();
                                          FourPs panel;
                                          QCOMPARE(panel.load(job), QStringList());
                                          const double found =
                                              sixDigits(panel.input().target.spectrum.findEdge()).toDouble();
                                          const double edge = given == 0.0 ? found : given;
                                          QCOMPARE(panel.job().settings.value("EdgeE").toDouble(), edge);
                                          QCOMPARE(panel.input().references.first().spectrum.edgeEnergy(), edge);
                                      });
    }

    void oneJobLeavesNothingForTheNext()
    {
        Job small = nonEquivalent();
        small.references.resize(2);
        small.target = {};
        small.energies.resize(3);
        small.energies[1].map.clear();
        FourPs panel;
        QCOMPARE(panel.load(nonEquivalent()), QStringList());
        QCOMPARE(panel.load(small), QStringList());
        const AnalysisInput input = panel.input();
        QCOMPARE(takingPart(input).valid().size(), 2);
        QVERIFY(!input.target.spectrum.valid());
        QVERIFY(!input.points[1].map);
        QVERIFY(!input.points[3].map && !input.points[3].isUsed);
        QCOMPARE(panel.job().energies.size(), 3);
    }

    /// What a user has set by hand runs again from the clipboard, to the last byte; a shift that he types counts at
    /// once, for the lines and the fields as well.
    void copiedConditionsGiveTheSameResult()
    {
        for (const char *const method : {"TypeNonEquiv", "TypeFourPs"}) {
            SampleFiles files;
            QVERIFY(files.make());
            Analyst user(files, method);
            user.click("RecC1");
            user.click("HgTAuto");
            user.type("HgTTo", "1.75");
            user.type("PreEEndDE", "-45.5");
            user.type("EdgeE", "8344.25");
            const double unshifted = user.results().record(5).a;
            rowtools::type(user.reference(2)->findChild<QLineEdit *>("dE"), "0.4");
            QVERIFY(user.results().record(5).a != unshifted);
            user.takeMessages();
            rowtools::type(user.target()->findChild<QLineEdit *>("dE"), "-0.3");
            const QString messages = user.takeMessages();
            QCOMPARE(user.writeTo(files.path("hand.dat")), QString());
            user.click("CopyConditions");

            const QByteArray copied = QApplication::clipboard()->text().toUtf8();
            QCOMPARE(m_sample.runJob(batchtools::edited(copied, "hand.dat => again.dat")), 0);
            QCOMPARE(m_sample.mistakes(), QStringList());
            QVERIFY(messages.contains("Energy Range is not selected")); // which the job does not ask for
            QCOMPARE(m_sample.out, messages.section("Energy Range", 0, 0));
            QVERIFY(batchtools::sameResults(files.path("again"), files.path("hand")));
        }
    }

    /// The second of two references that are to be used has a file, and nothing else does.
    void unfinishedConditionsCanBeShown()
    {
        User user;
        user.load(user.reference(2), m_sample.path("ref2_valence3.dat"));
        const QByteArray conditions = user.panel.job().toJson();
        QCOMPARE(m_sample.runJob(conditions), 2);
        QCOMPARE(m_sample.mistakes().filter("references[0].file is missing").size(), 1);
        QCOMPARE(m_sample.mistakes().filter("nothing to calculate").size(), 1);
        FourPs panel;
        QCOMPARE(loadJob(readJob(m_sample.path("job.json")), &panel, {}), QStringList());
        QVERIFY(panel.input().references[0].isUsed && panel.input().references[1].spectrum.valid());
    }

private:
    Job nonEquivalent() const { return readJob(m_sample.path("non-equivalent.json")).job; }

    batchtools::SampleJobs m_sample;
};

QTEST_MAIN(TestJobs)
#include "TestJobs.moc"
