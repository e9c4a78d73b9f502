#pragma once

#include "analysis/methods/ResultPosition.h"
#include "mapdata/A2DData.h"
#include "numeric/Lanes.h"
#include "numeric/LinearSystem.h"
#include "spectrum/AMutE.h"

#include <array>
#include <cstddef>
#include <vector>

/// The non-equivalent method: the absorption at a few energies, background line subtracted, is fitted by
///   y(E) = c_1 r_1(E) + ... + c_m r_m(E) + b_0 + b_1 E              (linear background), or
///   ...                                  + b_0 + b_1 L^3 + b_2 L^4  (Victoreen, L = 12398.424360387684 / E angstrom;
///                                                 J. A. Victoreen, J. Appl. Phys. 14 (1943) 95),
/// unweighted least squares without constraints; r_j are the references with their own background line subtracted, in
/// whatever thickness they were measured. c_j times the edge jump D_j of the reference is the amount of component j,
/// and the amounts' shares are the fractions. Energies in eV, all else dimensionless. Nothing guards against a singular
/// system (too few energies, dependent references): what is undetermined comes out infinite or NaN.

enum class NonEquivalentBackground { Linear, Victoreen };

constexpr int mostNonEquivalentPoints = 8;

/// The references as the method needs them.
struct NonEquivalentReferences {
    std::vector<double> energies;             ///< eV, one per selected energy point, 1 to mostNonEquivalentPoints
    std::vector<std::vector<double>> columns; ///< r_jk: per reference (1 to 4) one value per energy
    std::vector<double> weights;              ///< s_j = D_j / J
    double jumpSum = 0.0;                     ///< J, the sum of the edge jumps D_j

    int count() const { return static_cast<int>(columns.size()); }
};

/// From values already read. Energies beyond the eighth and references beyond the fourth are left out; a column that is
/// too short is filled with 0.
NonEquivalentReferences prepareNonEquivalent(std::vector<double> energies, std::vector<std::vector<double>> columns,
                                             const std::vector<double> &edgeJumps);
/// From the spectra of the references that take part: their values at the energies less their pre-edge lines, or less
/// their post-edge lines.
NonEquivalentReferences prepareNonEquivalent(const std::vector<double> &energies,
                                             const std::vector<const AMutE *> &spectra, bool subtractPostLine);

/// Unknowns of the fit: the references and 2 or 3 background coefficients.
inline int nonEquivalentUnknowns(int references, NonEquivalentBackground background)
{
    return references + (background == NonEquivalentBackground::Victoreen ? 3 : 2);
}

/// One value per result quantity, see ResultPosition.
using NonEquivalentValues = std::array<double, ResultPosition::count>;

/// The fit of one column `y` of values, one per energy. Writes the fractions (0 beyond the last reference) and the
/// background's coefficients into `values` and returns S, the sum of the c_j s_j that the fractions were divided by.
double fitNonEquivalent(NonEquivalentBackground background, const double *y, const NonEquivalentReferences &references,
                        numeric::LinearSystem *work, NonEquivalentValues *values);

/// All quantities of one column, for the target spectrum: the fit, then t = S J, the amounts t f_j and the
/// valence f_1 V_1 + ... + f_m V_m. `y` and `valences` hold one value per energy and reference.
NonEquivalentValues solveNonEquivalent(NonEquivalentBackground background, const std::vector<double> &y,
                                       const NonEquivalentReferences &references, const std::vector<double> &valences);

/// What a map calculation needs. The maps stand in the order of the energies; they may differ in size.
struct NonEquivalentMapInput {
    NonEquivalentBackground background = NonEquivalentBackground::Linear;
    NonEquivalentReferences references;
    std::vector<double> valences; ///< one per reference
    std::vector<const A2DData *> maps;
};

/// Whether there is a map for each energy and a valence for each reference, and at least one of both.
bool isComplete(const NonEquivalentMapInput &input);

/// Where the results go, by ResultPosition: planes of as many values as pixels are calculated, not owned; null for a
/// quantity that is not wanted.
using NonEquivalentPlanes = std::array<double *, ResultPosition::count>;

/// Calculates the first `pixels` pixels of the maps. A pixel that a map does not have counts there with the absorption
/// -1. The results are those of solveNonEquivalent() to the last bit, whatever `threads` (0: all cores) and `set` are.
/// The input must be complete.
void solveNonEquivalentMap(const NonEquivalentMapInput &input, std::size_t pixels, const NonEquivalentPlanes &planes,
                           int threads = 0, numeric::InstructionSet set = numeric::bestInstructionSet());
