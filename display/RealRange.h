#pragma once

#include "display/ValueRange.h"

/// The real range of a plot, in the units of its axes: x.min at the left edge, y.min at the lower one. It may stand the
/// wrong way round.
struct RealRange {
    ValueRange x;
    ValueRange y;
};

inline bool operator==(const RealRange &l, const RealRange &r)
{
    return l.x == r.x && l.y == r.y;
}
inline bool operator!=(const RealRange &l, const RealRange &r)
{
    return !(l == r);
}

/// Which axes of a natural range end the user's zoom when they change.
enum class Follow { BothAxes, XAxis };
