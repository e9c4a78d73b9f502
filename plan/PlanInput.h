#pragma once

#include "analysis/model/AnalysisInput.h"
#include "plan/PlanResult.h"

#include <QString>

#include <array>
#include <cstddef>

/// What a plan takes from the panel: the references that take part, with their valences, dE and lines; the method; the
/// edge; t of the target; and the energies in use, to be compared. All else is as without a word in a plan file.
PlanRequest planRequest(const AnalysisInput &now);

/// What the user types besides.
enum class PlanField { Count, From, To, Step, Spacing, Keep, Counts, Background, DeltaE, Thickness, Samples };
constexpr std::size_t planFieldCount = 11;

struct PlanFields {
    /// Numbers; of `Keep` several between blanks; of `Samples` the fractions of each between blanks, samples between
    /// semicolons. Empty: what planRequest() has.
    std::array<QString, planFieldCount> texts;
    bool isFluorescence = false;
    bool hasExtraTerm = true;

    const QString &operator[](PlanField field) const { return texts.at(static_cast<std::size_t>(field)); }
    QString &operator[](PlanField field) { return texts.at(static_cast<std::size_t>(field)); }
};

/// Its label and what it is for, in the language of the program.
QString planFieldName(PlanField field);
QString planFieldNote(PlanField field);

/// What an empty field stands for.
QString planFieldDefault(PlanField field, const PlanRequest &request);

/// Puts them into a request. One sentence about the first that cannot be taken; empty when all can.
QString takeFields(const PlanFields &fields, PlanRequest *request);

/// Takes those of the compared lists out that the method or a reference does not allow; one sentence for the last.
QString dropUnfitLists(PlanRequest *request);

/// What is planned for: "method: non-equivalent, linear background; edge 8345 eV; ref1.dat (2), ref2.dat (3)".
QString planSubject(const PlanRequest &request);

/// The energy of a set that becomes V point: its own, or where the first two references differ most; a target is
/// analysed with no method unless there is one. -1 for no energies.
int planVPoint(const PlanRequest &request, const PlannedSet &set);
