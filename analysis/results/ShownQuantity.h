#pragma once

#include "display/HistogramBins.h"
#include "numeric/Plane.h"

#include <QString>

#include <vector>

class ResultRecords;

/// What a map or histogram of one result quantity shows.

/// The values of the quantity at `position`, one per pixel. A four-points result has Ratio 1 = a, Ratio 2 = 1 - a,
/// Valence = a valenceA + (1 - a) valenceB and Amount = t; what does not stand in the records is calculated into
/// `work`, which must live as long as the values are used. Null for a quantity that the method does not compute, or
/// when there is no memory for it.
const double *shownPlane(const ResultRecords &results, int position, double valenceA, double valenceB,
                         numeric::Plane *work);

/// One byte per pixel, 1 where the amount t is below `limit`: pixels to be hidden. A NaN is not below.
void maskBelow(const ResultRecords &results, double limit, std::vector<quint8> *mask);

/// The value of the cell that covers (x, y), as text with six significant digits, "nan" or "inf"; empty beside the
/// map. Cell (i, j) covers the coordinates from (i, j) to (i + 1, j + 1).
QString cellText(const double *plane, int width, int height, double x, double y);

/// The histogram, in the boxes of `boxes`, of those pixels of a non-equivalent result in which the fraction at
/// position `ratio` (see ResultPosition) is at least a half. `values` holds one value per pixel. Empty boxes for a
/// four-points result.
HistogramBins referenceHistogram(const HistogramBins &boxes, const ResultRecords &results, int ratio,
                                 const double *values);
