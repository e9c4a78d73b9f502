#pragma once

#include "analysis/job/Job.h"
#include "batch/BatchOptions.h"

class QTextStream;

/// Runs each job in a process of its own, options.processes of them at once. What they print comes out as if they had
/// run one after the other; their progress comes as it happens. Returns the worst exit code.
int runInParallel(const QVector<JobOrErrors> &jobs, const BatchOptions &options, QTextStream *out, QTextStream *err);
