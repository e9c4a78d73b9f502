#include "batch/RunReport.h"

#include "analysis/job/Job.h"
#include "analysis/model/Analysis.h"
#include "analysis/model/Findings.h"
#include "analysis/results/QuantityRange.h"
#include "analysis/results/ResultQuantities.h"
#include "analysis/results/ResultView.h"
#include "analysis/results/Statistics.h"
#include "batch/RunRecord.h"
#include "numeric/FileIdentity.h"
#include "version/Version.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

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
            {"base", fit.base},
            {"valence", fit.valence},
            {"R", fit.rFactor},
            {"points", fit.points}};
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

QJsonObject quantityReport(const double *values, std::size_t count)
{
    FiniteSummaryBuilder builder;
    for (std::size_t i = 0; i < count; ++i)
        builder.add(values[i]);
    const FiniteSummary summary = builder.summary();
    const auto middle = percentileRange(values, count, nullptr, 0.5, 0.5); // fractions of next to nothing rule the mean
    return {{"finite", static_cast<double>(summary.count)},
            {"mean", summary.mean},
            {"deviation", summary.deviation},
            {"median", middle ? QJsonValue(middle->min) : QJsonValue()},
            {"min", summary.min},
            {"max", summary.max}};
}

QJsonObject mapReport(const Analysis &analysis, const QJsonObject &quality)
{
    const ResultRecords &results = analysis.results();
    const bool isFourPoints = results.method() == ResultRecords::Method::FourPoints;
    QJsonObject quantities;
    ResultView view;
    for (const ResultQuantity &quantity : resultQuantities) {
        view.show(results, quantity.position, analysis.runValences());
        if (view.values() && !results.isZero(quantity.position))
            quantities.insert(QLatin1String(quantity.name), quantityReport(view.values(), view.count()));
    }
    return {{"method", isFourPoints ? "four-points" : "non-equivalent"},
            {"width", results.width()},
            {"height", results.height()},
            {"pixels", static_cast<double>(results.count())},
            {"quantities", quantities},
            {"quality", quality}};
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

QJsonArray warningsOf(const AnalysisInput &input)
{
    QJsonArray warnings;
    for (const Finding &finding : findings(input))
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

QByteArray runReport(const AnalysisInput &input, const Analysis &analysis, const Job &job, const RunTimes &times,
                     const RunRecord &record, const QStringList &errors, const QualityReport &quality,
                     const std::optional<EnergyShift> &shift)
{
    QJsonObject report{{"program", "flokluk-batch " + floklukVersion()},
                       {"job", numeric::realPath(job.fileName)},
                       {"errors", QJsonArray::fromStringList(errors)},
                       {"warnings", warningsOf(input)},
                       {"edge", input.conditions.edge.edge},
                       {"seconds", QJsonObject{{"load", times.load},
                                               {"calculate", times.calculate},
                                               {"quality", times.quality},
                                               {"write", times.write},
                                               {"pictures", times.pictures}}}};
    if (job.lenient)
        report.insert("lenient", true);
    report.insert("references", referencesReport(input, analysis));
    if (input.target.spectrum.valid())
        report.insert("target", targetReport(input.target, analysis));
    if (analysis.run())
        report.insert("map", mapReport(analysis, quality.map));
    if (!job.regions.isEmpty())
        report.insert("regions", quality.regions);
    if (shift)
        report.insert("energyShift", shiftReport(*shift, job));
    insertRecord(record, job.report, &report);
    return QJsonDocument(report).toJson();
}
