#pragma once

#include "analysis/model/AnalysisInput.h"
#include "bench/SampleReferences.h"
#include "samples/ParticleField.h"
#include "samples/PortableMath.h"
#include "samples/Random.h"

#include <array>
#include <cstdint>

/// The sample maker's maps, measured `shift` eV above the energies that they are said to be at, as the inputs of an
/// analysis by the non-equivalent method with a linear background.
class ShiftedSample
{
public:
    ShiftedSample(int width, int height, double counts, double shift, std::uint64_t seed)
    {
        static const sample::EdgeModel model;
        const sample::ParticleField field(width, height, 1);
        std::vector<sample::Pixel> row(static_cast<std::size_t>(width));
        for (int k = 0; k < sample::mapCount; ++k) {
            const auto columns = m_maps[static_cast<std::size_t>(k)].resize(qint64(width) * height);
            m_maps[static_cast<std::size_t>(k)].setSize(width, height);
            sample::Random random(seed, static_cast<std::uint64_t>(k));
            const double energy = sample::mapEnergies[k];
            for (int y = 0; y < height; ++y) {
                field.fillRow(y, row.data());
                for (int x = 0; x < width; ++x) {
                    const sample::Pixel &pixel = row[static_cast<std::size_t>(x)];
                    double absorption = pixel.background + pixel.backgroundSlope * energy;
                    for (int j = 0; j < sample::referenceCount; ++j)
                        absorption += pixel.thickness * pixel.fractions[j] * model.normalized(j, energy + shift);
                    const qint64 i = qint64(y) * width + x;
                    columns.x[i] = columns.y[i] = 0.0;
                    columns.I0[i] = random.counts(counts * pixel.beam);
                    columns.I[i] = random.counts(counts * pixel.beam * portable::exp(-absorption));
                    columns.absorption[i] = pixelAbsorption(columns.I[i], columns.I0[i]);
                }
            }
        }
    }

    AnalysisInput input() const
    {
        AnalysisInput input;
        input.conditions.isNonEquivalent = true;
        input.conditions.isLinear = true;
        for (const PlanReference &reference : sampleReferences())
            input.references.append({reference.name, reference.spectrum, true, reference.valence, true});
        for (int k = 0; k < sample::mapCount; ++k) {
            PointInput point;
            point.energy = sample::mapEnergies[k];
            point.isUsed = true;
            point.map = &m_maps[static_cast<std::size_t>(k)];
            input.points.append(point);
        }
        return input;
    }

private:
    std::array<A2DData, sample::mapCount> m_maps;
};
