#pragma once

#include <QStringList>

class QTextStream;

/// Runs flokluk-batch with the job files named on its command line, each in turn: results go to `out`, one sentence
/// per failed job to `err`. Returns the exit code: the worst JobOutcome of all jobs.
int runBatchCommand(const QStringList &jobFiles, QTextStream *out, QTextStream *err);
