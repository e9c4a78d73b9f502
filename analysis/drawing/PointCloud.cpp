#include "analysis/drawing/PointCloud.h"

#include "display/ChCoord.h"
#include "display/PlotFrame.h"

#include <QPaintEngine>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <tuple>

namespace
{

constexpr double vectorScale = 4; // pixels per unit where the device has none of its own: printers, files of vectors
constexpr int mostPixels = 16384; // of the area along one side
constexpr double roundness = 0.3; // pixels added to a radius: circles without spikes

} // namespace

CloudPlace::CloudPlace(const QPainter &painter, const ChCoord &cc, double circleRadius)
    : inner(plot::innerRect(cc))
    , range{{cc.rx0(), cc.rx1()}, {cc.ry0(), cc.ry1()}}
    , radius(circleRadius)
{
    const QTransform &device = painter.deviceTransform();
    const QSizeF size = device.mapRect(inner).size();
    isRaster = painter.paintEngine()->type() == QPaintEngine::Raster && device.type() <= QTransform::TxScale &&
               device.m11() > 0 && device.m22() > 0 && size.width() <= mostPixels && size.height() <= mostPixels;
    if (isRaster) {
        scaleX = device.m11();
        scaleY = device.m22();
        shiftX = device.dx();
        shiftY = device.dy();
    } else {
        scaleX = scaleY = std::min(vectorScale, mostPixels / std::max(inner.width(), inner.height()));
    }
}

bool operator==(const CloudPlace &l, const CloudPlace &r)
{
    return l.range == r.range && std::tie(l.inner, l.radius, l.isRaster, l.scaleX, l.scaleY, l.shiftX, l.shiftY) ==
                                     std::tie(r.inner, r.radius, r.isRaster, r.scaleX, r.scaleY, r.shiftX, r.shiftY);
}

QRect PointCloud::areaOf(const CloudPlace &place)
{
    const auto room = static_cast<int>(std::ceil(place.radius * std::max(place.scaleX, place.scaleY)));
    const QRectF &inner = place.inner;
    return QRectF(inner.left() * place.scaleX + place.shiftX, inner.top() * place.scaleY + place.shiftY,
                  inner.width() * place.scaleX, inner.height() * place.scaleY)
        .toAlignedRect()
        .adjusted(-room, -room, room, room);
}

PointCloud::PointCloud(const CloudPlace &place)
    : m_place(place)
    , m_area(areaOf(place))
{
    const RealRange &range = place.range;
    const QRectF &inner = place.inner;
    m_columns = {inner.left(),          inner.width() / (range.x.max - range.x.min),
                 range.x.min,           place.scaleX,
                 place.shiftX,          double(m_area.left()),
                 double(m_area.width())};
    m_rows = {inner.bottom(),
              -inner.height() / (range.y.max - range.y.min),
              range.y.min,
              place.scaleY,
              place.shiftY,
              double(m_area.top()),
              double(m_area.height())};
    m_marks.assign(static_cast<std::size_t>(m_area.width()) * static_cast<std::size_t>(m_area.height()), 0);
}

bool PointCloud::visit(double x, double y)
{
    const std::ptrdiff_t pixel = pixelOf(m_columns, m_rows, QPointF(x, y));
    if (pixel < 0 || m_marks[static_cast<std::size_t>(pixel)])
        return false;
    m_marks[static_cast<std::size_t>(pixel)] = 1;
    return true;
}

/// The pixels of a circle around (0, 0).
std::vector<QPoint> PointCloud::circle() const
{
    const double rx = m_place.radius * m_place.scaleX;
    const double ry = m_place.radius * m_place.scaleY;
    const int columns = static_cast<int>(std::ceil(rx));
    const int rows = static_cast<int>(std::ceil(ry));
    std::vector<QPoint> pixels;
    for (int y = -rows; y <= rows; ++y) {
        for (int x = -columns; x <= columns; ++x) {
            if (std::hypot(x / (rx + roundness), y / (ry + roundness)) <= 1)
                pixels.emplace_back(x, y);
        }
    }
    return pixels;
}

QImage PointCloud::picture(const QColor &colour) const
{
    QImage image(m_area.size(), QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return image;
    image.fill(Qt::transparent);
    auto *const pixels = reinterpret_cast<quint32 *>(image.bits()); // lines of 32-bit pixels have no gaps
    const quint32 rgb = colour.rgb();
    const std::vector<QPoint> shape = circle();
    const int width = m_area.width();
    const int height = m_area.height();
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            if (!m_marks[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)])
                continue;
            for (const QPoint &offset : shape) {
                const int column = x + offset.x();
                const int row = y + offset.y();
                if (column >= 0 && column < width && row >= 0 && row < height)
                    pixels[static_cast<std::ptrdiff_t>(row) * width + column] = rgb;
            }
        }
    }
    return image;
}

void PointCloud::paint(QPainter *p, const CloudPlace &place, const QImage &picture)
{
    const QRect area = areaOf(place);
    p->save();
    p->setClipRect(place.inner, Qt::IntersectClip);
    if (place.isRaster) {
        p->setWorldTransform(p->deviceTransform().inverted(), true); // from here on: device pixels
        p->drawImage(area.topLeft(), picture);
    } else {
        p->drawImage(QRectF(area.left() / place.scaleX, area.top() / place.scaleY, area.width() / place.scaleX,
                            area.height() / place.scaleY),
                     picture);
    }
    p->restore();
}
