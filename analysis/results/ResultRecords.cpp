#include "analysis/results/ResultRecords.h"

#include <algorithm>
#include <new>
#include <utility>

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
    const bool isNonEquivalent = method == Method::NonEquivalent;
    const auto isNeeded = [isNonEquivalent](std::size_t i) {
        return isNonEquivalent || i == ResultPosition::ratio || i == ResultPosition::amount;
    };
    try {
        // Larger planes are made beside the old ones, so that these survive a failure.
        numeric::Plane x = positions(map.x(), count);
        numeric::Plane y = positions(map.y(), count);
        std::array<numeric::Plane, quantityCount> larger;
        for (std::size_t i = 0; i < larger.size(); ++i) {
            if (isNeeded(i) && (m_isZero[i] || m_planes[i].capacity() < count))
                larger[i].resize(count);
        }
        numeric::Plane zeros;
        if (isNonEquivalent && m_zeros.capacity() < count)
            zeros.resize(count);

        for (std::size_t i = 0; i < larger.size(); ++i) {
            if (larger[i].size() > 0 || m_isZero[i])
                m_planes[i] = std::move(larger[i]);
        }
        if (zeros.size() > 0) {
            m_zeros = std::move(zeros);
            m_zerosKnown = 0;
        }
        m_x = std::move(x);
        m_y = std::move(y);
    } catch (const std::bad_alloc &) {
        return false;
    }
    m_isZero.fill(false);
    for (std::size_t i = 0; i < m_planes.size(); ++i) {
        if (isNeeded(i))
            m_planes[i].resize(count);
        else
            m_planes[i].clear();
    }
    if (isNonEquivalent) {
        m_zeros.resize(count); // nothing shares it now
    } else {
        m_zeros.clear();
        m_zerosKnown = 0;
    }
    m_method = method;
    m_grid = map.grid();
    m_count = count;
    return true;
}

const double *ResultRecords::quantity(int position) const
{
    return m_method == Method::NonEquivalent ? m_planes[static_cast<std::size_t>(position)].data() : nullptr;
}

void ResultRecords::setZero(int position)
{
    if (m_zerosKnown < m_count)
        std::fill(m_zeros.data() + m_zerosKnown, m_zeros.data() + m_count, 0.0);
    m_zerosKnown = std::max(m_zerosKnown, m_count);
    m_planes[static_cast<std::size_t>(position)] = m_zeros.share();
    m_isZero[static_cast<std::size_t>(position)] = true;
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
