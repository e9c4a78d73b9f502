#include "display/MapPicture.h"

#include "display/ChCoord.h"
#include "numeric/RealToInt.h"

#include <QPaintEngine>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstring>

using numeric::truncToInt;

namespace
{

constexpr double minOutlinedCell = 10.0; // pixels: outlines of smaller cells would hide the data
constexpr int maxDevicePixels = 32767;   // of a screen or image along one side

bool sameMap(const MapValues &l, const MapValues &r)
{
    return l.values == r.values && l.nx == r.nx && l.ny == r.ny && l.mask == r.mask && l.count == r.count;
}

/// The first device pixel whose centre lies at or beyond `edge`.
int firstPixel(double edge)
{
    return truncToInt(std::ceil(edge - 0.5));
}

/// The cells whose colours the device pixels from `begin` to `end` - 1 show, where pixel p shows the real coordinate
/// real(p + 0.5). Pixels beside the map are left out; returns the first that is not.
template <class Real>
int cellsOfPixels(int begin, int end, int count, Real real, std::vector<int> *cells)
{
    cells->clear();
    int first = begin;
    for (int pixel = begin; pixel < end; ++pixel) {
        const double at = real(pixel + 0.5);
        if (!(at >= 0.0 && at < count))
            continue;
        if (cells->empty())
            first = pixel;
        cells->push_back(truncToInt(at));
    }
    return first;
}

/// Indices of the cell edges between real coordinates a and b, the outermost of `count` cells included.
struct Edges {
    int first, last;
};

Edges edgesBetween(double a, double b, int count)
{
    const double low = std::max(0.0, std::ceil(std::min(a, b)));
    const double high = std::min<double>(count, std::floor(std::max(a, b)));
    return {truncToInt(low), truncToInt(high)};
}

} // namespace

bool MapPicture::isStale(const MapValues &map) const
{
    return m_stale || !sameMap(map, m_map);
}

bool MapPicture::update(const MapValues &map, const ColourScale &scale, const ColourTable &table)
{
    if (!isStale(map) && scale == m_scale && table == m_table)
        return false;
    m_stale = false;
    m_map = map;
    m_scale = scale;
    m_table = table;
    if (!map.values || map.nx < 1 || map.ny < 1 || map.count == 0) {
        m_image = QImage();
        return true;
    }
    // No more memory than the values need, whatever size the map says that it has.
    const auto width = static_cast<std::size_t>(map.nx);
    const std::size_t count = std::min(map.count, width * static_cast<std::size_t>(map.ny));
    const auto columns = static_cast<int>(std::min(width, count));
    const auto rows = static_cast<int>((count + width - 1) / width);
    if (m_image.width() != columns || m_image.height() != rows)
        m_image = QImage(columns, rows, QImage::Format_RGB32);
    if (m_image.isNull())
        return true;
    // The lines of 32-bit pixels follow each other without gaps.
    auto *const pixels = reinterpret_cast<quint32 *>(m_image.bits());
    colourPlane(map.values, count, scale, table, pixels, map.mask);
    m_noValue = scale.notFinite.value_or(0xff000000u);
    std::fill(pixels + count, pixels + static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows), m_noValue);
    return true;
}

void MapPicture::draw(QPainter *painter, const ChCoord &cc)
{
    if (m_image.isNull() || cc.rx0() == cc.rx1() || cc.ry0() == cc.ry1())
        return;
    const QRectF inner = QRectF(QPointF(cc.isx0(), cc.isy0()), QPointF(cc.isx1(), cc.isy1())).normalized();
    painter->save();
    painter->setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform, false);
    const QTransform device = painter->deviceTransform();
    const QSizeF size = device.mapRect(inner).size();
    if (painter->paintEngine()->type() == QPaintEngine::Raster && device.type() <= QTransform::TxScale &&
        size.width() <= maxDevicePixels && size.height() <= maxDevicePixels)
        drawPixels(painter, cc, inner);
    else
        drawScaled(painter, cc, inner);
    painter->restore();

    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, false);
    drawOutlines(painter, cc, inner);
    painter->restore();
}

/// Picks the cell of every device pixel. QPainter's own scaling rounds its steps, which shifts cell edges by a pixel
/// in wide maps and overflows in deep zooms.
void MapPicture::drawPixels(QPainter *painter, const ChCoord &cc, const QRectF &inner)
{
    const QTransform device = painter->deviceTransform();
    const QRectF area = device.mapRect(inner);
    const int left = cellsOfPixels(
        firstPixel(area.left()), firstPixel(area.right()), m_map.nx,
        [&](double x) { return cc.s2rx((x - device.dx()) / device.m11()); }, &m_columns);
    const int top = cellsOfPixels(
        firstPixel(area.top()), firstPixel(area.bottom()), m_map.ny,
        [&](double y) { return cc.s2ry((y - device.dy()) / device.m22()); }, &m_rows);
    const int width = static_cast<int>(m_columns.size());
    const int height = static_cast<int>(m_rows.size());
    if (width == 0 || height == 0)
        return;

    if (m_shown.width() != width || m_shown.height() != height)
        m_shown = QImage(width, height, QImage::Format_RGB32);
    if (m_shown.isNull())
        return;
    const quint32 *previous = nullptr;
    for (int y = 0; y < height; ++y) {
        auto *const line = reinterpret_cast<quint32 *>(m_shown.scanLine(y));
        const int row = m_rows[static_cast<std::size_t>(y)];
        if (previous && row == m_rows[static_cast<std::size_t>(y - 1)]) {
            std::memcpy(line, previous, static_cast<std::size_t>(width) * sizeof *line);
        } else {
            const bool hasValues = row < m_image.height();
            const auto *const cells = reinterpret_cast<const quint32 *>(m_image.constScanLine(hasValues ? row : 0));
            const int columns = hasValues ? m_image.width() : 0;
            for (int x = 0; x < width; ++x) {
                const int column = m_columns[static_cast<std::size_t>(x)];
                line[x] = column < columns ? cells[column] : m_noValue;
            }
        }
        previous = line;
    }
    painter->setWorldTransform(device.inverted(), true); // from here on: device pixels
    painter->drawImage(left, top, m_shown);
}

/// For printers and files of vectors, which have no pixels to count: hands over the visible cells.
void MapPicture::drawScaled(QPainter *painter, const ChCoord &cc, const QRectF &inner) const
{
    const QRectF visible = QRectF(QPointF(cc.s2rx(inner.left()), cc.s2ry(inner.top())),
                                  QPointF(cc.s2rx(inner.right()), cc.s2ry(inner.bottom())))
                               .normalized()
                               .intersected(QRectF(0, 0, m_map.nx, m_map.ny));
    if (visible.isEmpty())
        return;
    const QRect cells = visible.toAlignedRect().intersected(m_image.rect());
#if QT_VERSION >= QT_VERSION_CHECK(5, 13, 0)
    painter->setRenderHint(QPainter::LosslessImageRendering); // JPEG would invent colours
#endif
    painter->setClipRect(inner, Qt::IntersectClip);
    painter->setWorldTransform(QTransform(cc.r2sdx(1), 0, 0, cc.r2sdy(1), cc.r2sx(0), cc.r2sy(0)), true);
    if (!m_image.rect().contains(visible.toAlignedRect()))
        painter->fillRect(visible, QColor(m_noValue));
    if (!cells.isEmpty())
        painter->drawImage(QRectF(cells), m_image, QRectF(cells));
}

void MapPicture::drawOutlines(QPainter *painter, const ChCoord &cc, const QRectF &inner) const
{
    if (!(std::abs(cc.r2sdx(1)) >= minOutlinedCell && std::abs(cc.r2sdy(1)) >= minOutlinedCell))
        return;
    const Edges columns = edgesBetween(cc.s2rx(inner.left()), cc.s2rx(inner.right()), m_map.nx);
    const Edges rows = edgesBetween(cc.s2ry(inner.top()), cc.s2ry(inner.bottom()), m_map.ny);
    const QRectF map = QRectF(QPointF(cc.r2sx(0), cc.r2sy(0)), QPointF(cc.r2sx(m_map.nx), cc.r2sy(m_map.ny)))
                           .normalized()
                           .intersected(inner);
    if (map.isEmpty())
        return;
    QVector<QLineF> lines;
    for (int i = columns.first; i <= columns.last; ++i)
        lines.append(QLineF(cc.r2sx(i), map.top(), cc.r2sx(i), map.bottom()));
    for (int j = rows.first; j <= rows.last; ++j)
        lines.append(QLineF(map.left(), cc.r2sy(j), map.right(), cc.r2sy(j)));
    painter->setPen(QColor(200, 200, 200));
    painter->drawLines(lines);
}
