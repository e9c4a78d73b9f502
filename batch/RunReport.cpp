#include "batch/RunReport.h"

#include "analysis/job/Job.h"
#include "analysis/job/JsonSum.h"
#include "analysis/model/Analysis.h"
#include "analysis/results/QuantityRange.h"
#include "analysis/results/ResultQuantities.h"
#include "analysis/results/ResultView.h"
#include "analysis/results/Statistics.h"
#include "analysis/uncertainty/UncertaintyMap.h"
#include "numeric/FileIdentity.h"

#include <QJsonArray>

#include <cstddef>
#include <vector>

namespace
{

QJsonObject spectrumReport(const QString &file, const AMutE &spectrum)
{
    return {{"file", file},
            {"foundEdge", spectrum.findEdge()},
            {"edgeJump", spectrum.edgeJump()},
            {"points", spectrum.pointCount()}};
}

QJsonArray toJson(const std::vector<double> &values)
{
    QJsonArray array;
    for (const double value : values)
        array.append(value);
    return array;
}

QJsonObject fourPointsReport(const FourPointsTarget &target)
{
    return {{"a", target.result.a}, {"valence", target.valence}, {"t/ts", target.result.t}};
}

QJsonObject nonEquivalentReport(const NonEquivalentTarget &target)
{
    const auto at = [&target](int position) {
        return target.values.at(static_cast<std::size_t>(position));
    };
    QJsonArray fractions, amounts;
    for (int j = 0; j < target.references.size(); ++j) {
        fractions.append(at(ResultPosition::ratio + j));
        amounts.append(at(ResultPosition::dMut + j));
    }
    return {{"fractions", fractions},
            {"amounts", amounts},
            {"valence", at(ResultPosition::valence)},
            {"t", at(ResultPosition::amount)}};
}

QJsonObject fitReport(const LinearCombination &fit)
{
    return {{"fractions", toJson(fit.fractions)},
            {"coefficients", toJson(fit.coefficients)},
            {"standardErrors", toJson(fit.standardErrors)},
            {"sum", fit.sum},
            {"base", fit.base},
            {"valence", fit.valence},
            {"meanValence", fit.meanValence},
            {"R", fit.rFactor},
            {"points", fit.points},
            {"errors", fitErrorsReport(fit)}};
}

QJsonObject targetReport(const TargetInput &target, const Analysis &analysis)
{
    QJsonObject report = spectrumReport(target.file, target.spectrum);
    const bool isNonEquivalent = analysis.targetRun() && analysis.targetRun()->method.isNonEquivalent;
    const auto insert = [&](const char *method, QJsonObject found, bool isLast) {
        if (const auto fit = isLast ? analysis.targetFit() : std::nullopt)
            found.insert("errors", targetErrorsReport(*fit));
        report.insert(QLatin1String(method), found);
    };
    if (analysis.fourPointsTarget())
        insert("fourPoints", fourPointsReport(*analysis.fourPointsTarget()), !isNonEquivalent);
    if (analysis.nonEquivalentTarget())
        insert("nonEquivalent", nonEquivalentReport(*analysis.nonEquivalentTarget()), isNonEquivalent);
    if (analysis.fit())
        report.insert("lcf", fitReport(*analysis.fit()));
    return report;
}

/// Which pixels hold no material, in the form of percentileRange(); empty where that is not known.
std::vector<quint8> notMaterial(const ResultRecords &results, const UncertaintyMap *uncertainties)
{
    std::vector<quint8> mask;
    for (std::size_t i = 0; uncertainties && i < results.count(); ++i)
        mask.push_back(uncertainties->isMaterial(results.t()[i], uncertainties->amount[i]) ? 0 : 1);
    return mask;
}

QJsonObject quantityReport(const double *values, std::size_t count, const std::vector<quint8> &notMaterial)
{
    FiniteSummaryBuilder all, material;
    for (std::size_t i = 0; i < count; ++i) {
        all.add(values[i]);
        if (i < notMaterial.size() && notMaterial[i] == 0)
            material.add(values[i]);
    }
    const auto median = [values, count](const quint8 *mask) {
        const auto middle = percentileRange(values, count, mask, 0.5, 0.5);
        return middle ? QJsonValue(middle->min) : QJsonValue();
    };
    const FiniteSummary summary = all.summary();
    QJsonObject report{{"finite", static_cast<double>(summary.count)},
                       {"mean", summary.mean},
                       {"deviation", summary.deviation},
                       {"median", median(nullptr)}, // fractions of next to nothing rule the mean
                       {"min", summary.min},
                       {"max", summary.max}};
    if (notMaterial.size() == count) {
        report.insert("materialMean", material.summary().mean);
        report.insert("materialMedian", median(notMaterial.data()));
    }
    return report;
}

QJsonObject mapReport(const Analysis &analysis, const RunFacts &facts)
{
    const ResultRecords &results = analysis.results();
    const bool isFourPoints = results.method() == ResultRecords::Method::FourPoints;
    const std::vector<quint8> mask = notMaterial(results, facts.uncertainties);
    QJsonObject quantities;
    ResultView view;
    for (const ResultQuantity &quantity : resultQuantities) {
        view.show(results, quantity.position, analysis.runValences());
        if (view.values() && !results.isZero(quantity.position))
            quantities.insert(QLatin1String(quantity.name), quantityReport(view.values(), view.count(), mask));
    }
    return {{"method", isFourPoints ? "four-points" : "non-equivalent"},
            {"width", results.width()},
            {"height", results.height()},
            {"pixels", static_cast<double>(results.count())},
            {"quantities", quantities},
            {"quality", facts.quality.map}};
}

/// The references that take part, with the valences and edge jumps that were calculated with.
QJsonArray referencesReport(const AnalysisInput &input, const Analysis &analysis)
{
    const RunInfo *const run = analysis.run() ? analysis.run() : analysis.targetRun();
    const QVector<RunReference> taken = run ? run->references : QVector<RunReference>();
    QJsonArray references;
    for (int row = 0; row < input.references.size(); ++row) {
        const ReferenceInput &reference = input.references[row];
        if (!reference.takesPart())
            continue;
        QJsonObject entry = spectrumReport(reference.file, reference.spectrum);
        entry.insert("valence", reference.valence);
        for (const RunReference &used : taken) {
            if (used.row != row)
                continue;
            entry.insert("valence", used.valence);
            entry.insert("edgeJump", used.edgeJump);
        }
        references.append(entry);
    }
    return references;
}

QJsonArray warningsOf(const QVector<Finding> &findings)
{
    QJsonArray warnings;
    for (const Finding &finding : findings)
        warnings.append(finding.text);
    return warnings;
}

/// Without the shift where it cannot be told: it would be used.
QJsonObject shiftReport(const EnergyShift &shift, const Job &job)
{
    QJsonObject report{{"isFound", shift.isFound()},
                       {"isApplied", shift.isFound() && job.shift == Job::Shift::Applied},
                       {"message", textOf(shift)}};
    if (!shift.isFound())
        return report;
    report.insert("shift", shift.shift);
    report.insert("error", shift.error);
    report.insert("misfitBefore", shift.misfitBefore);
    report.insert("misfitAfter", shift.misfitAfter);
    return report;
}

} // namespace

QJsonObject runReport(const Job &job, const AnalysisInput &input, const Analysis &analysis, const RunFacts &facts)
{
    QJsonObject report{{"job", numeric::realPath(job.fileName)},
                       {"errors", QJsonArray::fromStringList(facts.errors)},
                       {"warnings", warningsOf(facts.findings)},
                       {"settings", facts.settings},
                       {"edge", input.conditions.edge.edge},
                       {"seconds", QJsonObject{{"load", facts.times.load},
                                               {"calculate", facts.times.calculate},
                                               {"quality", facts.times.quality},
                                               {"write", facts.times.write},
                                               {"pictures", facts.times.pictures}}}};
    if (job.lenient)
        report.insert("lenient", true);
    report.insert("references", referencesReport(input, analysis));
    if (input.target.spectrum.valid())
        report.insert("target", targetReport(input.target, analysis));
    if (analysis.run())
        report.insert("map", mapReport(analysis, facts));
    if (!job.regions.isEmpty())
        report.insert("regions", facts.quality.regions);
    if (facts.shift)
        report.insert("energyShift", shiftReport(*facts.shift, job));
    insertRecord(facts.record, job, &report);
    return withSum(report);
}
