#pragma once

#include "display/RealRange.h"
#include "display/ValueRange.h"

#include <QPointF>
#include <QString>

#include <cstddef>
#include <optional>

class DispABase;
class QStylePainter;
struct ScatterCache;

struct ScatterInput {
    const double *a = nullptr; ///< per pixel: fraction of the first reference
    const double *t = nullptr; ///< per pixel: thickness
    std::size_t count = 0;     ///< of pixels
    double valenceA = 0.0;     ///< of the first and second reference in use
    double valenceB = 0.0;
    ValueRange valences; ///< shown along x
    ValueRange amounts;  ///< shown along y
    QString xTitle;
    QString yTitle;
    quint64 revision = 0; ///< another number whenever `a`, `t` or the valences change; 0: every paint reads all pixels
};

/// Where pixel i is drawn: (valence, thickness).
QPointF pointOf(const ScatterInput &input, std::size_t i);

namespace resultdrawing
{

/// The ranges of valence and thickness as given; none without pixels.
std::optional<RealRange> naturalRange(const ScatterInput &input);

/// The pixels' thickness against their valence a valenceA + (1 - a) valenceB. Without pixels the area is only white.
void drawScatter(DispABase *display, QStylePainter *p, const ScatterInput &input, ScatterCache *cache = nullptr);

} // namespace resultdrawing
