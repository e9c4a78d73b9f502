#include "analysis/drawing/MutsDrawing.h"

#include "analysis/drawing/GraphFrame.h"
#include "display/DispABase.h"
#include "display/Legend.h"
#include "display/PlotFrame.h"
#include "spectrum/AMutE.h"

#include <QStylePainter>

#include <cmath>

namespace
{

constexpr double margin = 0.05;  // of the values' extent, on either side
constexpr double curveWidth = 2; // pixels
constexpr int markedWidth = 3;   // pixels: seen also where an energy point is

QPen penOf(const MutsCurve &curve)
{
    const bool isSolid = curve.style == Qt::SolidLine;
    return QPen(curve.colour, curveWidth, curve.style, isSolid ? Qt::RoundCap : Qt::FlatCap, Qt::MiterJoin);
}

/// All curves, and their names where these are in nobody's way.
void drawCurves(QPainter *p, const ChCoord &cc, const MutsInput &input)
{
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

std::optional<RealRange> resultdrawing::naturalRange(const MutsInput &input)
{
    const bool hasWindow = input.windowFrom < input.windowTo;
    RealRange range{emptyRange, emptyRange};
    for (const MutsCurve &curve : input.curves) {
        for (const QPointF &point : curve.points) {
            const bool isWithin = !hasWindow || (point.x() >= input.windowFrom && point.x() <= input.windowTo);
            if (!isWithin || !std::isfinite(point.x()) || !std::isfinite(point.y()))
                continue;
            widen(&range.x, point.x());
            widen(&range.y, point.y());
        }
    }
    if (range.x.min > range.x.max)
        return std::nullopt;
    if (hasWindow)
        range.x = {input.windowFrom, input.windowTo};
    else if (range.x.min == range.x.max)
        range.x = withMargin(range.x, 0, 0.5);
    return RealRange{range.x, withMargin(range.y, margin, 0.5)};
}

void resultdrawing::drawMuts(DispABase *display, QStylePainter *p, const MutsInput &input)
{
    drawFramed(display, p, {input.xTitle, input.yTitle, true, naturalRange(input)}, [&](const ChCoord &cc) {
        plot::drawVerticals(p, cc, mutsGridColour, {0, cc.calcStep(0.1, 20)});
        const double step = plot::tickStep(plot::innerRect(cc).height(), display->area()->shownRange().y);
        plot::drawHorizontals(p, cc, mutsGridColour, {0, step});
        for (const double energy : input.markedEnergies)
            plot::drawVertical(p, cc, markedEnergyColour, energy, markedWidth);
        for (const double energy : input.pointEnergies)
            plot::drawVertical(p, cc, pointEnergyColour, energy);
        if (input.edgeEnergy)
            plot::drawVertical(p, cc, edgeEnergyColour, *input.edgeEnergy);
        drawCurves(p, cc, input);
    });
}
