#include "samples/EdgeModel.h"

#include "numeric/LinearSystem.h"
#include "numeric/RealToInt.h"
#include "samples/PortableMath.h"

#include <algorithm>
#include <cmath>

namespace sample
{

namespace
{

constexpr double hc = 12398.424360387684;        // eV Å
constexpr double degree = 3.1415926535 / 180.0;  // radians, with the ten decimals that readers of such files use
constexpr double waveNumber2PerEv = 0.262468426; // k^2 = 2 m E / hbar^2, 1/Å^2 per eV

struct Peak {
    double amplitude; // in units of the edge jump
    double position;  // eV from the edge of the spectrum
    double width;     // eV, standard deviation
};

/// One shell of neighbours in the EXAFS formula.
struct Shell {
    double amplitude;
    double distance; // Å
    double disorder; // Å^2, mean square displacement
    double phase;    // radians
};

struct Compound {
    double edge;      // eV
    double edgeWidth; // eV
    Peak peaks[3];    // white line, shape resonance, pre-edge peak
    Shell shells[3];
    double background[3]; // a, b, c of the Victoreen line
};

// With rising valence the edge moves up, the white line and the pre-edge peak grow and the bonds shorten.
constexpr Compound compounds[referenceCount] = {
    {8342.5,
     0.95,
     {{0.52, 3.3, 2.1}, {0.10, 16.0, 5.0}, {0.012, -8.7, 1.0}},
     {{0.95, 2.07, 0.0062, -0.9}, {1.55, 2.95, 0.0068, 0.6}, {0.80, 4.18, 0.0095, 2.0}},
     {0.020, 0.110, -0.0020}},
    {8345.0,
     1.00,
     {{0.60, 3.7, 2.3}, {0.08, 17.0, 5.5}, {0.026, -9.6, 1.1}},
     {{0.95, 1.97, 0.0058, -0.9}, {1.45, 2.88, 0.0066, 0.6}, {0.80, 4.08, 0.0095, 2.0}},
     {0.010, 0.090, -0.0030}},
    {8347.4,
     1.05,
     {{0.70, 4.1, 2.6}, {0.05, 18.0, 6.0}, {0.046, -10.6, 1.2}},
     {{1.00, 1.89, 0.0052, -0.9}, {1.35, 2.82, 0.0064, 0.6}, {0.80, 3.99, 0.0095, 2.0}},
     {0.040, 0.135, -0.0040}},
};

/// The oscillations that the neighbours add to the edge step, `x` eV above the edge.
double oscillations(const Compound &compound, double x)
{
    constexpr double strength = 1.6;    // amplitude factor over both ways
    constexpr double phaseSlope = -0.7; // Å, the part of the scattering phase that grows with k
    const double k = std::sqrt(waveNumber2PerEv * x);
    double sum = 0.0;
    for (const Shell &shell : compound.shells) {
        const double backscattering = k / (k * k + 2.2 * 2.2);
        sum += shell.amplitude * backscattering / (shell.distance * shell.distance) *
               portable::exp(-2.0 * shell.disorder * k * k) *
               portable::sin(k * (2.0 * shell.distance + phaseSlope) + shell.phase);
    }
    const double fadedK = k / 1.9; // the formula holds only well above the edge
    return strength * sum * (1.0 - portable::exp(-fadedK * fadedK * fadedK * fadedK));
}

/// Absorption above the pre-edge line for an edge step of about 1. It vanishes below preEdgeEnd (less than 1e-16).
double edgeShape(const Compound &compound, double energyEv)
{
    const double x = energyEv - compound.edge;
    const double ratio = edgeEnergy / energyEv;
    const double decay = ratio * ratio * ratio * (0.6 + 0.4 * ratio); // a Victoreen line too
    double value = decay / (1.0 + portable::exp(-x / compound.edgeWidth));
    if (x > 0.0)
        value *= 1.0 + oscillations(compound, x);
    for (const Peak &peak : compound.peaks) {
        const double distance = (x - peak.position) / peak.width;
        value += peak.amplitude * portable::exp(-0.5 * distance * distance);
    }
    return value;
}

std::vector<double> scanEnergies()
{
    struct Range {
        double from, to, step; // eV from the edge
    };
    constexpr Range ranges[] = {{-200, -40, 4}, {-40, -15, 1}, {-15, 35, 0.25},
                                {35, 100, 1},   {100, 301, 3}, {301, 799, 6}};
    std::vector<double> energies;
    for (const Range &range : ranges) {
        const int count = numeric::truncToInt(std::ceil((range.to - range.from) / range.step));
        for (int i = 0; i < count; ++i)
            energies.push_back(edgeEnergy + range.from + i * range.step);
    }
    energies.push_back(edgeEnergy + 800.0);
    for (double mapEnergy : mapEnergies) { // the nearest step moves onto the map energy
        auto nearest = std::min_element(energies.begin(), energies.end(), [mapEnergy](double l, double r) {
            return std::abs(l - mapEnergy) < std::abs(r - mapEnergy);
        });
        *nearest = mapEnergy;
    }
    return energies;
}

/// The edge jump that a Victoreen line fitted to `values` (absorption above the pre-edge line) far above the edge
/// gives at the edge energy. The basis 1, p - 1, q - 1 - 4/3 (p - 1) with p = (L / L(edge))^3 and q = (L / L(edge))^4
/// spans the same lines as 1, L^3, L^4 and keeps its digits through the normal equations; all but its first function
/// are 0 at the edge.
double fittedJump(const std::vector<ScanStep> &scan, const std::vector<double> &values)
{
    numeric::LinearSystem system(3);
    for (std::size_t i = 0; i < scan.size(); ++i) {
        if (scan[i].energyEv <= edgeEnergy + postEdgeStart)
            continue;
        const double ratio = edgeEnergy / scan[i].energyEv;
        const double p = ratio * ratio * ratio;
        const double basis[] = {1.0, p - 1.0, p * ratio - 1.0 - 4.0 / 3.0 * (p - 1.0)};
        system.add(basis, values[i]);
    }
    system.solve();
    return system.unknown(0);
}

} // namespace

double angleFromEnergy(double energyEv)
{
    return portable::asin(hc / (2.0 * latticeSpacing * energyEv)) / degree;
}

double energyFromAngle(double angleDegrees)
{
    return hc / (2.0 * latticeSpacing * portable::sin(angleDegrees * degree));
}

EdgeModel::EdgeModel()
{
    double scale = 1.0;
    for (int i = 0; i < angleDecimals; ++i)
        scale *= 10.0;
    for (double energy : scanEnergies()) {
        const double angle = std::floor(angleFromEnergy(energy) * scale + 0.5) / scale;
        m_scan.push_back({angle, energyFromAngle(angle)});
    }
    for (int j = 0; j < referenceCount; ++j) {
        m_scale[j] = 1.0;
        std::vector<double> values;
        for (const ScanStep &step : m_scan)
            values.push_back(normalized(j, step.energyEv));
        m_scale[j] = 1.0 / fittedJump(m_scan, values);
    }
}

double EdgeModel::normalized(int j, double energyEv) const
{
    return m_scale[j] * edgeShape(compounds[j], energyEv);
}

double EdgeModel::preEdgeLine(int j, double energyEv) const
{
    const double wavelength = hc / energyEv;
    const double *const line = compounds[j].background;
    const double cube = wavelength * wavelength * wavelength;
    return line[0] + line[1] * cube + line[2] * cube * wavelength;
}

double EdgeModel::mu(int j, double energyEv) const
{
    return preEdgeLine(j, energyEv) + edgeJumps[j] * normalized(j, energyEv);
}

} // namespace sample
