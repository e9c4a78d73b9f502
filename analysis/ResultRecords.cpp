#include "analysis/ResultRecords.h"

#include <new>
#include <utility>
#include <vector>

bool ResultRecords::reset(Method method, int width, int height)
{
    const qint64 pixels = qint64(width) * height;
    if (pixels > mostPixels)
        return false;
    const auto count = static_cast<std::size_t>(pixels);
    std::vector<numeric::Plane *> planes = {&m_x, &m_y, &m_a, &m_t};
    for (numeric::Plane &plane : m_quantities)
        planes.push_back(&plane);
    const std::size_t needed = method == Method::NonEquivalent ? planes.size() : 4;
    try {
        // Larger planes are made beside the old ones, so that these survive a failure.
        std::vector<numeric::Plane> larger(needed);
        for (std::size_t i = 0; i < needed; ++i) {
            if (planes[i]->capacity() < count)
                larger[i].resize(count);
        }
        for (std::size_t i = 0; i < needed; ++i) {
            if (planes[i]->capacity() < count)
                *planes[i] = std::move(larger[i]);
        }
    } catch (const std::bad_alloc &) {
        return false;
    }
    for (std::size_t i = 0; i < planes.size(); ++i) {
        if (i < needed)
            planes[i]->resize(count);
        else
            planes[i]->clear();
    }
    m_method = method;
    m_width = width;
    m_height = height;
    return true;
}

ResultRecord ResultRecords::record(std::size_t index) const
{
    ResultRecord result;
    if (index >= count())
        return result;
    result.x = m_x[index];
    result.y = m_y[index];
    result.a = m_a[index];
    result.t = m_t[index];
    if (m_method == Method::NonEquivalent) {
        result.values.reserve(quantityCount);
        for (const numeric::Plane &plane : m_quantities)
            result.values.append(plane[index]);
    }
    return result;
}
