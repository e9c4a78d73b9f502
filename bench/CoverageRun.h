#pragma once

#include "analysis/results/RunInfo.h"
#include "analysis/uncertainty/NoiseModel.h"
#include "mapdata/A2DData.h"

#include <array>
#include <cstdint>
#include <vector>

/// Monte Carlo: a pixel of the sample maker's model, measured many times with counted quanta, and how often the
/// method's result lies within the standard errors that are given for it.

enum class CoverageMethod { NonEquivalentLinear, NonEquivalentVictoreen, ThreePoints, Exact, LeastSquares };

struct CoverageConditions {
    CoverageMethod method = CoverageMethod::NonEquivalentLinear;
    double thickness = 1.0;  ///< t of the pixel, in edge jumps
    double counts = 40000.0; ///< mean I0
    int side = 600;          ///< the map has side x side pixels, all the same
    double unit = 1.0;       ///< so many quanta are 1 in the stored numbers, which makes gamma 1 / unit
    bool isDrawn = true;     ///< false: I0 is a constant that was not counted
    std::uint64_t seed = 1;
};

struct Coverage {
    double once = 0.0;  ///< share of the pixels within one standard error of the noise-free result
    double twice = 0.0; ///< within two
    double error = 0.0; ///< median of the standard errors
    double bias = 0.0;  ///< median difference from that result
};

struct CoverageResult {
    Coverage valence, amount, fraction; ///< of the first reference
    double trueAmount = 0.0;            ///< by the same method without noise
    NoiseModel noise;
    int degrees = 0;
};

/// The references and points of a method on the sample maker's energies.
RunInfo coverageRun(CoverageMethod method);

CoverageResult measureCoverage(const CoverageConditions &conditions);

/// One pixel of the sample maker's picture, measured once.
struct SamplePixel {
    double thickness = 0.0;
    double difference = 0.0; ///< of the valence found by the non-equivalent method from the true one
    double error = 0.0;      ///< its standard error
};

/// The pixels of the picture that hold material, with its uneven beam of `counts` quanta on average.
std::vector<SamplePixel> measureSample(int width, int height, double counts);
