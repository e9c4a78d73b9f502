#include "analysis/drawing/MapDrawing.h"

#include "analysis/results/QuantityRange.h"
#include "display/DispMBase.h"
#include "display/PlotFrame.h"

#include <QStylePainter>

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
constexpr ValueRange ofTheValues{noNumber, noNumber};

bool hasCells(const ShownMap &map)
{
    return map.grid.nx > 0 && map.grid.ny > 0;
}

/// How many cells have a value.
std::size_t valuesOf(const ShownMap &map)
{
    return std::min(map.count, static_cast<std::size_t>(map.grid.nx) * static_cast<std::size_t>(map.grid.ny));
}

/// Limits without numbers are those of the values. These need every value: they are sought only when the colours of the
/// map are made anew or the scale is not fixed.
void offerLimits(DispMBase *display, const MapValues &values, const std::optional<ValueRange> &limits)
{
    if (!limits || (std::isfinite(limits->min) && std::isfinite(limits->max)))
        display->offerLimits(limits);
    else if (!display->area()->scaleFixed || display->picture.isStale(values))
        display->offerLimits(finiteRange(values.values, values.count, values.mask));
}

void drawCells(DispMBase *display, QPainter *p, const ShownMap &map, const quint8 *mask,
               const std::optional<ValueRange> &limits)
{
    const DispArea *const area = display->area();
    const MapValues values{map.values, map.grid.nx, map.grid.ny, mask, valuesOf(map)};
    const RealRange range = *resultdrawing::naturalRange(map);
    if (display->area()->isAnother(range)) // a zoom goes, and so do limits that belong to another map
        display->clearScale();
    offerLimits(display, values, limits);
    display->offerRange(range);

    const cBar *const bar = display->bar();
    ColourScale scale = bar->colourScale();
    scale.notFinite = resultdrawing::notFiniteColour.rgb();
    scale.masked = resultdrawing::maskedColour.rgb();
    display->picture.update(values, scale, bar->shownTable());
    if (plot::isDrawable(area->cc))
        display->picture.draw(p, area->cc);
}

void drawWords(QPainter *p, const ChCoord &cc, const QString &words)
{
    p->save();
    QFont font = p->font();
    font.setPixelSize(plot::textPixels(cc));
    p->setFont(font);
    p->setPen(QColor(90, 90, 90));
    p->drawText(plot::innerRect(cc), Qt::AlignCenter | Qt::TextWordWrap, words);
    p->restore();
}

} // namespace

void showGrid(DispMBase *display, const MapGrid &grid)
{
    display->setCells(QSize(grid.nx, grid.ny));
    display->setCellWidth(grid.x.step.value_or(0.0), grid.unit);
}

std::optional<RealRange> resultdrawing::naturalRange(const ShownMap &map)
{
    if (!hasCells(map))
        return std::nullopt;
    return RealRange{{0, double(map.grid.nx)}, {0, double(map.grid.ny)}};
}

void resultdrawing::drawResultMap(DispMBase *display, QStylePainter *p, const ResultMapInput &input)
{
    DispArea *const area = display->area();
    plot::begin(area, p);
    const ShownMap &map = input.map;
    if (map.values && map.count > 0 && hasCells(map)) {
        drawCells(display, p, map, input.mask, input.limits);
    } else if (!map.values && hasCells(map)) {
        display->offerRange(*naturalRange(map));
        drawWords(p, area->cc, input.notComputed);
    }
    area->drawScale(p, true);
}

void resultdrawing::drawDataMap(DispMBase *display, QStylePainter *p, const ShownMap &map)
{
    DispArea *const area = display->area();
    plot::begin(area, p);
    if (map.values && map.count > 0 && hasCells(map))
        drawCells(display, p, map, nullptr, ofTheValues);
    else
        display->offerRange({{0, 1}, {0, 1}});
    area->drawScale(p, true);
}
