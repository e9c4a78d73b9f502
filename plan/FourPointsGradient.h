#pragma once

#include "analysis/methods/FourPoints.h"
#include "analysis/uncertainty/UncertaintyConstants.h"
#include "plan/PlanSamples.h"

#include <vector>

/// The four-points method on given points, and what its valence does when a value changes.
class FourPointsGradients
{
public:
    /// Anchor points, then the V point.
    FourPointsGradients(const PlanRequest &request, const std::vector<PlanPoint> &points);

    struct Found {
        double bias = 0.0;            ///< valence found without noise less the true one
        std::vector<double> valence;  ///< dV/dy_k, formulas in UncertaintyConstants.h
        std::vector<double> fraction; ///< da/dy_k of the first reference
    };
    /// All NaN where the points fit no variant or do not determine it.
    Found of(const PlanMixture &mixture) const;

private:
    const std::vector<PlanPoint> &m_points;
    ValencePair m_valences;
    FourPointsVariant m_variant;
    FourPointsReferences m_references;
    UncertaintyConstants m_constants;
};
