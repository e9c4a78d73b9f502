#include "analysis/results/MapRecords.h"

#include "analysis/results/ResultQuantities.h"

#include <cstddef>

namespace
{

bool isFound(const NonEquivalentNeeds &needs, const NonEquivalentMapInput &input)
{
    return input.references.count() >= needs.references &&
           (!needs.isVictoreenOnly || input.background == NonEquivalentBackground::Victoreen);
}

} // namespace

bool fillRecords(const FourPointsMapInput &input, ResultRecords *results, int threads, numeric::InstructionSet set)
{
    if (!isComplete(input) || !results->reset(ResultRecords::Method::FourPoints, *input.maps.back()))
        return false;
    solveFourPointsMap(input, results->count(), {results->a(), results->t()}, threads, set);
    return true;
}

bool fillRecords(const NonEquivalentMapInput &input, ResultRecords *results, int threads, numeric::InstructionSet set)
{
    if (!isComplete(input) || !results->reset(ResultRecords::Method::NonEquivalent, *input.maps.front()))
        return false;
    NonEquivalentPlanes planes = {};
    for (const ResultQuantity &quantity : resultQuantities) {
        if (isFound(quantity.nonEquivalent, input))
            planes[static_cast<std::size_t>(quantity.position)] = results->quantity(quantity.position);
        else
            results->setZero(quantity.position);
    }
    solveNonEquivalentMap(input, results->count(), planes, threads, set);
    return true;
}
