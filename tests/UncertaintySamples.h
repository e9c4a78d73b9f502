#pragma once

#include "analysis/results/MapRecords.h"
#include "analysis/uncertainty/PixelErrors.h"
#include "tests/MethodSamples.h"

#include <cmath>
#include <random>

/// Methods, spectra and maps that the tests of the standard errors share.
namespace uncertainty_samples
{

/// A method and its points as one row of a table says them.
struct Method {
    const char *name;
    FourPointsVariant variant; ///< None: the non-equivalent method
    std::size_t points;
    std::size_t references = 2;
    NonEquivalentBackground background = NonEquivalentBackground::Linear;
};

inline RunInfo runOf(const Method &method)
{
    RunInfo run;
    run.method = {method.variant == FourPointsVariant::None, method.variant, method.background};
    for (std::size_t j = 0; j < method.references; ++j)
        run.references.append({static_cast<int>(j), QString(), fourValences[j], jumps[j]});
    // the energies of the edge first, so that few points still tell the references apart; the V point comes last
    const std::vector<double> order = {7112, 7900, 7119, 7000, 7135, 7060, 7400, 7124};
    std::vector<double> energies(order.begin(), order.begin() + static_cast<int>(method.points));
    if (method.variant == FourPointsVariant::None) {
        run.nonEquivalent = referencesAt(energies, method.references);
        return run;
    }
    run.fourPoints.energies = {7000, 7400, 7900, 7060, 7300, 7600, 7135};
    run.fourPoints.energies.resize(method.points - 1);
    run.fourPoints.energies.push_back(7119);
    for (const double energy : run.fourPoints.energies) {
        run.fourPoints.a.push_back(referenceValue(0, energy));
        run.fourPoints.b.push_back(referenceValue(1, energy));
    }
    run.fourPoints.r = jumps[0] / jumps[1];
    return run;
}

inline const std::vector<double> &energiesOf(const RunInfo &run)
{
    return run.method.isNonEquivalent ? run.nonEquivalent.energies : run.fourPoints.energies;
}

/// Reproducible numbers between -1 and 1.
inline double nextRandom(std::mt19937 *random)
{
    return static_cast<double>((*random)() % 20001) * 1e-4 - 1.0;
}

/// A mixture with residuals of size `noise`.
inline std::vector<double> spectrumOf(const RunInfo &run, double noise, std::mt19937 *random)
{
    std::vector<double> y;
    for (const double energy : energiesOf(run))
        y.push_back(0.5 * referenceValue(0, energy) + 0.4 * referenceValue(1, energy) + 0.3 - 1e-5 * (energy - 7100) +
                    noise * nextRandom(random));
    return y;
}

/// Maps of a method in which every kind of odd pixel stands, with their results.
struct NoisyMaps {
    explicit NoisyMaps(const Method &method, Intensities kind, int width, int height, double oddNoise = 0.0)
        : run(runOf(method))
        , constants(uncertaintyConstants(run))
    {
        std::mt19937 random(5);
        const double nan = std::nan("");
        maps.resize(energiesOf(run).size());
        for (A2DData &map : maps) {
            map.resize(qint64(width) * height);
            map.setSize(width, height);
        }
        for (qint64 i = 0; i < qint64(width) * height; ++i) {
            const bool isEmpty = i % 11 == 10; // a pixel without material
            const std::vector<double> y = spectrumOf(run, i / 64 % 2 == 1 ? 0.02 + oddNoise : 0.02, &random);
            for (std::size_t k = 0; k < maps.size(); ++k) {
                const A2DData::Columns columns = columnsOf(&maps[k]);
                const double absorption = isEmpty ? 0.02 * nextRandom(&random) : y[k];
                const double incident = 900 + 100 * nextRandom(&random);
                columns.I0[i] = kind == Intensities::Counted      ? incident
                                : kind == Intensities::ConstantI0 ? 5e4
                                : kind == Intensities::Ratios     ? 1.0
                                                                  : 0.0;
                columns.I[i] = kind == Intensities::Absorptions ? absorption : columns.I0[i] * std::exp(-absorption);
                const double odd[] = {0.0, -3.0, nan};
                if (k == 1 && i % 23 < 3)
                    columns.I[i] = odd[i % 23];
                if (k == 2 && kind == Intensities::Counted && i % 29 < 3)
                    columns.I0[i] = odd[i % 29];
                columns.absorption[i] = pixelAbsorption(columns.I[i], columns.I0[i]);
            }
        }
        maps[1].truncate(qint64(width) * height - 5); // records that are missing
        pointers = pointersTo(maps);
        const bool isFilled = run.method.isNonEquivalent
                                  ? fillRecords(NonEquivalentMapInput{method.background,
                                                                      run.nonEquivalent,
                                                                      {fourValences.begin(),
                                                                       fourValences.begin() + run.references.size()},
                                                                      pointers},
                                                &results)
                                  : fillRecords(FourPointsMapInput{method.variant, run.fourPoints, pointers}, &results);
        if (!isFilled)
            qFatal("no results");
    }

    static A2DData::Columns columnsOf(A2DData *map)
    {
        const auto of = [](const numeric::Plane &plane) {
            return const_cast<double *>(plane.data());
        };
        return {of(map->x()), of(map->y()), of(map->I()), of(map->I0()), of(map->absorptions())};
    }

    PixelValues valuesAt(std::size_t i) const
    {
        PixelValues values = {results.t()[i], 0.0, {results.a()[i], 1.0 - results.a()[i]}};
        values.valence = mixedValence(fourValences[0], fourValences[1], values.fractions[0]);
        if (run.method.isNonEquivalent) {
            values.valence = results.quantity(ResultPosition::valence)[i];
            for (int j = 0; j < run.references.size(); ++j)
                values.fractions[static_cast<std::size_t>(j)] = results.quantity(ResultPosition::ratio + j)[i];
        }
        return values;
    }

    /// For a scale of 1.
    PixelErrors errorsAt(std::size_t i, const NoiseModel &noise) const
    {
        std::vector<double> y, variances;
        for (std::size_t k = 0; k < maps.size(); ++k) {
            const bool exists = i < maps[k].I().size();
            y.push_back(exists ? maps[k].absorptions()[i] : std::nan(""));
            variances.push_back(exists ? noise.relativeVariance(k, maps[k].I()[i], maps[k].I0()[i]) : std::nan(""));
        }
        return pixelErrors(constants, y.data(), variances.data(), valuesAt(i));
    }

    RunInfo run;
    UncertaintyConstants constants;
    std::vector<A2DData> maps;
    std::vector<const A2DData *> pointers;
    ResultRecords results;
};

} // namespace uncertainty_samples
