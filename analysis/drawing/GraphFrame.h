#pragma once

#include "display/RealRange.h"

#include <QString>

#include <functional>
#include <optional>

class ChCoord;
class DispABase;
class QStylePainter;

/// What every graph of results has in common.
struct GraphFrame {
    QString xTitle;
    QString yTitle;
    bool hasContents = true;          ///< false: the area is only white
    std::optional<RealRange> natural; ///< offered to the display; none leaves the range that stands
    Follow follow = Follow::BothAxes; ///< see DispArea::offerRange()
};

namespace resultdrawing
{

/// Draws the titles, the white area and the scale, and in between `contents`, where the plot has room for it.
void drawFramed(DispABase *display, QStylePainter *p, const GraphFrame &frame,
                const std::function<void(const ChCoord &cc)> &contents);

} // namespace resultdrawing
