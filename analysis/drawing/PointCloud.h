#pragma once

#include "display/ChCoord.h"
#include "numeric/ParallelRanges.h"

#include <QRect>
#include <QTransform>

#include <cstddef>
#include <mutex>
#include <vector>

class QColor;
class QPainter;

/// Any number of points as small circles. Each pixel of the device that some point falls on is painted once, so that
/// millions of points cost no more than reading them. Points that are not finite or outside the plot are left out.
class PointCloud
{
public:
    /// For the plot of `cc`, which must be drawable and outlive this, on the painter's device; `radius` in pixels.
    PointCloud(const QPainter &painter, const ChCoord &cc, double radius);

    /// Adds the real points pointAt(i), i = 0 ... count - 1, each a QPointF; on all cores.
    template <class PointAt>
    void add(std::size_t count, PointAt pointAt);

    /// Marks the pixel of a real point; true when it is visible and no point fell on it before.
    bool visit(double x, double y);

    /// Paints the circles, cut to the plot.
    void paint(QPainter *p, const QColor &colour) const;

private:
    using Marks = std::vector<unsigned char>; // per pixel of m_area, 1 where a point is

    /// From real coordinates to the columns or rows of the area, by the formula of ChCoord.
    struct Axis {
        double pixelAt(double real) const
        {
            return (inner0 + pixelsPerUnit * (real - real0)) * deviceScale + deviceShift - areaStart;
        }
        double inner0 = 0, pixelsPerUnit = 1, real0 = 0, deviceScale = 1, deviceShift = 0, areaStart = 0;
        double size = 0;
    };

    /// Index of the point's pixel, -1 when it is not in the area.
    static std::ptrdiff_t pixelOf(const Axis &columns, const Axis &rows, const QPointF &point)
    {
        const double column = columns.pixelAt(point.x());
        const double row = rows.pixelAt(point.y());
        if (!(column >= 0 && column < columns.size && row >= 0 && row < rows.size)) // also NaN
            return -1;
        return static_cast<std::ptrdiff_t>(row) * static_cast<std::ptrdiff_t>(columns.size) +
               static_cast<std::ptrdiff_t>(column);
    }
    std::vector<QPoint> circle() const;

    const ChCoord &m_cc;
    double m_radius;
    bool m_isRaster;
    double m_scaleX = 1, m_scaleY = 1; // pixels of the device per pixel of the widget
    QRect m_area;                      // the plot, in pixels of the device
    Axis m_columns, m_rows;
    Marks m_marks;
};

template <class PointAt>
void PointCloud::add(std::size_t count, PointAt pointAt)
{
    std::mutex merging;
    numeric::parallelRanges(count, 0, [this, pointAt, &merging](std::size_t begin, std::size_t end) {
        const Axis columns = m_columns; // copies, which the writing of marks cannot change
        const Axis rows = m_rows;
        Marks share(m_marks.size());
        unsigned char *const marks = share.data();
        for (std::size_t i = begin; i < end; ++i) {
            const std::ptrdiff_t pixel = pixelOf(columns, rows, pointAt(i));
            if (pixel >= 0)
                marks[pixel] = 1;
        }
        const std::lock_guard<std::mutex> lock(merging);
        for (std::size_t i = 0; i < share.size(); ++i)
            m_marks[i] = static_cast<unsigned char>(m_marks[i] | share[i]);
    });
}
