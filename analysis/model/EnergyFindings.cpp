#include "analysis/model/EnergyFindings.h"

#include "analysis/model/AnalysisInput.h"
#include "analysis/model/UsedPoints.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace
{

using Place = Finding::Place;
using Severity = Finding::Severity;

constexpr double lowestEnergy = 100; // eV

QString translated(const char *text)
{
    return QCoreApplication::translate("FourPs", text);
}

/// A second V point is left out by the four-points method; the other one takes all energies alike.
void findVPoints(const AnalysisInput &input, QVector<Finding> *found)
{
    const UsedPoints used = usedPoints(input, false);
    const int vPointOfMap = usedPoints(input, true).vPoint;
    const bool isFourPoints = !input.conditions.isNonEquivalent;
    for (const int row : used.all) {
        if (!input.points[row].isVPoint || row == used.vPoint)
            continue;
        Finding::Calculations concerns;
        concerns.setFlag(Finding::Map, isFourPoints && input.points[row].map && row != vPointOfMap);
        concerns.setFlag(Finding::Target, isFourPoints && input.target.spectrum.valid());
        const QString text = translated(QT_TRANSLATE_NOOP("FourPs", "Energies %1 and %2 are both marked as V Point"));
        found->append({isFourPoints ? Severity::Error : Severity::Warning, Place::Point, row,
                       text.arg(row + 1).arg(used.vPoint + 1), concerns, Finding::Control::Energy});
    }
}

void findSameEnergies(const AnalysisInput &input, QVector<Finding> *found)
{
    const QVector<int> rows = usedPoints(input, false).all;
    for (auto row = rows.begin(); row != rows.end(); ++row) {
        const double energy = input.points[*row].energy;
        const auto same = std::find_if(rows.begin(), row, [&input, energy](int other) {
            return std::abs(input.points[other].energy - energy) <= sameEnergy;
        });
        if (same == row)
            continue;
        const QString text = translated(QT_TRANSLATE_NOOP("FourPs", "Energy %1: %2 eV is nearly that of energy %3"));
        found->append({Severity::Warning, Place::Point, *row,
                       text.arg(QString::number(*row + 1), QString::number(energy, 'g', 8), QString::number(*same + 1)),
                       Finding::Map | Finding::Target, Finding::Control::Energy});
    }
}

/// Energies of which a number in keV cannot be far away.
struct Surroundings {
    double min = 1e300;
    double max = -1e300;

    void add(const AMutE &spectrum)
    {
        min = std::min(min, spectrum.energyMin() - spectrum.dE());
        max = std::max(max, spectrum.energyMax() - spectrum.dE());
    }
    bool holdKev(double energy) const
    {
        return looksLikeKev(energy) && 1000 * energy >= min / 2 && 1000 * energy <= max * 2;
    }
};

void findKev(const AnalysisInput &input, QVector<Finding> *found)
{
    Surroundings near;
    for (const ReferenceInput &reference : input.references) {
        if (reference.takesPart())
            near.add(reference.spectrum);
    }
    if (input.target.spectrum.valid())
        near.add(input.target.spectrum);
    const double edge = input.conditions.edge.edge;
    if (near.holdKev(edge))
        found->append({Severity::Warning, Place::Edge, 0,
                       translated(QT_TRANSLATE_NOOP("FourPs", "Edge: %1 eV looks like keV")).arg(edge),
                       Finding::Map | Finding::Target | Finding::Fit, Finding::Control::Energy});
    if (near.max < near.min)
        near = {edge, edge};
    for (int row = 0; row < input.points.size(); ++row) {
        const PointInput &point = input.points[row];
        if ((point.isUsed || point.isForLcf) && near.holdKev(point.energy))
            found->append({Severity::Warning, Place::Point, row,
                           translated(QT_TRANSLATE_NOOP("FourPs", "Energy %1: %2 eV looks like keV"))
                               .arg(row + 1)
                               .arg(point.energy),
                           Finding::Map | Finding::Target | Finding::Fit, Finding::Control::Energy});
    }
}

} // namespace

bool looksLikeKev(double largestEnergy)
{
    return largestEnergy > 0 && largestEnergy < lowestEnergy;
}

void findInEnergies(const AnalysisInput &input, QVector<Finding> *found)
{
    findVPoints(input, found);
    findSameEnergies(input, found);
    findKev(input, found);
}
