#pragma once

#include "analysis/results/QuantityRange.h"

#include <QString>

#include <cstddef>

class DispABase;
class QStylePainter;

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
};

namespace resultdrawing
{

/// The pixels' thickness against their valence a valenceA + (1 - a) valenceB. Without pixels the area is only white.
void drawScatter(DispABase *display, QStylePainter *p, const ScatterInput &input);

} // namespace resultdrawing
