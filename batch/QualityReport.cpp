#include "batch/QualityReport.h"

#include "analysis/methods/LinearCombination.h"
#include "analysis/uncertainty/Distributions.h"
#include "analysis/uncertainty/SpectrumFit.h"
#include "numeric/JsonArray.h"

#include <cstddef>

namespace
{

QString nameOf(Intensities intensities)
{
    switch (intensities) {
    case Intensities::Counted:
        return QStringLiteral("counted");
    case Intensities::ConstantI0:
        return QStringLiteral("constant I0");
    case Intensities::Ratios:
        return QStringLiteral("ratios");
    case Intensities::Absorptions:
        break;
    }
    return QStringLiteral("absorptions");
}

QJsonObject mapReport(const UncertaintyMap &map, const UncertaintySummary &summary)
{
    QJsonArray intensities;
    for (const Intensities ofMap : map.noise.maps)
        intensities.append(nameOf(ofMap));
    return {{"intensities", intensities},
            {map.noise.isUniform ? "variance" : "gamma", map.noise.scale},
            {"isScaleAssumed", map.noise.isScaleAssumed},
            {"degrees", map.degrees},
            {"hideBelow", map.thinnest ? QJsonValue(*map.thinnest) : QJsonValue()},
            {"material", static_cast<double>(summary.pixels)},
            {"valenceError", summary.valence},
            {"amountError", summary.amount},
            {"detectionLimits", numeric::toJsonArray(summary.detectionLimits)},
            {"thinnestForTenth", summary.thinnestForTenth}};
}

QJsonObject regionReport(const Region &region, const RegionStatistics &found)
{
    QJsonObject report{{"pixels", static_cast<double>(found.pixels)},
                       {"leftOut", static_cast<double>(found.leftOut)},
                       {"amount", found.amount},
                       {"mean", found.mean},
                       {"median", found.median},
                       {"scatter", found.scatter},
                       {"expectedScatter", found.expectedScatter},
                       {"error", found.fit.valenceError},
                       {"chi2", found.fit.degrees > 0 ? QJsonValue(found.fit.misfit()) : QJsonValue()},
                       {"fractions", numeric::toJsonArray(found.fit.fractions)},
                       {"amountError", found.fit.amountError},
                       {"fractionErrors", numeric::toJsonArray(found.fit.fractionErrors)}};
    if (!region.name.isEmpty())
        report.insert("name", region.name);
    if (region.rectangle)
        report.insert("rectangle", QJsonArray{region.rectangle->x0, region.rectangle->y0, region.rectangle->x1,
                                              region.rectangle->y1});
    if (region.above)
        report.insert("above", *region.above);
    return report;
}

} // namespace

QualityReport qualityReport(Quality *quality, const AnalysisInput &now, const UncertaintyRequest &request,
                            const std::vector<Region> &regions)
{
    QualityReport report;
    const std::optional<UncertaintySummary> summary = quality->summary(now, request);
    if (!summary) {
        report.map.insert("message", quality->problem());
        return report;
    }
    report.map = mapReport(*quality->map(now, request), *summary);
    std::vector<Region> wanted = regions;
    wanted.push_back({QString(), std::nullopt, std::nullopt, true});
    const std::vector<RegionStatistics> found = quality->statistics(now, request, wanted);
    for (std::size_t i = 0; i < regions.size() && i < found.size(); ++i)
        report.regions.append(regionReport(regions[i], found[i]));
    if (!found.empty())
        report.map.insert("ofMaterial", regionReport(wanted.back(), found.back()));
    return report;
}

QJsonObject targetErrorsReport(const TargetFit &target)
{
    return {{"degrees", target.fit.degrees},
            {"studentFactor", target.factor},
            {"valence", target.fit.valenceError},
            {"t", target.fit.amountError},
            {"fractions", numeric::toJsonArray(target.fit.fractionErrors)}};
}

QJsonObject fitErrorsReport(const LinearCombination &fit)
{
    return {{"degrees", fit.degrees},
            {"studentFactor", studentFactor(fit.degrees)},
            {"fractions", numeric::toJsonArray(fit.fractionErrors)},
            {"sum", fit.sumError},
            {"valence", fit.valenceError},
            {"meanValence", fit.meanValenceError}};
}
