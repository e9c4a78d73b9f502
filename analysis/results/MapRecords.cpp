#include "analysis/results/MapRecords.h"

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
    for (int position = 0; position < ResultPosition::count; ++position) {
        if (isFilled(position, input.references.count(), input.background))
            planes[static_cast<std::size_t>(position)] = results->quantity(position);
        else
            results->setZero(position);
    }
    solveNonEquivalentMap(input, results->count(), planes, threads, set);
    return true;
}
