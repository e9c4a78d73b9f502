#include "analysis/drawing/HistogramDrawing.h"

#include "analysis/drawing/GraphFrame.h"
#include "display/DispABase.h"
#include "display/HistogramBins.h"
#include "display/Legend.h"
#include "display/PlotFrame.h"
#include "numeric/RealToInt.h"

#include <QStylePainter>

#include <algorithm>
#include <cmath>
#include <vector>

using numeric::truncToInt;

namespace
{

constexpr int narrowestOutlined = 3;  // pixels: outlines of narrower boxes would be all there is to see
constexpr double partLineWidth = 1.5; // pixels

/// Columns of pixels, first to last.
struct Columns {
    int first, last;
};

Columns columnsOfPlot(const ChCoord &cc)
{
    const QRectF inner = plot::innerRect(cc);
    return {truncToInt(inner.left()), truncToInt(inner.right())};
}

/// The column of the lower edge of box i, beyond the plot for one outside of it.
int columnOfEdge(const ChCoord &cc, const HistogramBins &bins, const Columns &all, int i)
{
    return truncToInt(std::max(all.first - 1.0, std::min(all.last + 1.0, cc.r2sx(bins.lowerEdge(i)))));
}

/// Calls use(count, columns) for every box that has a count, from its lower to its upper edge. A single box is
/// infinitely wide.
template <class Use>
void forEachBox(const ChCoord &cc, const HistogramBins &bins, Use use)
{
    const Columns all = columnsOfPlot(cc);
    if (bins.n == 1 && bins.counts.at(0) > 0)
        use(bins.counts.at(0), Columns{all.first - 1, all.last + 1});
    if (bins.n < 2)
        return;
    int lower = columnOfEdge(cc, bins, all, 0);
    for (int i = 0; i < bins.n; ++i) {
        const int upper = columnOfEdge(cc, bins, all, i + 1);
        const Columns box{std::min(lower, upper), std::max(lower, upper)};
        if (bins.counts.at(i) > 0 && box.last >= all.first && box.first <= all.last)
            use(bins.counts.at(i), box);
        lower = upper;
    }
}

/// Half a pixel row beyond the plot at most.
int rowOfCount(const ChCoord &cc, int count)
{
    const QRectF inner = plot::innerRect(cc);
    return truncToInt(std::max(inner.top() - 1, std::min(inner.bottom() + 1, cc.r2sy(count))));
}

/// The largest count in each pixel column of the plot. There may be millions of boxes: the columns look for theirs,
/// whose edges rise or fall from box to box.
std::vector<int> countsOfColumns(const ChCoord &cc, const HistogramBins &bins)
{
    const Columns all = columnsOfPlot(cc);
    std::vector<int> counts(static_cast<std::size_t>(all.last - all.first + 1));
    if (bins.n < 2) {
        forEachBox(cc, bins, [&counts](int count, const Columns &) { std::fill(counts.begin(), counts.end(), count); });
        return counts;
    }
    const int direction = columnOfEdge(cc, bins, all, bins.n) < columnOfEdge(cc, bins, all, 0) ? -1 : 1;
    /// The first edge from `from` on that lies in `column` or, with `beyond`, behind it, in the order of the boxes.
    const auto firstEdge = [&](int from, int column, bool beyond) {
        int count = bins.n + 1 - from;
        while (count > 0) {
            const int half = count / 2;
            const int place = direction * (columnOfEdge(cc, bins, all, from + half) - column);
            if (place < 0 || (beyond && place == 0)) {
                from += half + 1;
                count -= half + 1;
            } else {
                count = half;
            }
        }
        return from;
    };
    int reached = 0;
    for (std::size_t k = 0; k < counts.size(); ++k) {
        const std::size_t at = direction > 0 ? k : counts.size() - 1 - k;
        const int column = all.first + static_cast<int>(at);
        reached = firstEdge(reached, column, false);
        const int begin = std::max(reached - 1, 0); // the box that reaches into the column
        const int end = std::min(firstEdge(reached, column, true), bins.n);
        counts[at] = bins.largestCount(begin, end);
    }
    return counts;
}

void drawWideBoxes(QPainter *p, const ChCoord &cc, const HistogramBins &bins)
{
    p->setPen(resultdrawing::boxOutlineColour);
    p->setBrush(resultdrawing::boxColour);
    const int base = rowOfCount(cc, 0);
    forEachBox(cc, bins, [&](int count, const Columns &box) {
        const int top = rowOfCount(cc, count);
        p->drawRect(QRect(box.first, std::min(top, base), box.last - box.first, std::abs(base - top)));
    });
    p->setBrush(Qt::NoBrush);
}

/// The upper edge of a histogram in pixels.
QPolygonF outline(const ChCoord &cc, const std::vector<int> &counts)
{
    const Columns all = columnsOfPlot(cc);
    QPolygonF line;
    for (std::size_t i = 0; i < counts.size(); ++i) {
        const double row = rowOfCount(cc, counts[i]) + 0.5;
        const double column = all.first + static_cast<int>(i) + 0.5;
        if (i > 0 && i + 1 < counts.size() && counts[i] == counts[i - 1] && counts[i] == counts[i + 1])
            continue;
        if (i > 0 && counts[i] != counts[i - 1])
            line.append(QPointF(column, line.last().y()));
        line.append(QPointF(column, row));
    }
    return line;
}

void drawNarrowBoxes(QPainter *p, const ChCoord &cc, const std::vector<int> &counts)
{
    const Columns all = columnsOfPlot(cc);
    const int base = rowOfCount(cc, 0);
    for (std::size_t i = 0; i < counts.size(); ++i) {
        const int top = rowOfCount(cc, counts[i]);
        if (counts[i] > 0)
            p->fillRect(QRect(all.first + static_cast<int>(i), std::min(top, base), 1, std::abs(base - top) + 1),
                        resultdrawing::boxColour);
    }
    p->setPen(resultdrawing::boxOutlineColour);
    plot::drawCurve(p, cc, outline(cc, counts));
}

/// `whole`: the columns of the histogram whose parts they are.
void drawParts(QPainter *p, const ChCoord &cc, const QVector<HistogramPart> &parts, const std::vector<int> &whole)
{
    QVector<LegendEntry> names;
    QVector<QPolygonF> outlines;
    for (const HistogramPart &part : parts) {
        const QPen pen(part.colour, partLineWidth);
        names.append({part.name, pen});
        outlines.append(outline(cc, countsOfColumns(cc, *part.bins)));
        p->setPen(pen);
        plot::drawCurve(p, cc, outlines.last());
    }
    outlines.append(outline(cc, whole)); // not to be covered either
    drawLegend(p, cc, names, outlines);
}

} // namespace

std::optional<RealRange> resultdrawing::naturalRange(const HistogramInput &input)
{
    if (!input.bins || !input.bins->isSet())
        return std::nullopt;
    int largest = input.bins->largestCount();
    for (const HistogramPart &part : input.parts)
        largest = std::max(largest, part.bins->largestCount());
    const double most = std::max(1, largest);
    return RealRange{input.range, {-0.1 * most, 1.1 * most}};
}

void resultdrawing::drawHistogram(DispABase *display, QStylePainter *p, const HistogramInput &input)
{
    const std::optional<RealRange> natural = naturalRange(input);
    const GraphFrame frame{input.xTitle, input.yTitle, natural.has_value(), natural, Follow::XAxis};
    drawFramed(display, p, frame, [&](const ChCoord &cc) {
        plot::drawVerticals(p, cc, plot::gridColour, {0, cc.calcStep(0.1, 20)});
        plot::drawHorizontals(p, cc, plot::gridColour, {0, cc.calcStepY(10.0, 20)});
        const bool isWide = input.bins->n == 1 || std::abs(cc.r2sdx(input.bins->width)) >= narrowestOutlined;
        const std::vector<int> columns = countsOfColumns(cc, *input.bins);
        if (isWide)
            drawWideBoxes(p, cc, *input.bins);
        else
            drawNarrowBoxes(p, cc, columns);
        if (!input.parts.isEmpty())
            drawParts(p, cc, input.parts, columns);
    });
}
