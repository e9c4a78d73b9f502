#pragma once

#include "mapdata/A2DData.h"

#include <cstddef>
#include <vector>

/// How the variance s^2 of a pixel's absorption y = ln(I0 / I) is known. For counted quanta it is 1/I + 1/I0, since
/// those of I and I0 are I and I0 and the errors are small (delta method: P. R. Bevington, Data Reduction and Error
/// Analysis for the Physical Sciences, McGraw-Hill 1969, chapter 4); where the stored numbers are not the counts
/// themselves it is gamma times that.

/// What the intensities of a map are.
enum class Intensities {
    Counted,    ///< I and I0 vary from pixel to pixel
    ConstantI0, ///< I0 is the same in every record: a normalisation, not a count, whose term is left out
    Ratios,     ///< I0 is 1 in every record, as in files of three columns: I / I0 stands in I, no intensities
    Absorptions ///< I0 is 0 in every record: the absorption itself stands in I, no intensities
};

/// Looks at I0 of every record up to the first one that differs; a map without records counts as Absorptions.
Intensities intensitiesOf(const A2DData &map);

struct NoiseModel {
    std::vector<Intensities> maps; ///< one per map
    /// At least one map has no intensities: s^2 is one value for all pixels, `scale`, taken from the residuals.
    bool isUniform = false;
    /// gamma: s^2 = gamma (1/I + 1/I0). For a uniform model s^2 itself. NaN when it could not be had.
    double scale = 1.0;
    /// There were no residuals to take the scale from (n = p): gamma = 1 was assumed.
    bool isScaleAssumed = true;

    /// s^2 / scale of a record of map `k`. NaN for I <= 0 or I0 <= 0, whose absorption was not measured; in a map of
    /// absorptions every finite I is as good.
    double relativeVariance(std::size_t k, double I, double I0) const;
};

/// The model before its scale is known.
NoiseModel noiseModelOf(const std::vector<const A2DData *> &maps);
