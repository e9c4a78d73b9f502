#include "display/ChCoord.h"

#include "numeric/RealToInt.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

using numeric::truncToInt;

void ChCoord::setScreenArea(double x0, double y0, double x1, double y1)
{
    m_sx0 = x0;
    m_sx1 = x1;
    m_sy0 = y0;
    m_sy1 = y1;
    setInnerArea(x0, y0, x1, y1);
}

void ChCoord::setInnerArea(double x0, double y0, double x1, double y1)
{
    m_isx0 = x0;
    m_isx1 = x1;
    m_isy0 = y0;
    m_isy1 = y1;
}

void ChCoord::setMargins()
{
    m_isx0 = m_sx0 + truncToInt(m_marginX0 * (m_sx1 - m_sx0));
    m_isx1 = m_sx1 - truncToInt(m_marginX1 * (m_sx1 - m_sx0));
    m_isy0 = m_sy0 + truncToInt(m_marginY0 * (m_sy1 - m_sy0));
    m_isy1 = m_sy1 - truncToInt(m_marginY1 * (m_sy1 - m_sy0));
}

void ChCoord::setRealArea(double x0, double y0, double x1, double y1)
{
    setRealX(x0, x1);
    setRealY(y0, y1);
}

void ChCoord::setRealX(double min, double max)
{
    m_rx0 = min;
    m_rx1 = max;
}

void ChCoord::setRealY(double min, double max)
{
    m_ry0 = min;
    m_ry1 = max;
}

double ChCoord::s2rxLimit(double s) const
{
    return std::max(std::min(m_rx0, m_rx1), std::min(std::max(m_rx0, m_rx1), s2rx(s)));
}

double ChCoord::s2ryLimit(double s) const
{
    return std::max(std::min(m_ry0, m_ry1), std::min(std::max(m_ry0, m_ry1), s2ry(s)));
}

bool ChCoord::nearEdge(double s, double edge0, double edge1, double bandFraction)
{
    const double band = std::abs(edge1 - edge0) * bandFraction;
    if (edge1 > edge0)
        return s < edge0 + band || s > edge1 - band;
    return s < edge1 + band || s > edge0 - band;
}

double ChCoord::calcStep(double step, double minPixels) const
{
    const double pixelsPerUnit = (m_isx1 - m_isx0) / (m_rx1 - m_rx0);
    if (step * pixelsPerUnit > minPixels)
        return step;
    double multiplier = 1;
    for (int decade = 0; decade < 8; ++decade) {
        const double base = step * multiplier;
        for (const double candidate : {base, 2 * base, 5 * base}) {
            if (candidate * pixelsPerUnit > minPixels)
                return candidate;
        }
        multiplier *= 10;
    }
    return step * 1e8;
}
