#include "analysis/drawing/ScatterDrawing.h"

#include "analysis/drawing/GraphFrame.h"
#include "analysis/drawing/PointCloud.h"
#include "analysis/methods/FourPoints.h"
#include "display/DispABase.h"
#include "display/PlotFrame.h"

#include <QStylePainter>

namespace
{
constexpr double radius = 1; // pixels
}

QPointF pointOf(const ScatterInput &input, std::size_t i)
{
    return {mixedValence(input.valenceA, input.valenceB, input.a[i]), input.t[i]};
}

std::optional<RealRange> resultdrawing::naturalRange(const ScatterInput &input)
{
    return input.count == 0 ? std::nullopt : std::optional<RealRange>({input.valences, input.amounts});
}

void resultdrawing::drawScatter(DispABase *display, QStylePainter *p, const ScatterInput &input, ScatterCache *cache)
{
    const std::optional<RealRange> natural = naturalRange(input);
    drawFramed(display, p, {input.xTitle, input.yTitle, natural.has_value(), natural}, [&](const ChCoord &cc) {
        plot::drawVerticals(p, cc, plot::gridColour, {input.valenceA, 0.1, input.valenceA, input.valenceB + 0.05});
        plot::drawHorizontals(p, cc, plot::gridColour, {0.0, 0.1, 0.0, 1.05}); // 0.0, 0.1, ... 1.0
        paintPoints(
            p, CloudPlace(*p, cc, radius), Qt::black, input.count,
            [&input](std::size_t i) { return pointOf(input, i); }, input.revision, cache);
    });
}
