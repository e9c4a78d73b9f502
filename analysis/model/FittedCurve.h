#pragma once

#include "analysis/results/RunInfo.h"
#include "analysis/uncertainty/SpectrumFit.h"

#include <vector>

struct AnalysisInput;

/// What a fit at a few energies says about all energies at which the references were measured.
struct FittedCurve {
    std::vector<double> energies;                ///< eV, ascending
    std::vector<double> background;              ///< one value per energy
    std::vector<std::vector<double>> components; ///< per reference of the run; what it adds to the background
    std::vector<double> total;                   ///< all of that together
};

/// The curve of a fit over the energies that all references of the run cover, those of every reference merged. Empty
/// when the spectra in the rows of the run are others now, or none is at hand: where they were used they must still
/// have the values that the run had, but for the digits of the fields.
FittedCurve fittedCurve(const RunInfo &run, const SpectrumFit &fit, const AnalysisInput &now);
