#pragma once

#include "mapdata/MapLoadFacts.h"

#include <optional>

class A2DData;

/// Where the records of a map leave the order row by row with x fastest: x must go along each row, and y along each
/// column, in the direction of the header's step, without one in that of the first row or column. A step back of up to
/// half a pixel is no break, as measured positions are not exact. Positions that are all the same are none either
/// unless the header gives a step. Gives the first break along x, without one the first along y; nothing for a map
/// whose number of records is not nx * ny.
std::optional<OrderBreak> findOrderBreak(const A2DData &map);
