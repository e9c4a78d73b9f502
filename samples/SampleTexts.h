#pragma once

#include "samples/EdgeModel.h"
#include "samples/SampleWriter.h"

#include <QByteArray>

namespace sample
{

/// The mixture that the target spectrum was made of.
constexpr double targetFractions[referenceCount] = {0.35, 0.50, 0.15};
constexpr double targetThickness = 0.90; ///< its total edge jump

constexpr double pixelPitch = 0.5; ///< µm

QByteArray referenceFileName(int j);
QByteArray targetFileName();
QByteArray mapFileName(int k);

/// A step scan of reference `j`, or of the target for j = referenceCount.
QByteArray spectrumText(const EdgeModel &model, int j, const SampleOptions &options);

/// The header lines of the map at mapEnergies[k].
QByteArray mapHeader(int k, const SampleOptions &options);

/// The '#' lines that explain truth.txt.
QByteArray truthHeader(const SampleOptions &options);

enum class Method { FourPoints, NonEquivalent };
/// A job file that analyses the data set, in JSON, with paths relative to the file.
QByteArray jobText(Method method);

} // namespace sample
