#include "plan/FourPointsGradient.h"

#include "analysis/uncertainty/UncertaintyFormulas.h"
#include "numeric/LinearSystem.h"

#include <limits>

FourPointsGradients::FourPointsGradients(const PlanRequest &request, const std::vector<PlanPoint> &points)
    : m_points(points)
    , m_valences{true, request.references[0].valence, request.references[1].valence}
    , m_variant(chooseFourPoints(static_cast<int>(points.size()), request.method == PlanMethod::ExactFourPoints,
                                 request.method == PlanMethod::LeastSquaresFourPoints))
{
    for (const PlanPoint &point : points) {
        m_references.energies.push_back(point.energy);
        m_references.a.push_back(point.column[0]);
        m_references.b.push_back(point.column[1]);
    }
    const std::vector<double> jumps = planJumps(request);
    m_references.r = jumps[0] / jumps[1];
    m_constants = uncertaintyConstants(m_variant, m_references, m_valences);
}

FourPointsGradients::Found FourPointsGradients::of(const PlanMixture &mixture) const
{
    const std::size_t n = m_points.size();
    Found found;
    if (m_constants.points == 0) {
        const double nan = std::numeric_limits<double>::quiet_NaN();
        return {nan, std::vector<double>(n, nan), std::vector<double>(n, nan)};
    }
    double y[mostUncertaintyPoints] = {}, unit[mostUncertaintyPoints], slope[mostUncertaintyPoints];
    for (std::size_t k = 0; k < n; ++k) {
        y[k] = mixture.column(m_points[k]);
        unit[k] = 1.0;
        slope[k] = m_constants.amount[k];
    }
    numeric::LinearSystem work(3);
    const FourPointsResult result = solveFourPoints(m_variant, m_references, y, &work);
    found.bias = m_valences.mixed(result.a) - mixture.valence;
    withDegrees(m_constants.degrees, [&](auto degrees) {
        if constexpr (degrees > 0) {
            double z[degrees];
            double unused = 0.0;
            misfitOf<degrees>(m_constants, y, unit, z, unused);
            if (m_constants.isInverse)
                inverseGradient<degrees>(m_constants, y, z, result.t, slope);
        }
    });
    const UncertaintyConstants::Quantity &fraction = m_constants.fractions[0];
    for (std::size_t k = 0; k < n; ++k) {
        found.fraction.push_back((fraction.row[k] + (fraction.offset - result.a) * slope[k]) / result.t);
        found.valence.push_back(found.fraction.back() * (m_valences.first - m_valences.second));
    }
    return found;
}
