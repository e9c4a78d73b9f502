#include "spectrum/SpectrumDrawing.h"

#include "display/ChCoord.h"
#include "spectrum/AMutE.h"

#include <QPainter>
#include <QPolygonF>
#include <QVector>

#include <algorithm>
#include <cmath>
#include <limits>

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

/// What drawSpectrum() draws, in pixels.
QVector<QPolygonF> drawnLines(const ChCoord &cc, const AMutE &spectrum)
{
    QPolygonF mu, pre, post;
    for (int i = 0; i < spectrum.pointCount(); ++i) {
        const double energy = spectrum.shiftedEnergy(i);
        const double x = cc.r2sx(energy);
        mu.append(QPointF(x, cc.r2sy(spectrum.points().at(i).mu)));
        pre.append(QPointF(x, cc.r2sy(spectrum.preLine(energy))));
        post.append(QPointF(x, cc.r2sy(spectrum.postLine(energy))));
    }
    QVector<QPolygonF> lines{mu, pre, post};
    for (const double energy : {spectrum.preEdgeEnd(), spectrum.edgeEnergy(), spectrum.postEdgeStart()}) {
        const double x = cc.r2sx(energy);
        lines.append(QVector<QPointF>{QPointF(x, cc.isy0()), QPointF(x, cc.isy1())});
    }
    return lines;
}

/// About how many pixels of lines lie in a rectangle.
double lengthIn(const QRectF &place, const QVector<QPolygonF> &lines)
{
    double length = 0;
    for (const QPolygonF &line : lines) {
        for (int i = 0; i + 1 < line.size(); ++i) {
            const QRectF box = QRectF(line.at(i), line.at(i + 1)).normalized().adjusted(-0.5, -0.5, 0.5, 0.5);
            const QRectF common = box.intersected(place);
            const double part = std::hypot(common.width(), common.height());
            length += std::isfinite(part) ? part : 0;
        }
    }
    return length;
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

QRectF spectrumdrawing::freePlace(const ChCoord &cc, const AMutE &spectrum, const QSizeF &size)
{
    const QVector<QPolygonF> lines = drawnLines(cc, spectrum);
    const double line = (cc.isy0() - cc.isy1()) / cc.textLines;
    const QRectF corners(QPointF(cc.isx0() + line, cc.isy1() + line),
                         QPointF(cc.isx1() - line - size.width(), cc.isy0() - 3 * line - size.height()));
    QRectF best;
    double least = std::numeric_limits<double>::infinity();
    for (const double down : {1.0, 0.75, 0.5, 0.25, 0.0}) {
        for (const double across : {1.0, 0.75, 0.5, 0.25, 0.0}) {
            const QRectF place(
                QPointF(corners.left() + across * corners.width(), corners.top() + down * corners.height()), size);
            const double length = lengthIn(place, lines);
            if (length < least) {
                least = length;
                best = place;
            }
        }
    }
    return best;
}
