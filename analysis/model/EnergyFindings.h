#pragma once

#include "analysis/model/Findings.h"

/// Energies so near to each other are one: finer than any monochromator resolves. eV, with what subtracting two of them
/// loses.
constexpr double sameEnergy = 0.05 + 1e-6;

/// What is doubtful about the energies in use beside each other and beside the spectra that take part: several V
/// points, energies that are nearly the same, and energies that look like keV. The last is said of an energy below
/// 100 eV, which no crystal monochromator reaches, when a thousand times as much lies near the spectra: between half
/// of the smallest and twice the largest of their energies (without a spectrum, of the edge energy).
void findInEnergies(const AnalysisInput &input, QVector<Finding> *found);

/// Whether the energies of a spectrum, shifted, look like keV: all of them lie below 100 eV.
bool looksLikeKev(double largestEnergy);
