#pragma once

#include "analysis/methods/NonEquivalent.h"
#include "spectrum/AMutE.h"

#include <algorithm>
#include <cmath>
#include <vector>

/// References that the tests of the methods share.

inline const std::vector<double> jumps = {1.3, 0.8, 1.9, 0.6};
inline const std::vector<double> fourValences = {2, 3, 0, 4};

inline bool near(double got, double wanted, double tolerance = 1e-9)
{
    return std::abs(got - wanted) <= tolerance * std::max(1.0, std::abs(wanted));
}

/// Four clearly different edges with a peak each, D_j high.
inline double referenceValue(std::size_t j, double energy)
{
    const double edge = 7115 + 4.0 * static_cast<double>(j);
    const double peak = (energy - edge - 4) / (3 + 2 * static_cast<double>(j));
    return jumps[j] * (0.5 + std::atan((energy - edge) / 2) / M_PI +
                       (1 + 0.4 * static_cast<double>(j % 2)) * std::exp(-peak * peak));
}

/// A spectrum with jump `jump` on a flat background, and `inside(E)` as its normalised value between 7100 and 7180 eV.
template <class Inside>
AMutE makeSpectrum(double jump, double dE, Inside inside)
{
    AMutE result;
    for (int pass = 0; pass < 2; ++pass) { // the second one knows the lines, which do not depend on what is inside
        AMutE spectrum;
        spectrum.setDE(dE);
        spectrum.setPreEdgeEnd(7095);
        spectrum.setPostEdgeStart(7185);
        spectrum.setEdgeEnergy(7120);
        for (int i = 0; i <= 300; ++i) {
            const double energy = 7000 + i;
            double mu = energy < 7100 ? 0.2 : 0.2 + jump;
            if (energy >= 7100 && energy <= 7180 && pass == 1) {
                const double pre = result.preLine(energy);
                mu = pre + inside(energy) * (result.postLine(energy) - pre);
            }
            spectrum.addPoint({static_cast<double>(i), energy + dE, mu});
        }
        spectrum.fitLines();
        result = spectrum;
    }
    return result;
}

inline AMutE referenceSpectrum(std::size_t j)
{
    return makeSpectrum(jumps[j], 0.0, [j](double energy) { return referenceValue(j, energy) / jumps[j]; });
}

inline const std::vector<double> eightEnergies = {7000, 7060, 7112, 7119, 7124, 7135, 7400, 7900}; // eV

/// The first `count` references at these energies.
inline NonEquivalentReferences referencesAt(const std::vector<double> &energies, std::size_t count)
{
    std::vector<std::vector<double>> columns(count);
    for (std::size_t j = 0; j < count; ++j) {
        for (const double energy : energies)
            columns[j].push_back(referenceValue(j, energy));
    }
    return prepareNonEquivalent(energies, columns, {jumps.begin(), jumps.begin() + static_cast<int>(count)});
}

/// A map of width x height whose absorptions come from `value(pixel)`, at the positions (ix + shift, 2 iy).
template <class Value>
A2DData makeMap(int width, int height, Value value, double shift = 0.0)
{
    A2DData map;
    const qint64 count = qint64(width) * height;
    const A2DData::Columns columns = map.resize(count);
    map.setSize(width, height);
    for (qint64 i = 0; i < count; ++i) {
        columns.x[i] = static_cast<double>(i % width) + shift;
        columns.y[i] = 2.0 * static_cast<double>(i / width);
        columns.I[i] = columns.absorption[i] = value(i);
        columns.I0[i] = 0.0;
    }
    return map;
}

inline std::vector<const A2DData *> pointersTo(const std::vector<A2DData> &maps)
{
    std::vector<const A2DData *> pointers;
    for (const A2DData &map : maps)
        pointers.push_back(&map);
    return pointers;
}
