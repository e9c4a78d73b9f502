#include "analysis/uncertainty/NoiseModel.h"

#include <algorithm>
#include <cmath>
#include <limits>

Intensities intensitiesOf(const A2DData &map)
{
    const double *const begin = map.I0().data();
    const double *const end = begin + map.count();
    if (begin == end)
        return Intensities::Absorptions;
    const double first = *begin;
    if (std::any_of(begin, end, [first](double value) { return !(value == first); }))
        return Intensities::Counted;
    if (first == 0.0)
        return Intensities::Absorptions;
    return first == 1.0 ? Intensities::Ratios : Intensities::ConstantI0;
}

double NoiseModel::relativeVariance(std::size_t k, double I, double I0) const
{
    const bool isMeasured = maps[k] == Intensities::Absorptions || (I > 0.0 && I0 > 0.0);
    if (!isMeasured || !std::isfinite(I))
        return std::numeric_limits<double>::quiet_NaN();
    if (isUniform)
        return 1.0;
    return maps[k] == Intensities::ConstantI0 ? 1.0 / I : (I + I0) / (I * I0);
}

NoiseModel noiseModelOf(const std::vector<const A2DData *> &maps)
{
    NoiseModel model;
    for (const A2DData *map : maps) {
        model.maps.push_back(intensitiesOf(*map));
        if (model.maps.back() == Intensities::Ratios || model.maps.back() == Intensities::Absorptions)
            model.isUniform = true;
    }
    return model;
}
