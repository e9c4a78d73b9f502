#include "display/PlotFrame.h"

#include "display/DispArea.h"
#include "display/GraphBoxes.h"
#include "display/WideLine.h"
#include "numeric/RealToInt.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

using numeric::truncToInt;

namespace
{

constexpr double closestLines = 3;  // pixels: closer grid lines are thinned out
constexpr double thinnedLines = 20; // pixels: to at least this distance
constexpr int mostLines = 10000;
constexpr double overhang = 8; // pixels beyond the plot to which curves are drawn, for their width

/// The multiple of `step` by 1, or else by the first of 2, 5, 10, ... that makes the lines far enough apart; 0 for
/// none.
double thinnedStep(double step, double pixelsPerUnit)
{
    const double pixels = std::abs(step * pixelsPerUnit);
    if (!(pixels > 0) || !std::isfinite(pixels))
        return 0;
    if (pixels >= closestLines)
        return step;
    for (double decade = 1; std::isfinite(decade); decade *= 10) {
        for (const double multiple : {decade, 2 * decade, 5 * decade}) {
            if (pixels * multiple >= thinnedLines)
                return step * multiple;
        }
    }
    return 0;
}

/// Narrows the part [*from, *to] of a line to where `start + part * change` is not below `low`.
bool clipEnd(double start, double change, double low, double *from, double *to)
{
    if (change == 0)
        return start >= low;
    const double at = (low - start) / change;
    if (change > 0)
        *from = std::max(*from, at);
    else
        *to = std::min(*to, at);
    return *from <= *to;
}

} // namespace

void plot::begin(DispArea *area, QPainter *p)
{
    area->cc.setMargins();
    area->cc.textLines = readableTextLines(area->cc);
    p->fillRect(area->rect(), Qt::white);
}

bool plot::isDrawable(const ChCoord &cc)
{
    const auto isUsable = [](double scale) {
        return std::isfinite(scale) && scale != 0;
    };
    return std::isfinite(cc.rx0()) && std::isfinite(cc.ry0()) && std::isfinite(cc.rx1()) && std::isfinite(cc.ry1()) &&
           std::abs(cc.isx1() - cc.isx0()) >= 1 && std::abs(cc.isy1() - cc.isy0()) >= 1 && isUsable(cc.r2sdx(1)) &&
           isUsable(cc.r2sdy(1));
}

QRectF plot::innerRect(const ChCoord &cc)
{
    return QRectF(QPointF(cc.isx0(), cc.isy0()), QPointF(cc.isx1(), cc.isy1())).normalized();
}

QVector<double> plot::visibleLines(const GridLines &lines, double pixelsPerUnit, double lowest, double highest)
{
    QVector<double> values;
    const double step = thinnedStep(lines.step, pixelsPerUnit);
    if (!(step > 0) || lowest > highest)
        return values;
    // A little wider than wanted, as the division rounds; what is outside is left out below.
    const double first = std::ceil((std::max(lowest, lines.from) - lines.origin) / step - 1e-6);
    const double last = std::floor((std::min(highest, lines.below) - lines.origin) / step + 1e-6);
    const int count = truncToInt(std::min<double>(last - first, mostLines));
    for (int i = 0; i <= count; ++i) {
        const double value = lines.origin + (first + i) * step;
        const double slack = step * 1e-6;
        if (value >= std::max(lowest, lines.from) - slack && value <= highest + slack && value < lines.below)
            values.append(value);
    }
    return values;
}

double plot::tickStep(double pixels, const ValueRange &range, double minPixels)
{
    const double span = std::abs(range.max - range.min);
    if (!(span > 0) || !std::isfinite(span) || !(pixels > 0))
        return 0;
    ChCoord axis; // along x, as the step rule measures
    axis.setInnerArea(0, 0, pixels, 1);
    axis.setRealX(0, span);
    constexpr int finest = 4; // decades below the range: four digits of pixels
    return axis.calcStep(std::pow(10.0, std::floor(std::log10(span)) - finest), minPixels);
}

void plot::drawTicks(QPainter *p, const ChCoord &cc)
{
    if (!isDrawable(cc))
        return;
    constexpr int length = 4; // pixels
    const QRectF inner = innerRect(cc);
    const auto ends = [](double a, double b) {
        return ValueRange{std::min(a, b), std::max(a, b)};
    };
    const ValueRange x = ends(cc.rx0(), cc.rx1());
    const ValueRange y = ends(cc.ry0(), cc.ry1());
    const int left = truncToInt(inner.left());
    const int bottom = truncToInt(inner.bottom());
    for (const double at : visibleLines({0, tickStep(inner.width(), x)}, cc.r2sdx(1), x.min, x.max))
        p->drawLine(truncToInt(cc.r2sx(at)), bottom, truncToInt(cc.r2sx(at)), bottom - length);
    for (const double at : visibleLines({0, tickStep(inner.height(), y)}, cc.r2sdy(1), y.min, y.max))
        p->drawLine(left, truncToInt(cc.r2sy(at)), left + length, truncToInt(cc.r2sy(at)));
}

void plot::drawVerticals(QPainter *p, const ChCoord &cc, const QColor &colour, const GridLines &lines)
{
    const double lowest = std::min(cc.rx0(), cc.rx1());
    const double highest = std::max(cc.rx0(), cc.rx1());
    const QVector<double> values = visibleLines(lines, cc.r2sdx(1), lowest, highest);
    for (const double x : values)
        drawVertical(p, cc, colour, x);
}

void plot::drawHorizontals(QPainter *p, const ChCoord &cc, const QColor &colour, const GridLines &lines)
{
    const double lowest = std::min(cc.ry0(), cc.ry1());
    const double highest = std::max(cc.ry0(), cc.ry1());
    const QVector<double> values = visibleLines(lines, cc.r2sdy(1), lowest, highest);
    for (const double y : values)
        drawHorizontal(p, cc, colour, y);
}

void plot::drawVertical(QPainter *p, const ChCoord &cc, const QColor &colour, double x, int width)
{
    const QRectF inner = innerRect(cc);
    const int column = truncToInt(cc.r2sx(x));
    if (!std::isfinite(cc.r2sx(x)) || column < truncToInt(inner.left()) || column > truncToInt(inner.right()))
        return;
    p->setPen(QPen(colour, width, Qt::SolidLine, Qt::FlatCap));
    p->drawLine(column, truncToInt(inner.top()), column, truncToInt(inner.bottom()));
}

void plot::drawHorizontal(QPainter *p, const ChCoord &cc, const QColor &colour, double y)
{
    const QRectF inner = innerRect(cc);
    const int row = truncToInt(cc.r2sy(y));
    if (!std::isfinite(cc.r2sy(y)) || row < truncToInt(inner.top()) || row > truncToInt(inner.bottom()))
        return;
    p->setPen(colour);
    p->drawLine(truncToInt(inner.left()), row, truncToInt(inner.right()), row);
}

/// Liang and Barsky, ACM Transactions on Graphics 3 (1984) 1.
bool plot::clipLine(const QRectF &rect, QLineF *line)
{
    const QPointF start = line->p1();
    const double dx = line->x2() - line->x1();
    const double dy = line->y2() - line->y1();
    if (!std::isfinite(dx) || !std::isfinite(dy)) // nor are the ends
        return false;
    double from = 0;
    double to = 1;
    if (!clipEnd(start.x(), dx, rect.left(), &from, &to) || !clipEnd(-start.x(), -dx, -rect.right(), &from, &to) ||
        !clipEnd(start.y(), dy, rect.top(), &from, &to) || !clipEnd(-start.y(), -dy, -rect.bottom(), &from, &to))
        return false;
    const auto at = [&](double part) {
        return QPointF(start.x() + part * dx, start.y() + part * dy);
    };
    *line = QLineF(from > 0 ? at(from) : start, to < 1 ? at(to) : line->p2());
    return true;
}

QPolygonF plot::toPixels(const ChCoord &cc, const QPolygonF &points)
{
    QPolygonF pixels;
    pixels.reserve(points.size());
    for (const QPointF &point : points)
        pixels.append(QPointF(cc.r2sx(point.x()), cc.r2sy(point.y())));
    return pixels;
}

namespace
{

/// From a point to a line between two others, squared.
double squaredDistance(const QPointF &point, const QPointF &begin, const QPointF &end)
{
    const QPointF way = end - begin;
    const QPointF to = point - begin;
    const double length = QPointF::dotProduct(way, way);
    const double part = length > 0 ? qBound(0.0, QPointF::dotProduct(to, way) / length, 1.0) : 0.0;
    const QPointF beside = to - part * way;
    return QPointF::dotProduct(beside, beside);
}

/// A polyline without the points that nobody sees on the way between those that stay: every corner of a wide line is
/// costly.
QPolygonF straightened(const QPolygonF &line)
{
    constexpr double unseen = 0.2; // pixels
    constexpr int longest = 16;    // points left out in a row
    QPolygonF kept;
    int last = 0;
    const auto isStraight = [&](int end) {
        for (int i = last + 1; i < end; ++i) {
            if (!(squaredDistance(line[i], line[last], line[end]) < unseen * unseen))
                return false;
        }
        return end - last <= longest;
    };
    for (int i = 0; i < line.size(); ++i) {
        if (i > 0 && i + 1 < line.size() && isStraight(i + 1))
            continue;
        kept.append(line[i]);
        last = i;
    }
    return kept;
}

} // namespace

void plot::drawCurve(QPainter *p, const ChCoord &cc, const QPolygonF &pixels, Edges edges)
{
    const QRectF visible = innerRect(cc).adjusted(-overhang, -overhang, overhang, overhang);
    p->save();
    p->setRenderHint(QPainter::Antialiasing, edges == Edges::Smooth);
    QPolygonF run;
    const auto finishRun = [&] {
        if (run.size() > 1)
            drawWideLine(p, straightened(run));
        run.clear();
    };
    for (int i = 0; i + 1 < pixels.size(); ++i) {
        QLineF line(pixels.at(i), pixels.at(i + 1));
        if (!clipLine(visible, &line)) {
            finishRun();
            continue;
        }
        if (run.isEmpty())
            run.append(line.p1());
        run.append(line.p2());
        if (line.p2() != pixels.at(i + 1)) // leaves the plot
            finishRun();
    }
    finishRun();
    p->restore();
}

int plot::textPixels(const ChCoord &cc)
{
    const double line = std::abs(cc.isy1() - cc.isy0()) / cc.textLines;
    return std::max(9, std::min(14, truncToInt(line * cc.textFill)));
}
