#include "batch/RunReport.h"

#include "analysis/panel/FourPs.h"
#include "analysis/results/QuantityRange.h"
#include "analysis/results/ResultQuantities.h"
#include "analysis/results/Statistics.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace
{

QJsonObject spectrumReport(const AXafsFileSelect &selector)
{
    const AMutE &spectrum = selector.spectrum();
    return {{"file", selector.fileText()},
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

QJsonObject fourPointsReport(const FourPs &panel, const FourPointsResult &result)
{
    return {{"a", result.a}, {"valence", panel.targetValence()}, {"t/ts", result.t}};
}

QJsonObject nonEquivalentReport(const NonEquivalentValues &values, int references)
{
    const auto at = [&values](int position) {
        return values[static_cast<std::size_t>(position)];
    };
    QJsonArray fractions, amounts;
    for (int j = 0; j < references; ++j) {
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

QJsonObject targetReport(const FourPs &panel)
{
    QJsonObject report = spectrumReport(*panel.target());
    if (const auto *const result = panel.targetFourPoints())
        report.insert("fourPoints", fourPointsReport(panel, *result));
    if (const auto *const values = panel.targetNonEquivalent())
        report.insert("nonEquivalent", nonEquivalentReport(*values, panel.validReferences().size()));
    if (panel.fit())
        report.insert("lcf", fitReport(*panel.fit()));
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

QJsonObject mapReport(const FourPs &panel)
{
    const ResultRecords &results = panel.results();
    const bool isFourPoints = results.method() == ResultRecords::Method::FourPoints;
    QJsonObject quantities;
    numeric::Plane work;
    for (const ResultQuantity &quantity : resultQuantities) {
        const double *const values = panel.quantity(quantity.position, &work);
        if (!values || results.isZero(quantity.position))
            continue;
        quantities.insert(QLatin1String(quantity.name), quantityReport(values, results.count()));
    }
    return {{"method", isFourPoints ? "four-points" : "non-equivalent"},
            {"width", results.width()},
            {"height", results.height()},
            {"pixels", static_cast<double>(results.count())},
            {"quantities", quantities}};
}

} // namespace

QByteArray runReport(const FourPs &panel, const Job &job, const RunTimes &times, const QStringList &errors)
{
    QJsonObject report{{"program", "flokluk-batch " FLOKLUK_VERSION},
                       {"job", QFileInfo(job.fileName).absoluteFilePath()},
                       {"errors", QJsonArray::fromStringList(errors)},
                       {"edge", panel.job().settings.value("EdgeE")},
                       {"seconds", QJsonObject{{"load", times.load},
                                               {"calculate", times.calculate},
                                               {"write", times.write},
                                               {"pictures", times.pictures}}}};
    QJsonArray references;
    for (const ARefFile *const reference : panel.validReferences()) {
        QJsonObject entry = spectrumReport(*reference->selector());
        entry.insert("valence", reference->valence());
        references.append(entry);
    }
    report.insert("references", references);
    if (panel.target()->valid())
        report.insert("target", targetReport(panel));
    if (panel.results().count() > 0)
        report.insert("map", mapReport(panel));
    return QJsonDocument(report).toJson();
}
