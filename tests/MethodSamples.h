#pragma once

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
