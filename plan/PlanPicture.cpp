#include "plan/PlanPicture.h"

#include "display/ChCoord.h"
#include "display/Legend.h"
#include "display/PlotFrame.h"
#include "display/PlotNumbers.h"
#include "display/RealRange.h"
#include "plan/PlanSamples.h"
#include "plan/PlanText.h"

#include <QFont>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace
{

constexpr int width = 1500, height = 1100;      // pixels
constexpr int left = 130, right = 30, top = 70; // margins
constexpr int upperBottom = 690, lowerTop = 740, lowerBottom = 1010;
constexpr int textSize = 24;
constexpr int shareSize = 20;
constexpr double margin = 0.05;
constexpr double highestWorth = 3.0; ///< times that of the plan: what is shown of the candidates
const QColor energyColour(0, 150, 0);
const QColor edgeColour(255, 0, 0);

struct Curve {
    QString name;
    QPolygonF points;
    QPen pen;
};

QVector<Curve> referenceCurves(const PlanRequest &request, double from, double to)
{
    const QColor colours[] = {QColor(0, 90, 200), QColor(220, 90, 0), QColor(140, 0, 160), QColor(90, 90, 90)};
    QVector<Curve> curves;
    for (std::size_t j = 0; j < planReferences(request); ++j) {
        const AMutE &spectrum = request.references[j].spectrum;
        Curve curve = {request.references[j].name, {}, QPen(colours[j], 3)};
        for (int i = 0; i < spectrum.pointCount(); ++i) {
            const double energy = spectrum.shiftedEnergy(i);
            if (energy >= from && energy <= to)
                curve.points.append({energy, spectrum.valueAt(AMutE::ByEdgeJump, i)});
        }
        curves.append(curve);
    }
    return curves;
}

Curve worthCurve(const PlanResult &result)
{
    Curve curve = {QString(), {}, QPen(Qt::black, 2)};
    for (std::size_t c = 0; c < result.candidates.size(); ++c)
        curve.points.append({result.candidates[c], result.candidateValues[c]});
    return curve;
}

ValueRange valuesOf(const QVector<Curve> &curves)
{
    ValueRange range = emptyRange;
    for (const Curve &curve : curves) {
        for (const QPointF &point : curve.points) {
            if (std::isfinite(point.y()))
                widen(&range, point.y());
        }
    }
    return withMargin(range, margin, 0.5);
}

void drawPlot(QPainter *p, const ChCoord &cc, const PlanRequest &request, const PlannedSet &set,
              const QVector<Curve> &curves)
{
    plot::drawVertical(p, cc, edgeColour, request.edge);
    for (const double energy : set.energies)
        plot::drawVertical(p, cc, energyColour, energy, 3);
    QVector<LegendEntry> names;
    QVector<QPolygonF> drawn;
    for (const Curve &curve : curves) {
        drawn.append(plot::toPixels(cc, curve.points));
        names.append({curve.name, curve.pen});
        p->setPen(curve.pen);
        plot::drawCurve(p, cc, drawn.last());
    }
    if (curves.size() > 1)
        drawLegend(p, cc, names, drawn);
    p->setPen(QPen(QColor(150, 150, 150), 2));
    p->setBrush(Qt::NoBrush);
    p->drawRect(plot::innerRect(cc));
    plot::drawTicks(p, cc);
}

/// Each above its line, moved to the right where the one before leaves no room.
void drawShares(QPainter *p, const ChCoord &cc, const PlannedSet &set)
{
    QFont font = p->font();
    font.setPixelSize(shareSize);
    p->setFont(font);
    p->setPen(energyColour.darker());
    constexpr double room = 62.0;
    double last = 0.0;
    for (std::size_t k = 0; k < set.energies.size(); ++k) {
        const double middle = std::max(cc.r2sx(set.energies[k]), last + room);
        last = middle;
        p->drawText(QRectF(middle - room / 2, top - 34, room, 30), Qt::AlignCenter,
                    QString::number(100.0 * set.shares[k], 'f', 1));
    }
}

void drawTitles(QPainter *p)
{
    p->setPen(Qt::black);
    p->drawText(QRectF(left, 2, width - left - right, 34), Qt::AlignLeft | Qt::AlignVCenter,
                planText(PlanText::PictureShares));
    p->drawText(QRectF(left, height - 50, width - left - right, 40), Qt::AlignCenter,
                planText(PlanText::PictureEnergy));
    const auto upright = [p](double middle, const QString &text) {
        p->save();
        p->translate(20, middle);
        p->rotate(-90);
        p->drawText(QRectF(-320, -20, 640, 40), Qt::AlignCenter, text);
        p->restore();
    };
    upright((top + upperBottom) / 2.0, planText(PlanText::PictureReferences));
    upright((lowerTop + lowerBottom) / 2.0, planText(PlanText::PictureWorth));
}

} // namespace

QImage planPicture(const PlanRequest &request, const PlanResult &result)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter p(&image);
    QFont font;
    font.setPixelSize(textSize);
    p.setFont(font);
    const double from = std::min(result.candidates.front(), result.planned.energies.front());
    const double to = std::max(result.candidates.back(), result.planned.energies.back());
    const ValueRange energies = withMargin({from, to}, 0.02, 0.5);
    const auto frame = [&](ChCoord *cc, int upperEdge, int lowerEdge, const ValueRange &values) {
        cc->setScreenArea(left, lowerEdge, width - right, upperEdge);
        cc->setRealArea(energies.min, values.min, energies.max, values.max);
    };
    drawTitles(&p);
    ChCoord upper, lower;
    const QVector<Curve> curves = referenceCurves(request, energies.min, energies.max);
    frame(&upper, top, upperBottom, valuesOf(curves));
    drawPlot(&p, upper, request, result.planned, curves);
    p.setPen(Qt::black);
    plot::drawNumbers(&p, upper, plot::Numbers::AlongLeft);

    const double best = result.planned.criterion;
    frame(&lower, lowerTop, lowerBottom, {best * 0.9, best * highestWorth});
    drawPlot(&p, lower, request, result.planned, {worthCurve(result)});
    p.setPen(Qt::black);
    plot::drawNumbers(&p, lower, plot::Numbers::AlongBoth);
    drawShares(&p, upper, result.planned);
    return image;
}
