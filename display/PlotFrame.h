#pragma once

#include "display/ValueRange.h"

#include <QColor>
#include <QLineF>
#include <QPolygonF>
#include <QRectF>
#include <QVector>

#include <limits>

class ChCoord;
class DispArea;
class QPainter;

/// What the graphs have in common. Nothing in here hands a coordinate to the painter that is not finite or
/// lies far outside the plot.
namespace plot
{

const QColor gridColour(200, 200, 255);

/// Applies the margins and fills the area with white.
void begin(DispArea *area, QPainter *p);

/// Whether the plot has a size and its real range is finite and not empty: only then are there pixels for values.
bool isDrawable(const ChCoord &cc);

/// The inner rectangle in pixels.
QRectF innerRect(const ChCoord &cc);

/// Grid lines at origin, origin + step, ... to both sides, from `from` on and below `below`, where they are visible.
struct GridLines {
    double origin = 0.0;
    double step = 1.0;
    double from = -std::numeric_limits<double>::infinity();
    double below = std::numeric_limits<double>::infinity();
};

/// Where they are drawn: the real values within lowest ... highest, lines less than 3 pixels apart being thinned out to
/// every 2nd, 5th, 10th, ... that makes them at least 20 pixels apart. `pixelsPerUnit` may be negative.
QVector<double> visibleLines(const GridLines &lines, double pixelsPerUnit, double lowest, double highest);

/// The step of ticks or lines that are more than `minPixels` apart along an axis of that length, on which the range is
/// drawn: 1, 2 or 5 times a power of ten, as the transformer's step rule goes. 0 for no range or no length.
double tickStep(double pixels, const ValueRange &range, double minPixels = 20);

/// Short marks inwards from the lower and the left edge, between the ends of both ranges. Nothing in a plot that is not
/// drawable.
void drawTicks(QPainter *p, const ChCoord &cc);

/// Lines across the plot, one pixel wide. The plot must be drawable.
void drawVerticals(QPainter *p, const ChCoord &cc, const QColor &colour, const GridLines &lines);
void drawHorizontals(QPainter *p, const ChCoord &cc, const QColor &colour, const GridLines &lines);
/// One line across the plot, unless it is outside; `width` in pixels.
void drawVertical(QPainter *p, const ChCoord &cc, const QColor &colour, double x, int width = 1);
void drawHorizontal(QPainter *p, const ChCoord &cc, const QColor &colour, double y);

/// Cuts a line to a rectangle; false when nothing of it remains or an end is not finite.
bool clipLine(const QRectF &rect, QLineF *line);

/// The points in pixels.
QPolygonF toPixels(const ChCoord &cc, const QPolygonF &points);

enum class Edges { Smooth, Sharp };

/// Joins points given in pixels with the painter's pen, cut to the plot; with a gap where one is not finite.
void drawCurve(QPainter *p, const ChCoord &cc, const QPolygonF &pixels, Edges edges = Edges::Smooth);

/// The pixel size of texts inside the plot, in proportion to its height.
int textPixels(const ChCoord &cc);

} // namespace plot
