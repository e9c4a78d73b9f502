// From a snapshot of the inputs to a plan or a refusal: who takes part, which method, with which values.

#include "analysis/model/Plans.h"
#include "analysis/model/TakingPart.h"
#include "analysis/model/UsedPoints.h"
#include "analysis/panel/Recalculation.h"
#include "tests/ModelSamples.h"
#include "tests/Tables.h"

using namespace modelsamples;

namespace
{

QString pairText(double first, double second)
{
    return QStringLiteral("%1 %2").arg(first).arg(second);
}

QString textOf(const ValencePair &valences)
{
    return valences.known ? pairText(valences.first, valences.second) : QStringLiteral("unknown");
}

QVector<int> rowsOf(const QVector<RunReference> &references)
{
    QVector<int> rows;
    for (const RunReference &reference : references)
        rows.append(reference.row);
    return rows;
}

QVector<int> rowsOf(const std::vector<double> &energies)
{
    QVector<int> rows;
    for (const double energy : energies)
        rows.append(
            static_cast<int>(std::find(eightEnergies.begin(), eightEnergies.end(), energy) - eightEnergies.begin()));
    return rows;
}

/// The method, the energy rows in the order in which it takes them, the references: "exact 1263 by 12".
QString described(const RunInfo &run)
{
    const RunMethod &method = run.method;
    const char *const variants[] = {"none", "three points", "exact", "least squares"};
    const bool isLinear = method.background == NonEquivalentBackground::Linear;
    const char *const name =
        method.isNonEquivalent ? isLinear ? "linear" : "Victoreen" : variants[static_cast<int>(method.variant)];
    const std::vector<double> &energies = method.isNonEquivalent ? run.nonEquivalent.energies : run.fourPoints.energies;
    return QStringLiteral("%1 %2 by %3")
        .arg(QLatin1String(name), numbersOf(rowsOf(energies)), numbersOf(rowsOf(run.references)));
}

template <class Plan>
QString described(const std::variant<Plan, Refusal> &plan)
{
    const auto *const refusal = std::get_if<Refusal>(&plan);
    return refusal ? textOf(*refusal) : described(std::get<Plan>(plan).run);
}

} // namespace

class TestModel : public QObject
{
    Q_OBJECT

private slots:
    /// Each rule for itself: no two of them give the same in all rows.
    void whoTakesPart()
    {
        using Reference = TakingPart::Reference;
        const Reference invalid{0, false, 5, 0.7}, two{1, true, 2, 1}, three{2, true, 3, 2};
        forRows<QVector<Reference>, const char *>(
            {{"none", {}, "9.5 0.5, -0.5 0.5, method: unknown, file: unknown, drawn: 0 0, colours: 0; 0 0"},
             {"one", {three}, "2.5 3.5, -0.5 2.5, method: unknown, file: unknown, drawn: 3 0, colours: 2; 3 3"},
             {"two", {three, two}, "1.5 3.5, -0.5 3.5, method: 3 2, file: 3 2, drawn: 3 2, colours: 3; 2 3"},
             {"an invalid one first",
              {invalid, two, three},
              "1.5 5.5, -0.5 2.2, method: 2 3, file: 5 2, drawn: 5 2, colours: 3; 2 5"},
             {"an invalid one between",
              {two, invalid, three},
              "1.5 5.5, -0.5 2.2, method: 2 3, file: 2 5, drawn: 2 5, colours: 3; 2 5"},
             {"one valid of two",
              {invalid, two},
              "1.5 5.5, -0.5 1.2, method: unknown, file: unknown, drawn: 5 2, colours: 1; 2 5"},
             {"valence above 10",
              {{0, true, 12, 1}},
              "9.5 12.5, -0.5 1.5, method: unknown, file: unknown, drawn: 12 0, colours: 1; 12 12"},
             {"valence below 0",
              {{0, true, -2, 1}},
              "-2.5 0.5, -0.5 1.5, method: unknown, file: unknown, drawn: -2 0, colours: 1; -2 -2"}},
            [](const QVector<Reference> &used, const char *rules) {
                const TakingPart references{used};
                const ValueRange valences = automaticValenceRange(references);
                const ValueRange thicknesses = automaticThicknessRange(references);
                const std::pair<double, double> drawn = drawnValences(references);
                const RangeConditions colours = colourConditions(references);
                QCOMPARE(QStringLiteral("%1, %2, method: %3, file: %4, drawn: %5, colours: %6; %7")
                             .arg(pairText(valences.min, valences.max), pairText(thicknesses.min, thicknesses.max),
                                  textOf(methodValences(references)), textOf(fileValences(references)),
                                  pairText(drawn.first, drawn.second), QString::number(colours.edgeJumps),
                                  pairText(colours.smallestValence, colours.largestValence)),
                         QString(rules));
            });
    }

    /// A spectrum that was cleared leaves no edge jump, one that a bad file replaced leaves that of its lines.
    void referencesInUse()
    {
        AnalysisInput input = m_sample.input("refs=234");
        input.references[1].spectrum.clear();
        input.references[2].spectrum.setValid(false);
        const QVector<TakingPart::Reference> used = takingPart(input).used;
        QCOMPARE(used.size(), 3);
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(used[i].row, i + 1);
            QCOMPARE(used[i].isValid, i == 2);
            QCOMPARE(used[i].valence, fourValences[static_cast<std::size_t>(i) + 1]);
        }
        QCOMPARE(used[0].edgeJump, 0.0);
        QVERIFY(near(used[1].edgeJump, jumps[2]) && near(used[2].edgeJump, jumps[3]));
    }

    void checks()
    {
        const char *const noVPointForMap = "V Point is not selected";
        const char *const noVPoint = "V Point is not selected.";
        const char *const few0 = "Number of valied Ref Files is 0, which is less than 2.";
        const char *const few1 = "Number of valied Ref Files is 1, which is less than 2.";
        const char *const is2 = "Number of selected data sets 2 is not 4.";
        const char *const is5 = "Number of selected data sets 5 is not 4.";
        // map, target: the plan or the message
        forRows<const char *, const char *, const char *>(
            {{"nothing chosen", "refs=12/ rows=/ v= no-target", noVPointForMap, noVPoint},
             {"V point not used", "v=7", noVPointForMap, noVPoint},
             {"V point without map", "refs=12/ rows=3/ no-target", noVPointForMap, few0},
             {"no V point, the other method", "v= linear", "linear 1236 by 12", noVPoint},
             {"one reference", "refs=12/2", few1, few1},
             {"loaded but not used", "refs=1 linear", few1, few1},
             {"first of three not loaded", "refs=123/23", "Ref File 0 is not valid.", "The 1st Ref File is not valid."},
             {"first used one not loaded", "refs=234/34 linear", "Ref File 1 is not valid.",
              "The 1st Ref File is not valid."},
             {"second used one not loaded", "refs=134/14", "Ref File 2 is not valid.",
              "The 2nd Ref File is not valid."},
             {"third not loaded, no target", "refs=1234/124 no-target", "Ref File 2 is not valid.",
              "Target File1 is not valid."},
             {"fourth not loaded, target is", "refs=124/12", "Ref File 3 is not valid.", "least squares 1263 by 12"},
             {"no target", "no-target", "least squares 1263 by 12", "Target File1 is not valid."},
             {"two points", "rows=13", is2, is2},
             {"three points", "rows=136 exact", "three points 163 by 12", "three points 163 by 12"},
             {"four points, exact", "v=1 exact", "exact 2361 by 12", "exact 2361 by 12"},
             {"five points, exact", "rows=12367 exact", is5, is5},
             {"five points", "refs=24 rows=12367", "least squares 12673 by 24", "least squares 12673 by 24"},
             {"row without map: for the target only", "rows=12367/1236 exact", "exact 1263 by 12", is5},
             {"last V point without map", "rows=12367/1236 v=37", "least squares 1263 by 12",
              "least squares 1267 by 12"},
             {"two V points", "v=26", "least squares 136 by 12", "least squares 136 by 12"},
             {"three references for two", "refs=134", "least squares 1263 by 13", "least squares 1263 by 13"},
             {"linear, 2 and 3", "rows=123 linear", "Number of selected data sets 3 is less than 4.",
              "Number of selected data sets 3 is not 4."},
             {"linear, 2 and 4", "linear", "linear 1236 by 12", "linear 1236 by 12"},
             {"linear, 3 and 4", "refs=123 linear", "Number of selected data sets 4 is less than 5.",
              "linear 1236 by 123"},
             {"Victoreen, 2 and 4", "Victoreen", "Number of selected data sets 4 is less than 5.",
              "Number of selected data sets 4 is not 5."},
             {"Victoreen, 2 and 5", "rows=12367 Victoreen", "Victoreen 12367 by 12", "Victoreen 12367 by 12"},
             {"Victoreen, 4 and 6", "refs=1234 rows=123678 Victoreen", "Number of selected data sets 6 is less than 7.",
              "Victoreen 123678 by 1234"}},
            [this](const char *situation, const char *map, const char *target) {
                const AnalysisInput input = m_sample.input(situation);
                QCOMPARE(described(planMap(input)), QString(map));
                QCOMPARE(described(planTarget(input)), QString(target));
            });
    }

    /// Energies: 7000, 7060, 7112, 7119, 7124, 7135, 7400 and 7900 eV.
    void proposedV()
    {
        forRows<const char *, double, int>({{"nearest", "v=", 7130, 6},
                                            {"nearest without a map", "v= rows=12345/125", 7122, 5},
                                            {"as near: the first", "v= rows=45", 7121.5, 4},
                                            {"not in use", "v= rows=12", 7122, 2},
                                            {"has one", "v=8", 7122, 0},
                                            {"no edge", "v=", 0, 0},
                                            {"no map", "v= rows=123/", 7122, 0}},
                                           [this](const char *situation, double edge, int row) {
                                               AnalysisInput input = m_sample.input(situation);
                                               input.conditions.edge.edge = edge;
                                               QCOMPARE(proposedVPoint(input) + 1, row);
                                           });
        AnalysisInput input = m_sample.input("v= rows=1");
        input.points[0].energy = 0; // the file named none
        QCOMPARE(proposedVPoint(input), -1);
    }

    /// References and the rows marked for the fit, which need not be in use.
    void fitChecks()
    {
        const char *const noRange = "Energy Range is not selected, which should by selected by CB of TR.";
        // expected: range and references, or the message
        forRows<const char *, const char *>(
            {{"no row", "refs=1 lcf=", noRange},
             {"one row", "lcf=4", noRange},
             {"one reference", "refs=123/2", "Number of Valid Reference files is 1, which is less than 2"},
             {"one that is not loaded is skipped", "refs=123/134 lcf=258", "7060 7900 by 13"},
             {"four", "refs=1234", "7112 7135 by 1234"}},
            [this](const char *situation, const char *expected) {
                const AnalysisInput input = m_sample.input(situation);
                const auto plan = planFit(input);
                if (const auto *refusal = std::get_if<Refusal>(&plan)) {
                    QCOMPARE(textOf(*refusal), QString(expected));
                    return;
                }
                const auto &fit = std::get<FitPlan>(plan);
                QCOMPARE(pairText(fit.work.energyMin, fit.work.energyMax) + " by " + numbersOf(rowsOf(fit.references)),
                         QString(expected));
                std::size_t j = 0;
                for (const RunReference &reference : fit.references) {
                    QCOMPARE(fit.work.references[j], &input.references[reference.row].spectrum);
                    QCOMPARE(fit.work.valences[j++], input.references[reference.row].valence);
                }
            });
    }

    /// Two rows at the same energy are a range.
    void fitAtOneEnergy()
    {
        AnalysisInput input = m_sample.input();
        input.points[2].energy = input.points[5].energy;
        const FitPlan fit = std::get<FitPlan>(planFit(input));
        QCOMPARE(pairText(fit.work.energyMin, fit.work.energyMax), QString("7135 7135"));
    }

    void fourPointsValues()
    {
        const AnalysisInput input = m_sample.input("refs=24 rows=13568 v=36");
        const MapPlan map = std::get<MapPlan>(planMap(input));
        const TargetPlan target = std::get<TargetPlan>(planTarget(input));
        const auto &work = std::get<FourPointsMapInput>(map.work);
        const int rows[] = {0, 4, 7, 5};
        QCOMPARE(work.maps.size(), std::size_t(4));
        for (std::size_t i = 0; i < 4; ++i) {
            const PointInput &point = input.points[rows[i]];
            QCOMPARE(work.maps[i], point.map);
            QCOMPARE(target.values[i], point.target);
            for (const FourPointsReferences *values : {&work.references, &target.run.fourPoints}) {
                QCOMPARE(values->energies[i], point.energy);
                QCOMPARE(values->a[i], point.references[1]);
                QCOMPARE(values->b[i], point.references[3]);
                QVERIFY(near(values->r, jumps[1] / jumps[3]));
            }
        }
        QCOMPARE(map.sized, input.points[5].map);
        QCOMPARE(map.first, input.points[0].map);
    }

    /// Below the edge mu is the pre-edge line; the post-edge line is one edge jump above it.
    void nonEquivalentValues()
    {
        forRows<bool, bool>(
            {{"pre-edge lines", false, false},
             {"post-edge line of the target", false, true},
             {"post-edge lines of the references", true, false}},
            [this](bool postOfReferences, bool postOfTarget) {
                AnalysisInput input = m_sample.input("refs=13 rows=12367 linear");
                input.conditions.subtractsPostLineOfReferences = postOfReferences;
                input.conditions.subtractsPostLineOfTarget = postOfTarget;
                const TargetPlan target = std::get<TargetPlan>(planTarget(input));
                const MapPlan map = std::get<MapPlan>(planMap(input));
                const auto &work = std::get<NonEquivalentMapInput>(map.work);
                QVERIFY(near(target.values[0], postOfTarget ? -1.0 : 0.0, 1e-6));
                for (const auto *columns : {&target.run.nonEquivalent.columns, &work.references.columns}) {
                    QVERIFY(near((*columns)[0][0], postOfReferences ? -jumps[0] : 0.0, 1e-6));
                    QVERIFY(near((*columns)[1][0], postOfReferences ? -jumps[2] : 0.0, 1e-6));
                }
                QCOMPARE(work.valences, (std::vector<double>{2, 0}));
                QCOMPARE(work.maps.back(), input.points[6].map);
                QVERIFY(map.sized == input.points[0].map && map.first == map.sized);
            });
    }

    /// What the scatter of steps shows is taken from references that are valid, not only used.
    void stepsOfTheScatter()
    {
        // rows: P, Q, R and two references; empty: none
        forRows<const char *, QString>(
            {{"first two anchors and last V point", "refs=13 rows=23567 v=36", "25613"},
             {"a reference that is not loaded", "refs=124/24", "12324"},
             {"an anchor without map", "rows=1236/236", "26312"},
             {"one anchor", "rows=13", ""},
             {"no V point", "v=", ""},
             {"one valid reference", "refs=12/2", ""}},
            [this](const char *situation, const QString &rows) {
                const AnalysisInput input = m_sample.input(situation);
                const auto at = [&rows](int i) {
                    return rows[i].digitValue() - 1;
                };
                const std::optional<ThreePoints> points = threePoints(input);
                QCOMPARE(points.has_value(), !rows.isEmpty());
                for (std::size_t i = 0; points && i < 3; ++i) {
                    const PointInput &row = input.points[at(int(i))];
                    QCOMPARE(points->maps[i], row.map);
                    QCOMPARE(points->first[i], row.references[static_cast<std::size_t>(at(3))]);
                    QCOMPARE(points->second[i], row.references[static_cast<std::size_t>(at(4))]);
                }
            });
    }

    /// What is wanted in a scope runs once, at its end, and whole if that was wanted at all.
    void severalChangesOneRun()
    {
        QStringList runs;
        Recalculation recalculation([&runs](Recalculation::Wanted what) {
            runs << (what == Recalculation::Wanted::Whole ? "whole" : "quiet");
        });
        recalculation.wanted();
        QCOMPARE(runs.join(' '), QString("whole"));
        forRows<QStringList, QString>({{"nothing wanted", {}, ""},
                                       {"several", {"wanted", "quietly", "wanted"}, "whole"},
                                       {"quiet ones", {"quietly", "quietly"}, "quiet"},
                                       {"dropped", {"wanted", "drop"}, ""},
                                       {"wanted again", {"wanted", "drop", "quietly"}, "quiet"},
                                       {"only within another scope", {"scope"}, "whole"}},
                                      [&](const QStringList &steps, const QString &expected) {
                                          runs.clear();
                                          {
                                              Recalculation::Scope scope(recalculation);
                                              for (const QString &step : steps) {
                                                  std::optional<Recalculation::Scope> inner;
                                                  if (step == "scope")
                                                      inner.emplace(recalculation);
                                                  step == "drop"
                                                      ? scope.drop()
                                                      : recalculation.wanted(step == "quietly"
                                                                                 ? Recalculation::Wanted::Quietly
                                                                                 : Recalculation::Wanted::Whole);
                                              }
                                              QVERIFY(recalculation.isHeld() && runs.isEmpty());
                                          }
                                          QCOMPARE(runs.join(' '), expected);
                                      });
    }

private:
    const Sample m_sample;
};

QTEST_APPLESS_MAIN(TestModel)
#include "TestModel.moc"
