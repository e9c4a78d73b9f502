#pragma once

#include "plan/PlanRequest.h"

#include <QString>

/// What the planning says to the user, in the language of the program; %1, %2, ... are filled by the caller.
enum class PlanText {
    FewReferences,
    OutsideReference, ///< name, from, to, energy, what wants it
    EmptyRange,       ///< from, to
    ManyCandidates,   ///< most
    FewEnergies,      ///< found, needed
    ManyEnergies,     ///< found, most
    FewCandidates,    ///< found, spacing, needed
    KeptOutside,      ///< energy, from, to
    KeptNear,         ///< energies, spacing
    EqualEnergies,    ///< list, energy
    ManyKept,         ///< found, most
    NoLines,          ///< name
    AlikeReferences,  ///< names
    MixedReference,   ///< name
    SameValences,     ///< valence
    NotANumber,       ///< field; the following, too
    NotPositive,
    Negative,
    NotWhole,
    NoShare,
    BadSample,   ///< fractions, how many are needed
    NotCompared, ///< why
    Present,
    UsualSamples,
    NothingFound,
    Stopped,
    EndsAndDifferences,
    Background,
    Amount,
    Difference, ///< names
    Planned,
    EnergyTitle,
    ScenarioTitle,
    SetTitle,
    NumberTitle,
    Limits,         ///< numbers, one per reference
    Bias,           ///< number
    PureBias,       ///< reference, valence found, its own
    Method,         ///< name
    MethodKnowsTwo, ///< name, references, the others
    LinearNonEquivalent,
    VictoreenNonEquivalent,
    LeastSquaresFourPoints,
    ExactFourPoints,
    Marked,
    PictureShares,
    PictureEnergy,
    PictureReferences,
    PictureWorth,
    WithExtraTerm,
    WithoutExtraTerm
};

QString planText(PlanText text);

/// Its name within a sentence: "non-equivalent, linear background".
QString planMethodName(PlanMethod method);
