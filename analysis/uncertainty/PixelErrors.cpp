#include "analysis/uncertainty/PixelErrors.h"

#include "analysis/uncertainty/UncertaintyFormulas.h"

#include <cmath>
#include <cstddef>
#include <limits>

PixelErrors pixelErrors(const UncertaintyConstants &constants, const double *y, const double *variances,
                        const PixelValues &found)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    PixelErrors errors;
    errors.valence = errors.amount = errors.chiSquare = nan;
    if (constants.points == 0) {
        errors.fractions.fill(nan);
        return errors;
    }
    double slope[mostUncertaintyPoints];
    const double *gradient = nullptr;
    withDegrees(constants.degrees, [&](auto degrees) {
        if constexpr (degrees > 0) {
            double z[degrees];
            misfitOf<degrees>(constants, y, variances, z, errors.chiSquare);
            if (constants.isInverse) {
                inverseGradient<degrees>(constants, y, z, found.amount, slope);
                gradient = slope;
            }
        }
    });
    double variance = 0.0;
    amountVariance(constants, variances, gradient, variance);
    errors.amount = std::sqrt(variance);
    const auto errorOf = [&](const UncertaintyConstants::Quantity &quantity, double value) {
        quantityVariance(constants, quantity, variances, gradient, value, found.amount, variance);
        return std::sqrt(variance);
    };
    errors.valence = errorOf(constants.valence, constants.isFourPoints ? found.fractions[0] : found.valence);
    for (std::size_t j = 0; j < constants.fractions.size(); ++j)
        errors.fractions[j] = errorOf(constants.fractions[j], found.fractions[constants.isFourPoints ? 0 : j]);
    return errors;
}
