#pragma once

#include "analysis/methods/FourPoints.h"
#include "mapdata/MapGrid.h"
#include "numeric/Plane.h"

#include <QString>
#include <QtGlobal>

#include <cstddef>
#include <optional>
#include <vector>

class ResultRecords;

/// What a map of one result quantity shows.

/// The plane that a map display shows, row by row, x fastest; borrowed. The display keeps the coloured picture: when
/// values or mask change where they stand, it is told so.
struct ShownMap {
    const double *values = nullptr; ///< null: not computed
    std::size_t count = 0;          ///< of values; there may be fewer than cells
    MapGrid grid;
};

/// The values of the quantity at `position`, one per pixel. A four-points result has what the table of quantities says:
/// Ratio 1 = a, Ratio 2 = 1 - a, Valence = a V1 + (1 - a) V2 (0 where the valences are not known) and Amount = t; what
/// does not stand in the records is calculated into `work`, which must live as long as the values are used. Null
/// without results, for a quantity that the method does not compute, or when there is no memory for it.
const double *shownPlane(const ResultRecords &results, int position, const ValencePair &valences, numeric::Plane *work);

/// One byte per pixel, 1 where the amount t is below `limit`: pixels to be hidden. A NaN is not below.
void maskBelow(const ResultRecords &results, double limit, std::vector<quint8> *mask);

/// Sets the bytes of the pixels whose value is above `limit` as well; a NaN is not above. `mask` is empty or has a byte
/// per value.
void maskAbove(const double *values, std::size_t count, double limit, std::vector<quint8> *mask);

/// The index of the value of the cell that covers (x, y); none beside the map and for a cell that has no value. Cell
/// (i, j) covers the coordinates from (i, j) to (i + 1, j + 1).
std::optional<std::size_t> cellAt(const ShownMap &map, double x, double y);
/// That value as text with six significant digits, "nan" or "inf"; empty where there is none.
QString cellText(const ShownMap &map, double x, double y);
