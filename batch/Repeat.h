#pragma once

#include "analysis/job/Job.h"
#include "batch/Verify.h"

#include <QString>
#include <QVector>

struct BatchOptions;
class QTextStream;

/// Runs the job of a report again, with its files in a temporary folder, and tells on `out` whether the inputs are what
/// the run read and the files what it wrote; what differs goes to `err`, a sentence each. Good when all are the same.
Verification repeatReport(const QString &path, const BatchOptions &options, QTextStream *out, QTextStream *err);

/// Whether a report is one of a run in Japanese, which has other pictures.
bool isReportJapanese(const QString &path);

/// Prints the files that the jobs would write now, a line each. Which pictures a job has is known only when it has been
/// calculated: one with pictures is run, its files in a temporary folder. Returns the exit code.
int listOutputs(const QVector<JobOrErrors> &jobs, const BatchOptions &options, QTextStream *out, QTextStream *err);
