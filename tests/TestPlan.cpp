#include "analysis/shift/MapShift.h"
#include "analysis/uncertainty/SpectrumFit.h"
#include "batch/BatchCommand.h"
#include "bench/ShiftedMaps.h"
#include "plan/PlanCandidates.h"
#include "plan/PlanCommand.h"
#include "plan/PlanFile.h"
#include "plan/PlanResult.h"
#include "plan/PlanSearch.h"
#include "samples/SampleWriter.h"
#include "tests/Tables.h"

#include <QtTest>

#include <cmath>
#include <numeric>

using namespace tables;

namespace
{

PlanResult planned(const PlanRequest &request)
{
    const auto outcome = planEnergies(request);
    const auto *const mistake = std::get_if<QString>(&outcome);
    return mistake ? (qFatal("%s", qPrintable(*mistake)), PlanResult()) : std::get<PlanResult>(outcome);
}

/// Quick to plan.
PlanRequest smallRequest(PlanMethod method, int references, int count)
{
    PlanRequest request = sampleRequest(references);
    request.method = method;
    request.count = count;
    request.from = 8330.0;
    request.to = 8410.0;
    request.step = 4.0;
    return request;
}

/// The run that a planned set stands for, and its values for a mixture with all energies `shift` eV off.
RunInfo runOf(const PlanRequest &request, const PlannedSet &set)
{
    RunInfo run;
    std::vector<const AMutE *> spectra;
    for (const PlanReference &reference : request.references) {
        spectra.push_back(&reference.spectrum);
        run.references.append(
            {run.references.size(), reference.name, reference.valence, reference.spectrum.edgeJump()});
    }
    run.method = {!isFourPoints(request.method), FourPointsVariant::None, backgroundOf(request.method)};
    run.nonEquivalent = prepareNonEquivalent(set.energies, spectra, false);
    run.method.variant = chooseFourPoints(request.count, request.method == PlanMethod::ExactFourPoints, true);
    std::vector<double> energies = set.energies;
    if (set.vPoint >= 0)
        std::rotate(energies.begin() + set.vPoint, energies.begin() + set.vPoint + 1, energies.end());
    run.fourPoints.energies = energies;
    const NonEquivalentReferences ordered = prepareNonEquivalent(energies, spectra, false);
    run.fourPoints.a = ordered.columns[0];
    run.fourPoints.b = ordered.columns[1];
    run.fourPoints.r = spectra[0]->edgeJump() / spectra[1]->edgeJump();
    return run;
}

SpectrumFit fitOf(const PlanRequest &request, const PlannedSet &set, double shift)
{
    const RunInfo run = runOf(request, set);
    const PlanMixture mixture = planMixtures(request).front();
    std::vector<double> values, variances;
    for (const double energy : run.method.isNonEquivalent ? set.energies : run.fourPoints.energies) {
        const double y = mixture.absorption(planPoint(request, energy + shift));
        values.push_back(y);
        variances.push_back(request.mode == PlanMode::Transmission
                                ? (1.0 + std::exp(y + request.background)) / request.counts
                                : y / request.counts);
    }
    return fitSpectrum(run, values, variances);
}

} // namespace

/// Which energies to measure, and the energy shift of maps that were measured.
class TestPlan : public QObject
{
    Q_OBJECT

private slots:
    /// The errors of the plan are those that the analysis will state, and its slope is what a wrong energy does to it.
    void aPlanSaysWhatTheFitWillSay()
    {
        struct Case {
            const char *name;
            PlanMethod method;
            int references, count;
            std::vector<double> fractions;
        };
        forEach<Case>({{"linear", PlanMethod::LinearNonEquivalent, 3, 6, {0.2, 0.5, 0.3}},
                       {"Victoreen", PlanMethod::VictoreenNonEquivalent, 2, 6, {0.7, 0.3}},
                       {"exact four points", PlanMethod::ExactFourPoints, 2, 4, {0.4, 0.6}},
                       {"least squares", PlanMethod::LeastSquaresFourPoints, 2, 5, {0.4, 0.6}}},
                      [](const Case &c) {
                          PlanRequest request = smallRequest(c.method, c.references, c.count);
                          request.scenarios = {{c.fractions, 0.8}};
                          const PlannedSet set = planned(request).planned;
                          const SpectrumFit fit = fitOf(request, set, 0.0);
                          QVERIFY(isClose(set.sigmaV, fit.valenceError, 1e-6));
                          QVERIFY(isClose(set.sigmaF[0], fit.fractionErrors[0], 1e-6));
                          constexpr double step = 1e-4; // eV
                          const double slope =
                              (fitOf(request, set, step).valence - fitOf(request, set, -step).valence) / (2.0 * step);
                          QVERIFY(std::abs(set.valencePerTenthEv - 0.1 * std::abs(slope)) <
                                  0.02 * set.valencePerTenthEv + 1e-4);
                          const double biasFound = fit.valence - planMixtures(request).front().valence;
                          QVERIFY(std::abs(std::abs(set.bias) - std::abs(biasFound)) < 1e-6);
                      });
    }

    void exchangeFindsTheBestOfAllSets()
    {
        for (const PlanMethod method : {PlanMethod::LinearNonEquivalent, PlanMethod::ExactFourPoints}) {
            const PlanRequest request = smallRequest(method, 2, 4);
            const std::vector<double> candidates = planCandidates(request);
            std::vector<PlanPoint> points;
            for (const double energy : candidates)
                points.push_back(planPoint(request, energy));
            const auto criterion = planCriterion(request, points, false);
            const PlanSearch search(request, candidates);
            const double all = criterion->of(search.exhaustive(*criterion, 4));
            QVERIFY(isClose(criterion->of(search.exchanged(*criterion, 4, 16, {})), all, 1e-9));
        }
    }

    /// One scenario is no reason to measure where the fit answers its valence to every sample.
    void fourPointsSeeTheSample()
    {
        for (const PlanMethod method : {PlanMethod::ExactFourPoints, PlanMethod::LeastSquaresFourPoints}) {
            PlanRequest request = smallRequest(method, 2, 4);
            request.scenarios = {{{1, 1}, 1.0}};
            for (const double bias : planned(request).planned.pureBias)
                QVERIFY2(std::abs(bias) < 0.1, qPrintable(QString::number(bias)));
        }
    }

    void plansObeyTheRequest()
    {
        PlanRequest request = smallRequest(PlanMethod::LinearNonEquivalent, 3, 7);
        request.keep = {8331.5};
        request.spacing = 6.0;
        request.compare = {{QStringLiteral("mine"), {8410, 8330, 8345, 8350, 8355, 8390}, -1}};
        const PlanResult result = planned(request);
        const PlannedSet &set = result.planned;
        QVERIFY(std::find(set.energies.begin(), set.energies.end(), 8331.5) != set.energies.end());
        for (std::size_t k = 1; k < set.energies.size(); ++k)
            QVERIFY(set.energies[k] - set.energies[k - 1] >= 6.0 - 1e-6);
        QVERIFY(set.hasExtraTerm && std::abs(std::accumulate(set.shares.begin(), set.shares.end(), -1.0)) < 1e-12);
        QVERIFY(set.sigmaVAtShares <= set.sigmaV);
        QCOMPARE(result.compared.size(), std::size_t(2));
        QCOMPARE(result.compared[0].energies.front(), 8330.0);
        QVERIFY(set.criterion < result.compared[1].criterion);
        std::vector<std::size_t> numbers;
        for (const PlannedSet &other : result.byNumber)
            numbers.push_back(other.energies.size());
        QCOMPARE(numbers, (std::vector<std::size_t>{5, 6, 7, 8, 9, 10}));
        QVERIFY(!result.byNumber[0].hasExtraTerm); // five unknowns
        QCOMPARE(planned(request).planned.energies, set.energies);
        int calls = 0;
        QVERIFY(std::holds_alternative<QString>(planEnergies(request, [&calls](double) { return ++calls < 3; })));
    }

    void whatCannotBePlannedIsRefused()
    {
        struct Case {
            const char *name;
            void (*spoil)(PlanRequest *request);
            const char *part; ///< of the sentence
        };
        forEach<Case>(
            {{"alike", [](PlanRequest *r) { r->references[1] = r->references[0]; }, "are alike"},
             {"three of which one is a mixture",
              [](PlanRequest *r) {
                  AMutE mean;
                  for (int i = 0; i < r->references[0].spectrum.pointCount(); ++i) {
                      SpectrumPoint point = r->references[0].spectrum.points()[i];
                      point.mu = 0.5 * (point.mu + r->references[1].spectrum.points()[i].mu);
                      mean.addPoint(point);
                  }
                  mean.setValid(true);
                  mean.setEdgeEnergy(8345);
                  mean.setPreEdgeEnd(8295);
                  mean.setPostEdgeStart(8445);
                  mean.fitLines();
                  r->references.push_back({"mean", mean, 2.5});
              },
              "mean is a mixture"},
             {"fewer candidates than energies", [](PlanRequest *r) { r->spacing = 25; }, "3 found, 5 energies wanted"},
             {"one valence", [](PlanRequest *r) { r->references[1].valence = 2; }, "have the valence 2"},
             {"beyond a reference", [](PlanRequest *r) { r->to = 9300; }, "not to 9300 eV, which \"to\""},
             {"kept energies too near",
              [](PlanRequest *r) {
                  r->keep = {8350.3, 8350};
              },
              "asks for 1 eV"},
             {"kept outside of the range", [](PlanRequest *r) { r->keep = {8420}; }, "outside of 8330 to"},
             {"an energy twice",
              [](PlanRequest *r) {
                  r->compare = {{"mine", {8350, 8340, 8345, 8350, 8390}, -1}};
              },
              "mine: 8350 eV stands there twice"},
             {"fewer energies than unknowns", [](PlanRequest *r) { r->count = 3; }, "wants 4 or more"},
             {"no pre-edge line",
              [](PlanRequest *r) {
                  r->references[0].spectrum.setPreEdgeEnd(0);
                  r->references[0].spectrum.fitLines();
              },
              "ref1 has no edge jump"},
             {"no range", [](PlanRequest *r) { r->to = r->from; }, "no candidates"}},
            [](const Case &c) {
                PlanRequest request = smallRequest(PlanMethod::LinearNonEquivalent, 2, 5);
                c.spoil(&request);
                const auto outcome = planEnergies(request);
                QVERIFY(std::holds_alternative<QString>(outcome));
                QVERIFY2(std::get<QString>(outcome).contains(QLatin1String(c.part)),
                         qPrintable(std::get<QString>(outcome)));
            });
    }

    /// A job is a plan, its planned job can be run, and a wrong plan writes nothing.
    void commandWritesAllOrNothing()
    {
        QTemporaryDir dir;
        makeSample(dir.path());
        const auto file = [&dir](const char *name) {
            return dir.filePath(QLatin1String(name));
        };
        QCOMPARE(plan({file("non-equivalent.json"), "--report", file("r.json"), "--job", file("j.json"), "--picture",
                       file("p.png")}),
                 0);
        const QJsonObject report = QJsonDocument::fromJson(bytesOf(file("r.json"))).object();
        const QJsonObject set = report["planned"].toObject();
        for (const char *const key :
             {"energies", "shares", "sigmaV", "sigmaVAtShares", "sigmaF", "detectionLimits", "valencePerTenthEv"})
            QVERIFY2(set.contains(QLatin1String(key)), key);
        QCOMPARE(set["energies"].toArray().size(), 8);
        QCOMPARE(report["compared"].toArray()[0].toObject()["name"].toString(), QStringLiteral("energies of the job"));
        QVERIFY(set["sigmaV"].toDouble() < report["compared"].toArray()[0].toObject()["sigmaV"].toDouble());
        QVERIFY(!QImage(file("p.png")).isNull());
        const JobOrErrors job = readJob(file("j.json"));
        QVERIFY(job.errors.isEmpty() && job.job.energies.size() == 8);
        QCOMPARE(job.job.energies[7].energy, set["energies"].toArray()[7].toDouble());

        QVERIFY(job.job.resultFile.isEmpty()); // of the maps that the old job had
        QVERIFY(QDir(dir.path()).mkdir("d") && QFile::link("d", file("l")));
        QCOMPARE(plan({file("non-equivalent.json"), "--job", file("non-equivalent.json")}), 2);
        QCOMPARE(plan({file("non-equivalent.json"), "--job", file("d/j"), "--report", file("l/j")}), 2);
        QCOMPARE(plan({file("non-equivalent.json"), "--report", "/dev/null"}), 2);
        QCOMPARE(plan({file("non-equivalent.json"), "--report", file("d/r"), "--picture", file("none/p.png")}), 3);
        QVERIFY(QDir(file("d")).isEmpty());
    }

    void wrongPlansAreRefused()
    {
        struct Case {
            const char *name, *value, *said; ///< name: of the key
        };
        QTemporaryDir dir;
        makeSample(dir.path());
        const QString name = dir.filePath("wrong.json");
        forEach<Case>({{"counts", "-1", "counts must not be below 1"},
                       {"counts", "\"x\"", "counts must be a number"},
                       {"background", "-3", "background must not be below 0"},
                       {"scenarios", "5", "scenarios must be a list"},
                       {"scenarios", "[5]", "scenarios[0] must be an object"},
                       {"scenarios", R"([{"fractions": ["a", 1, 1]}])", "fractions must be 3 numbers"},
                       {"scenarios", R"([{"fractions": [-0.5, 1, 0.5]}])", "fractions must be 3 numbers"},
                       {"scenarios", R"([{"fractions": [1, 1, 1], "thickness": "a"}])", "thickness must be a number"},
                       {"settings", R"({"TypeNonEquiv": "yes"})", "TypeNonEquiv must be true or false"},
                       {"settings", R"({"PreEEndDE": "x"})", "PreEEndDE must be a number"},
                       {"settings", R"({"EdgeeE": 8345})", "settings.EdgeeE is no known key; did you mean \"EdgeE\"?"},
                       {"settings", R"({"EdgeE": true})", "EdgeE must be a number"},
                       {"settings", R"({"TypeNonEquiv": true, "TypeFourPs": true})", "only one of TypeFourPs"}},
                      [&](const Case &c) {
                          QJsonObject wrong =
                              QJsonDocument::fromJson(bytesOf(dir.filePath("non-equivalent.json"))).object();
                          wrong["settings"] = QJsonObject{{"TypeNonEquiv", true}}; // three references
                          const QJsonDocument value =
                              QJsonDocument::fromJson(QByteArray("[") + c.value + QByteArray("]"));
                          wrong[QLatin1String(c.name)] = value.array()[0];
                          writeBytes(name, QJsonDocument(wrong).toJson());
                          QCOMPARE(plan({name, "--report", dir.filePath("none.json")}), 2);
                          QVERIFY2(m_errors.contains(QLatin1String(c.said)), qPrintable(m_errors));
                          QVERIFY(m_errors.count('\n') == 1 && !QFile::exists(dir.filePath("none.json")));
                      });
    }

    void shiftsAreFoundOrRefused()
    {
        struct Case {
            const char *name;
            double shift;
            int left;     ///< energies
            bool isBelow; ///< all energies where the references have no structure
            EnergyShift::Outcome outcome;
        };
        using Outcome = EnergyShift::Outcome;
        forEach<Case>({{"found", -0.3, 8, false, Outcome::Found},
                       {"as many energies as unknowns", 0.5, 5, false, Outcome::FewEnergies},
                       {"beyond the limit", 3.0, 8, false, Outcome::AtLimit},
                       {"nothing to tell material by", 0.5, 8, true, Outcome::NoMaterial}},
                      [](const Case &c) {
                          const ShiftedSample maps(32, 24, 40000.0, c.shift, 5);
                          AnalysisInput input = maps.input();
                          input.points.resize(c.left);
                          for (int k = 0; c.isBelow && k < c.left; ++k)
                              input.points[k].energy = 8700.0 + 0.01 * k;
                          const EnergyShift found = findMapShift(input);
                          QVERIFY2(found.outcome == c.outcome, qPrintable(textOf(found)));
                          if (found.isFound())
                              QVERIFY(std::abs(found.shift - c.shift) < 2.0 * found.error && found.error < 0.1);
                      });
        EnergyShiftInput noisy; // what all of it hides in the noise
        for (const PlanReference &reference : sampleReferences())
            noisy.spectra.push_back(&reference.spectrum);
        for (const double energy : sample::mapEnergies) {
            noisy.energies.push_back(energy);
            noisy.values.push_back(sampleReferences()[1].spectrum.muAt(energy));
            noisy.variances.push_back(4.0);
        }
        QVERIFY(findEnergyShift(noisy).outcome == Outcome::Flat);
    }

    /// The shift that a job asks to be applied undoes a wrong dE of the references.
    void jobsAreShiftedWhenAsked()
    {
        QTemporaryDir dir;
        makeSample(dir.path());
        QJsonObject job = QJsonDocument::fromJson(bytesOf(dir.filePath("non-equivalent.json"))).object();
        job["output"] = QJsonObject{{"report", "report.json"}};
        const double wrong = medianValence(&job, true, dir, 0.6);
        const double applied = medianValence(&job, "apply", dir, 0.6);
        const double truth = medianValence(&job, false, dir, 0.0);
        QVERIFY(std::abs(applied - truth) < 0.02);
        QVERIFY(std::abs(wrong - truth) > 0.1);
    }

private:
    static void makeSample(const QString &folder)
    {
        QStringList written;
        QString error;
        sample::SampleOptions options;
        options.directory = folder;
        options.width = 32;
        options.height = 24;
        QVERIFY2(sample::writeSample(options, &written, &error), qPrintable(error));
    }

    int plan(const QStringList &arguments)
    {
        QString out;
        m_errors.clear();
        QTextStream outStream(&out), errStream(&m_errors);
        return runPlanCommand(parsePlanOptions(QStringList("flokluk-plan") + arguments), &outStream, &errStream);
    }

    /// Of the map, with findShift and the dE of the references as given.
    static double medianValence(QJsonObject *job, const QJsonValue &findShift, const QTemporaryDir &dir, double dE)
    {
        (*job)["findShift"] = findShift;
        QJsonArray references = (*job)["references"].toArray();
        for (int j = 0; j < references.size(); ++j) {
            QJsonObject reference = references[j].toObject();
            reference["dE"] = dE;
            references[j] = reference;
        }
        (*job)["references"] = references;
        writeBytes(dir.filePath("shifted.json"), QJsonDocument(*job).toJson());
        QString text;
        QTextStream stream(&text);
        BatchOptions options;
        options.jobs = QStringList(dir.filePath("shifted.json"));
        if (runBatchCommand(options, &stream, &stream) != 0)
            qFatal("%s", qPrintable(text));
        const QJsonObject report = QJsonDocument::fromJson(bytesOf(dir.filePath("report.json"))).object();
        const QJsonObject shift = report["energyShift"].toObject();
        const bool isWanted = findShift != QJsonValue(false);
        if (shift["isFound"].toBool() != isWanted || shift["isApplied"].toBool() != findShift.isString() ||
            (isWanted && std::abs(shift["shift"].toDouble() + 0.6) > 0.15))
            qFatal("%s", QJsonDocument(shift).toJson().constData());
        return report["map"].toObject()["quantities"].toObject()["Valence"].toObject()["median"].toDouble();
    }

    QString m_errors;
};

QTEST_MAIN(TestPlan)
#include "TestPlan.moc"
