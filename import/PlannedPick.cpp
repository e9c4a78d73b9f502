#include "import/PlannedPick.h"

#include "analysis/job/Job.h"
#include "plan/PlanCandidates.h"
#include "plan/PlanResult.h"

#include <algorithm>
#include <variant>

namespace
{

constexpr double preEdgeEnd = -50.0, postEdgeStart = 100.0; // eV from the edge: what the panel starts with

void setLines(std::vector<PlanReference> *references, double edge)
{
    for (PlanReference &reference : *references) {
        reference.spectrum.setEdgeEnergy(edge);
        reference.spectrum.setPreEdgeEnd(edge + preEdgeEnd);
        reference.spectrum.setPostEdgeStart(edge + postEdgeStart);
        reference.spectrum.fitLines();
    }
}

void setUnknownValences(std::vector<PlanReference> *references)
{
    const double first = references->front().valence;
    const bool areKnown = std::any_of(references->begin(), references->end(),
                                      [first](const PlanReference &one) { return one.valence != first; });
    for (std::size_t i = 0; !areKnown && i < references->size(); ++i)
        (*references)[i].valence = static_cast<double>(i + 1);
}

PlanRequest requestOf(PlannedPickInput *input, int count)
{
    PlanRequest request;
    const double edge = input->references.back().spectrum.findEdge();
    setLines(&input->references, edge);
    setUnknownValences(&input->references);
    request.references = input->references;
    request.edge = edge;
    request.count = count;
    const int needed =
        nonEquivalentUnknowns(static_cast<int>(request.references.size()), NonEquivalentBackground::Linear);
    request.method = count >= needed ? PlanMethod::LinearNonEquivalent : PlanMethod::LeastSquaresFourPoints;
    request.mode = input->isFluorescence ? PlanMode::Fluorescence : PlanMode::Transmission;
    const PlanRange range = commonRange(request);
    for (const double energy : qAsConst(input->energies)) {
        if (energy >= range.from && energy <= range.to)
            request.candidates.push_back(energy);
    }
    if (!request.candidates.empty() && mostTogether(request, request.candidates) < count)
        request.spacing = 0.0; // measured more densely than anybody would plan
    return request;
}

} // namespace

PlannedPick plannedPick(PlannedPickInput input, int count)
{
    constexpr std::size_t most = Job::maxReferences;
    PlannedPick found;
    if (input.references.size() > most)
        input.references.resize(most);
    const PlanRequest request = requestOf(&input, count);
    const auto isGoing = [&](double done) {
        found.isStopped = found.isStopped || (input.isGoing && !input.isGoing(done));
        return !found.isStopped;
    };
    const std::variant<PlanResult, QString> result = planEnergies(request, isGoing);
    if (const QString *const error = std::get_if<QString>(&result)) {
        found.error = *error;
        return found;
    }
    const PlannedSet &set = std::get<PlanResult>(result).planned;
    for (std::size_t k = 0; k < set.energies.size(); ++k) {
        const int index = input.energies.indexOf(set.energies[k]);
        if (set.vPoint == static_cast<int>(k))
            found.vPoint = index;
        found.picked << index;
    }
    return found;
}
