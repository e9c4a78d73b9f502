#include "analysis/drawing/MutsDrawing.h"

#include "display/DispABase.h"
#include "display/Legend.h"
#include "display/PlotFrame.h"
#include "spectrum/AMutE.h"

#include <QStylePainter>

#include <algorithm>
#include <cmath>

namespace
{

constexpr double margin = 0.05;  // of the values' extent, on either side
constexpr double curveWidth = 2; // pixels
constexpr int markedWidth = 3;   // pixels: seen also where an energy point is

/// The smallest and largest finite coordinates; the edges stand the wrong way round without any.
QRectF extent(const MutsInput &input, double from, double to)
{
    double left = 1, right = -1, low = 0, high = 0;
    for (const MutsCurve &curve : input.curves) {
        for (const QPointF &point : curve.points) {
            if (!std::isfinite(point.x()) || !std::isfinite(point.y()) || point.x() < from || point.x() > to)
                continue;
            const bool isFirst = left > right;
            left = isFirst ? point.x() : std::min(left, point.x());
            right = isFirst ? point.x() : std::max(right, point.x());
            low = isFirst ? point.y() : std::min(low, point.y());
            high = isFirst ? point.y() : std::max(high, point.y());
        }
    }
    return QRectF(QPointF(left, low), QPointF(right, high));
}

void setRange(DispABase *display, const MutsInput &input)
{
    const bool hasWindow = input.windowFrom < input.windowTo;
    const double infinity = std::numeric_limits<double>::infinity();
    QRectF range = extent(input, hasWindow ? input.windowFrom : -infinity, hasWindow ? input.windowTo : infinity);
    if (range.left() > range.right())
        return;
    if (hasWindow) {
        range.setLeft(input.windowFrom);
        range.setRight(input.windowTo);
    } else if (range.width() == 0) {
        range.adjust(-0.5, 0, 0.5, 0);
    }
    const double by = range.height() > 0 ? range.height() * margin : 0.5;
    display->setRealRange(range.left(), range.top() - by, range.right(), range.bottom() + by);
}

QPen penOf(const MutsCurve &curve)
{
    const bool isSolid = curve.style == Qt::SolidLine;
    return QPen(curve.colour, curveWidth, curve.style, isSolid ? Qt::RoundCap : Qt::FlatCap, Qt::RoundJoin);
}

} // namespace

QPolygonF spectrumPoints(const AMutE &spectrum, int type)
{
    QPolygonF points;
    if (!spectrum.valid())
        return points;
    points.reserve(spectrum.pointCount());
    for (int i = 0; i < spectrum.pointCount(); ++i)
        points.append(QPointF(spectrum.shiftedEnergy(i), spectrum.valueAt(type, i)));
    return points;
}

void resultdrawing::drawMuts(DispABase *display, QStylePainter *p, const MutsInput &input)
{
    display->setXYTitle(input.xTitle, input.yTitle);
    DispArea *const area = display->area();
    plot::begin(area, p);
    setRange(display, input);
    const ChCoord &cc = area->cc;
    if (plot::isDrawable(cc)) {
        plot::drawVerticals(p, cc, mutsGridColour, {0, cc.calcStep(0.1, 20)});
        plot::drawHorizontals(p, cc, mutsGridColour, {0, cc.calcStepY(10.0, 20)});
        for (const double energy : input.markedEnergies)
            plot::drawVertical(p, cc, markedEnergyColour, energy, markedWidth);
        for (const double energy : input.pointEnergies)
            plot::drawVertical(p, cc, pointEnergyColour, energy);

        QVector<LegendEntry> names;
        QVector<QPolygonF> curves;
        for (const MutsCurve &curve : input.curves) {
            if (curve.points.isEmpty())
                continue;
            names.append({curve.name, penOf(curve)});
            curves.append(plot::toPixels(cc, curve.points));
            p->setPen(penOf(curve));
            plot::drawCurve(p, cc, curves.last());
        }
        drawLegend(p, cc, names, curves);
    }
    area->drawScale(p, true);
}
