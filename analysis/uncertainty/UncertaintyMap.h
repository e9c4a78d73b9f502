#pragma once

#include "analysis/results/ResultRecords.h"
#include "analysis/uncertainty/NoiseModel.h"
#include "analysis/uncertainty/UncertaintyConstants.h"
#include "mapdata/A2DData.h"
#include "numeric/Lanes.h"
#include "numeric/Plane.h"

#include <cstddef>
#include <optional>
#include <vector>

/// Standard errors and misfit of every pixel of a result (formulas: UncertaintyConstants.h). They hold what counting
/// noise does to the fit, and nothing of references that do not describe the sample, wrong energies or drift.

/// What is asked for.
struct UncertaintyRequest {
    /// Pixels with a smaller amount t hold no material, as in maskBelow(). None: material is where t exceeds its own
    /// three standard errors.
    std::optional<double> thinnest;
    bool hasFractions = false; ///< the standard errors of the fractions too
};

/// One plane per quantity, in the order of the results' pixels. A pixel is NaN where an intensity was not positive or a
/// map has no record.
struct UncertaintyMap {
    numeric::Plane valence; ///< sigma_V
    numeric::Plane amount;  ///< sigma_t, in the unit of the results' t
    numeric::Plane misfit;  ///< chi^2 / (n - p), about 1 where the references describe the pixel; empty for n = p
    std::vector<numeric::Plane> fractions; ///< sigma_fi, one per reference, when asked for

    int degrees = 0;             ///< n - p; 0: no misfit
    NoiseModel noise;            ///< what was taken for the variances, its scale the gamma of the map
    std::size_t scalePixels = 0; ///< pixels with material that the scale was taken from; 0: it was not

    /// What counts as material: t from `thinnest` on when that was asked for, else t above `significance` times
    /// sigma_t, which is 3 by the standard errors that all pixels give, not those of the material alone.
    std::optional<double> thinnest;
    double significance = 3.0;
    bool isMaterial(double t, double sigma) const
    {
        return thinnest ? t >= *thinnest && sigma >= 0.0 : t > significance * sigma;
    }
};

/// `maps` and `results` are those of the run that `constants` belong to, the maps in the order of its points. The
/// scale is such that the median of chi^2 over the material is that of a chi^2 with n - p degrees of freedom; it is 1,
/// and noise.isScaleAssumed, for n = p or where nothing is material, and NaN when there is nothing to take a uniform
/// variance from. Material is told by the scale that all pixels give (at most 65 536 of them, evenly spread).
/// Pixels are shared out over `threads` (0: all cores); the numbers are the same whatever `threads` and `set` are.
/// `out` keeps its memory from call to call.
/// False, and `out` empty, when the constants know nothing, maps and points are not as many, or there is no memory.
[[nodiscard]] bool computeUncertainty(const UncertaintyConstants &constants, const std::vector<const A2DData *> &maps,
                                      const ResultRecords &results, const UncertaintyRequest &request,
                                      UncertaintyMap *out, int threads = 0,
                                      numeric::InstructionSet set = numeric::bestInstructionSet());

/// Medians over the pixels with material; NaN without any.
struct UncertaintySummary {
    std::size_t pixels = 0; ///< with material
    double valence = 0.0;   ///< median sigma_V
    double amount = 0.0;    ///< median sigma_t
    /// Per reference 3.29 times the median sigma_f: the fraction that is found with 95 % confidence both of not being
    /// noise and of not being missed (L. A. Currie, Anal. Chem. 40 (1968) 586). Empty unless fractions were asked for.
    std::vector<double> detectionLimits;
    /// The amount t at which sigma_V would be 0.1. sigma_V t hardly depends on t, so that its median over 0.1 is taken;
    /// a thinner sample lets more quanta through and does a little better than that.
    double thinnestForTenth = 0.0;
};

UncertaintySummary summarize(const UncertaintyMap &map, const ResultRecords &results);
