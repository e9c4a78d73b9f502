#include "plan/PlanCandidates.h"

#include "plan/PlanCriterion.h"
#include "plan/PlanSearch.h"
#include "plan/PlanText.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

constexpr double before = 100.0, behind = 200.0; // eV from the edge: the candidates
constexpr double nearBefore = 20.0, nearBehind = 50.0;
constexpr double fineStep = 0.5, coarseStep = 5.0;
constexpr double tolerance = 1e-6; // eV
constexpr double mostCandidates = 20000;
constexpr double leastDistinctness = 1e-3;

struct Bounds {
    double edge; ///< rounded to the fine step: candidates are energies that one can type
    double from, to;
};

Bounds boundsOf(const PlanRequest &request)
{
    const PlanRange range = commonRange(request);
    Bounds bounds;
    bounds.edge = std::round(request.edge / fineStep) * fineStep;
    if (!request.candidates.empty()) {
        bounds.from = request.candidates.front();
        bounds.to = request.candidates.back();
        return bounds;
    }
    bounds.from = request.from.value_or(std::max(bounds.edge - before, std::ceil(range.from / fineStep) * fineStep));
    bounds.to = request.to.value_or(std::min(bounds.edge + behind, std::floor(range.to / fineStep) * fineStep));
    return bounds;
}

/// The next candidate of a request without a step.
double next(const Bounds &bounds, double energy)
{
    const double nearFrom = bounds.edge - nearBefore;
    if (energy < nearFrom - tolerance)
        return std::min(energy + coarseStep, nearFrom);
    return energy + (energy < bounds.edge + nearBehind - tolerance ? fineStep : coarseStep);
}

QString number(double value)
{
    return QString::number(value, 'g', 8);
}

QString outside(const PlanRequest &request, double energy, const QString &what)
{
    for (const PlanReference &reference : request.references) {
        const double from = reference.spectrum.energyMin() - reference.spectrum.dE();
        const double to = reference.spectrum.energyMax() - reference.spectrum.dE();
        if (!(energy >= from - tolerance && energy <= to + tolerance))
            return planText(PlanText::OutsideReference)
                .arg(reference.name, number(from), number(to), number(energy), what);
    }
    return QString();
}

/// An energy of the request that a reference does not reach.
QString rangeMistake(const PlanRequest &request)
{
    QVector<QPair<double, QString>> wanted;
    if (request.from)
        wanted.append({*request.from, QStringLiteral("from")});
    if (request.to)
        wanted.append({*request.to, QStringLiteral("to")});
    for (const double energy : request.keep)
        wanted.append({energy, QStringLiteral("keep")});
    for (const double energy : request.candidates)
        wanted.append({energy, QStringLiteral("candidates")});
    for (const PlanList &list : request.compare) {
        for (const double energy : list.energies)
            wanted.append({energy, list.name});
    }
    for (const auto &[energy, what] : wanted) {
        const QString mistake = outside(request, energy, what);
        if (!mistake.isEmpty())
            return mistake;
    }
    const Bounds bounds = boundsOf(request);
    for (const double energy : request.keep) {
        const bool isBelow = request.from && energy < *request.from - tolerance;
        const bool isAbove = request.to && energy > *request.to + tolerance;
        if (isBelow || isAbove)
            return planText(PlanText::KeptOutside).arg(number(energy), number(bounds.from), number(bounds.to));
    }
    if (!(bounds.from < bounds.to))
        return planText(PlanText::EmptyRange).arg(number(bounds.from), number(bounds.to));
    if ((bounds.to - bounds.from) / request.step.value_or(fineStep) > mostCandidates)
        return planText(PlanText::ManyCandidates).arg(number(mostCandidates));
    return QString();
}

/// Energies that stand too near to each other.
QString spacingMistake(const PlanRequest &request)
{
    std::vector<PlanList> lists = request.compare;
    lists.push_back({QStringLiteral("keep"), request.keep, -1});
    for (PlanList &list : lists) {
        std::sort(list.energies.begin(), list.energies.end());
        for (std::size_t k = 1; k < list.energies.size(); ++k) {
            if (list.energies[k] - list.energies[k - 1] < tolerance)
                return planText(PlanText::EqualEnergies).arg(list.name, number(list.energies[k]));
        }
    }
    const std::vector<double> &kept = lists.back().energies;
    for (std::size_t k = 1; k < kept.size(); ++k) {
        if (kept[k] - kept[k - 1] < request.spacing - tolerance)
            return planText(PlanText::KeptNear).arg(number(kept[k - 1]), number(kept[k]), number(request.spacing));
    }
    return QString();
}

QString valenceMistake(const PlanRequest &request)
{
    const double first = request.references.front().valence;
    for (std::size_t j = 1; j < planReferences(request); ++j) {
        if (request.references[j].valence != first)
            return QString();
    }
    return planText(PlanText::SameValences).arg(number(first));
}

QString numberMistake(const PlanRequest &request)
{
    const bool isFour = isFourPoints(request.method);
    const int needed =
        isFour ? 3 : nonEquivalentUnknowns(static_cast<int>(planReferences(request)), backgroundOf(request.method));
    if (request.count < needed)
        return planText(PlanText::FewEnergies).arg(request.count).arg(needed);
    const int most = mostPlanEnergies(request.method);
    if (request.count > most)
        return planText(PlanText::ManyEnergies).arg(request.count).arg(most);
    for (const PlanList &list : request.compare) {
        const auto count = static_cast<int>(list.energies.size());
        if (count < needed)
            return list.name + QLatin1String(": ") + planText(PlanText::FewEnergies).arg(count).arg(needed);
        if (count > most)
            return list.name + QLatin1String(": ") + planText(PlanText::ManyEnergies).arg(count).arg(most);
    }
    return QString();
}

QString referenceMistake(const PlanRequest &request, const std::vector<PlanPoint> &points)
{
    std::vector<std::size_t> others;
    for (std::size_t j = 0; j < planReferences(request); ++j) {
        const PlanReference &reference = request.references[j];
        const bool isFinite = std::all_of(points.begin(), points.end(), [j](const PlanPoint &point) {
            return std::isfinite(point.column[j]) && std::isfinite(point.absorption[j]);
        });
        const double jump = reference.spectrum.edgeJump();
        if (!isFinite || !std::isfinite(jump) || jump <= 0.0)
            return planText(PlanText::NoLines).arg(reference.name);
        for (const std::size_t other : others) {
            if (!(distinctness(request.method, points, j, {other}) > leastDistinctness))
                return planText(PlanText::AlikeReferences).arg(request.references[other].name, reference.name);
        }
        if (!(distinctness(request.method, points, j, others) > leastDistinctness))
            return planText(PlanText::MixedReference).arg(reference.name);
        others.push_back(j);
    }
    return QString();
}

} // namespace

PlanRange commonRange(const PlanRequest &request)
{
    PlanRange range = {-std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    for (const PlanReference &reference : request.references) {
        const AMutE &spectrum = reference.spectrum;
        range.from = std::max(range.from, spectrum.energyMin() - spectrum.dE());
        range.to = std::min(range.to, spectrum.energyMax() - spectrum.dE());
    }
    return range;
}

std::vector<double> planCandidates(const PlanRequest &request)
{
    const Bounds bounds = boundsOf(request);
    std::vector<double> energies = request.candidates;
    const bool isGrid = energies.empty();
    for (int i = 0; isGrid && request.step; ++i) {
        const double energy = bounds.from + i * *request.step;
        if (!(energy <= bounds.to + tolerance))
            break;
        energies.push_back(energy);
    }
    for (double energy = bounds.from; isGrid && !request.step && energy <= bounds.to + tolerance;
         energy = next(bounds, energy))
        energies.push_back(energy);
    energies.insert(energies.end(), request.keep.begin(), request.keep.end());
    std::sort(energies.begin(), energies.end());
    const auto isSame = [](double l, double r) {
        return r - l < tolerance;
    };
    energies.erase(std::unique(energies.begin(), energies.end(), isSame), energies.end());
    return energies;
}

int mostTogether(const PlanRequest &request, const std::vector<double> &candidates)
{
    const PlanSearch search(request, candidates);
    return static_cast<int>(search.fill(search.kept()).size());
}

QString planMistake(const PlanRequest &request)
{
    if (request.references.size() < 2)
        return planText(PlanText::FewReferences);
    for (const auto check : {rangeMistake, numberMistake, spacingMistake}) {
        const QString mistake = check(request);
        if (!mistake.isEmpty())
            return mistake;
    }
    const std::vector<double> candidates = planCandidates(request);
    std::vector<PlanPoint> points;
    for (const double energy : candidates)
        points.push_back(planPoint(request, energy));
    for (const QString &mistake : {referenceMistake(request, points), valenceMistake(request)}) {
        if (!mistake.isEmpty())
            return mistake;
    }
    if (static_cast<int>(request.keep.size()) > request.count)
        return planText(PlanText::ManyKept).arg(request.keep.size()).arg(request.count);
    const int most = mostTogether(request, candidates);
    if (most < request.count)
        return planText(PlanText::FewCandidates).arg(most).arg(number(request.spacing)).arg(request.count);
    return QString();
}
