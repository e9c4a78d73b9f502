#include "plan/PlanPicture.h"

#include "display/ChCoord.h"
#include "display/Legend.h"
#include "display/PlotFrame.h"
#include "display/PlotNumbers.h"
#include "plan/PlanSamples.h"
#include "plan/PlanText.h"

#include <QFont>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace
{

constexpr double margin = 0.05;
constexpr double highestWorth = 3.0; ///< times that of the plan: what is shown of the candidates
const QColor energyColour(0, 150, 0);
const QColor edgeColour(255, 0, 0);

/// Where things stand, in pixels.
struct Places {
    Places(const QSize &size, int letters);

    int text; ///< height of letters
    int width, height;
    int left, right, top; ///< margins
    int upperBottom, lowerTop, lowerBottom;

    QPen pen(const QColor &colour, double thin) const { return QPen(colour, thin * text / 24.0); }
};

Places::Places(const QSize &size, int letters)
    : text(letters)
    , width(size.width())
    , height(size.height())
    , left(27 * text / 5)
    , right(5 * text / 2) // half of the last energy
    , top(3 * text)
{
    lowerBottom = height - 15 * text / 4;
    const int plots = lowerBottom - top - 2 * text;
    upperBottom = top + 64 * plots / 100;
    lowerTop = upperBottom + 2 * text;
}

struct Curve {
    QString name;
    QPolygonF points;
    QColor colour;
    double thin; ///< width of the line
};

QVector<Curve> referenceCurves(const PlanRequest &request, double from, double to)
{
    const QColor colours[] = {QColor(0, 90, 200), QColor(220, 90, 0), QColor(140, 0, 160), QColor(90, 90, 90)};
    QVector<Curve> curves;
    for (std::size_t j = 0; j < planReferences(request); ++j) {
        const AMutE &spectrum = request.references[j].spectrum;
        Curve curve = {request.references[j].name, {}, colours[j], 3.0};
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
    Curve curve = {QString(), {}, Qt::black, 2.0};
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

void drawPlot(QPainter *p, const ChCoord &cc, const Places &at, const PlanRequest &request, const PlannedSet &set,
              const QVector<Curve> &curves)
{
    plot::drawVertical(p, cc, edgeColour, request.edge);
    for (const double energy : set.energies)
        plot::drawVertical(p, cc, energyColour, energy, std::max(1, at.text / 8));
    QVector<LegendEntry> names;
    QVector<QPolygonF> drawn;
    for (const Curve &curve : curves) {
        drawn.append(plot::toPixels(cc, curve.points));
        names.append({curve.name, at.pen(curve.colour, curve.thin)});
        p->setPen(names.last().pen);
        plot::drawCurve(p, cc, drawn.last());
    }
    if (curves.size() > 1)
        drawLegend(p, cc, names, drawn);
    p->setPen(at.pen(QColor(150, 150, 150), 2));
    p->setBrush(Qt::NoBrush);
    p->drawRect(plot::innerRect(cc));
    plot::drawTicks(p, cc);
}

/// The middles of labels `room` wide, each as near to its line as the others and the right end let it be.
QVector<double> labelPlaces(const QVector<double> &lines, double room, double end)
{
    QVector<double> places = lines;
    for (int k = 1; k < places.size(); ++k)
        places[k] = std::max(places[k], places[k - 1] + room);
    double latest = end - room / 2;
    for (int k = places.size() - 1; k >= 0; --k) {
        places[k] = std::min(places[k], latest);
        latest = places[k] - room;
    }
    return places;
}

/// Above the lines.
void drawShares(QPainter *p, const ChCoord &cc, const Places &at, const PlannedSet &set)
{
    QFont font = p->font();
    font.setPixelSize(std::max(1, 5 * at.text / 6));
    p->setFont(font);
    p->setPen(energyColour.darker());
    QVector<double> lines;
    for (const double energy : set.energies)
        lines.append(cc.r2sx(energy));
    const double room = 2.6 * at.text;
    const QVector<double> places = labelPlaces(lines, room, at.width);
    for (int k = 0; k < places.size(); ++k)
        p->drawText(QRectF(places[k] - room / 2, at.top - 1.4 * at.text, room, 1.25 * at.text), Qt::AlignCenter,
                    QString::number(100.0 * set.shares[static_cast<std::size_t>(k)], 'f', 1));
}

void drawTitles(QPainter *p, const Places &at)
{
    p->setPen(Qt::black);
    const int room = at.width - at.left - at.right;
    p->drawText(QRectF(at.left, at.text / 12.0, room, 1.4 * at.text), Qt::AlignLeft | Qt::AlignVCenter,
                planText(PlanText::PictureShares));
    p->drawText(QRectF(at.left, at.height - 2.1 * at.text, room, 1.7 * at.text), Qt::AlignCenter,
                planText(PlanText::PictureEnergy));
    // A text longer than its plot stands out of it on both ends.
    const auto upright = [p, &at](double upper, double lower, const QString &text) {
        p->save();
        p->translate(0.85 * at.text, (upper + lower) / 2);
        p->rotate(-90);
        p->drawText(QRectF((upper - lower) / 2, -0.85 * at.text, lower - upper, 1.7 * at.text),
                    Qt::AlignCenter | Qt::TextDontClip, text);
        p->restore();
    };
    upright(at.top, at.upperBottom, planText(PlanText::PictureReferences));
    upright(at.lowerTop, at.lowerBottom, planText(PlanText::PictureWorth));
}

} // namespace

void drawPlan(QPainter *p, const QSize &size, int textSize, const PlanRequest &request, const PlanResult &result)
{
    const Places at(size, textSize);
    p->fillRect(QRect(QPoint(), size), Qt::white);
    QFont font = p->font();
    font.setPixelSize(textSize);
    p->setFont(font);
    const double from = std::min(result.candidates.front(), result.planned.energies.front());
    const double to = std::max(result.candidates.back(), result.planned.energies.back());
    const ValueRange energies = withMargin({from, to}, 0.02, 0.5);
    const auto frame = [&](ChCoord *cc, int upperEdge, int lowerEdge, const ValueRange &values) {
        cc->setScreenArea(at.left, lowerEdge, at.width - at.right, upperEdge);
        cc->setRealArea(energies.min, values.min, energies.max, values.max);
    };
    drawTitles(p, at);
    ChCoord upper, lower;
    const QVector<Curve> curves = referenceCurves(request, energies.min, energies.max);
    frame(&upper, at.top, at.upperBottom, valuesOf(curves));
    drawPlot(p, upper, at, request, result.planned, curves);
    p->setPen(Qt::black);
    plot::drawNumbers(p, upper, plot::Numbers::AlongLeft);

    const double best = result.planned.criterion;
    frame(&lower, at.lowerTop, at.lowerBottom, {best * 0.9, best * highestWorth});
    drawPlot(p, lower, at, request, result.planned, {worthCurve(result)});
    p->setPen(Qt::black);
    plot::drawNumbers(p, lower, plot::Numbers::AlongBoth);
    drawShares(p, upper, at, result.planned);
}

QImage planPicture(const PlanRequest &request, const PlanResult &result)
{
    QImage image(1500, 1100, QImage::Format_RGB32);
    QPainter p(&image);
    drawPlan(&p, image.size(), 24, request, result);
    return image;
}
