#pragma once

#include "analysis/results/ResultRecords.h"
#include "analysis/results/RunInfo.h"
#include "analysis/uncertainty/NoiseModel.h"
#include "analysis/uncertainty/SpectrumFit.h"
#include "mapdata/A2DData.h"

#include <cstddef>
#include <optional>
#include <vector>

/// Pixels of a map by columns and rows from 0; both corners belong to it, in whatever order.
struct PixelRectangle {
    int x0 = 0;
    int y0 = 0;
    int x1 = 0;
    int y1 = 0;
};

/// The pixels, row by row, that lie in the rectangle (none: in the map) and, where `above` is given, have an amount t
/// of at least that. What of the rectangle lies beside the map is left out.
std::vector<std::size_t> regionPixels(const ResultRecords &results, const std::optional<PixelRectangle> &rectangle,
                                      const std::optional<double> &above = std::nullopt);

/// One energy of a region's mean spectrum.
struct RegionPoint {
    double energy = 0.0;                                        ///< eV
    double mean = 0.0;                                          ///< over the pixels, of the absorption
    double error = 0.0;                                         ///< its standard error, sqrt(sum of s^2) / pixels
    double fitted = 0.0;                                        ///< by the fit of the mean spectrum
    double residual() const { return (mean - fitted) / error; } ///< in standard errors
};

/// What a region's pixels are together and how far they differ. All NaN without a pixel.
struct RegionStatistics {
    std::size_t pixels = 0;  ///< that count
    std::size_t leftOut = 0; ///< without a positive intensity or a finite result
    double amount = 0.0;     ///< sum of t
    /// Weighted with the amounts, sum t V / sum t: for every method but the four points by least squares the valence of
    /// the mean spectrum's fit, whose standard error is fit.valenceError.
    double mean = 0.0;
    double median = 0.0;             ///< of V
    double scatter = 0.0;            ///< standard deviation of V (divided by the number of pixels)
    double expectedScatter = 0.0;    ///< what noise alone explains of that: root mean square of sigma_V
    SpectrumFit fit;                 ///< of the mean spectrum; its t is the mean amount, its chi^2 that of the mean
    std::vector<RegionPoint> points; ///< in the order of the method
};

/// `maps` and `results` are those of the run, `noise` that of its UncertaintyMap; indices beyond the results are left
/// out. On all cores; the same numbers whatever `threads` is.
RegionStatistics regionStatistics(const RunInfo &run, const std::vector<const A2DData *> &maps,
                                  const ResultRecords &results, const NoiseModel &noise,
                                  const std::vector<std::size_t> &pixels, int threads = 0);
