#include "analysis/drawing/PointCloud.h"

#include "display/PlotFrame.h"

#include <QColor>
#include <QImage>
#include <QPaintEngine>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace
{

constexpr double vectorScale = 4; // pixels per unit where the device has none of its own: printers, files of vectors
constexpr int mostPixels = 16384; // of the area along one side
constexpr double roundness = 0.3; // pixels added to a radius: circles without spikes

} // namespace

PointCloud::PointCloud(const QPainter &painter, const ChCoord &cc, double radius)
    : m_cc(cc)
    , m_radius(radius)
{
    const QTransform device = painter.deviceTransform();
    const QRectF inner = plot::innerRect(cc);
    const QSizeF size = device.mapRect(inner).size();
    m_isRaster = painter.paintEngine()->type() == QPaintEngine::Raster && device.type() <= QTransform::TxScale &&
                 device.m11() > 0 && device.m22() > 0 && size.width() <= mostPixels && size.height() <= mostPixels;
    double shiftX = 0;
    double shiftY = 0;
    if (m_isRaster) {
        m_scaleX = device.m11();
        m_scaleY = device.m22();
        shiftX = device.dx();
        shiftY = device.dy();
    } else {
        m_scaleX = m_scaleY = std::min(vectorScale, mostPixels / std::max(inner.width(), inner.height()));
    }
    const auto room = static_cast<int>(std::ceil(m_radius * std::max(m_scaleX, m_scaleY)));
    m_area = QRectF(inner.left() * m_scaleX + shiftX, inner.top() * m_scaleY + shiftY, inner.width() * m_scaleX,
                    inner.height() * m_scaleY)
                 .toAlignedRect()
                 .adjusted(-room, -room, room, room);
    m_columns = {cc.isx0(), cc.r2sdx(1), cc.rx0(), m_scaleX, shiftX, double(m_area.left()), double(m_area.width())};
    m_rows = {cc.isy0(), cc.r2sdy(1), cc.ry0(), m_scaleY, shiftY, double(m_area.top()), double(m_area.height())};
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
    const double rx = m_radius * m_scaleX;
    const double ry = m_radius * m_scaleY;
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

void PointCloud::paint(QPainter *p, const QColor &colour) const
{
    QImage image(m_area.size(), QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return;
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
    p->save();
    p->setClipRect(plot::innerRect(m_cc), Qt::IntersectClip);
    if (m_isRaster) {
        p->setWorldTransform(p->deviceTransform().inverted(), true); // from here on: device pixels
        p->drawImage(m_area.topLeft(), image);
    } else {
        p->drawImage(QRectF(m_area.left() / m_scaleX, m_area.top() / m_scaleY, m_area.width() / m_scaleX,
                            m_area.height() / m_scaleY),
                     image);
    }
    p->restore();
}
