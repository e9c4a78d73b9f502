#pragma once

#include <QStringList>

class QTextStream;

/// Runs flokluk-jobs: writes one job per folder from a template, all of them or none, and prints their names. Returns
/// the exit code: 0 done, 1 the folders do not hold what the template wants, 2 the command line or the template is
/// wrong, 3 the jobs could not be written.
int runJobsCommand(const QStringList &arguments, QTextStream *out, QTextStream *err);
