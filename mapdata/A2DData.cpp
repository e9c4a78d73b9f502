#include "mapdata/A2DData.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

QStringList A2DData::headerLines() const
{
    return m_headerText.isEmpty() ? QStringList() : m_headerText.split(QLatin1Char('\n'));
}

MapRecord A2DData::record(qint64 index) const
{
    const auto i = static_cast<std::size_t>(index);
    return {m_x[i], m_y[i], m_I[i], m_I0[i], {}};
}

void A2DData::clear()
{
    m_headerText.clear();
    m_grid = MapGrid();
    m_facts = MapLoadFacts();
    for (numeric::Plane *const plane : {&m_x, &m_y, &m_I, &m_I0, &m_absorption})
        plane->clear();
}

void A2DData::setSize(int nx, int ny)
{
    m_grid.nx = nx;
    m_grid.ny = ny;
}

void A2DData::setSizeFromPositions()
{
    if (count() < 2) {
        setSize(static_cast<int>(count()), static_cast<int>(count()));
        return;
    }
    const auto equalToFirst = [](const numeric::Plane &plane) {
        const auto equal = std::count(plane.data(), plane.data() + plane.size(), plane[0]);
        return equal > std::numeric_limits<int>::max() ? 0 : static_cast<int>(equal);
    };
    setSize(equalToFirst(m_y), equalToFirst(m_x));
}

void A2DData::sharePositions(const A2DData &other)
{
    const auto same = [](const numeric::Plane &l, const numeric::Plane &r) {
        return l.size() == r.size() && std::memcmp(l.data(), r.data(), l.size() * sizeof(double)) == 0;
    };
    if (count() == 0 || sharesPositions(other) || !same(m_x, other.m_x) || !same(m_y, other.m_y))
        return;
    takePositions(other);
}

void A2DData::takePositions(const A2DData &other)
{
    m_x = other.m_x.share();
    m_y = other.m_y.share();
}

bool A2DData::sharesPositions(const A2DData &other) const
{
    return m_x.data() == other.m_x.data() && m_y.data() == other.m_y.data();
}

A2DData::Columns A2DData::resize(qint64 count)
{
    for (numeric::Plane *const plane : {&m_x, &m_y, &m_I, &m_I0, &m_absorption})
        plane->resize(static_cast<std::size_t>(count));
    return {m_x.data(), m_y.data(), m_I.data(), m_I0.data(), m_absorption.data()};
}

void A2DData::truncate(qint64 count)
{
    for (numeric::Plane *const plane : {&m_x, &m_y, &m_I, &m_I0, &m_absorption})
        plane->truncate(static_cast<std::size_t>(count));
}

double pixelAbsorption(double I, double I0)
{
    if (I0 == 0.0)
        return I;
    if (I == 0.0)
        return 1.0;
    return std::log(I0 / I);
}
