#pragma once

#include "analysis/methods/FourPointsMap.h"
#include "analysis/methods/NonEquivalent.h"
#include "analysis/results/ResultRecords.h"
#include "numeric/Lanes.h"

/// The methods' maps as result records. A four-points result has the size and the positions of the V point's map, a
/// non-equivalent one those of the first map; a position that this map has no record for is (0, 0).
/// False, with the results as they were, when the map is too large (see ResultRecords::reset) or the input is not
/// complete.
[[nodiscard]] bool fillRecords(const FourPointsMapInput &input, ResultRecords *results, int threads = 0,
                               numeric::InstructionSet set = numeric::bestInstructionSet());
[[nodiscard]] bool fillRecords(const NonEquivalentMapInput &input, ResultRecords *results, int threads = 0,
                               numeric::InstructionSet set = numeric::bestInstructionSet());
