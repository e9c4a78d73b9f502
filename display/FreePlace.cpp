#include "display/FreePlace.h"

#include "display/PlotFrame.h"

#include <limits>

namespace
{

constexpr double lineWidth = 1; // pixels that a line has beside its middle

/// Whether a line lies on one side of a rectangle.
bool isBeside(const QRectF &rect, const QPointF &begin, const QPointF &end)
{
    return (begin.x() < rect.left() && end.x() < rect.left()) || (begin.x() > rect.right() && end.x() > rect.right()) ||
           (begin.y() < rect.top() && end.y() < rect.top()) || (begin.y() > rect.bottom() && end.y() > rect.bottom());
}

/// How many pixels of lines lie in a rectangle; `enough` or more when there are as many.
double coveredLength(const QRectF &rect, const QVector<QPolygonF> &lines, double enough)
{
    double length = 0;
    for (const QPolygonF &points : lines) {
        for (int i = 0; i + 1 < points.size() && length < enough; ++i) {
            QLineF line(points.at(i), points.at(i + 1));
            if (!isBeside(rect, line.p1(), line.p2()) && plot::clipLine(rect, &line))
                length += line.length();
        }
    }
    return length;
}

} // namespace

QRectF freePlace(const QVector<QPointF> &places, const QSizeF &size, const QVector<QPolygonF> &lines)
{
    QRectF best;
    double least = std::numeric_limits<double>::infinity();
    for (const QPointF &place : places) {
        const QRectF rect(place, size);
        const double length = coveredLength(rect.adjusted(-lineWidth, -lineWidth, lineWidth, lineWidth), lines, least);
        if (length >= least)
            continue;
        least = length;
        best = rect;
    }
    return best;
}
