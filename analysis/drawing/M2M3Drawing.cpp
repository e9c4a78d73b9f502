#include "analysis/drawing/M2M3Drawing.h"

#include "analysis/drawing/PointCloud.h"
#include "analysis/results/QuantityRange.h"
#include "display/DispABase.h"
#include "display/PlotFrame.h"

#include <QStylePainter>

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

constexpr double radius = 1;            // pixels
constexpr double lineWidth = 2;         // pixels
const QColor edgeColour(150, 150, 150); // makes yellow visible on white

struct Extent {
    ValueRange x{std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};
    ValueRange y = x;
};

void widen(ValueRange *range, double low, double high)
{
    range->min = std::min(range->min, low);
    range->max = std::max(range->max, high);
}

/// Of the points both of whose coordinates are finite; its ends stand the wrong way round without any.
Extent extentOf(const M2M3Input &input)
{
    Extent all;
    std::mutex merging;
    numeric::parallelRanges(input.r.count, 0, [&](std::size_t begin, std::size_t end) {
        Extent share;
        for (std::size_t i = begin; i < end; ++i) {
            const QPointF point = pointOf(input, i);
            if (!std::isfinite(point.x()) || !std::isfinite(point.y()))
                continue;
            widen(&share.x, point.x(), point.x());
            widen(&share.y, point.y(), point.y());
        }
        const std::lock_guard<std::mutex> lock(merging);
        widen(&all.x, share.x.min, share.x.max);
        widen(&all.y, share.y.min, share.y.max);
    });
    return all;
}

void setRange(DispABase *display, const M2M3Input &input)
{
    if (display->area()->scaleFixed) // the extent of millions of pixels takes a while
        return;
    const Extent extent = extentOf(input);
    if (extent.x.min > extent.x.max)
        return;
    const auto margin = [](const ValueRange &range) {
        return range.max > range.min ? (range.max - range.min) / 10 : 0.1;
    };
    const double dx = margin(extent.x);
    const double dy = margin(extent.y);
    display->setRealRange(extent.x.min - dx, extent.y.min - dy, extent.x.max + dx, extent.y.max + dy);
}

/// Through the whole range.
void drawLine(QPainter *p, const ChCoord &cc, const QColor &colour, const M2M3Line &line)
{
    const auto at = [&](double x) {
        return QPointF(x, line.slope * x + line.offset);
    };
    const QPolygonF ends = plot::toPixels(cc, QVector<QPointF>{at(cc.rx0()), at(cc.rx1())});
    for (const QPen &pen : {QPen(edgeColour, lineWidth + 1), QPen(colour, lineWidth)}) {
        p->setPen(pen);
        plot::drawCurve(p, cc, ends);
    }
}

} // namespace

QPointF pointOf(const M2M3Input &input, std::size_t i)
{
    const double p = input.p.at(i);
    return {input.q.at(i) - p, input.r.at(i) - p};
}

M2M3Line referenceLine(const EdgeValues &reference)
{
    return {(reference.r - reference.p) / (reference.q - reference.p), 0.0};
}

M2M3Line mixtureLine(const EdgeValues &first, const EdgeValues &second)
{
    const double firstM2 = first.q - first.p;
    const double firstM3 = first.r - first.p;
    const double slope = (second.r - second.p - firstM3) / (second.q - second.p - firstM2);
    return {slope, firstM3 - slope * firstM2};
}

void resultdrawing::drawM2M3(DispABase *display, QStylePainter *p, const M2M3Input &input)
{
    display->setXYTitle(input.xTitle, input.yTitle);
    DispArea *const area = display->area();
    plot::begin(area, p);
    if (input.r.count == 0)
        return;
    setRange(display, input);
    const ChCoord &cc = area->cc;
    if (plot::isDrawable(cc)) {
        plot::drawVertical(p, cc, Qt::black, 0);
        plot::drawHorizontal(p, cc, Qt::black, 0);
        drawLine(p, cc, firstReferenceColour, referenceLine(input.first));
        drawLine(p, cc, secondReferenceColour, referenceLine(input.second));
        drawLine(p, cc, mixtureColour, mixtureLine(input.first, input.second));
        PointCloud cloud(*p, cc, radius);
        cloud.add(input.r.count, [&input](std::size_t i) { return pointOf(input, i); });
        cloud.paint(p, input.isBlue ? QColor(0, 0, 255) : QColor(255, 0, 0));
    }
    area->drawScale(p, true);
}
