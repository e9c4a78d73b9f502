#include "analysis/panel/RegionPicker.h"

#include "analysis/drawing/RegionDrawing.h"
#include "display/DispMBase.h"
#include "display/MouseC.h"
#include "display/MouseRecording.h"
#include "display/PlotFrame.h"
#include "numeric/RealToInt.h"

#include <QPainter>

#include <algorithm>
#include <utility>

namespace
{

/// The cells between two positions along an axis of `count` cells; false when both lie beside it on the same side.
bool cellsBetween(double from, double to, int count, int *first, int *last)
{
    if (from > to)
        std::swap(from, to);
    if (!(to >= 0.0 && from < count))
        return false;
    *first = numeric::truncToInt(std::max(0.0, from));
    *last = numeric::truncToInt(std::min(to, count - 1.0));
    return true;
}

} // namespace

RegionPicker::RegionPicker(DispMBase *map, std::function<QSize()> cells, QObject *parent)
    : QObject(parent)
    , m_map(map)
    , m_cells(std::move(cells))
{
    connect(map, &DispMBase::nowPos, this, &RegionPicker::move);
    connect(map, &DispMBase::mPressed, this, [this](const MouseC *mouse) { press(*mouse); });
    connect(map, &DispMBase::mReleased, this, [this](const MouseC *mouse) { release(*mouse); });
}

std::optional<QPoint> RegionPicker::pixelAt(double x, double y) const
{
    const QSize cells = m_cells();
    if (!(x >= 0.0 && y >= 0.0 && x < cells.width() && y < cells.height()))
        return std::nullopt;
    return QPoint(numeric::truncToInt(x), numeric::truncToInt(y));
}

std::optional<QPoint> RegionPicker::takePixel()
{
    return m_clicked ? std::exchange(m_clicked, std::nullopt) : m_pointed;
}

void RegionPicker::press(const MouseC &mouse)
{
    const ChCoord &cc = m_map->area()->cc;
    m_clicked = pixelAt(cc.s2rx(mouse.pressX), cc.s2ry(mouse.pressY));
}

void RegionPicker::move(double x, double y)
{
    if (const auto pixel = pixelAt(x, y))
        m_pointed = pixel;
    const MouseC &mouse = m_map->area()->mouse;
    if (!mouse.pressed || !mouserecording::isControlLeftPress(mouse))
        return;
    m_isDragging = m_isDragging || !mouserecording::isBesidePress(mouse);
    if (m_isDragging)
        m_map->area()->update();
}

void RegionPicker::release(const MouseC &mouse)
{
    if (!std::exchange(m_isDragging, false))
        return;
    m_map->area()->update();
    const std::optional<PixelRectangle> pixels = dragged();
    if (mouserecording::isControlLeftPress(mouse) && !mouserecording::isBesidePress(mouse) && pixels)
        emit picked(*pixels);
}

std::optional<PixelRectangle> RegionPicker::dragged() const
{
    const ChCoord &cc = m_map->area()->cc;
    const MouseC &mouse = m_map->area()->mouse;
    const QSize cells = m_cells();
    PixelRectangle pixels;
    if (cells.isEmpty() || !plot::isDrawable(cc) ||
        !cellsBetween(cc.s2rx(mouse.pressX), cc.s2rx(mouse.nowX), cells.width(), &pixels.x0, &pixels.x1) ||
        !cellsBetween(cc.s2ry(mouse.pressY), cc.s2ry(mouse.nowY), cells.height(), &pixels.y0, &pixels.y1))
        return std::nullopt;
    return pixels;
}

void RegionPicker::draw(QPainter *p) const
{
    const std::optional<PixelRectangle> pixels = m_isDragging ? dragged() : std::nullopt;
    if (pixels)
        resultdrawing::drawOutlines(p, m_map->area()->cc, {{*pixels, Qt::black, true}});
}
