#include "display/FreePlace.h"

#include "display/PlotFrame.h"

#include <limits>

namespace
{

constexpr double lineWidth = 1; // pixels that a line has beside its middle

/// How many pixels of lines lie in a rectangle.
double coveredLength(const QRectF &rect, const QVector<QPolygonF> &lines)
{
    double length = 0;
    for (const QPolygonF &points : lines) {
        for (int i = 0; i + 1 < points.size(); ++i) {
            QLineF line(points.at(i), points.at(i + 1));
            if (plot::clipLine(rect, &line))
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
        const double length = coveredLength(rect.adjusted(-lineWidth, -lineWidth, lineWidth, lineWidth), lines);
        if (length >= least)
            continue;
        least = length;
        best = rect;
    }
    return best;
}
