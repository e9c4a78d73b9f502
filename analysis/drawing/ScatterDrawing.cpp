#include "analysis/drawing/ScatterDrawing.h"

#include "analysis/drawing/PointCloud.h"
#include "analysis/methods/FourPoints.h"
#include "display/DispABase.h"
#include "display/PlotFrame.h"

#include <QStylePainter>

namespace
{
constexpr double radius = 1; // pixels
}

void resultdrawing::drawScatter(DispABase *display, QStylePainter *p, const ScatterInput &input)
{
    display->setXYTitle(input.xTitle, input.yTitle);
    DispArea *const area = display->area();
    plot::begin(area, p);
    if (input.count == 0)
        return;
    display->setRealRange(input.valences.min, input.amounts.min, input.valences.max, input.amounts.max);
    const ChCoord &cc = area->cc;
    if (plot::isDrawable(cc)) {
        plot::drawVerticals(p, cc, plot::gridColour, {input.valenceA, 0.1, input.valenceA, input.valenceB + 0.05});
        plot::drawHorizontals(p, cc, plot::gridColour, {0.0, 0.1, 0.0, 1.05}); // 0.0, 0.1, ... 1.0
        PointCloud cloud(*p, cc, radius);
        cloud.add(input.count, [&input](std::size_t i) {
            return QPointF(mixedValence(input.valenceA, input.valenceB, input.a[i]), input.t[i]);
        });
        cloud.paint(p, Qt::black);
    }
    area->drawScale(p, true);
}
