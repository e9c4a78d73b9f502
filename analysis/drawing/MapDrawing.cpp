#include "analysis/drawing/MapDrawing.h"

#include "display/DispMBase.h"
#include "display/PlotFrame.h"

#include <QStylePainter>

#include <algorithm>
#include <cmath>

namespace
{

/// The map without the rows that have no values.
ShownMap fullRows(ShownMap map)
{
    if (map.width < 1 || map.height < 1 || (map.values && map.count < static_cast<std::size_t>(map.width)))
        return ShownMap();
    if (map.values) {
        const std::size_t rows = map.count / static_cast<std::size_t>(map.width);
        map.height = static_cast<int>(std::min(rows, static_cast<std::size_t>(map.height)));
    }
    return map;
}

void setLimits(DispMBase *display, const ShownMap &map, std::optional<ValueRange> limits)
{
    if (limits && (!std::isfinite(limits->min) || !std::isfinite(limits->max)))
        limits = finiteRange(map.values, static_cast<std::size_t>(map.width) * static_cast<std::size_t>(map.height));
    if (limits && display->bar()->autoScale())
        display->setLimits(limits->min, limits->max);
}

void drawCells(DispMBase *display, QPainter *p, const ShownMap &map, const quint8 *mask)
{
    const cBar *const bar = display->bar();
    ColourScale scale = bar->colourScale();
    scale.notFinite = resultdrawing::notFiniteColour.rgb();
    scale.masked = resultdrawing::maskedColour.rgb();
    display->picture.update({map.values, map.width, map.height, mask}, scale, bar->colourTable());
    if (plot::isDrawable(display->area()->cc))
        display->picture.draw(p, display->area()->cc);
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

void resultdrawing::drawResultMap(DispMBase *display, QStylePainter *p, const ResultMapInput &input)
{
    DispArea *const area = display->area();
    plot::begin(area, p);
    const ShownMap map = fullRows(input.map);
    if (map.values) {
        if (!area->scaleFixed)
            setLimits(display, map, input.limits);
        display->setRealRange(0, 0, map.width, map.height);
        drawCells(display, p, map, input.mask);
    } else if (map.width > 0) {
        if (!area->scaleFixed) // for this picture only: another quantity still gets its colour range
            area->cc.setRealArea(0, 0, map.width, map.height);
        drawWords(p, area->cc, input.notComputed);
    }
    area->drawScale(p, true);
}

void resultdrawing::drawDataMap(DispMBase *display, QStylePainter *p, const ShownMap &map)
{
    DispArea *const area = display->area();
    plot::begin(area, p);
    const ShownMap shown = fullRows(map);
    if (shown.values) {
        if (!area->scaleFixed)
            setLimits(display, shown,
                      finiteRange(shown.values,
                                  static_cast<std::size_t>(shown.width) * static_cast<std::size_t>(shown.height)));
        display->setRealRange(0, 0, shown.width, shown.height);
        drawCells(display, p, shown, nullptr);
    }
    area->drawScale(p, true);
}
