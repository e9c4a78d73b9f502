#pragma once

#include "display/RealRange.h"

#include <QColor>
#include <QPointF>
#include <QString>

#include <cstddef>
#include <optional>

class DispABase;
class QStylePainter;
struct ScatterCache;

/// The absorption of a map's pixels, borrowed for a call.
struct PixelValues {
    const double *values = nullptr;
    std::size_t count = 0;

    /// A pixel that the map does not have counts with -1.
    double at(std::size_t i) const { return i < count ? values[i] : -1.0; }
};

/// A reference at the first and second anchor point and at the V point.
struct EdgeValues {
    double p = 0.0;
    double q = 0.0;
    double r = 0.0;
};

struct M2M3Input {
    PixelValues p; ///< at the first anchor point
    PixelValues q; ///< at the second anchor point
    PixelValues r; ///< at the V point: has as many pixels as are drawn. None when a point is missing
    EdgeValues first;
    EdgeValues second;
    bool isBlue = false; ///< pixels in blue instead of red
    QString xTitle;
    QString yTitle;
    quint64 revision = 0; ///< another number whenever `p`, `q` or `r` change; 0: every paint reads all pixels
};

/// Where pixel i is drawn: (M2, M3).
QPointF pointOf(const M2M3Input &input, std::size_t i);

/// y = slope x + offset.
struct M2M3Line {
    double slope = 0.0;
    double offset = 0.0;
};

/// Where the pixels of a pure reference lie, M3 / M2 = (R - P) / (Q - P); infinite or NaN for Q = P.
M2M3Line referenceLine(const EdgeValues &reference);
/// Through the points (M2, M3) of both references: where their mixtures of unit thickness lie.
M2M3Line mixtureLine(const EdgeValues &first, const EdgeValues &second);

namespace resultdrawing
{

const QColor firstReferenceColour(255, 255, 0);
const QColor secondReferenceColour(255, 0, 255);
const QColor mixtureColour(0, 255, 255);

/// The extent of the pixels that have finite coordinates, widened on every side by a tenth of it, or by 0.1 where it is
/// zero; none without such pixels. O(pixels), but kept in `cache` (may be null) for the input's revision.
std::optional<RealRange> naturalRange(const M2M3Input &input, ScatterCache *cache = nullptr);

/// The pixels' step from P to R, M3, against that from P to Q, M2, with the lines of the references. Without pixels the
/// area is only white.
void drawM2M3(DispABase *display, QStylePainter *p, const M2M3Input &input, ScatterCache *cache = nullptr);

} // namespace resultdrawing
