#pragma once

#include "batch/BatchOptions.h"

class QTextStream;

/// Runs flokluk-batch as the `given` options say, except for showing a window: the panels' messages go to `out`,
/// progress and one sentence per mistake to `err`. Returns the exit code: the worst JobOutcome of all jobs, or a
/// Verification. Needs a QApplication.
int runBatchCommand(const BatchOptions &given, QTextStream *out, QTextStream *err, bool isTerminal = false);
