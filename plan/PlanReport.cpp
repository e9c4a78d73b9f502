#include "plan/PlanReport.h"

#include "numeric/JsonArray.h"
#include "plan/PlanSamples.h"
#include "version/Version.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace
{

QString methodName(PlanMethod method)
{
    switch (method) {
    case PlanMethod::LinearNonEquivalent:
        return QStringLiteral("nonEquivalentLinear");
    case PlanMethod::VictoreenNonEquivalent:
        return QStringLiteral("nonEquivalentVictoreen");
    case PlanMethod::LeastSquaresFourPoints:
        return QStringLiteral("fourPointsLeastSquares");
    case PlanMethod::ExactFourPoints:
        break;
    }
    return QStringLiteral("fourPointsExact");
}

QJsonArray detectionLimits(const std::vector<double> &sigmaF)
{
    QJsonArray list;
    for (const double sigma : sigmaF)
        list.append(detectionFactor * sigma);
    return list;
}

QJsonArray rolesReport(const PlannedSet &set)
{
    QJsonArray roles;
    for (const PlanRole &role : set.roles) {
        switch (role.kind) {
        case PlanRole::Kind::Background:
            roles.append(QStringLiteral("background"));
            break;
        case PlanRole::Kind::Amount:
            roles.append(QStringLiteral("amount"));
            break;
        case PlanRole::Kind::Difference:
            roles.append(QStringLiteral("reference %1 against %2").arg(role.first + 1).arg(role.second + 1));
            break;
        }
    }
    return roles;
}

QJsonObject scenarioReport(const PlanScenarioResult &scenario)
{
    return {{"fractions", numeric::toJsonArray(scenario.scenario.fractions)},
            {"thickness", scenario.scenario.thickness},
            {"valence", scenario.valence},
            {"sigmaV", scenario.sigmaV},
            {"sigmaVAtShares", scenario.sigmaVAtShares},
            {"sigmaF", numeric::toJsonArray(scenario.sigmaF)},
            {"detectionLimits", detectionLimits(scenario.sigmaF)},
            {"valencePerTenthEv", scenario.valencePerTenthEv},
            {"bias", scenario.bias}};
}

QJsonObject setReport(const PlannedSet &set)
{
    QJsonArray scenarios;
    for (const PlanScenarioResult &scenario : set.scenarios)
        scenarios.append(scenarioReport(scenario));
    QJsonObject report{{"number", static_cast<int>(set.energies.size())},
                       {"energies", numeric::toJsonArray(set.energies)},
                       {"shares", numeric::toJsonArray(set.shares)},
                       {"separates", rolesReport(set)},
                       {"sigmaV", set.sigmaV},
                       {"sigmaVAtShares", set.sigmaVAtShares},
                       {"sigmaF", numeric::toJsonArray(set.sigmaF)},
                       {"detectionLimits", numeric::toJsonArray(set.detectionLimits)},
                       {"valencePerTenthEv", set.valencePerTenthEv},
                       {"criterion", set.criterion},
                       {"extraTerm", set.hasExtraTerm},
                       {"scenarios", scenarios}};
    if (!set.name.isEmpty())
        report.insert("name", set.name);
    if (set.vPoint >= 0) {
        report.insert("vPoint", set.energies[static_cast<std::size_t>(set.vPoint)]);
        report.insert("bias", set.bias);
        report.insert("referenceBias", numeric::toJsonArray(set.pureBias));
    }
    return report;
}

QJsonArray setsReport(const std::vector<PlannedSet> &sets)
{
    QJsonArray list;
    for (const PlannedSet &set : sets)
        list.append(setReport(set));
    return list;
}

} // namespace

QByteArray planReport(const PlanRequest &request, const PlanResult &result, const QString &planFile)
{
    QJsonArray references;
    for (std::size_t j = 0; j < planReferences(request); ++j) {
        const PlanReference &reference = request.references[j];
        references.append(QJsonObject{
            {"file", reference.name}, {"valence", reference.valence}, {"edgeJump", reference.spectrum.edgeJump()}});
    }
    const QJsonObject report{{"program", "flokluk-plan " + floklukVersion()},
                             {"plan", planFile},
                             {"method", methodName(request.method)},
                             {"edge", request.edge},
                             {"counts", request.counts},
                             {"mode", request.mode == PlanMode::Transmission ? "transmission" : "fluorescence"},
                             {"background", request.background},
                             {"deltaE", request.deltaE},
                             {"seed", static_cast<double>(request.seed)},
                             {"candidates", static_cast<double>(result.candidates.size())},
                             {"references", references},
                             {"planned", setReport(result.planned)},
                             {"compared", setsReport(result.compared)},
                             {"byNumber", setsReport(result.byNumber)}};
    return QJsonDocument(report).toJson();
}
