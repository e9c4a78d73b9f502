#pragma once

#include <vector>

namespace sample
{

constexpr int referenceCount = 3;
constexpr int mapCount = 8;

constexpr double edgeEnergy = 8345.0;     ///< eV: the edge energy to analyse the data with
constexpr double preEdgeEnd = -50.0;      ///< eV from the edge: the pre-edge line is fitted below
constexpr double postEdgeStart = 100.0;   ///< eV from the edge: the post-edge line is fitted above
constexpr double latticeSpacing = 3.1355; ///< Å, the crystal of the monochromator

/// The valences of the three references.
constexpr double valences[referenceCount] = {2.0, 3.0, 4.0};
/// Their edge jumps: what the difference of the fitted post- and pre-edge lines at the edge energy gives.
constexpr double edgeJumps[referenceCount] = {1.10, 0.86, 1.32};

/// The energies of the maps, eV. Two lie below the edge for the background. At 8345.4 the normalised references are
/// evenly spaced (1.49, 0.83, 0.18), so that there the mean valence alone counts; at 8348.5 and 8352 they differ in
/// other proportions. At the last three the normalised references 1 and 2 cross, and reference 3 is once above,
/// once below, once above them: there the absorption follows the thickness whatever the valence.
constexpr double mapEnergies[mapCount] = {8260.0, 8310.0, 8345.4, 8348.5, 8352.0, 8388.56, 8410.34, 8459.70};
/// The index of the energy that depends on the valence most, the V point.
constexpr int vPoint = 2;
/// Whether an energy is an anchor of the four-points method: one where the normalised references agree.
constexpr bool isAnchor[mapCount] = {true, true, false, false, false, true, true, true};

/// The monochromator angle, degrees, written with this many decimals; the energy that a reader gets from it.
constexpr int angleDecimals = 8;
double angleFromEnergy(double energyEv);
double energyFromAngle(double angleDegrees);

/// One step of the scan: the angle as it is written and the energy that follows from it.
struct ScanStep {
    double angleDegrees;
    double energyEv;
};

/// Reference spectra of one element: an edge with pre-edge peak, white line and EXAFS oscillations on a Victoreen
/// background a + b L^3 + c L^4 with the wavelength L in Å.
class EdgeModel
{
public:
    EdgeModel();

    /// The scan, energies rising: -200 to +800 eV from the edge, finest at the edge, through every map energy.
    const std::vector<ScanStep> &scan() const { return m_scan; }

    /// The absorption of reference `j` above its pre-edge line, in units of its edge jump.
    double normalized(int j, double energyEv) const;
    /// The pre-edge line of reference `j`, which is exactly of the Victoreen form.
    double preEdgeLine(int j, double energyEv) const;
    /// The whole absorption of reference `j`.
    double mu(int j, double energyEv) const;

private:
    std::vector<ScanStep> m_scan;
    double m_scale[referenceCount]; ///< makes the fitted edge jump of normalized() exactly 1
};

} // namespace sample
