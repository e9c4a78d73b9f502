#include "analysis/drawing/M2M3Drawing.h"

#include "analysis/drawing/GraphFrame.h"
#include "analysis/drawing/PointCloud.h"
#include "display/DispABase.h"
#include "display/PlotFrame.h"

#include <QStylePainter>

#include <cmath>
#include <mutex>

namespace
{

constexpr double radius = 1;            // pixels
constexpr double lineWidth = 2;         // pixels
const QColor edgeColour(150, 150, 150); // makes yellow visible on white

/// Of the points both of whose coordinates are finite; empty without any.
RealRange extentOf(const M2M3Input &input)
{
    RealRange all{emptyRange, emptyRange};
    std::mutex merging;
    numeric::parallelRanges(input.r.count, 0, [&](std::size_t begin, std::size_t end) {
        RealRange share{emptyRange, emptyRange};
        for (std::size_t i = begin; i < end; ++i) {
            const QPointF point = pointOf(input, i);
            if (!std::isfinite(point.x()) || !std::isfinite(point.y()))
                continue;
            widen(&share.x, point.x());
            widen(&share.y, point.y());
        }
        const std::lock_guard<std::mutex> lock(merging);
        widen(&all.x, share.x);
        widen(&all.y, share.y);
    });
    return all;
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

std::optional<RealRange> resultdrawing::naturalRange(const M2M3Input &input, ScatterCache *cache)
{
    ScatterCache unkept;
    ScatterCache &kept = cache ? *cache : unkept;
    if (input.revision == 0 || kept.rangeRevision != input.revision) {
        const RealRange extent = extentOf(input);
        const RealRange range{withMargin(extent.x, 0.1, 0.1), withMargin(extent.y, 0.1, 0.1)};
        kept.range = extent.x.min > extent.x.max ? std::nullopt : std::optional<RealRange>(range);
        kept.rangeRevision = input.revision;
    }
    return kept.range;
}

void resultdrawing::drawM2M3(DispABase *display, QStylePainter *p, const M2M3Input &input, ScatterCache *cache)
{
    const GraphFrame frame{input.xTitle, input.yTitle, input.r.count > 0, naturalRange(input, cache)};
    drawFramed(display, p, frame, [&](const ChCoord &cc) {
        plot::drawVertical(p, cc, Qt::black, 0);
        plot::drawHorizontal(p, cc, Qt::black, 0);
        drawLine(p, cc, firstReferenceColour, referenceLine(input.first));
        drawLine(p, cc, secondReferenceColour, referenceLine(input.second));
        drawLine(p, cc, mixtureColour, mixtureLine(input.first, input.second));
        paintPoints(
            p, CloudPlace(*p, cc, radius), input.isBlue ? QColor(0, 0, 255) : QColor(255, 0, 0), input.r.count,
            [&input](std::size_t i) { return pointOf(input, i); }, input.revision, cache);
    });
}
