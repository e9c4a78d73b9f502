#pragma once

#include "analysis/methods/FourPoints.h"
#include "analysis/methods/ResultPosition.h"
#include "analysis/results/ResultRecords.h"

#include <QString>

#include <array>
#include <vector>

namespace numeric
{
class FileSet;
}

enum class WriteOutcome {
    Written,
    CannotOpen, ///< nothing was written
    CannotWrite ///< the disk is full or failed: the previous file, if any, is as it was
};

/// Which of the result quantities a non-equivalent result file holds, by ResultPosition.
using RecordSelection = std::array<bool, ResultPosition::count>;

/// Writes the result file: the header lines, an empty line, then one line per pixel and an empty line after each map
/// row; numbers in general format with six digits, right-aligned in ten characters. The file appears as a whole or
/// not at all, with a set together with the others of the set. Its bytes do not depend on `threads` (0: as many as the
/// machine has cores), each of which takes about 1 MB.
WriteOutcome writeResultFile(const QString &path, const ResultRecords &results, const ValencePair &valences,
                             const RecordSelection &selection, int threads = 0, numeric::FileSet *set = nullptr);

/// The same file with other columns behind the positions, at most ResultRecords::quantityCount, each of one value per
/// pixel of `results`; a null one is NaN throughout.
WriteOutcome writePixelFile(const QString &path, const ResultRecords &results,
                            const std::vector<const double *> &columns, int threads = 0,
                            numeric::FileSet *set = nullptr);
