#pragma once

#include "analysis/methods/FourPoints.h"
#include "analysis/results/QuantityRange.h"

#include <QVector>

#include <utility>

struct AnalysisInput;

/// Which references take part in what. A reference is *used* when its Use box is on and *valid* when, besides, its
/// spectrum is loaded. The rules below look alike and are not: each asks for one of them or for both, and results
/// written so far depend on the differences.
struct TakingPart {
    struct Reference {
        int row = 0; ///< of the panel, from 0
        bool isValid = false;
        double valence = 0.0;
        double edgeJump = 0.0; ///< of its spectrum, also of one that is not valid
    };
    QVector<Reference> used; ///< in panel order

    QVector<Reference> valid() const;
};

TakingPart takingPart(const AnalysisInput &input);

/// The range that the valence histogram gets by itself: half a unit beyond the valences of the used references, looked
/// for between 10 and 0; 9.5 to 0.5 without any.
ValueRange automaticValenceRange(const TakingPart &references);

/// The range that the thickness histogram gets by itself: -0.5 to half a unit beyond the sum of edge jumps. As many as
/// there are valid references are summed up, but the first of the used ones: an invalid reference before a valid one is
/// taken in its place.
ValueRange automaticThicknessRange(const TakingPart &references);

/// The valences that the four-points method mixes: of the first two valid references. Not known with fewer.
ValencePair methodValences(const TakingPart &references);

/// The valences that a result file of the four-points method is written with: of the first two used references, but
/// known only when two are valid.
ValencePair fileValences(const TakingPart &references);

/// The valences at which the scatter and the comparison are drawn: of the first two used references, 0 for a missing
/// one.
std::pair<double, double> drawnValences(const TakingPart &references);

/// What the colour ranges of maps follow: the edge jumps of the valid references, the valences of the used ones (0
/// without any).
RangeConditions colourConditions(const TakingPart &references);
