#pragma once

#include "analysis/methods/NonEquivalent.h"
#include "analysis/methods/ResultPosition.h"

#include <array>
#include <cstddef>

constexpr int mostNonEquivalentUnknowns = ResultPosition::referenceRows + 3;

/// The basis vector of the fit at one energy point: the references' values, 1, then E or L^3 and L^4; unused ones 0.
using NonEquivalentBasis = std::array<double, mostNonEquivalentUnknowns>;

NonEquivalentBasis nonEquivalentBasis(NonEquivalentBackground background, const NonEquivalentReferences &references,
                                      std::size_t point);
