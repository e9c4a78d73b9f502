#pragma once

#include "analysis/methods/NonEquivalent.h"
#include "spectrum/AMutE.h"

#include <QString>

#include <vector>

/// Maps and references often disagree by some tenths of an electronvolt, which costs more than noise. One shift for
/// them all, in the direction of a dE: with dE + shift the references agree with the maps.

constexpr double largestEnergyShift = 2.0; ///< eV, to both sides

/// The mean spectrum of the material and what it is fitted by: references and a background, whatever the method.
struct EnergyShiftInput {
    std::vector<const AMutE *> spectra; ///< of the references, not owned
    bool subtractsPostLine = false;
    NonEquivalentBackground background = NonEquivalentBackground::Linear;
    std::vector<double> energies;  ///< eV
    std::vector<double> values;    ///< the mean absorption
    std::vector<double> variances; ///< of that
    bool isScaleKnown = true;      ///< false: the variances are right but for a common factor
};

struct EnergyShift {
    enum class Outcome {
        Found,
        NoMaterial,  ///< there is no spectrum to look at, or its variances are unknown
        FewEnergies, ///< as many unknowns as energies, the shift counted where the noise is unknown
        AtLimit,     ///< the misfit still falls at the largest shift
        Flat,        ///< the misfit hardly depends on the shift
        Ambiguous    ///< another shift does as well
    };
    Outcome outcome = Outcome::NoMaterial;
    double shift = 0.0;        ///< eV; where it is not Found that of the smallest misfit, not to be used
    double error = 0.0;        ///< its standard error, eV
    double misfitBefore = 0.0; ///< chi^2 over the degrees of freedom, without a shift and with it
    double misfitAfter = 0.0;

    bool isFound() const { return outcome == Outcome::Found; }
};

/// The shift with the smallest chi^2 of the weighted fit, background and references refitted at each shift; the
/// references' lines move along. The error is that of a parameter of the fit, from the curvature of chi^2 (Gauss and
/// Newton's, with the slopes of the fitted references), widened by the root of chi^2 per degree of freedom where the
/// fit is worse than the noise allows. Not finite values give NoMaterial.
EnergyShift findEnergyShift(const EnergyShiftInput &input);

/// One sentence for the user.
QString textOf(const EnergyShift &shift);
