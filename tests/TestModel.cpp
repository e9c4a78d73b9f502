// From a snapshot of the inputs to a plan or a refusal: who takes part, which method, with which values.

#include "analysis/model/Plans.h"
#include "analysis/model/TakingPart.h"
#include "analysis/model/UsedPoints.h"
#include "analysis/panel/Recalculation.h"
#include "tests/ModelSamples.h"
#include "tests/Tables.h"

#include <QtTest>

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
        struct Case {
            const char *name;
            QVector<TakingPart::Reference> used; ///< row, valid, valence, edge jump
            QString valenceRange, thicknessRange, method, file, drawn, colours;
        };
        forEach<Case>(
            {{"none", {}, "9.5 0.5", "-0.5 0.5", "unknown", "unknown", "0 0", "0: 0 0"},
             {"one", {{0, true, 3, 1.5}}, "2.5 3.5", "-0.5 2", "unknown", "unknown", "3 0", "1.5: 3 3"},
             {"two", {{0, true, 3, 1}, {1, true, 2, 2}}, "1.5 3.5", "-0.5 3.5", "3 2", "3 2", "3 2", "3: 2 3"},
             {"an invalid one first",
              {{0, false, 5, 0.7}, {1, true, 2, 1}, {2, true, 3, 2}},
              "1.5 5.5",
              "-0.5 2.2",
              "2 3",
              "5 2",
              "5 2",
              "3: 2 5"},
             {"an invalid one between",
              {{0, true, 2, 1}, {1, false, 5, 0.7}, {3, true, 3, 2}},
              "1.5 5.5",
              "-0.5 2.2",
              "2 3",
              "2 5",
              "2 5",
              "3: 2 5"},
             {"one valid of two",
              {{0, false, 5, 0.7}, {1, true, 2, 1}},
              "1.5 5.5",
              "-0.5 1.2",
              "unknown",
              "unknown",
              "5 2",
              "1: 2 5"},
             {"valences above 10",
              {{0, true, 12, 1}, {1, true, 13, 1}},
              "9.5 13.5",
              "-0.5 2.5",
              "12 13",
              "12 13",
              "12 13",
              "2: 12 13"},
             {"valences below 0",
              {{0, true, -2, 1}, {1, true, -1, 1}},
              "-2.5 0.5",
              "-0.5 2.5",
              "-2 -1",
              "-2 -1",
              "-2 -1",
              "2: -2 -1"}},
            [](const Case &c) {
                const TakingPart references{c.used};
                const ValueRange valences = automaticValenceRange(references);
                const ValueRange thicknesses = automaticThicknessRange(references);
                const std::pair<double, double> drawn = drawnValences(references);
                const RangeConditions colours = colourConditions(references);
                QCOMPARE(pairText(valences.min, valences.max), c.valenceRange);
                QCOMPARE(pairText(thicknesses.min, thicknesses.max), c.thicknessRange);
                QCOMPARE(textOf(methodValences(references)), c.method);
                QCOMPARE(textOf(fileValences(references)), c.file);
                QCOMPARE(pairText(drawn.first, drawn.second), c.drawn);
                QCOMPARE(QStringLiteral("%1: ").arg(colours.edgeJumps) +
                             pairText(colours.smallestValence, colours.largestValence),
                         c.colours);
            });
    }

    /// A spectrum that was cleared leaves no edge jump, one that a bad file replaced leaves that of its lines.
    void referencesInUse()
    {
        AnalysisInput input = m_sample.input({"234"});
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
        struct Case {
            const char *name;
            Situation situation;
            const char *map, *target; ///< the plan or the message
        };
        using M = Method;
        const auto check = [this](const Case &c) {
            const AnalysisInput input = m_sample.input(c.situation);
            QCOMPARE(described(planMap(input)), QString(c.map));
            QCOMPARE(described(planTarget(input)), QString(c.target));
        };
        forEach<Case>(
            {{"nothing chosen", {"12", "", false, "", "", ""}, "V Point is not selected", "V Point is not selected."},
             {"V point not used",
              {"12", "12", true, "1236", "1236", "7"},
              "V Point is not selected",
              "V Point is not selected."},
             {"V point without map",
              {"12", "", false, "3", "", "3"},
              "V Point is not selected",
              "Number of valied Ref Files is 0, which is less than 2."},
             {"no V point, the other method",
              {"12", "12", true, "1236", "1236", "", M::Linear},
              "linear 1236 by 12",
              "V Point is not selected."},
             {"one reference",
              {"12", "2"},
              "Number of valied Ref Files is 1, which is less than 2.",
              "Number of valied Ref Files is 1, which is less than 2."},
             {"loaded but not used",
              {"1", "1234", true, "1236", "1236", "3", M::Linear},
              "Number of valied Ref Files is 1, which is less than 2.",
              "Number of valied Ref Files is 1, which is less than 2."},
             {"first of three not loaded", {"123", "23"}, "Ref File 0 is not valid.", "The 1st Ref File is not valid."},
             {"first used one not loaded", {"234", "34"}, "Ref File 1 is not valid.", "The 1st Ref File is not valid."},
             {"second used one not loaded",
              {"134", "14"},
              "Ref File 2 is not valid.",
              "The 2nd Ref File is not valid."},
             {"third and fourth not loaded, no target",
              {"1234", "12", false},
              "Ref File 2 is not valid.",
              "Target File1 is not valid."},
             {"fourth not loaded, target is", {"124", "12"}, "Ref File 3 is not valid.", "least squares 1263 by 12"},
             {"no target", {"12", "12", false}, "least squares 1263 by 12", "Target File1 is not valid."},

             {"two points",
              {"12", "12", true, "13"},
              "Number of selected data sets 2 is not 4.",
              "Number of selected data sets 2 is not 4."},
             {"three points",
              {"12", "12", true, "136", "136", "3", M::Exact},
              "three points 163 by 12",
              "three points 163 by 12"},
             {"four points, exact",
              {"12", "12", true, "1236", "1236", "1", M::Exact},
              "exact 2361 by 12",
              "exact 2361 by 12"},
             {"five points, exact",
              {"12", "12", true, "12367", "12367", "3", M::Exact},
              "Number of selected data sets 5 is not 4.",
              "Number of selected data sets 5 is not 4."},
             {"five points, least squares",
              {"24", "24", true, "12367", "12367", "3"},
              "least squares 12673 by 24",
              "least squares 12673 by 24"},
             {"a row without map counts for the target only",
              {"12", "12", true, "12367", "1236", "3", M::Exact},
              "exact 1263 by 12",
              "Number of selected data sets 5 is not 4."},
             {"the last V point has no map",
              {"12", "12", true, "12367", "1236", "37"},
              "least squares 1263 by 12",
              "least squares 1267 by 12"},
             {"two V points",
              {"12", "12", true, "1236", "1236", "26"},
              "least squares 136 by 12",
              "least squares 136 by 12"},
             {"three references, of which the method knows two",
              {"134", "134"},
              "least squares 1263 by 13",
              "least squares 1263 by 13"},

             {"linear, two references, three points",
              {"12", "12", true, "123", "123", "3", M::Linear},
              "Number of selected data sets 3 is less than 4.",
              "Number of selected data sets 3 is not 4."},
             {"linear, two references, four points",
              {"12", "12", true, "1236", "1236", "3", M::Linear},
              "linear 1236 by 12",
              "linear 1236 by 12"},
             {"linear, three references, four points",
              {"123", "123", true, "1236", "1236", "3", M::Linear},
              "Number of selected data sets 4 is less than 5.",
              "linear 1236 by 123"},
             {"Victoreen, two references, four points",
              {"12", "12", true, "1236", "1236", "3", M::Victoreen},
              "Number of selected data sets 4 is less than 5.",
              "Number of selected data sets 4 is not 5."},
             {"Victoreen, two references, five points",
              {"12", "12", true, "12367", "12367", "3", M::Victoreen},
              "Victoreen 12367 by 12",
              "Victoreen 12367 by 12"},
             {"Victoreen, four references, six points",
              {"1234", "1234", true, "123678", "123678", "3", M::Victoreen},
              "Number of selected data sets 6 is less than 7.",
              "Victoreen 123678 by 1234"}},
            check);
    }

    void fitChecks()
    {
        struct Case {
            const char *name;
            const char *used, *loaded, *lcf, *fit;
        };
        const char *const noRange = "Energy Range is not selected, which should by selected by CB of TR.";
        const auto check = [this](const Case &c) {
            const auto plan = planFit(m_sample.input({c.used, c.loaded, true, "", "", "", Method::Exact, c.lcf}));
            if (const auto *refusal = std::get_if<Refusal>(&plan)) {
                QCOMPARE(textOf(*refusal), QString(c.fit));
                return;
            }
            const auto &fit = std::get<FitPlan>(plan);
            QCOMPARE(pairText(fit.work.energyMin, fit.work.energyMax) + " by " + numbersOf(rowsOf(fit.references)),
                     QString(c.fit));
            QCOMPARE(fit.work.references.size(), std::size_t(fit.references.size()));
            for (std::size_t j = 0; j < fit.work.references.size(); ++j) {
                QCOMPARE(fit.work.references[j]->fileName(), fit.references[int(j)].name);
                QCOMPARE(fit.work.valences[j], fourValences[std::size_t(fit.references[int(j)].row)]);
            }
        };
        forEach<Case>(
            {{"no row", "1", "1", "", noRange},
             {"one row", "1", "1", "4", noRange},
             {"one reference", "123", "2", "36", "Number of Valid Reference files is 1, which is less than 2"},
             {"one that is not loaded is skipped", "123", "134", "258", "7060 7900 by 13"},
             {"four", "1234", "1234", "36", "7112 7135 by 1234"}},
            check);
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
        const AnalysisInput input = m_sample.input({"24", "24", true, "13568", "13568", "36"});
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
        struct Case {
            const char *name;
            bool postOfReferences, postOfTarget;
        };
        forEach<Case>(
            {{"pre-edge lines", false, false},
             {"post-edge line of the target", false, true},
             {"post-edge lines of the references", true, false}},
            [this](const Case &c) {
                AnalysisInput input = m_sample.input({"13", "1234", true, "12367", "12367", "3", Method::Linear});
                input.conditions.subtractsPostLineOfReferences = c.postOfReferences;
                input.conditions.subtractsPostLineOfTarget = c.postOfTarget;
                const TargetPlan target = std::get<TargetPlan>(planTarget(input));
                const MapPlan map = std::get<MapPlan>(planMap(input));
                const auto &work = std::get<NonEquivalentMapInput>(map.work);
                QVERIFY(near(target.values[0], c.postOfTarget ? -1.0 : 0.0, 1e-6));
                for (const auto *columns : {&target.run.nonEquivalent.columns, &work.references.columns}) {
                    QVERIFY(near((*columns)[0][0], c.postOfReferences ? -jumps[0] : 0.0, 1e-6));
                    QVERIFY(near((*columns)[1][0], c.postOfReferences ? -jumps[2] : 0.0, 1e-6));
                }
                QCOMPARE(work.valences, (std::vector<double>{2, 0}));
                QCOMPARE(work.maps.back(), input.points[6].map);
                QVERIFY(map.sized == input.points[0].map && map.first == map.sized);
            });
    }

    /// What the scatter of steps shows is taken from references that are valid, not only used.
    void stepsOfTheScatter()
    {
        struct Case {
            const char *name;
            Situation situation;
            QString points; ///< rows and references; empty: none
        };
        const auto check = [this](const Case &c) {
            const AnalysisInput input = m_sample.input(c.situation);
            const std::optional<ThreePoints> points = threePoints(input);
            QCOMPARE(points.has_value(), !c.points.isEmpty());
            for (std::size_t i = 0; points && i < 3; ++i) {
                const PointInput &row = input.points[c.points[int(i)].digitValue() - 1];
                QCOMPARE(points->maps[i], row.map);
                QCOMPARE(points->first[i], row.references[std::size_t(c.points[3].digitValue() - 1)]);
                QCOMPARE(points->second[i], row.references[std::size_t(c.points[4].digitValue() - 1)]);
            }
        };
        forEach<Case>({{"first two anchors and last V point", {"13", "13", false, "23567", "23567", "36"}, "25613"},
                       {"a reference that is not loaded", {"124", "24", false}, "12324"},
                       {"an anchor without map", {"12", "12", false, "1236", "236", "3"}, "26312"},
                       {"one anchor", {"12", "12", false, "13", "13", "3"}, ""},
                       {"no V point", {"12", "12", false, "1236", "1236", ""}, ""},
                       {"one valid reference", {"12", "2", false}, ""}},
                      check);
    }

    void severalChangesOneRun()
    {
        int runs = 0;
        Recalculation recalculation([&runs] { ++runs; });
        recalculation.wanted();
        QCOMPARE(runs, 1);
        {
            const Recalculation::Scope outer(recalculation);
            recalculation.wanted();
            {
                const Recalculation::Scope inner(recalculation);
                recalculation.wanted();
            }
            QVERIFY(recalculation.isHeld());
            QCOMPARE(runs, 1);
        }
        QVERIFY(!recalculation.isHeld());
        QCOMPARE(runs, 2);
        {
            const Recalculation::Scope nothingWanted(recalculation);
        }
        {
            Recalculation::Scope dropped(recalculation);
            recalculation.wanted();
            dropped.drop();
        }
        QCOMPARE(runs, 2);
        {
            Recalculation::Scope wantedAgain(recalculation);
            wantedAgain.drop();
            recalculation.wanted();
        }
        QCOMPARE(runs, 3);
    }

private:
    const Sample m_sample;
};

QTEST_APPLESS_MAIN(TestModel)
#include "TestModel.moc"
