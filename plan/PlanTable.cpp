#include "plan/PlanReport.h"
#include "plan/PlanSamples.h"
#include "plan/PlanText.h"

#include <QStringList>

#include <cmath>

namespace
{

QString number(double value, int width, int decimals)
{
    constexpr double large = 1e5; // what would break the columns
    return QStringLiteral("%1").arg(value, width, std::abs(value) < large ? 'f' : 'g', decimals);
}

QString joined(const std::vector<double> &values, int decimals)
{
    QStringList texts;
    for (const double value : values)
        texts << number(value, 0, decimals);
    return texts.join(QLatin1Char(' '));
}

QString energyTable(const PlanRequest &request, const PlannedSet &set)
{
    QString text = planText(PlanText::EnergyTitle) + QLatin1Char('\n');
    for (std::size_t k = 0; k < set.energies.size(); ++k) {
        text += number(set.energies[k], 10, 2) + number(100.0 * set.shares[k], 8, 1) + QLatin1String("  ") +
                planRoleText(request, set.roles[k]);
        if (set.vPoint == static_cast<int>(k))
            text += QLatin1String(", V");
        text += QLatin1Char('\n');
    }
    return text;
}

/// A sentence for each reference alone whose valence is missed by more than a tenth of what the valences differ.
QString pureBiasText(const PlanRequest &request, const PlannedSet &set)
{
    constexpr double large = 0.1;
    QString text;
    for (std::size_t j = 0; j < set.pureBias.size(); ++j) {
        const PlanReference &reference = request.references[j];
        const double difference = std::abs(request.references[0].valence - request.references[1].valence);
        if (!(std::abs(set.pureBias[j]) <= large * difference))
            text += planText(PlanText::PureBias)
                        .arg(reference.name, number(reference.valence + set.pureBias[j], 0, 2),
                             number(reference.valence, 0, 2)) +
                    QLatin1Char('\n');
    }
    return text;
}

QString methodText(const PlanRequest &request)
{
    const QString method = planMethodName(request.method);
    QStringList known, others;
    for (std::size_t j = 0; j < request.references.size(); ++j)
        (j < planReferences(request) ? known : others) << request.references[j].name;
    const QString comma = QStringLiteral(", ");
    return others.isEmpty() ? planText(PlanText::Method).arg(method)
                            : planText(PlanText::MethodKnowsTwo).arg(method, known.join(comma), others.join(comma));
}

QString scenarioTable(const PlanRequest &request, const PlannedSet &set)
{
    QString text = planText(PlanText::ScenarioTitle) + QLatin1Char('\n');
    for (const PlanScenarioResult &scenario : set.scenarios)
        text += QStringLiteral("%1 t %2  %3 %4 %5  %6\n")
                    .arg(joined(scenario.scenario.fractions, 2))
                    .arg(scenario.scenario.thickness, 0, 'g', 3)
                    .arg(number(scenario.sigmaV, 8, 4), number(scenario.sigmaVAtShares, 8, 4),
                         number(scenario.valencePerTenthEv, 8, 4), joined(scenario.sigmaF, 4));
    text += planText(PlanText::Limits).arg(joined(set.detectionLimits, 4)) + QLatin1Char('\n');
    if (set.vPoint >= 0)
        text += planText(PlanText::Bias).arg(number(set.bias, 0, 4)) + QLatin1Char('\n') + pureBiasText(request, set);
    return text;
}

/// Sets side by side: what they are, and their worth over all scenarios.
QString setLine(const QString &name, const PlannedSet &set)
{
    return QStringLiteral("%1 %2 %3  %4: %5\n")
        .arg(number(set.sigmaV, 8, 4), number(set.sigmaVAtShares, 8, 4), number(set.valencePerTenthEv, 8, 4), name,
             joined(set.energies, 2));
}

} // namespace

QString planRoleText(const PlanRequest &request, const PlanRole &role)
{
    const auto name = [&request](int j) {
        return request.references[static_cast<std::size_t>(j)].name;
    };
    switch (role.kind) {
    case PlanRole::Kind::Background:
        return planText(PlanText::Background);
    case PlanRole::Kind::Amount:
        return planText(PlanText::Amount);
    case PlanRole::Kind::Difference:
        break;
    }
    return planText(PlanText::Difference).arg(name(role.first), name(role.second));
}

QString planTable(const PlanRequest &request, const PlanResult &result)
{
    const PlannedSet &planned = result.planned;
    QString text =
        energyTable(request, planned) + QLatin1Char('\n') + scenarioTable(request, planned) + QLatin1Char('\n');
    text += planText(PlanText::SetTitle) + QLatin1Char('\n') + setLine(planText(PlanText::Planned), planned);
    for (const PlannedSet &set : result.compared)
        text += setLine(set.name, set);
    text += QLatin1Char('\n') + planText(PlanText::NumberTitle) + QLatin1Char('\n');
    bool isMarked = false;
    for (const PlannedSet &set : result.byNumber) {
        const bool isPlain = planned.hasExtraTerm && !set.hasExtraTerm;
        text += setLine(QString::number(set.energies.size()) + (isPlain ? QLatin1String("*") : QLatin1String()), set);
        isMarked = isMarked || isPlain;
    }
    if (isMarked)
        text += planText(PlanText::Marked) + QLatin1Char('\n');
    text += QLatin1Char('\n') + methodText(request) + QLatin1Char('\n');
    text += planText(planned.hasExtraTerm ? PlanText::WithExtraTerm : PlanText::WithoutExtraTerm) + QLatin1Char('\n');
    return text;
}
