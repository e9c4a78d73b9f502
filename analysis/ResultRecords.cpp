#include "analysis/ResultRecords.h"

void ResultRecords::reset(Method method, int width, int height)
{
    const std::size_t count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    for (numeric::Plane *plane : {&m_x, &m_y, &m_a, &m_t})
        plane->resize(count);
    for (numeric::Plane &plane : m_quantities) {
        if (method == Method::NonEquivalent)
            plane.resize(count);
        else
            plane.clear();
    }
    m_method = method;
    m_width = width;
    m_height = height;
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
