#include "spectrum/SpectrumDrawing.h"

#include "display/ChCoord.h"
#include "spectrum/AMutE.h"

#include <QPainter>
#include <QPolygonF>

#include <algorithm>
#include <cmath>

namespace
{

constexpr double margin = 0.05; // of the span, on either side

/// [*low, *high] made wider on both sides; around a single value by half a unit.
void widen(double *low, double *high)
{
    const double span = *high - *low;
    const double by = span > 0 ? span * margin : 0.5;
    *low -= by;
    *high += by;
}

void drawVertical(QPainter *p, const ChCoord &cc, double energy, const QColor &colour)
{
    const double x = cc.r2sx(energy);
    if (!std::isfinite(x))
        return;
    p->setPen(colour);
    p->drawLine(QPointF(x, cc.isy0()), QPointF(x, cc.isy1()));
}

/// Joins value(i) over the points' energies, with a gap where either is not finite.
template <class Value>
void drawCurve(QPainter *p, const ChCoord &cc, const AMutE &spectrum, const QColor &colour, Value value)
{
    p->setPen(colour);
    QPolygonF run;
    for (int i = 0; i < spectrum.pointCount(); ++i) {
        const QPointF point(cc.r2sx(spectrum.shiftedEnergy(i)), cc.r2sy(value(i)));
        if (std::isfinite(point.x()) && std::isfinite(point.y())) {
            run.append(point);
            continue;
        }
        p->drawPolyline(run);
        run.clear();
    }
    p->drawPolyline(run);
}

} // namespace

QRectF spectrumdrawing::naturalRange(const AMutE &spectrum, bool isFullRange)
{
    const double edge = spectrum.edgeEnergy();
    const double from = edge + 2 * (spectrum.preEdgeEnd() - edge);
    const double to = edge + 2 * (spectrum.postEdgeStart() - edge);
    Extremes energies;
    Extremes mus;
    energies.reset();
    mus.reset();
    for (int i = 0; i < spectrum.pointCount(); ++i) {
        const SpectrumPoint &point = spectrum.points().at(i);
        const double shifted = spectrum.shiftedEnergy(i);
        const bool isShown = isFullRange || (from <= shifted && shifted <= to);
        if (!isShown || !std::isfinite(point.energy) || !std::isfinite(point.mu))
            continue;
        energies.add(point.energy);
        mus.add(point.mu);
    }
    if (energies.min > energies.max)
        return isFullRange ? QRectF() : naturalRange(spectrum, true);
    double left = isFullRange ? energies.min : from;
    double right = isFullRange ? energies.max : to;
    widen(&left, &right);
    widen(&mus.min, &mus.max);
    return QRectF(QPointF(left, mus.min), QPointF(right, mus.max));
}

void spectrumdrawing::drawSpectrum(QPainter *p, const ChCoord &cc, const AMutE &spectrum)
{
    p->fillRect(QRectF(QPointF(cc.sx0(), cc.sy1()), QPointF(cc.sx1(), cc.sy0())).normalized(), Qt::white);
    if (!spectrum.valid())
        return;
    const QColor rangeEnd(255, 200, 200);
    drawVertical(p, cc, spectrum.preEdgeEnd(), rangeEnd);
    drawVertical(p, cc, spectrum.postEdgeStart(), rangeEnd);
    drawVertical(p, cc, spectrum.edgeEnergy(), QColor(255, 0, 0));

    drawCurve(p, cc, spectrum, Qt::black, [&](int i) { return spectrum.points().at(i).mu; });
    if (spectrum.pointCount() < 2)
        return;
    drawCurve(p, cc, spectrum, QColor(0, 200, 0), [&](int i) { return spectrum.preLine(spectrum.shiftedEnergy(i)); });
    drawCurve(p, cc, spectrum, QColor(0, 0, 200), [&](int i) { return spectrum.postLine(spectrum.shiftedEnergy(i)); });
}
