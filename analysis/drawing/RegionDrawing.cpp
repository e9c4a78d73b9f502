#include "analysis/drawing/RegionDrawing.h"

#include "display/ChCoord.h"
#include "display/DispABase.h"
#include "display/Legend.h"
#include "display/PlotFrame.h"

#include "numeric/FieldText.h"

#include <QStylePainter>

#include <algorithm>
#include <cmath>

namespace
{

constexpr double radius = 3.5;       // pixels, of a point
constexpr double beyond = 0.2;       // of the energies
constexpr double margin = 0.05;      // of the values
constexpr double stripHeight = 0.22; // of the plot, for the residuals
constexpr double linePixels = 17;    // a line of text
constexpr double leastPlot = 160;    // pixels: a smaller one has no room for the strip
const QColor backgroundColour(120, 120, 120);
const QColor componentColours[] = {{200, 60, 0}, {0, 110, 200}, {0, 140, 70}, {150, 60, 160}};

QPolygonF polygon(const std::vector<double> &x, const std::vector<double> &y)
{
    QPolygonF points;
    for (std::size_t i = 0; i < x.size(); ++i)
        points.append(QPointF(x[i], y[i]));
    return points;
}

std::vector<double> sum(std::vector<double> l, const std::vector<double> &r)
{
    for (std::size_t i = 0; i < l.size(); ++i)
        l[i] += r[i];
    return l;
}

/// Where the strip of residuals stands within the area, and the plot above it: both share the energies.
struct Strip {
    double plotBottom; // pixels
    double top;
    double bottom;

    explicit Strip(const ChCoord &cc)
    {
        const double height = cc.isy0() - cc.isy1();
        bottom = std::round(cc.isy0() + 0.6 * (cc.sy0() - cc.isy0()));
        top = std::round(bottom - stripHeight * height);
        plotBottom = std::round(top - 1.6 * linePixels);
    }
};

void drawPoint(QPainter *p, double x, double y, double error)
{
    p->drawLine(QPointF(x, y - error), QPointF(x, y + error));
    for (const double end : {y - error, y + error})
        p->drawLine(QPointF(x - radius, end), QPointF(x + radius, end));
    p->drawEllipse(QPointF(x, y), radius, radius);
}

/// Points within the plot; an error bar may be cut.
void drawPoints(QPainter *p, const ChCoord &cc, const QColor &colour, const QPolygonF &points,
                const std::vector<double> &errors)
{
    const QRectF plot = plot::innerRect(cc);
    p->save();
    p->setClipRect(plot, Qt::IntersectClip);
    p->setRenderHint(QPainter::Antialiasing);
    p->setPen(QPen(colour, 1.5));
    p->setBrush(colour);
    for (int i = 0; i < points.size(); ++i) {
        const QPointF at(cc.r2sx(points[i].x()), cc.r2sy(points[i].y()));
        const double error = std::abs(cc.r2sdy(errors[static_cast<std::size_t>(i)]));
        if (plot.adjusted(-radius, -radius, radius, radius).contains(at))
            drawPoint(p, at.x(), at.y(), std::isfinite(error) ? std::min(error, plot.height()) : 0.0);
    }
    p->restore();
}

void drawCurves(QPainter *p, const ChCoord &cc, const RegionGraphInput &input)
{
    const FittedCurve &curve = input.curve;
    QVector<LegendEntry> names;
    QVector<QPolygonF> curves;
    const auto draw = [&](const QString &name, const QPen &pen, const std::vector<double> &values) {
        names.append({name, pen});
        curves.append(plot::toPixels(cc, polygon(curve.energies, values)));
        p->setPen(pen);
        plot::drawCurve(p, cc, curves.last());
    };
    if (!curve.energies.empty()) {
        draw(input.backgroundName, QPen(backgroundColour, 1), curve.background);
        for (std::size_t j = 0; j < curve.components.size(); ++j)
            draw(input.names.value(static_cast<int>(j)), QPen(componentColours[j % std::size(componentColours)], 1),
                 sum(curve.background, curve.components[j]));
        draw(input.fitName, QPen(Qt::black, 2), curve.total);
    }
    drawLegend(p, cc, names, curves);
}

/// In units of the standard errors, with lines at 0 and one standard error.
void drawResiduals(DispArea *area, QPainter *p, const RegionGraphInput &input, const Strip &strip)
{
    QPolygonF points;
    double largest = 2.0;
    for (const RegionPoint &point : input.points) {
        if (!std::isfinite(point.residual()))
            continue;
        points.append(QPointF(point.energy, point.residual()));
        largest = std::max(largest, std::abs(point.residual()));
    }
    ChCoord cc;
    cc.setScreenArea(area->cc.sx0(), strip.bottom, area->cc.sx1(), strip.top);
    cc.setInnerArea(area->cc.isx0(), strip.bottom, area->cc.isx1(), strip.top);
    const double limit = std::ceil(1.2 * largest);
    cc.setRealArea(area->cc.rx0(), -limit, area->cc.rx1(), limit);
    for (const double line : {-1.0, 1.0})
        plot::drawHorizontal(p, cc, plot::gridColour, line);
    plot::drawHorizontal(p, cc, backgroundColour, 0.0);
    drawPoints(p, cc, input.colour, points, std::vector<double>(static_cast<std::size_t>(points.size()), 1.0));
    p->setBrush(Qt::NoBrush);
    p->setPen(QColor(150, 150, 150));
    const QRectF frame = plot::innerRect(cc);
    p->drawRect(frame);
    p->setPen(Qt::black);
    constexpr double largestLabel = 12;
    const QRectF left(0, frame.top(), frame.left() - 4, linePixels);
    const auto label = [&](const QRectF &box, int alignment, const QString &text) {
        area->dt.drawText(p, box, QFont(), alignment | Qt::AlignVCenter, 1, text, largestLabel);
    };
    label(left, Qt::AlignRight, QString::number(limit));
    label(left.translated(0, frame.height() - linePixels), Qt::AlignRight, QString::number(-limit));
    label(QRectF(frame.left() + 4, frame.top() + 1, frame.width() / 2, linePixels), Qt::AlignLeft, input.residualTitle);
}

} // namespace

QColor resultdrawing::regionColour(int index)
{
    static const QColor colours[regionColourCount] = {{0, 120, 255}, {0, 165, 0},    {225, 0, 200}, {0, 180, 190},
                                                      {240, 110, 0}, {125, 80, 220}, {150, 95, 30}, {110, 110, 110}};
    return colours[index % regionColourCount];
}

std::optional<RealRange> resultdrawing::naturalRange(const RegionGraphInput &input)
{
    RealRange range{emptyRange, emptyRange};
    for (const RegionPoint &point : input.points) {
        if (!std::isfinite(point.energy) || !std::isfinite(point.mean))
            continue;
        const double error = std::isfinite(point.error) ? point.error : 0.0;
        widen(&range.x, point.energy);
        widen(&range.y, {point.mean - error, point.mean + error});
    }
    if (range.x.min > range.x.max)
        return std::nullopt;
    range.x = withMargin(range.x, beyond, 1.0);
    const FittedCurve &curve = input.curve;
    for (std::size_t i = 0; i < curve.energies.size(); ++i) {
        if (curve.energies[i] < range.x.min || curve.energies[i] > range.x.max)
            continue;
        for (const double value : {curve.total[i], curve.background[i]}) {
            if (std::isfinite(value))
                widen(&range.y, value);
        }
    }
    return RealRange{range.x, withMargin(range.y, margin, 0.5)};
}

void resultdrawing::drawRegion(DispABase *display, QStylePainter *p, const RegionGraphInput &input)
{
    display->setXYTitle(input.xTitle, input.yTitle);
    DispArea *const area = display->area();
    plot::begin(area, p);
    const std::optional<RealRange> natural = naturalRange(input);
    if (!natural)
        return;
    ChCoord &cc = area->cc;
    const Strip strip(cc);
    const bool hasStrip = input.hasResiduals && strip.plotBottom - cc.isy1() >= leastPlot / 2;
    if (hasStrip) {
        cc.setInnerArea(cc.isx0(), strip.plotBottom, cc.isx1(), cc.isy1());
        cc.textLines = std::max(1, static_cast<int>((strip.plotBottom - cc.isy1()) / linePixels));
    }
    display->offerRange(*natural);
    if (plot::isDrawable(cc)) {
        const double step = plot::tickStep(plot::innerRect(cc).height(), area->shownRange().y);
        plot::drawHorizontals(p, cc, plot::gridColour, {0, step});
        drawCurves(p, cc, input);
        QPolygonF points;
        std::vector<double> errors;
        for (const RegionPoint &point : input.points) {
            points.append(QPointF(point.energy, point.mean));
            errors.push_back(point.error);
        }
        drawPoints(p, cc, input.colour, points, errors);
    }
    area->drawScale(p, true);
    if (hasStrip && plot::isDrawable(cc))
        drawResiduals(area, p, input, strip);
}

QString resultdrawing::regionText(const RegionGraphInput &input)
{
    QStringList lines;
    const auto add = [&lines](const QStringList &cells) {
        lines << cells.join(QLatin1Char('\t'));
    };
    add({input.xTitle, input.yTitle, QStringLiteral("±"), input.fitName, input.residualTitle});
    for (const RegionPoint &point : input.points)
        add({fieldText(point.energy), fieldText(point.mean), fieldText(point.error), fieldText(point.fitted),
             input.hasResiduals ? fieldText(point.residual()) : QString()});
    const FittedCurve &curve = input.curve;
    if (!curve.energies.empty()) {
        lines << QString();
        add(QStringList{input.xTitle, input.fitName, input.backgroundName} + input.names);
    }
    for (std::size_t i = 0; i < curve.energies.size(); ++i) {
        QStringList cells = {fieldText(curve.energies[i]), fieldText(curve.total[i]), fieldText(curve.background[i])};
        for (const std::vector<double> &component : curve.components)
            cells << fieldText(component[i]);
        add(cells);
    }
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

void resultdrawing::drawOutlines(QPainter *p, const ChCoord &cc, const QVector<RegionOutline> &outlines)
{
    if (!plot::isDrawable(cc))
        return;
    const QRectF plot = plot::innerRect(cc);
    p->save();
    p->setClipRect(plot, Qt::IntersectClip);
    p->setBrush(Qt::NoBrush);
    for (const RegionOutline &outline : outlines) {
        const PixelRectangle &pixels = outline.pixels;
        const QRectF rectangle = QRectF(QPointF(cc.r2sx(pixels.x0), cc.r2sy(pixels.y0)),
                                        QPointF(cc.r2sx(pixels.x1 + 1.0), cc.r2sy(pixels.y1 + 1.0)))
                                     .normalized()
                                     .intersected(plot.adjusted(-9, -9, 9, 9)); // no coordinate far outside
        p->setPen(QPen(Qt::white, 4));
        p->drawRect(rectangle);
        p->setPen(QPen(outline.colour, 2, outline.isPart ? Qt::DashLine : Qt::SolidLine));
        p->drawRect(rectangle);
    }
    p->restore();
}
