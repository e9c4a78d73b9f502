#include "analysis/model/Plans.h"

#include "analysis/model/TakingPart.h"
#include "analysis/model/UsedPoints.h"

#include <QCoreApplication>

#include <algorithm>
#include <optional>

namespace
{

using Check = Refusal::Check;

struct RefusalText {
    Check check;
    const char *text; ///< %1 is what was found, %2 what is needed
};

constexpr RefusalText refusalTexts[] = {
    {Check::NoVPointForMap, QT_TRANSLATE_NOOP("FourPs", "V Point is not selected")},
    {Check::NoVPoint, QT_TRANSLATE_NOOP("FourPs", "V Point is not selected.")},
    {Check::FewReferences, QT_TRANSLATE_NOOP("FourPs", "Number of valied Ref Files is %1, which is less than 2.")},
    {Check::ReferenceNotValid, QT_TRANSLATE_NOOP("FourPs", "Ref File %1 is not valid.")},
    {Check::FirstNotValid, QT_TRANSLATE_NOOP("FourPs", "The 1st Ref File is not valid.")},
    {Check::SecondNotValid, QT_TRANSLATE_NOOP("FourPs", "The 2nd Ref File is not valid.")},
    {Check::TargetNotValid, QT_TRANSLATE_NOOP("FourPs", "Target File1 is not valid.")},
    {Check::OtherNumberOfPoints, QT_TRANSLATE_NOOP("FourPs", "Number of selected data sets %1 is not %2.")},
    {Check::FewPoints, QT_TRANSLATE_NOOP("FourPs", "Number of selected data sets %1 is less than %2.")},
    {Check::MapTooLarge, QT_TRANSLATE_NOOP("FourPs", "The map of %1 x %2 pixels is too large.")},
    {Check::NoFitRange,
     QT_TRANSLATE_NOOP("FourPs", "Energy Range is not selected, which should by selected by CB of TR.")},
    {Check::FewFitReferences,
     QT_TRANSLATE_NOOP("FourPs", "Number of Valid Reference files is %1, which is less than 2")},
};

FourPointsReferences fourPointsReferences(const AnalysisInput &input, const TakingPart &references,
                                          const UsedPoints &points)
{
    const QVector<TakingPart::Reference> valid = references.valid();
    const auto valueOf = [&input](int row, const TakingPart::Reference &reference) {
        return input.points[row].references.at(static_cast<std::size_t>(reference.row));
    };
    FourPointsReferences values;
    for (const int row : points.anchorsFirst()) {
        values.energies.push_back(input.points[row].energy);
        values.a.push_back(valueOf(row, valid[0]));
        values.b.push_back(valueOf(row, valid[1]));
    }
    values.r = valid[0].edgeJump / valid[1].edgeJump;
    return values;
}

std::vector<const AMutE *> validSpectra(const AnalysisInput &input)
{
    std::vector<const AMutE *> spectra;
    for (const ReferenceInput &reference : input.references) {
        if (reference.takesPart())
            spectra.push_back(&reference.spectrum);
    }
    return spectra;
}

NonEquivalentReferences nonEquivalentReferences(const AnalysisInput &input, const UsedPoints &points)
{
    std::vector<double> energies;
    for (const int row : points.all)
        energies.push_back(input.points[row].energy);
    return prepareNonEquivalent(energies, validSpectra(input), input.conditions.subtractsPostLineOfReferences);
}

std::vector<double> valencesOf(const QVector<RunReference> &references)
{
    std::vector<double> valences;
    for (const RunReference &reference : references)
        valences.push_back(reference.valence);
    return valences;
}

QVector<RunReference> runReferences(const AnalysisInput &input, const TakingPart &references)
{
    QVector<RunReference> taken;
    for (const TakingPart::Reference &reference : references.valid())
        taken.append({reference.row, input.references[reference.row].spectrum.fileName(), reference.valence,
                      reference.edgeJump});
    return taken;
}

RunInfo runInfo(const AnalysisInput &input, const TakingPart &references, const UsedPoints &points, RunMethod method)
{
    RunInfo run;
    run.method = method;
    run.references = runReferences(input, references);
    run.edge = input.conditions.edge;
    run.valences = input.conditions.valences;
    run.thicknesses = input.conditions.thicknesses;
    for (const int row : points.all)
        run.points.append({row, input.points[row].energy, input.points[row].mapFile,
                           !method.isNonEquivalent && input.points[row].isVPoint});
    if (method.isNonEquivalent) {
        run.nonEquivalent = nonEquivalentReferences(input, points);
    } else {
        run.vPoint = points.vPoint;
        run.references.resize(2); // which the method knows
        run.fourPoints = fourPointsReferences(input, references, points);
    }
    return run;
}

NonEquivalentBackground backgroundOf(const Conditions &conditions)
{
    return conditions.isLinear ? NonEquivalentBackground::Linear : NonEquivalentBackground::Victoreen;
}

/// The variant of the four-points method for n points, or why there is none.
std::variant<RunMethod, Refusal> fourPointsFor(const Conditions &conditions, int n)
{
    const FourPointsVariant variant = chooseFourPoints(n, conditions.isExact, conditions.isLeastSquares);
    if (variant == FourPointsVariant::None)
        return Refusal{Check::OtherNumberOfPoints, n, 4};
    return RunMethod{false, variant, {}};
}

/// The method for the map. Its fit needs as many points as it has unknowns.
std::variant<RunMethod, Refusal> mapMethod(const Conditions &conditions, int n, int references)
{
    if (!conditions.isNonEquivalent)
        return fourPointsFor(conditions, n);
    const NonEquivalentBackground background = backgroundOf(conditions);
    const int needed = nonEquivalentUnknowns(references, background);
    if (n < needed)
        return Refusal{Check::FewPoints, n, needed};
    return RunMethod{true, FourPointsVariant::None, background};
}

/// The method for the target. Here the non-equivalent method wants as many points as for two references, however many
/// there are.
std::variant<RunMethod, Refusal> targetMethod(const Conditions &conditions, int n)
{
    if (!conditions.isNonEquivalent)
        return fourPointsFor(conditions, n);
    const NonEquivalentBackground background = backgroundOf(conditions);
    const int needed = nonEquivalentUnknowns(2, background);
    if (n < needed)
        return Refusal{Check::OtherNumberOfPoints, n, needed};
    return RunMethod{true, FourPointsVariant::None, background};
}

std::optional<Refusal> refuseMap(const AnalysisInput &input, const TakingPart &references, const UsedPoints &points)
{
    if (!input.conditions.isNonEquivalent && points.vPoint < 0)
        return Refusal{Check::NoVPointForMap};
    const int valid = references.valid().size();
    if (valid < 2)
        return Refusal{Check::FewReferences, valid};
    for (const TakingPart::Reference &reference : references.used) {
        if (!reference.isValid)
            return Refusal{Check::ReferenceNotValid, reference.row};
    }
    return std::nullopt;
}

/// The V point is asked for whatever the method.
std::optional<Refusal> refuseTarget(const AnalysisInput &input, const TakingPart &references, const UsedPoints &points)
{
    if (points.vPoint < 0)
        return Refusal{Check::NoVPoint};
    const int valid = references.valid().size();
    if (valid < 2)
        return Refusal{Check::FewReferences, valid};
    if (!references.used[0].isValid)
        return Refusal{Check::FirstNotValid};
    if (!references.used[1].isValid)
        return Refusal{Check::SecondNotValid};
    if (!input.target.spectrum.valid())
        return Refusal{Check::TargetNotValid};
    return std::nullopt;
}

} // namespace

std::variant<MapPlan, Refusal> planMap(const AnalysisInput &input)
{
    const UsedPoints points = usedPoints(input, true);
    const TakingPart references = takingPart(input);
    if (const auto refusal = refuseMap(input, references, points))
        return *refusal;
    const auto method = mapMethod(input.conditions, points.all.size(), references.valid().size());
    if (const auto *refusal = std::get_if<Refusal>(&method))
        return *refusal;

    MapPlan plan;
    plan.run = runInfo(input, references, points, std::get<RunMethod>(method));
    plan.first = input.points[points.all.first()].map;
    const auto mapsOf = [&input](const QVector<int> &rows) {
        std::vector<const A2DData *> maps;
        for (const int row : rows)
            maps.push_back(input.points[row].map);
        return maps;
    };
    if (plan.run.method.isNonEquivalent) {
        plan.sized = plan.first;
        plan.work = NonEquivalentMapInput{plan.run.method.background, plan.run.nonEquivalent,
                                          valencesOf(plan.run.references), mapsOf(points.all)};
    } else {
        plan.sized = input.points[points.vPoint].map;
        plan.work = FourPointsMapInput{plan.run.method.variant, plan.run.fourPoints, mapsOf(points.anchorsFirst())};
    }
    return plan;
}

std::variant<TargetPlan, Refusal> planTarget(const AnalysisInput &input)
{
    const UsedPoints points = usedPoints(input, false);
    const TakingPart references = takingPart(input);
    if (const auto refusal = refuseTarget(input, references, points))
        return *refusal;
    const auto method = targetMethod(input.conditions, points.all.size());
    if (const auto *refusal = std::get_if<Refusal>(&method))
        return *refusal;

    TargetPlan plan;
    plan.run = runInfo(input, references, points, std::get<RunMethod>(method));
    if (plan.run.method.isNonEquivalent) {
        const int type = input.conditions.subtractsPostLineOfTarget ? AMutE::PostSubtracted : AMutE::PreSubtracted;
        for (const double energy : plan.run.nonEquivalent.energies)
            plan.values.push_back(input.target.spectrum.valueAtEnergy(type, energy));
    } else {
        for (const int row : points.anchorsFirst())
            plan.values.push_back(input.points[row].target);
    }
    return plan;
}

std::variant<FitPlan, Refusal> planFit(const AnalysisInput &input)
{
    FitPlan plan;
    plan.work.energyMin = 1e300;
    plan.work.energyMax = -1e300;
    int count = 0;
    for (const PointInput &point : input.points) {
        if (!point.isForLcf)
            continue;
        ++count;
        plan.work.energyMin = std::min(plan.work.energyMin, point.energy);
        plan.work.energyMax = std::max(plan.work.energyMax, point.energy);
    }
    if (count < 2 || plan.work.energyMax < plan.work.energyMin)
        return Refusal{Check::NoFitRange};
    plan.references = runReferences(input, takingPart(input));
    if (plan.references.size() < 2)
        return Refusal{Check::FewFitReferences, plan.references.size()};
    plan.work.references = validSpectra(input);
    plan.work.valences = valencesOf(plan.references);
    plan.work.target = &input.target.spectrum;
    return plan;
}

QString textOf(const Refusal &refusal)
{
    const auto row =
        std::find_if(std::begin(refusalTexts), std::end(refusalTexts),
                     [&refusal](const RefusalText &candidate) { return candidate.check == refusal.check; });
    QString text = QCoreApplication::translate("FourPs", row->text);
    return text.replace(QLatin1String("%1"), QString::number(refusal.found))
        .replace(QLatin1String("%2"), QString::number(refusal.needed));
}
