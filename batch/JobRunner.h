#pragma once

#include "batch/Job.h"

class QTextStream;

/// How a job ended; the values are the program's exit codes.
enum class JobOutcome { Done = 0, WrongJob = 2, CannotWrite = 3 };

/// Runs a four-points job: loads its files, calculates the target and the map, prints what came out to `out` and
/// writes the result file. A job that cannot be run gets one sentence in `error`, and nothing is written.
JobOutcome runJob(const Job &job, QTextStream *out, QString *error);
