#include "mapdata/PixelOrder.h"

#include "mapdata/A2DData.h"
#include "numeric/ParallelRanges.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <mutex>

namespace
{

/// The positions along one axis. A line is a row for x, a column for y.
class AxisOrder
{
public:
    enum Axis { X, Y };

    AxisOrder(Axis axis, const numeric::Plane &positions, const std::optional<double> &step, std::size_t length,
              std::size_t stride)
        : m_axis(axis)
        , m_v(positions.data())
        , m_count(positions.size())
        , m_stride(stride)
        , m_lineEnd((length - 1) * stride)
        , m_hasStep(step)
    {
        if (length < 2)
            return;
        const double alongLine = m_v[m_lineEnd] - m_v[0];
        const double overall = m_v[m_count - 1] - m_v[0]; // of a map stored y first only this one is the whole way
        const double extent = std::fmax(std::fabs(alongLine), std::fabs(overall));
        m_sign = step.value_or(alongLine) < 0.0 ? -1.0 : 1.0;
        m_tolerance = extent / static_cast<double>(length - 1) / 2.0;
    }

    std::optional<OrderBreak> find() const
    {
        if (m_lineEnd == 0 || !(m_tolerance > 0.0 || m_hasStep))
            return std::nullopt;
        std::size_t first = m_count;
        std::mutex merging;
        numeric::parallelRanges(m_count - m_stride, 0, [this, &first, &merging](std::size_t begin, std::size_t end) {
            const std::size_t mine = firstStepBack(begin + m_stride, end + m_stride);
            const std::lock_guard<std::mutex> lock(merging);
            first = std::min(first, mine);
        });
        if (first < m_count)
            return between(first - m_stride, first);
        return findLineWithoutWay();
    }

private:
    /// The first record of [begin, end) that lies behind the one before it in its line; m_count for none.
    std::size_t firstStepBack(std::size_t begin, std::size_t end) const
    {
        for (std::size_t i = begin; i < end; ++i) {
            if (m_sign * (m_v[i] - m_v[i - m_stride]) < -m_tolerance && !isLineStart(i))
                return i;
        }
        return m_count;
    }

    bool isLineStart(std::size_t i) const { return m_axis == X && i % (m_lineEnd + 1) == 0; }

    /// A line whose end is not ahead of its start: where the other axis is the fast one, positions only repeat.
    std::optional<OrderBreak> findLineWithoutWay() const
    {
        const std::size_t toNextLine = m_axis == X ? m_lineEnd + 1 : 1;
        for (std::size_t start = 0; start + m_lineEnd < m_count; start += toNextLine) {
            if (m_sign * (m_v[start + m_lineEnd] - m_v[start]) <= m_tolerance)
                return between(start, start + m_lineEnd);
        }
        return std::nullopt;
    }

    OrderBreak between(std::size_t from, std::size_t to) const
    {
        return {m_axis == X, static_cast<qint64>(from), static_cast<qint64>(to), m_v[from], m_v[to]};
    }

    Axis m_axis;
    const double *m_v;
    std::size_t m_count;
    std::size_t m_stride;  ///< from a record to the next one in its line
    std::size_t m_lineEnd; ///< from the first record of a line to its last
    bool m_hasStep;
    double m_sign = 1.0;
    double m_tolerance = 0.0;
};

} // namespace

std::optional<OrderBreak> findOrderBreak(const A2DData &map)
{
    const MapGrid &grid = map.grid();
    if (grid.nx <= 0 || grid.ny <= 0 || qint64(grid.nx) * grid.ny != map.count())
        return std::nullopt;
    const auto nx = static_cast<std::size_t>(grid.nx);
    const auto along = AxisOrder(AxisOrder::X, map.x(), grid.x.step, nx, 1).find();
    return along ? along : AxisOrder(AxisOrder::Y, map.y(), grid.y.step, static_cast<std::size_t>(grid.ny), nx).find();
}
