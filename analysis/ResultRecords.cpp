#include "analysis/ResultRecords.h"

#include <algorithm>
#include <new>
#include <utility>
#include <vector>

bool ResultRecords::reset(Method method, int width, int height)
{
    const qint64 pixels = qint64(width) * height;
    if (pixels > mostPixels)
        return false;
    const auto count = static_cast<std::size_t>(pixels);
    const auto isNeeded = [method](std::size_t i) {
        return method == Method::NonEquivalent || i == ResultPosition::ratio || i == ResultPosition::amount;
    };
    try {
        // Larger planes are made beside the old ones, so that these survive a failure.
        numeric::Plane x, y;
        std::array<numeric::Plane, quantityCount> larger;
        const auto grow = [count](const numeric::Plane &old, numeric::Plane *plane) {
            if (old.capacity() < count)
                plane->resize(count);
        };
        grow(m_x, &x);
        grow(m_y, &y);
        for (std::size_t i = 0; i < larger.size(); ++i) {
            if (isNeeded(i))
                grow(m_planes[i], &larger[i]);
        }
        const auto take = [](numeric::Plane *old, numeric::Plane *plane) {
            if (plane->size() > 0)
                *old = std::move(*plane);
        };
        take(&m_x, &x);
        take(&m_y, &y);
        for (std::size_t i = 0; i < larger.size(); ++i) {
            if (larger[i].size() > 0)
                m_zeros[i] = 0;
            take(&m_planes[i], &larger[i]);
        }
    } catch (const std::bad_alloc &) {
        return false;
    }
    m_x.resize(count);
    m_y.resize(count);
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
    m_width = width;
    m_height = height;
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
