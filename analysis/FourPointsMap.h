#pragma once

#include "analysis/FourPoints.h"
#include "analysis/ResultRecords.h"
#include "mapdata/A2DData.h"
#include "numeric/Lanes.h"

#include <vector>

/// What a four-points map calculation needs. The maps stand in the order of `references`: the anchor points, then the
/// V point; they may differ in size.
struct FourPointsMapInput {
    FourPointsVariant variant = FourPointsVariant::None;
    FourPointsReferences references;
    std::vector<const A2DData *> maps;
};

/// Calculates every pixel of the V point's map: its size is the size of the result, its positions are those of the
/// result (0, 0 where it has no record). A pixel that another map does not have counts there with the absorption
/// -1. Pixels are shared out over `threads` (0: all cores). The results are those of solveFourPoints() to the last bit,
/// whatever `threads` and `set` are.
/// False, with the results as they were, when the map is too large (see ResultRecords::reset) or there is not one map
/// per energy.
[[nodiscard]] bool calcFourPointsMap(const FourPointsMapInput &input, ResultRecords *results, int threads = 0,
                                     numeric::InstructionSet set = numeric::bestInstructionSet());
