#pragma once

#include "analysis/methods/LinearCombination.h"
#include "analysis/model/Plans.h"
#include "analysis/results/Comparison.h"
#include "analysis/results/ResultHistograms.h"
#include "analysis/results/ResultRecords.h"
#include "analysis/results/ResultWriter.h"
#include "analysis/uncertainty/SpectrumFit.h"

#include <QString>

#include <array>
#include <memory>
#include <optional>
#include <vector>

/// What the user asks for.
enum class Step { Map, Target, Fit, Write };
constexpr std::size_t stepCount = 4;

/// How a step went the last time.
struct StepOutcome {
    bool isDone = false; ///< false: refused, failed, or not tried yet
    QString message;     ///< one line for the user; empty: nothing to say
};

/// What was found for the target spectrum last by one method.
struct FourPointsTarget {
    FourPointsResult result;
    double valence = 0.0;
};
struct NonEquivalentTarget {
    QVector<RunReference> references; ///< those that took part
    NonEquivalentValues values;
};

/// The analysis: runs the steps on a snapshot of the inputs and owns what comes out. A step that is refused changes
/// nothing but its outcome.
class Analysis
{
public:
    /// The chosen method for every pixel.
    const StepOutcome &runMap(const AnalysisInput &input);
    /// The chosen method for the target spectrum.
    const StepOutcome &runTarget(const AnalysisInput &input);
    /// Fits the target by the references and compares the valence with that of the four-points method.
    const StepOutcome &runFit(const AnalysisInput &input);
    /// Writes the results of the last map calculation, and the two histograms beside them whatever became of the
    /// result file. A four-points result gets the valences of the references as they are now. A path that leads to one
    /// of the files in `now` counts as one that cannot be opened. The failure of the histograms alone has no place in
    /// the message area: `isDone` is false then and the message empty; see writeProblem(). With a set the files are
    /// written and wait for the others of the set.
    const StepOutcome &write(const QString &path, const AnalysisInput &now, const RecordSelection &selection,
                             numeric::FileSet *set = nullptr);

    const StepOutcome &outcome(Step step) const { return m_outcomes.at(static_cast<std::size_t>(step)); }
    /// Why the last write failed; empty when it did not.
    const QString &writeProblem() const { return m_writeProblem; }

    const ResultRecords &results() const { return m_results; }
    /// What the results were calculated from; null before the first map calculation.
    const RunInfo *run() const { return m_run ? &*m_run : nullptr; }
    /// The valences that the run mixed in four-points results; not known when it had fewer than two references.
    ValencePair runValences() const;
    /// Another number with every map calculation, 0 before the first.
    quint64 revision() const { return m_revision; }

    /// The colour range of a quantity (see ResultPosition) of the results, with the references as they are now; none
    /// for what has no range of its own.
    std::optional<ValueRange> colourRange(int position, const AnalysisInput &now) const;

    const ResultHistograms &histograms() const { return m_histograms; }
    /// What the histograms show besides the valences and thicknesses.
    void chooseHistograms(const HistogramChoice &choice) { m_histograms.choose(m_results, choice); }

    const std::optional<FourPointsTarget> &fourPointsTarget() const { return m_fourPointsTarget; }
    const std::optional<NonEquivalentTarget> &nonEquivalentTarget() const { return m_nonEquivalentTarget; }
    /// What the target was calculated from last; null before.
    const RunInfo *targetRun() const { return m_targetRun ? &*m_targetRun : nullptr; }
    /// How well the method finds that, from its residuals; none before.
    std::optional<TargetFit> targetFit() const;
    const LinearCombination *fit() const { return m_fit.get(); }
    /// What the fit was made of last; null before.
    const FitRun *fitRun() const { return m_fitRun ? &*m_fitRun : nullptr; }
    Comparisons comparisons; ///< one more with every fit; cleared by the user

private:
    const StepOutcome &note(Step step, bool isDone, const QString &message);
    const StepOutcome &runFourPointsTarget(const TargetPlan &plan, const ValencePair &valences);
    const StepOutcome &runNonEquivalentTarget(const TargetPlan &plan);
    const StepOutcome &refuse(Step step, const Refusal &refusal) { return note(step, false, textOf(refusal)); }

    ResultRecords m_results;
    std::optional<RunInfo> m_run;
    quint64 m_revision = 0;
    ResultHistograms m_histograms;
    std::optional<RunInfo> m_targetRun;
    std::vector<double> m_targetValues; ///< at its points, in the order of the method
    std::optional<FourPointsTarget> m_fourPointsTarget;
    std::optional<NonEquivalentTarget> m_nonEquivalentTarget;
    std::unique_ptr<LinearCombination> m_fit;
    std::optional<FitRun> m_fitRun;
    std::array<StepOutcome, stepCount> m_outcomes;
    QString m_writeProblem;
};
