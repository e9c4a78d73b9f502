#pragma once

#include "analysis/methods/FourPoints.h"
#include "mapdata/A2DData.h"
#include "numeric/Lanes.h"

#include <cstddef>
#include <vector>

/// What a four-points map calculation needs. The maps stand in the order of `references`: the anchor points, then the
/// V point; they may differ in size.
struct FourPointsMapInput {
    FourPointsVariant variant = FourPointsVariant::None;
    FourPointsReferences references;
    std::vector<const A2DData *> maps;
};

/// Where the results go: two planes of as many values as pixels are calculated, not owned.
struct FourPointsPlanes {
    double *a = nullptr;
    double *t = nullptr;
};

/// Whether there is a map for each energy.
bool isComplete(const FourPointsMapInput &input);

/// Calculates the first `pixels` pixels of the maps. A pixel that a map does not have counts there with the absorption
/// -1. Pixels are shared out over `threads` (0: all cores). The results are those of solveFourPoints() to the last bit,
/// whatever `threads` and `set` are. The input must be complete.
void solveFourPointsMap(const FourPointsMapInput &input, std::size_t pixels, const FourPointsPlanes &planes,
                        int threads = 0, numeric::InstructionSet set = numeric::bestInstructionSet());
