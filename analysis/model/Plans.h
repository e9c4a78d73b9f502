#pragma once

#include "analysis/methods/FourPointsMap.h"
#include "analysis/methods/LinearCombination.h"
#include "analysis/methods/NonEquivalent.h"
#include "analysis/model/AnalysisInput.h"

#include <QString>
#include <QVector>

#include <variant>
#include <vector>

/// The checks before a calculation: what the user has set becomes a plan, which holds all that the calculation needs,
/// or is refused by the first check that fails. Nothing is calculated and nothing changes here.

/// Which check failed, with its numbers.
struct Refusal {
    enum class Check {
        NoVPointForMap, ///< the same as NoVPoint, but for the full stop of its message
        NoVPoint,
        FewReferences,     ///< found: valid references
        ReferenceNotValid, ///< found: its row, from 0
        FirstNotValid,
        SecondNotValid,
        TargetNotValid,
        OtherNumberOfPoints, ///< found: points, needed
        FewPoints,           ///< found: points, needed
        MapTooLarge,         ///< found x needed: its pixels
        NoFitRange,
        FewFitReferences ///< found: valid references
    };
    Check check = Check::NoVPoint;
    int found = 0;
    int needed = 0;
};

/// The message for the user, in the language of the program.
QString textOf(const Refusal &refusal);

/// A map calculation. Borrows the maps of the input.
struct MapPlan {
    RunInfo run;
    std::variant<FourPointsMapInput, NonEquivalentMapInput> work;
    const A2DData *first = nullptr; ///< the map of the first point that takes part: its header goes into files
    const A2DData *sized = nullptr; ///< the map whose size and positions the result gets
};

/// A calculation for the target spectrum.
struct TargetPlan {
    RunInfo run;
    std::vector<double> values; ///< of the target: at the anchor points, then the V point; or at all points in order
};

/// A linear combination fit. Borrows the spectra of the input.
struct FitPlan {
    QVector<RunReference> references;
    LinearCombinationInput work;
};

std::variant<MapPlan, Refusal> planMap(const AnalysisInput &input);
std::variant<TargetPlan, Refusal> planTarget(const AnalysisInput &input);
std::variant<FitPlan, Refusal> planFit(const AnalysisInput &input);
