#include "analysis/drawing/GraphFrame.h"

#include "display/DispABase.h"
#include "display/PlotFrame.h"

#include <QStylePainter>

void resultdrawing::drawFramed(DispABase *display, QStylePainter *p, const GraphFrame &frame,
                               const std::function<void(const ChCoord &cc)> &contents)
{
    display->setXYTitle(frame.xTitle, frame.yTitle);
    DispArea *const area = display->area();
    plot::begin(area, p);
    if (!frame.hasContents)
        return;
    if (frame.natural)
        display->offerRange(*frame.natural, frame.follow);
    if (plot::isDrawable(area->cc))
        contents(area->cc);
    area->drawScale(p, true);
}
