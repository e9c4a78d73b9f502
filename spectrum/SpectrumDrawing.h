#pragma once

#include "display/RealRange.h"

#include <QRectF>
#include <QSizeF>

#include <optional>

class AMutE;
class ChCoord;
class QPainter;

/// The picture of one spectrum: its points, its pre- and post-edge lines and the ends of their fit ranges.
namespace spectrumdrawing
{

/// The real range that shows a spectrum, widened by 5 % on every side: all of its stored energies, or the energies
/// from twice the pre-edge end to twice the post-edge start, both counted from the edge, as long as there are points
/// between them. In eV and mu. None for a spectrum that is not valid or has no finite point.
std::optional<RealRange> naturalRange(const AMutE &spectrum, bool isFullRange);

/// Fills the area with white and draws the spectrum over the inner rectangle of `cc`, whose real range is set. A
/// spectrum that is not valid gives the white area alone; points that are not finite are left out.
void drawSpectrum(QPainter *p, const ChCoord &cc, const AMutE &spectrum);

/// A rectangle of that size where the drawn spectrum and its lines leave the plot most free: at the lower right, unless
/// another place is better.
QRectF placeForText(const ChCoord &cc, const AMutE &spectrum, const QSizeF &size);

} // namespace spectrumdrawing
