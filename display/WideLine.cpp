#include "display/WideLine.h"

#include <QPaintEngine>
#include <QPainter>
#include <QPen>

#include <algorithm>
#include <cmath>
#include <vector>

namespace
{

constexpr int partsPerStrip = 32;
constexpr double narrowestStrip = 32; // device pixels
constexpr double gentleBend = 0.5;    // cosine: sharper corners are left to the painter

/// Whether strips of whole device pixels can be cut out.
bool canBeCut(const QPainter &p)
{
    const QTransform &device = p.deviceTransform();
    return p.pen().style() == Qt::SolidLine && p.paintEngine()->type() == QPaintEngine::Raster &&
           device.type() <= QTransform::TxScale && device.m11() > 0;
}

/// The outline of a line that bends gently, out along one side and back along the other.
class Outline
{
public:
    explicit Outline(double width)
        : m_half(width / 2)
    {
    }

    /// False where the line bends too much, or more than its width allows.
    bool make(const QPointF *points, int count)
    {
        m_left.clear();
        m_right.clear();
        QPointF before;
        for (int i = 0; i < count; ++i) {
            const QPointF along = i + 1 < count ? points[i + 1] - points[i] : QPointF();
            const double length = std::hypot(along.x(), along.y());
            const QPointF normal = length > 0 ? QPointF(-along.y(), along.x()) / length : before;
            if (i == 0)
                before = normal;
            const double bend = QPointF::dotProduct(before, normal);
            if (!(bend > gentleBend) || !append(points[i], (before + normal) * (m_half / (1 + bend)), before))
                return false;
            before = normal;
        }
        m_left.insert(m_left.end(), m_right.crbegin(), m_right.crend());
        return true;
    }
    const std::vector<QPointF> &points() const { return m_left; }

private:
    /// False when a side would turn back.
    bool append(const QPointF &point, const QPointF &aside, const QPointF &normalBefore)
    {
        const QPointF left = point + aside;
        const QPointF right = point - aside;
        const QPointF forwards(normalBefore.y(), -normalBefore.x());
        if (!m_left.empty() && !(QPointF::dotProduct(left - m_left.back(), forwards) > 0 &&
                                 QPointF::dotProduct(right - m_right.back(), forwards) > 0))
            return false;
        m_left.push_back(left);
        m_right.push_back(right);
        return true;
    }

    double m_half;
    std::vector<QPointF> m_left, m_right;
};

class StripPainter
{
public:
    StripPainter(QPainter *p, const QPolygonF &line)
        : m_painter(p)
        , m_line(line)
        , m_pen(p->pen())
        , m_reach(2 * std::max(m_pen.widthF(), 1.0) + 1) // mitres reach that far
        , m_outline(m_pen.widthF())
        , m_isOutlined(m_pen.joinStyle() == Qt::MiterJoin && m_pen.widthF() > 1 &&
                       p->testRenderHint(QPainter::Antialiasing))
    {
    }

    void paint()
    {
        constexpr double within = 0.25; // device pixels: the clip becomes whole ones, however they are rounded
        const QTransform device = m_painter->deviceTransform();
        const auto ends = std::minmax_element(m_line.cbegin(), m_line.cend(),
                                              [](const QPointF &l, const QPointF &r) { return l.x() < r.x(); });
        const double first = std::floor((ends.first->x() - m_reach) * device.m11() + device.dx());
        const double last = std::ceil((ends.second->x() + m_reach) * device.m11() + device.dx());
        const double width = std::max(narrowestStrip, std::ceil((last - first) * partsPerStrip / m_line.size()));
        for (double column = first; column < last; column += width)
            paintStrip((column + within - device.dx()) / device.m11(),
                       (column + width - within - device.dx()) / device.m11());
    }

private:
    bool reaches(int part, double left, double right) const
    {
        const double begin = m_line.at(part).x();
        const double end = m_line.at(part + 1).x();
        return std::min(begin, end) - m_reach < right && std::max(begin, end) + m_reach > left;
    }

    void paintStrip(double left, double right)
    {
        constexpr double far = 1e4; // pixels, above and below all
        m_painter->save();
        m_painter->setClipRect(QRectF(left, -far, right - left, 2 * far), Qt::IntersectClip);
        for (int part = 0; part + 1 < m_line.size(); ++part) {
            const int first = part;
            while (part + 1 < m_line.size() && reaches(part, left, right))
                ++part;
            if (part > first)
                paintRun(first, part);
        }
        m_painter->restore();
    }

    /// The points `first` to `last`. Those at the ends of the line have caps.
    void paintRun(int first, int last)
    {
        const QPointF *const points = m_line.constData() + first;
        const int count = last - first + 1;
        const bool hasCap = first == 0 || last + 1 == m_line.size();
        if (!m_isOutlined || hasCap || !m_outline.make(points, count)) {
            m_painter->drawPolyline(points, count);
            return;
        }
        m_painter->setPen(Qt::NoPen);
        m_painter->setBrush(m_pen.brush());
        m_painter->drawPolygon(m_outline.points().data(), static_cast<int>(m_outline.points().size()), Qt::WindingFill);
        m_painter->setPen(m_pen);
    }

    QPainter *m_painter;
    const QPolygonF &m_line;
    const QPen m_pen;
    const double m_reach; // from the line, pixels
    Outline m_outline;
    const bool m_isOutlined;
};

} // namespace

void drawWideLine(QPainter *p, const QPolygonF &line)
{
    if (line.size() > 2 * partsPerStrip && canBeCut(*p))
        StripPainter(p, line).paint();
    else
        p->drawPolyline(line);
}
