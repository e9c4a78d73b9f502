#include "spectrum/SpectrumDrawing.h"

#include "display/ChCoord.h"
#include "display/FreePlace.h"
#include "display/PlotFrame.h"
#include "spectrum/AMutE.h"

#include <QColor>
#include <QPainter>
#include <QPointF>
#include <QPolygonF>
#include <QVector>

#include <cmath>

namespace
{

constexpr double margin = 0.05; // of the span, on either side
constexpr double single = 0.5;  // half a unit around a single value

/// The values of a spectrum and of its pre- and post-edge line over its energies, in pixels.
QVector<QPolygonF> curves(const ChCoord &cc, const AMutE &spectrum)
{
    QPolygonF mu, pre, post;
    for (int i = 0; i < spectrum.pointCount(); ++i) {
        const double energy = spectrum.shiftedEnergy(i);
        mu.append(QPointF(energy, spectrum.points().at(i).mu));
        pre.append(QPointF(energy, spectrum.preLine(energy)));
        post.append(QPointF(energy, spectrum.postLine(energy)));
    }
    return {plot::toPixels(cc, mu), plot::toPixels(cc, pre), plot::toPixels(cc, post)};
}

} // namespace

std::optional<RealRange> spectrumdrawing::naturalRange(const AMutE &spectrum, bool isFullRange)
{
    if (!spectrum.valid())
        return std::nullopt;
    const double edge = spectrum.edgeEnergy();
    const ValueRange window{edge + 2 * (spectrum.preEdgeEnd() - edge), edge + 2 * (spectrum.postEdgeStart() - edge)};
    RealRange range{emptyRange, emptyRange};
    for (int i = 0; i < spectrum.pointCount(); ++i) {
        const SpectrumPoint &point = spectrum.points().at(i);
        const double shifted = spectrum.shiftedEnergy(i);
        const bool isShown = isFullRange || (window.min <= shifted && shifted <= window.max);
        if (!isShown || !std::isfinite(point.energy) || !std::isfinite(point.mu))
            continue;
        widen(&range.x, point.energy);
        widen(&range.y, point.mu);
    }
    if (range.x.min > range.x.max)
        return isFullRange ? std::nullopt : naturalRange(spectrum, true);
    return RealRange{withMargin(isFullRange ? range.x : window, margin, single), withMargin(range.y, margin, single)};
}

void spectrumdrawing::drawSpectrum(QPainter *p, const ChCoord &cc, const AMutE &spectrum)
{
    p->fillRect(QRectF(QPointF(cc.sx0(), cc.sy1()), QPointF(cc.sx1(), cc.sy0())).normalized(), Qt::white);
    if (!spectrum.valid() || !plot::isDrawable(cc))
        return;
    const QColor rangeEnd(255, 200, 200);
    plot::drawVertical(p, cc, rangeEnd, spectrum.preEdgeEnd());
    plot::drawVertical(p, cc, rangeEnd, spectrum.postEdgeStart());
    plot::drawVertical(p, cc, QColor(255, 0, 0), spectrum.edgeEnergy());

    const QVector<QPolygonF> lines = curves(cc, spectrum);
    const QColor colours[] = {Qt::black, QColor(0, 200, 0), QColor(0, 0, 200)};
    for (int i = 0; i < lines.size(); ++i) {
        p->setPen(colours[i]);
        plot::drawCurve(p, cc, lines.at(i), plot::Edges::Sharp);
    }
}

QRectF spectrumdrawing::placeForText(const ChCoord &cc, const AMutE &spectrum, const QSizeF &size)
{
    QVector<QPolygonF> lines = curves(cc, spectrum);
    for (const double energy : {spectrum.preEdgeEnd(), spectrum.edgeEnergy(), spectrum.postEdgeStart()}) {
        const double x = cc.r2sx(energy);
        lines.append(QVector<QPointF>{{x, cc.isy0()}, {x, cc.isy1()}});
    }
    const double line = (cc.isy0() - cc.isy1()) / cc.textLines;
    const QRectF corners(QPointF(cc.isx0() + line, cc.isy1() + line),
                         QPointF(cc.isx1() - line - size.width(), cc.isy0() - 3 * line - size.height()));
    QVector<QPointF> places;
    for (const double down : {1.0, 0.75, 0.5, 0.25, 0.0}) {
        for (const double across : {1.0, 0.75, 0.5, 0.25, 0.0})
            places.append({corners.left() + across * corners.width(), corners.top() + down * corners.height()});
    }
    return freePlace(places, size, lines);
}
