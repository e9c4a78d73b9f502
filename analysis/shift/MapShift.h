#pragma once

#include "analysis/model/AnalysisInput.h"
#include "analysis/shift/EnergyShift.h"

/// The energy shift of the maps that take part in a map calculation, from the mean spectrum of the pixels with
/// material. The four-points method's maps are fitted by its two references and a linear background. What the noise is,
/// and which pixels hold material, is found with the references as they are and then again with the shift.
EnergyShift findMapShift(const AnalysisInput &input);
