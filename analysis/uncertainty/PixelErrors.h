#pragma once

#include "analysis/methods/ResultPosition.h"
#include "analysis/uncertainty/UncertaintyConstants.h"

#include <array>

/// Standard errors of one pixel or spectrum.
struct PixelErrors {
    double valence = 0.0;
    double amount = 0.0;
    std::array<double, ResultPosition::referenceRows> fractions = {}; ///< 0 beyond the last reference
    double chiSquare = 0.0;                                           ///< NaN for n = p
};

/// What the method found.
struct PixelValues {
    double amount = 0.0; ///< t
    double valence = 0.0;
    std::array<double, ResultPosition::referenceRows> fractions = {}; ///< a and 1 - a of the four-points methods
};

/// `y` and `variances` hold one value per point; the formulas stand in UncertaintyConstants.h. All NaN when the
/// constants know nothing.
PixelErrors pixelErrors(const UncertaintyConstants &constants, const double *y, const double *variances,
                        const PixelValues &found);
