#pragma once

#include "display/RealRange.h"
#include "numeric/ParallelRanges.h"

#include <QColor>
#include <QImage>
#include <QPointF>
#include <QRect>
#include <QRectF>

#include <cstddef>
#include <mutex>
#include <optional>
#include <vector>

class ChCoord;
class QPainter;

/// Where the points of a plot fall on a painter's device.
struct CloudPlace {
    /// For the plot of `cc`, which must be drawable; `radius` of the circles in pixels.
    CloudPlace(const QPainter &painter, const ChCoord &cc, double radius);

    QRectF inner;    ///< the plot in pixels of the widget
    RealRange range; ///< that it shows
    double radius;
    bool isRaster = false; ///< the device has pixels of its own
    double scaleX = 1;     ///< pixels of the device per pixel of the widget
    double scaleY = 1;
    double shiftX = 0; ///< pixels of the device
    double shiftY = 0;
};

bool operator==(const CloudPlace &l, const CloudPlace &r);

/// Any number of points as small circles. Each pixel of the device that some point falls on is painted once, so that
/// millions of points cost no more than reading them. Points that are not finite or outside the plot are left out.
class PointCloud
{
public:
    explicit PointCloud(const CloudPlace &place);

    /// Adds the real points pointAt(i), i = 0 ... count - 1, each a QPointF; on all cores.
    template <class PointAt>
    void add(std::size_t count, PointAt pointAt);

    /// Marks the pixel of a real point; true when it is visible and no point fell on it before.
    bool visit(double x, double y);

    /// The circles, transparent around them, in the pixels of the device.
    QImage picture(const QColor &colour) const;
    /// Paints that picture where it belongs, cut to the plot.
    static void paint(QPainter *p, const CloudPlace &place, const QImage &picture);

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
    static QRect areaOf(const CloudPlace &place);
    std::vector<QPoint> circle() const;

    CloudPlace m_place;
    QRect m_area; // the plot and a radius around it, in pixels of the device
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

/// The picture of a scatter, kept from one paint to the next; owned by whoever asks for the paints.
struct ScatterCache {
    quint64 revision = 0; ///< of the points in the picture
    std::optional<CloudPlace> place;
    QColor colour;
    QImage picture;
    quint64 rangeRevision = 0; ///< of the points that have the range
    std::optional<RealRange> range;
};

/// Paints the points pointAt(i), i = 0 ... count - 1, as circles. They are not read again while `cache` (may be null)
/// holds the picture of the same place, colour and `revision`, a number that the caller changes whenever the points
/// change; 0 is never kept.
template <class PointAt>
void paintPoints(QPainter *p, const CloudPlace &place, const QColor &colour, std::size_t count, PointAt pointAt,
                 quint64 revision = 0, ScatterCache *cache = nullptr)
{
    ScatterCache unkept;
    ScatterCache &kept = cache ? *cache : unkept;
    if (revision == 0 || kept.revision != revision || !kept.place || !(*kept.place == place) || kept.colour != colour) {
        PointCloud cloud(place);
        cloud.add(count, pointAt);
        kept.revision = revision;
        kept.place = place;
        kept.colour = colour;
        kept.picture = cloud.picture(colour);
    }
    PointCloud::paint(p, place, kept.picture);
}
