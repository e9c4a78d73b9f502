#pragma once

#include "analysis/job/Job.h"
#include "batch/BatchOptions.h"
#include "batch/SeriesRow.h"

#include <QVector>

class QTextStream;

/// Runs each job in a process of its own, options.processes of them at once. What they print comes out as if they had
/// run one after the other; their progress comes as it happens, in whole lines. What became of each
/// job, in their order; reports only where the options want them.
QVector<SeriesRow> runInParallel(const QVector<JobOrErrors> &jobs, const BatchOptions &options, QTextStream *out,
                                 QTextStream *err);
