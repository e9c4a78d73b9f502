#pragma once

#include "display/ValueRange.h"

#include <QtGlobal>

#include <cstddef>
#include <optional>

/// What the colour ranges of the result quantities depend on.
struct RangeConditions {
    double edgeJumps = 0.0;       ///< sum of the edge jumps of the references that are used and valid
    double smallestValence = 0.0; ///< of the references in use
    double largestValence = 0.0;
    bool isFourPoints = false; ///< of a four-points result, whose amount is a relative thickness
    ValueRange thickness;      ///< bounds of the thickness histogram
};

/// The colour range of the result quantity at `position` (see ResultPosition) by its rule in the table of quantities:
/// fractions -0.1 to 1.1, valences half a unit beyond those of the references, amounts and mut0 from -1/10 to 11/10 of
/// the edge jumps, relative thicknesses the bounds of their histogram. None for what has no range of its own, as the
/// background's coefficients C1 and C2, and for a position that does not exist.
std::optional<ValueRange> quantityRange(int position, const RangeConditions &conditions);

/// The smallest and the largest finite one of `count` values, on `threads` threads (0: one per core); none without a
/// finite value. Values whose `mask` is not 0 are hidden and do not count.
std::optional<ValueRange> finiteRange(const double *values, std::size_t count, const quint8 *mask = nullptr,
                                      int threads = 0);

/// The values at the fractions `low` and `high` (0 to 1) of the sorted finite values, each the one whose rank is
/// nearest; none without a finite value. Hidden values do not count. O(count), and needs memory for a copy of the
/// values.
std::optional<ValueRange> percentileRange(const double *values, std::size_t count, const quint8 *mask = nullptr,
                                          double low = 0.02, double high = 0.98);
