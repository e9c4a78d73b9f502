#include "analysis/model/Analysis.h"

#include "analysis/model/InputFiles.h"
#include "analysis/model/ResultText.h"
#include "analysis/model/TakingPart.h"
#include "analysis/results/MapRecords.h"

#include <QCoreApplication>

const StepOutcome &Analysis::note(Step step, bool isDone, const QString &message)
{
    StepOutcome &outcome = m_outcomes.at(static_cast<std::size_t>(step));
    outcome = {isDone, message};
    return outcome;
}

ValencePair Analysis::runValences() const
{
    if (!m_run || m_run->references.size() < 2)
        return ValencePair();
    return {true, m_run->references[0].valence, m_run->references[1].valence};
}

std::optional<ValueRange> Analysis::colourRange(int position, const AnalysisInput &now) const
{
    RangeConditions conditions = colourConditions(takingPart(now));
    conditions.isFourPoints = m_results.count() > 0 && m_results.method() == ResultRecords::Method::FourPoints;
    conditions.thickness = {now.conditions.thicknesses.from, now.conditions.thicknesses.to};
    return quantityRange(position, conditions);
}

const StepOutcome &Analysis::runMap(const AnalysisInput &input)
{
    const auto planned = planMap(input);
    if (const auto *refusal = std::get_if<Refusal>(&planned))
        return refuse(Step::Map, *refusal);
    const auto &plan = std::get<MapPlan>(planned);
    const auto fill = [this](const auto &work) {
        return fillRecords(work, &m_results);
    };
    if (!std::visit(fill, plan.work)) // which the size of the map that rules the result makes impossible
        return refuse(Step::Map, {Refusal::Check::MapTooLarge, plan.sized->nx(), plan.sized->ny()});
    m_results.headerLines = plan.first->headerLines();
    m_run = plan.run;
    ++m_revision;
    m_histograms.count(m_results, runValences(), m_run->valences, m_run->thicknesses);
    return note(Step::Map, true, QString());
}

const StepOutcome &Analysis::runTarget(const AnalysisInput &input)
{
    const auto planned = planTarget(input);
    if (const auto *refusal = std::get_if<Refusal>(&planned))
        return refuse(Step::Target, *refusal);
    const auto &plan = std::get<TargetPlan>(planned);
    m_targetRun = plan.run;
    m_targetValues = plan.values;
    return plan.run.method.isNonEquivalent ? runNonEquivalentTarget(plan)
                                           : runFourPointsTarget(plan, methodValences(takingPart(input)));
}

const StepOutcome &Analysis::runFourPointsTarget(const TargetPlan &plan, const ValencePair &valences)
{
    numeric::LinearSystem work(3);
    const FourPointsVariant variant = plan.run.method.variant;
    const FourPointsResult result = solveFourPoints(variant, plan.run.fourPoints, plan.values.data(), &work);
    m_fourPointsTarget = {result, valences.mixed(result.a)};
    return note(Step::Target, true, fourPointsText(variant, result, m_fourPointsTarget->valence));
}

const StepOutcome &Analysis::runNonEquivalentTarget(const TargetPlan &plan)
{
    std::vector<double> valences;
    for (const RunReference &reference : plan.run.references)
        valences.push_back(reference.valence);
    const NonEquivalentValues values =
        solveNonEquivalent(plan.run.method.background, plan.values, plan.run.nonEquivalent, valences);
    m_nonEquivalentTarget = NonEquivalentTarget{plan.run.references, values};
    const auto fractions = values.begin() + ResultPosition::ratio;
    return note(Step::Target, true,
                nonEquivalentText({fractions, fractions + plan.run.references.size()}, values[ResultPosition::valence],
                                  values[ResultPosition::amount]));
}

std::optional<TargetFit> Analysis::targetFit() const
{
    return m_targetRun ? std::optional<TargetFit>(fitTarget(*m_targetRun, m_targetValues)) : std::nullopt;
}

const StepOutcome &Analysis::runFit(const AnalysisInput &input)
{
    const auto planned = planFit(input);
    if (const auto *refusal = std::get_if<Refusal>(&planned))
        return refuse(Step::Fit, *refusal);
    const auto &plan = std::get<FitPlan>(planned);
    m_fit = std::make_unique<LinearCombination>(fitLinearCombination(plan.work));
    m_fitRun = FitRun{plan.references, plan.work.energyMin, plan.work.energyMax};
    const FourPointsTarget target = m_fourPointsTarget.value_or(FourPointsTarget());
    comparisons.records.append(
        {target.result.a, target.valence, m_fit->fractions[0], m_fit->valence, comparisons.colourIndex});
    return note(Step::Fit, true, linearCombinationText(m_fit->fractions, m_fit->valence, m_fit->base));
}

const StepOutcome &Analysis::write(const QString &path, const AnalysisInput &now, const RecordSelection &selection,
                                   numeric::FileSet *set)
{
    const auto problem = [&path](const char *text) {
        return QCoreApplication::translate("FourPs", text).arg(path);
    };
    m_writeProblem.clear();
    const WriteOutcome outcome =
        isInputFile(path, now) ? WriteOutcome::CannotOpen
                               : writeResultFile(path, m_results, fileValences(takingPart(now)), selection, 0, set);
    if (outcome == WriteOutcome::CannotOpen)
        m_writeProblem = problem(QT_TRANSLATE_NOOP("FourPs", "Can't open the file [%1]"));
    else if (outcome == WriteOutcome::CannotWrite)
        m_writeProblem = problem(QT_TRANSLATE_NOOP("FourPs", "Can't write the file [%1]"));
    const QString message = m_writeProblem;
    const bool areValencesWritten = m_histograms.valence().write(path, QStringLiteral("HGAlpha"), set);
    const bool areThicknessesWritten = m_histograms.thickness().write(path, QStringLiteral("HGThick"), set);
    if (m_writeProblem.isEmpty() && !(areValencesWritten && areThicknessesWritten))
        m_writeProblem = problem(QT_TRANSLATE_NOOP("FourPs", "Can't write the histograms of [%1]"));
    return note(Step::Write, m_writeProblem.isEmpty(), message);
}
