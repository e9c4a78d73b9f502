#pragma once

#include "analysis/results/ResultRecords.h"

#include <QString>

#include <array>

enum class WriteOutcome {
    Written,
    CannotOpen, ///< nothing was written
    CannotWrite ///< the disk is full or failed: the previous file, if any, is as it was
};

/// How the valence of a four-points result comes from its fraction: known is false when there are no two references,
/// and the valence is then 0.
struct ValencePair {
    bool known = false;
    double first = 0.0;
    double second = 0.0;
};

/// Which of the thirteen result quantities a non-equivalent result file holds.
using RecordSelection = std::array<bool, ResultRecords::quantityCount>;

/// Writes the result file: the header lines, an empty line, then one line per pixel and an empty line after each map
/// row; numbers in general format with six digits, right-aligned in ten characters. The file appears as a whole or
/// not at all. Its bytes do not depend on `threads` (0: as many as the machine has cores), each of which takes about 1
/// MB.
WriteOutcome writeResultFile(const QString &path, const ResultRecords &results, const ValencePair &valences,
                             const RecordSelection &selection, int threads = 0);
