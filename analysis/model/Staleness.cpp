#include "analysis/model/Staleness.h"

#include "analysis/model/Analysis.h"

#include <QCoreApplication>

#include <algorithm>

namespace
{

QString translated(const char *text)
{
    return QCoreApplication::translate("FourPs", text);
}

bool areSame(const std::vector<double> &l, const std::vector<double> &r)
{
    return std::equal(l.begin(), l.end(), r.begin(), r.end(), isSame);
}

bool isSameMethod(const RunInfo &l, const RunInfo &r)
{
    return std::tie(l.method.isNonEquivalent, l.method.variant, l.method.background) ==
           std::tie(r.method.isNonEquivalent, r.method.variant, r.method.background);
}

template <class Rows>
QVector<int> rowsOf(const Rows &list)
{
    QVector<int> rows;
    for (const auto &entry : list)
        rows.append(entry.row);
    return rows;
}

std::vector<double> energiesOf(const RunInfo &run)
{
    std::vector<double> energies;
    for (const RunPoint &point : run.points)
        energies.push_back(point.energy);
    return energies;
}

QVector<bool> marksOf(const RunInfo &run)
{
    QVector<bool> marks;
    for (const RunPoint &point : run.points)
        marks.append(point.isMarked);
    return marks;
}

/// The values of the j-th reference that the method uses.
std::vector<double> valuesOf(const RunInfo &run, std::size_t j)
{
    if (run.method.isNonEquivalent)
        return j < run.nonEquivalent.columns.size() ? run.nonEquivalent.columns[j] : std::vector<double>();
    return j == 0 ? run.fourPoints.a : run.fourPoints.b;
}

/// Whether the method depends on the edge jumps: the three-point variant does not.
bool usesEdgeJumps(const RunInfo &run)
{
    return run.method.isNonEquivalent || run.method.variant != FourPointsVariant::ThreePoint;
}

/// Of the same references. Their values are compared only `atSameEnergies`: they follow the energies.
void compareReferences(const RunInfo &then, const RunInfo &now, bool atSameEnergies, QStringList *found)
{
    for (int j = 0; j < now.references.size(); ++j) {
        const RunReference &before = then.references[j];
        const RunReference &after = now.references[j];
        const QString name = translated(QT_TRANSLATE_NOOP("FourPs", "Ref %1")).arg(after.row + 1);
        if (!isSame(before.valence, after.valence))
            found->append(translated(QT_TRANSLATE_NOOP("FourPs", "%1: valence")).arg(name));
        const auto index = static_cast<std::size_t>(j);
        const bool isSameJump = !usesEdgeJumps(now) || isSame(before.edgeJump, after.edgeJump);
        if (before.name != after.name)
            found->append(translated(QT_TRANSLATE_NOOP("FourPs", "%1: spectrum")).arg(name));
        else if (atSameEnergies && (!areSame(valuesOf(then, index), valuesOf(now, index)) || !isSameJump))
            found->append(translated(QT_TRANSLATE_NOOP("FourPs", "%1: values at the energies or edge jump")).arg(name));
    }
}

void comparePoints(const RunInfo &then, const RunInfo &now, QStringList *found)
{
    for (int k = 0; k < now.points.size(); ++k) {
        const int number = now.points[k].row + 1;
        if (!isSame(then.points[k].energy, now.points[k].energy))
            found->append(translated(QT_TRANSLATE_NOOP("FourPs", "Energy %1: value")).arg(number));
        if (!(then.points[k].map == now.points[k].map))
            found->append(translated(QT_TRANSLATE_NOOP("FourPs", "Energy %1: map file")).arg(number));
    }
}

} // namespace

QStringList differences(const RunInfo &then, const RunInfo &now)
{
    QStringList found;
    if (!isSameMethod(then, now))
        found << translated(QT_TRANSLATE_NOOP("FourPs", "Method"));
    if (!(then.edge == now.edge))
        found << translated(QT_TRANSLATE_NOOP("FourPs", "Edge and ranges"));
    if (rowsOf(then.points) != rowsOf(now.points))
        found << translated(QT_TRANSLATE_NOOP("FourPs", "Energies in use"));
    else if (isSameMethod(then, now) && marksOf(then) != marksOf(now))
        found << translated(QT_TRANSLATE_NOOP("FourPs", "V Point"));
    if (rowsOf(then.references) != rowsOf(now.references))
        found << translated(QT_TRANSLATE_NOOP("FourPs", "References in use"));
    else
        compareReferences(then, now, found.isEmpty() && areSame(energiesOf(then), energiesOf(now)), &found);
    if (rowsOf(then.points) == rowsOf(now.points))
        comparePoints(then, now, &found);
    if (!(then.valences == now.valences) || !(then.thicknesses == now.thicknesses))
        found << translated(QT_TRANSLATE_NOOP("FourPs", "Histograms"));
    return found;
}

QStringList changesSince(const RunInfo &run, const AnalysisInput &now)
{
    const auto plan = planMap(now);
    if (const auto *refusal = std::get_if<Refusal>(&plan))
        return {textOf(*refusal)};
    return differences(run, std::get<MapPlan>(plan).run);
}

namespace
{

/// Histograms are made of the map alone.
bool isTargetDue(const RunInfo *then, RunInfo now)
{
    if (!then)
        return true;
    now.valences = then->valences;
    now.thicknesses = then->thicknesses;
    return !differences(*then, now).isEmpty();
}

bool isFitDue(const FitRun *then, const FitPlan &now)
{
    const auto isSameReference = [](const RunReference &l, const RunReference &r) {
        return l.row == r.row && l.name == r.name && isSame(l.valence, r.valence) && isSame(l.edgeJump, r.edgeJump);
    };
    return !then || then->energyMin != now.work.energyMin || then->energyMax != now.work.energyMax ||
           !std::equal(then->references.begin(), then->references.end(), now.references.begin(), now.references.end(),
                       isSameReference);
}

} // namespace

DueSteps dueSteps(const Analysis &analysis, const AnalysisInput &now)
{
    DueSteps due;
    const auto map = planMap(now);
    if (const auto *refusal = std::get_if<Refusal>(&map)) {
        due.whyNoMap = textOf(*refusal);
    } else {
        const auto &plan = std::get<MapPlan>(map);
        due.map = !analysis.run() || !differences(*analysis.run(), plan.run).isEmpty();
        due.mapValues = static_cast<double>(plan.sized->count()) * plan.run.points.size();
    }
    const auto target = planTarget(now);
    if (const auto *plan = std::get_if<TargetPlan>(&target))
        due.target = isTargetDue(analysis.targetRun(), plan->run);
    const auto fit = planFit(now);
    if (const auto *plan = std::get_if<FitPlan>(&fit))
        due.fit = isFitDue(analysis.fitRun(), *plan);
    return due;
}
