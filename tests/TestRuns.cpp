// What the analysis keeps of its runs, and what makes them stale.

#include "analysis/model/Analysis.h"
#include "analysis/model/FittedCurve.h"
#include "analysis/model/Quality.h"
#include "analysis/model/ResultText.h"
#include "analysis/model/Staleness.h"
#include "analysis/model/UncertaintyText.h"
#include "tests/ModelSamples.h"
#include "tests/Tables.h"

#include <QTemporaryDir>

using namespace modelsamples;

namespace
{

QString rangeText(const std::optional<ValueRange> &range)
{
    return range ? QStringLiteral("%1 to %2").arg(range->min).arg(range->max) : QString("none");
}

} // namespace

class TestRuns : public QObject
{
    Q_OBJECT

private slots:
    void runIsRemembered()
    {
        AnalysisInput input = m_sample.input("refs=134 rows=1267 v=2");
        Analysis analysis;
        QVERIFY(!analysis.run() && !analysis.runValences().known);
        QVERIFY(analysis.runMap(input).isDone);
        input.references[2].spectrum.setFileName("other.dat");
        input.references[0].valence = 7;
        input.points[0].energy = 1;
        const RunInfo &run = *analysis.run();
        QCOMPARE(run.references.size(), 2); // which the method knows
        QCOMPARE(run.references[1].name, QString("ref3.dat"));
        QCOMPARE(run.references[1].row, 2);
        QVERIFY(near(run.references[1].edgeJump, jumps[2]));
        QCOMPARE(run.points.size(), 4);
        QCOMPARE(run.points[0].energy, eightEnergies[0]);
        QCOMPARE(run.points[3].row, 6);
        QCOMPARE(run.points[3].map.path, QString("/maps/7.txt"));
        QCOMPARE(run.vPoint, 1);
        QVERIFY(analysis.runValences().known);
        QCOMPARE(analysis.runValences().mixed(1), 2.0);
        QCOMPARE(analysis.runValences().mixed(0), 0.0); // of reference 3
        QCOMPARE(analysis.results().headerLines, QStringList("# map 1"));
        QCOMPARE(analysis.results().record(4).x, 1.01); // of map 2: pixel (1, 1), shifted by 0.01
        QCOMPARE(analysis.histograms().thickness().n, 51);
    }

    void qualityIsThatOfTheRun()
    {
        Analysis analysis;
        Quality quality(analysis);
        AnalysisInput input = m_sample.input("rows=123678 v=36"); // of two marks the last one counts
        QVERIFY(!quality.map(input, {}));
        QCOMPARE(quality.problem(), QString("There is no result map yet."));
        QVERIFY(analysis.runMap(input).isDone);
        QVERIFY(!quality.known({}) && quality.expectedSeconds({}) > 0);
        const std::vector<const A2DData *> maps = {input.points[0].map, input.points[1].map, input.points[6].map,
                                                   input.points[7].map, input.points[5].map};
        QVERIFY(mapsOf(*analysis.run(), input) == maps);
        const std::vector<Region> regions = {{"all", {}, {}}, {"two", PixelRectangle{1, 0, 2, 0}, {}}};
        const auto statistics = quality.statistics(input, {}, regions);
        QCOMPARE(statistics.size(), std::size_t(2));
        QCOMPARE(statistics[1].pixels, std::size_t(2));
        QVERIFY(quality.known({}) && !quality.known({{}, true}) && !quality.known({0.5, false}));
        input.points[0].mapFile.modified = 7;
        QVERIFY(quality.map(input, {})); // it is known
        QVERIFY(!quality.summary(input, {{}, true}));
        QVERIFY(quality.problem().startsWith("The maps have changed"));
        QVERIFY(quality.statistics(input, {}, regions).empty());
        QVERIFY(analysis.runMap(input).isDone);
        QVERIFY(!quality.known({}));
        QVERIFY(quality.summary(input, {{}, true}));
        QCOMPARE(quality.known({})->fractions.size(), std::size_t(2));
    }

    /// At the energies of the maps the curve is what the method fitted; other spectra give none.
    void curveOfTheFit()
    {
        for (const char *const method : {"linear", "Victoreen"}) {
            AnalysisInput input = m_sample.input(QString("rows=123456 %1").arg(method));
            Analysis analysis;
            QVERIFY(analysis.runMap(input).isDone);
            Quality quality(analysis);
            const SpectrumFit fit = quality.statistics(input, {}, {{"all", {}, {}}})[0].fit;
            const FittedCurve curve = fittedCurve(*analysis.run(), fit, input);
            QCOMPARE(curve.energies.size(), std::size_t(301)); // 7000 to 7300 eV
            for (std::size_t k = 0; k < fit.fitted.size(); ++k)
                QVERIFY(near(curve.total[std::size_t(eightEnergies[k] - 7000)], fit.fitted[k]));
            input.references[1].spectrum = input.references[2].spectrum;
            QVERIFY(fittedCurve(*analysis.run(), fit, input).energies.empty());
        }
    }

    void errorTexts()
    {
        struct Case {
            const char *name;
            double value, error;
        };
        forEach<Case>({{"2.713 ± 0.013", 2.71281, 0.0129},
                       {"-0.25 ± 0.5", -0.25, 0.5},
                       {"3 ± 121", 2.7, 121.4},
                       {"2.71", 2.7128, qQNaN()}},
                      [](const Case &c) { QCOMPARE(withError(c.value, c.error), QString(c.name)); });
    }

    /// One degree of freedom: V is known to 1.84 standard errors; none: not at all.
    void targetErrors()
    {
        Analysis analysis;
        QVERIFY(!analysis.targetFit());
        QVERIFY(analysis.runTarget(m_sample.input("rows=12356 linear")).isDone);
        const TargetFit target = *analysis.targetFit();
        QCOMPARE(target.fit.valence, analysis.nonEquivalentTarget()->values[ResultPosition::valence]);
        const QString v = withError(target.fit.valence, 1.8373 * target.fit.valenceError);
        QCOMPARE(targetErrorsText(target).section('\n', 0, 0), "V " + v);
        QVERIFY(analysis.runTarget(m_sample.input("rows=1236 linear")).isDone);
        QCOMPARE(targetErrorsText(*analysis.targetFit()).count('\n'), 0);
    }

    void refusedStepsChangeNothing()
    {
        Analysis analysis;
        analysis.runMap(m_sample.input());
        analysis.runTarget(m_sample.input());
        analysis.runFit(m_sample.input());
        const ResultRecord pixel = analysis.results().record(3);
        const double a = analysis.fourPointsTarget()->result.a;
        const LinearCombination *const fit = analysis.fit();

        const AnalysisInput wrong = m_sample.input("refs=34 v= lcf= exact");
        analysis.runMap(wrong);
        analysis.runTarget(wrong);
        analysis.runFit(wrong);
        A2DData large;
        large.setSize(20000, 20000);
        AnalysisInput tooLarge = m_sample.input();
        tooLarge.points[2].map = &large; // the V point's, whose size the result has
        QCOMPARE(Analysis().runMap(tooLarge).message, QString("The map of 20000 x 20000 pixels is too large."));
        for (const Step step : {Step::Map, Step::Target, Step::Fit})
            QVERIFY(!analysis.outcome(step).isDone);
        QCOMPARE(analysis.outcome(Step::Map).message, QString("V Point is not selected"));
        QCOMPARE(analysis.outcome(Step::Target).message, QString("V Point is not selected."));
        QVERIFY(analysis.outcome(Step::Fit).message.startsWith("Energy Range is not selected"));
        QCOMPARE(analysis.results().record(3).a, pixel.a);
        QCOMPARE(analysis.run()->references[0].row, 0);
        QCOMPARE(analysis.targetRun()->vPoint, 2);
        QCOMPARE(analysis.revision(), quint64(1));
        QCOMPARE(analysis.fourPointsTarget()->result.a, a);
        QVERIFY(analysis.fit() == fit);
        QCOMPARE(analysis.comparisons.records.size(), 1);
        QVERIFY(analysis.runMap(m_sample.input()).isDone);
        QCOMPARE(analysis.revision(), quint64(2));
        QCOMPARE(analysis.outcome(Step::Map).message, QString());
    }

    /// The valence is that of the coefficients 0.2 and 0.6, the fractions are a quarter and three.
    void fitOfTheTarget()
    {
        Analysis analysis;
        QCOMPARE(analysis.runFit(m_sample.input()).message,
                 QString("Result of LCF ::  0.250 :  0.750, Valence =  2.200, Base =  0.010"));
        QCOMPARE(analysis.fit()->points, 24); // 7112 to 7135 eV, a point each eV
        const QString sum = fitSumText(*analysis.fit());
        QVERIFY2(sum.contains("S = 0.8.") && sum.contains("V / S = 2.75."), qPrintable(sum));
        const QString errors = fitResultErrorsText(*analysis.fit());
        QVERIFY2(errors.contains("V / S 2.75") && errors.endsWith("factor 1.02 for n - p = 21)"), qPrintable(errors));
    }

    /// Nothing is calculated twice from the same inputs, and nothing that a check stops.
    void dueStepsOfAChange()
    {
        Analysis analysis;
        const AnalysisInput before = m_sample.input();
        const auto names = [&analysis](const AnalysisInput &now) {
            const DueSteps due = dueSteps(analysis, now);
            return QString(due.map ? "map " : "") + (due.target ? "target " : "") + (due.fit ? "fit " : "") +
                   due.whyNoMap;
        };
        QCOMPARE(names(before), QString("map target fit "));
        analysis.runMap(before);
        analysis.runTarget(before);
        analysis.runFit(before);
        QCOMPARE(dueSteps(analysis, before).mapValues, 24.0);
        forRows<const char *, double, double, const char *>(
            {{"nothing", "", 2, 50, ""},
             {"range of the fit", "lcf=26", 2, 50, "fit "},
             {"within it", "lcf=3456", 2, 50, ""},
             {"energies", "rows=12367", 2, 50, "map target "},
             {"references", "refs=13", 2, 50, "map target fit "},
             {"method", "exact", 2, 50, "map target "},
             {"valence", "", 2.5, 50, "map target fit "},
             {"histogram", "", 2, 60, "map "},
             {"refused", "v=", 2.5, 50, "fit V Point is not selected"}},
            [&](const char *situation, double valence, double boxes, const char *expected) {
                AnalysisInput now = m_sample.input(situation);
                now.references[0].valence = valence;
                now.conditions.valences.boxes += boxes - 50;
                QCOMPARE(names(now), QString(expected));
            });
    }

    /// Each fit stands beside the four-points result at that time, whatever the other method found meanwhile.
    void comparisons()
    {
        Analysis analysis;
        analysis.runFit(m_sample.input());
        const QString message = analysis.runTarget(m_sample.input()).message;
        analysis.comparisons.nextColour(3);
        analysis.runTarget(m_sample.input("refs=34 linear"));
        analysis.runFit(m_sample.input());
        const FourPointsTarget target = *analysis.fourPointsTarget();
        QCOMPARE(message, fourPointsText(FourPointsVariant::LeastSquares, target.result, target.valence));
        QCOMPARE(target.valence, 2 * target.result.a + 3 * (1 - target.result.a));
        QCOMPARE(analysis.nonEquivalentTarget()->references[1].row, 3);
        const QVector<ComparisonRecord> &records = analysis.comparisons.records;
        QCOMPARE(records.size(), 2);
        QCOMPARE(records[0].valence, 0.0);
        QCOMPARE(records[0].colourIndex, 0);
        QCOMPARE(records[1].a, target.result.a);
        QCOMPARE(records[1].valence, target.valence);
        QVERIFY(near(records[1].lcfFraction, 0.25) && near(records[1].lcfValence, 2.2));
        QCOMPARE(records[1].colourIndex, 1);
    }

    void fourPointsTexts()
    {
        forRows<FourPointsVariant, const char *>(
            {{"three points", FourPointsVariant::ThreePoint, "3ps: a = 0.333333, Valence = 2.75"},
             {"exact", FourPointsVariant::Exact, "a = 0.333333, Valence = 2.75, t/ts = -inf"},
             {"least squares", FourPointsVariant::LeastSquares, "4ps2: a = 0.333333, Valence = 2.75, t/ts = -inf"}},
            [](FourPointsVariant variant, const char *text) {
                QCOMPARE(fourPointsText(variant, {1.0 / 3, -qInf()}, 2.75), QString(text));
            });
    }

    /// The thickness of a four-points result is relative: its colours follow the histogram.
    void coloursOfTheAmount()
    {
        Analysis analysis;
        const AnalysisInput fourPoints = m_sample.input();
        const AnalysisInput linear = m_sample.input("linear");
        QCOMPARE(rangeText(analysis.colourRange(ResultPosition::amount, fourPoints)), QString("-0.21 to 2.31"));
        analysis.runMap(fourPoints);
        QCOMPARE(rangeText(analysis.colourRange(ResultPosition::amount, linear)), QString("-0.2 to 1.2"));
        QCOMPARE(rangeText(analysis.colourRange(ResultPosition::c1, linear)), QString("none"));
        analysis.runMap(linear);
        QVERIFY(near(analysis.results().record(5).t, 0.5 * jumps[0] + 0.5 * jumps[1], 1e-6));
        QVERIFY(near(analysis.results().record(0).values.at(ResultPosition::valence), 3.0, 1e-6));
        QCOMPARE(rangeText(analysis.colourRange(ResultPosition::amount, fourPoints)), QString("-0.21 to 2.31"));
        QCOMPARE(rangeText(analysis.colourRange(ResultPosition::valence, m_sample.input("refs=1234/12"))),
                 QString("-0.5 to 4.5"));
    }

    /// A folder in the way of a file: the histograms are written whatever became of the result file.
    void writing()
    {
        const char *const all = "r.dat r_HGAlpha.dat r_HGThick.dat";
        const char *const cannotOpen = "Can't open the file [%1]";
        const char *const noHistogram = "Can't write the histograms of [%1]";
        Analysis analysis;
        const AnalysisInput input = m_sample.input();
        analysis.runMap(input);
        // blocked: a folder in the way; message, problem: %1: the path
        forRows<const char *, QString, QString, const char *>(
            {{"nothing in the way", "other", "", "", all},
             {"result", "r.dat", cannotOpen, cannotOpen, "r_HGAlpha.dat r_HGThick.dat"},
             {"first histogram", "r_HGAlpha.dat", "", noHistogram, "r.dat r_HGThick.dat"},
             {"second histogram", "r_HGThick.dat", "", noHistogram, "r.dat r_HGAlpha.dat"},
             {"nothing again", "other", "", "", all}},
            [&analysis, &input](const char *blocked, const QString &message, const QString &problem,
                                const char *written) {
                const QTemporaryDir folder;
                const QString path = folder.filePath("r.dat");
                QVERIFY(QDir(folder.path()).mkdir(blocked));
                const StepOutcome outcome = analysis.write(path, input, RecordSelection());
                QCOMPARE(outcome.isDone, problem.isEmpty());
                QCOMPARE(outcome.message, QString(message).replace("%1", path));
                QCOMPARE(analysis.writeProblem(), QString(problem).replace("%1", path));
                QCOMPARE(QDir(folder.path()).entryList(QDir::Files, QDir::Name).join(' '), QString(written));
            });
    }

    /// A file that is loaded is not overwritten, however its path is spelt.
    void inputsAreKept()
    {
        using Load = void (*)(AnalysisInput *, const QString &);
        Analysis analysis;
        analysis.runMap(m_sample.input());
        forRows<Load, bool>(
            {{"reference", [](AnalysisInput *in, const QString &path) { in->references[1].file = path; }, true},
             {"target", [](AnalysisInput *in, const QString &path) { in->target.file = path; }, true},
             {"map", [](AnalysisInput *in, const QString &path) { in->points[2].mapFile.path = path; }, true},
             {"only displayed", [](AnalysisInput *in, const QString &path) { in->displayFiles << path; }, true},
             {"chosen, not loaded",
              [](AnalysisInput *in, const QString &path) {
                  in->target = {path, AMutE()};
              },
              false}},
            [&](Load load, bool isKept) {
                const QTemporaryDir folder;
                QVERIFY(QDir(folder.path()).mkdir("sub") && tables::writeBytes(folder.filePath("in.dat"), "data"));
                AnalysisInput input = m_sample.input();
                load(&input, folder.filePath("in.dat"));
                const QString path = folder.filePath("sub/../in.dat");
                const StepOutcome outcome = analysis.write(path, input, RecordSelection());
                QCOMPARE(outcome.message, isKept ? QString("Can't open the file [%1]").arg(path) : QString());
                QCOMPARE(tables::bytesOf(folder.filePath("in.dat")) == "data", isKept);
                QVERIFY(QFile::exists(folder.filePath("in_HGAlpha.dat")));
            });
    }

    /// What a change is called; nothing for what the run does not depend on.
    void staleness()
    {
        using In = AnalysisInput;
        using Change = void (*)(In &);
        const char *const ls = "refs=123";
        const char *const three = "rows=136";
        const char *const exact = "exact";
        const char *const linear = "refs=123 rows=12367 linear";
        const auto otherJump = [](In &in) {
            in.references[0].spectrum = in.references[3].spectrum;
            in.references[0].spectrum.setFileName("ref1.dat");
        };
        const char *const values1 = "Ref 1: values at the energies or edge jump";
        forRows<const char *, Change, const char *>(
            {{"no change", ls, [](In &) {}, ""},
             {"other method", ls, [](In &in) { in.conditions.isNonEquivalent = true; },
              "Number of selected data sets 4 is less than 5."},
             {"other method that runs", exact, [](In &in) { in.conditions.isNonEquivalent = true; }, "Method"},
             {"other variant", exact, [](In &in) { in.conditions.isExact = false; }, "Method"},
             {"other variant of three points", three, [](In &in) { in.conditions.isExact = true; }, ""},
             {"other background", linear, [](In &in) { in.conditions.isLinear = false; },
              "Number of selected data sets 5 is less than 6."},
             {"other background that runs", "rows=12367 Victoreen", [](In &in) { in.conditions.isLinear = true; },
              "Method"},
             {"background of the other method", ls, [](In &in) { in.conditions.isLinear = false; }, ""},

             {"edge", ls, [](In &in) { in.conditions.edge.edge += 1; }, "Edge and ranges"},
             {"end of the pre-edge range", ls, [](In &in) { in.conditions.edge.preEnd += 1; }, "Edge and ranges"},
             {"start of the post-edge range", linear, [](In &in) { in.conditions.edge.postStart += 1; },
              "Edge and ranges"},
             {"line of the references", linear, [](In &in) { in.conditions.subtractsPostLineOfReferences = true; },
              "Ref 1: values at the energies or edge jump; Ref 2: values at the energies or edge jump; "
              "Ref 3: values at the energies or edge jump"},
             {"line of the target", linear, [](In &in) { in.conditions.subtractsPostLineOfTarget = true; }, ""},
             {"target", ls, [](In &in) { in.target = {}; }, ""},

             {"valence", ls, [](In &in) { in.references[1].valence = 2.5; }, "Ref 2: valence"},
             {"valence of the third", linear, [](In &in) { in.references[2].valence = 2.5; }, "Ref 3: valence"},
             {"valence of a third for two", ls, [](In &in) { in.references[2].valence = 2.5; }, ""},
             {"valence of one that is not used", linear, [](In &in) { in.references[3].valence = 2.5; }, ""},
             {"spectrum", ls, [](In &in) { in.references[0].spectrum = in.references[3].spectrum; }, "Ref 1: spectrum"},
             {"edge jump", ls, otherJump, values1},
             {"edge jump of three points", three, otherJump, ""},
             {"spectrum of the same name", linear, otherJump, values1},
             {"value of a reference", ls, [](In &in) { in.points[5].references[0] += 1e-6; }, values1},
             {"value of the second", three, [](In &in) { in.points[5].references[1] += 1e-6; },
              "Ref 2: values at the energies or edge jump"},
             {"value in a field that is not read", linear, [](In &in) { in.points[5].references[0] += 1; }, ""},
             {"value at an energy that is not used", ls, [](In &in) { in.points[7].references[0] += 1; }, ""},
             {"another reference instead", three,
              [](In &in) { std::swap(in.references[1].isUsed, in.references[3].isUsed); }, "References in use"},
             {"a fourth reference for two", ls, [](In &in) { in.references[3].isUsed = true; }, ""},
             {"a reference that stops the run", ls, [](In &in) { in.references[2].spectrum.clear(); },
              "Ref File 2 is not valid."},

             {"energy", ls, [](In &in) { in.points[0].energy += 1; }, "Energy 1: value"},
             {"energy that is not used", ls, [](In &in) { in.points[7].energy += 1; }, ""},
             {"another map", ls, [](In &in) { in.points[5].mapFile.path = "/maps/other.txt"; }, "Energy 6: map file"},
             {"map written anew", linear, [](In &in) { ++in.points[6].mapFile.modified; }, "Energy 7: map file"},
             {"map of another size", linear, [](In &in) { ++in.points[1].mapFile.bytes; }, "Energy 2: map file"},
             {"another energy in use", ls, [](In &in) { in.points[7].isUsed = true; }, "Energies in use"},
             {"a map taken away", "rows=12367", [](In &in) { in.points[6].map = nullptr; }, "Energies in use"},
             {"V point", ls, [](In &in) { std::swap(in.points[1].isVPoint, in.points[2].isVPoint); }, "V Point"},
             {"no V point", ls, [](In &in) { in.points[2].isVPoint = false; }, "V Point is not selected"},
             {"V point of the other method", linear, [](In &in) { in.points[2].isVPoint = false; }, ""},
             {"energies of the fit", ls, [](In &in) { in.points[0].isForLcf = true; }, ""},

             {"histogram of valences", ls, [](In &in) { in.conditions.valences.from = 0; }, "Histograms"},
             {"histogram of thicknesses", linear, [](In &in) { in.conditions.thicknesses.boxes = 5; }, "Histograms"},
             {"several", ls,
              [](In &in) { in.conditions.edge.edge = in.references[0].valence = in.points[2].energy = 1; },
              "Edge and ranges; Ref 1: valence; Energy 3: value"}},
            [this](const char *situation, Change change, const char *expected) {
                In input = m_sample.input(situation);
                Analysis analysis;
                QVERIFY(analysis.runMap(input).isDone);
                change(input);
                QCOMPARE(changesSince(*analysis.run(), input).join("; "), QString(expected));
                analysis.runMap(input);
                if (analysis.outcome(Step::Map).isDone)
                    QCOMPARE(changesSince(*analysis.run(), input), QStringList());
            });
    }

    /// Values without a number are the same as before.
    void nothingIsNoChange()
    {
        const double nan = qQNaN();
        AnalysisInput input = m_sample.input();
        input.references[0].valence = input.points[0].energy = input.points[5].references[1] = nan;
        input.conditions.edge.preEnd = input.conditions.valences.to = nan;
        input.references[1].spectrum.setEdgeEnergy(nan);
        Analysis analysis;
        QVERIFY(analysis.runMap(input).isDone);
        QCOMPARE(changesSince(*analysis.run(), input), QStringList());
        input.points[5].references[1] = 1.0;
        QVERIFY(!changesSince(*analysis.run(), input).isEmpty());
    }

private:
    const Sample m_sample;
};

QTEST_GUILESS_MAIN(TestRuns)
#include "TestRuns.moc"
