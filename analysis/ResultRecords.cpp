#include "analysis/ResultRecords.h"

#include <algorithm>
#include <new>
#include <utility>
#include <vector>

namespace
{

/// The positions of `count` pixels: the map's own plane, or a longer one that goes on with zeros.
numeric::Plane positions(const numeric::Plane &known, std::size_t count)
{
    if (known.size() >= count)
        return known.share();
    numeric::Plane longer;
    longer.resize(count);
    std::fill(std::copy_n(known.data(), known.size(), longer.data()), longer.data() + count, 0.0);
    return longer;
}

} // namespace

bool ResultRecords::reset(Method method, const A2DData &map)
{
    const qint64 pixels = qint64(map.nx()) * map.ny();
    if (pixels > mostPixels)
        return false;
    const auto count = static_cast<std::size_t>(pixels);
    const auto isNeeded = [method](std::size_t i) {
        return method == Method::NonEquivalent || i == ResultPosition::ratio || i == ResultPosition::amount;
    };
    try {
        // Larger planes are made beside the old ones, so that these survive a failure.
        numeric::Plane x = positions(map.x(), count);
        numeric::Plane y = positions(map.y(), count);
        std::array<numeric::Plane, quantityCount> larger;
        const auto grow = [count](const numeric::Plane &old, numeric::Plane *plane) {
            if (old.capacity() < count)
                plane->resize(count);
        };
        for (std::size_t i = 0; i < larger.size(); ++i) {
            if (isNeeded(i))
                grow(m_planes[i], &larger[i]);
        }
        const auto take = [](numeric::Plane *old, numeric::Plane *plane) {
            if (plane->size() > 0)
                *old = std::move(*plane);
        };
        for (std::size_t i = 0; i < larger.size(); ++i) {
            if (larger[i].size() > 0)
                m_zeros[i] = 0;
            take(&m_planes[i], &larger[i]);
        }
        m_x = std::move(x);
        m_y = std::move(y);
    } catch (const std::bad_alloc &) {
        return false;
    }
    for (std::size_t i = 0; i < m_planes.size(); ++i) {
        if (isNeeded(i)) {
            m_planes[i].resize(count);
        } else {
            m_planes[i].clear();
            m_zeros[i] = 0;
        }
    }
    if (method == Method::FourPoints)
        m_zeros.fill(0); // a() and t() are filled past quantity()
    m_method = method;
    m_width = map.nx();
    m_height = map.ny();
    m_count = count;
    return true;
}

double *ResultRecords::quantity(int position)
{
    const auto i = static_cast<std::size_t>(position);
    m_zeros[i] = 0;
    return m_planes[i].data();
}

const double *ResultRecords::quantity(int position) const
{
    return m_method == Method::NonEquivalent ? m_planes[static_cast<std::size_t>(position)].data() : nullptr;
}

void ResultRecords::setZero(int position)
{
    const auto i = static_cast<std::size_t>(position);
    numeric::Plane &plane = m_planes[i];
    if (m_zeros[i] < plane.size())
        std::fill(plane.data() + m_zeros[i], plane.data() + plane.size(), 0.0);
    m_zeros[i] = std::max(m_zeros[i], plane.size());
}

ResultRecord ResultRecords::record(std::size_t index) const
{
    ResultRecord result;
    if (index >= count())
        return result;
    result.x = m_x[index];
    result.y = m_y[index];
    result.a = a()[index];
    result.t = t()[index];
    if (m_method == Method::NonEquivalent) {
        result.values.reserve(quantityCount);
        for (const numeric::Plane &plane : m_planes)
            result.values.append(plane[index]);
    }
    return result;
}
