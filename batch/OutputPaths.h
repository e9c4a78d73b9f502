#pragma once

#include "analysis/job/Job.h"

/// The files that a job reads, itself among them.
QStringList inputFiles(const Job &job);

/// What a second run of the same outputs is kept away by: the paths of lock files, without links, beside the result,
/// its quality, the report and the folder of the pictures.
QStringList lockFiles(const Job &job);

/// Adds to the errors of each job the files that it cannot write: what is no plain file (a device, a pipe), and what
/// any of the jobs reads or an earlier output takes. The histograms and every picture that there can be count, under
/// whatever name a file goes.
void findOutputMistakes(QVector<JobOrErrors> *jobs);

/// Why one of these files cannot be written beside the outputs of the jobs, in the same way; empty when all can.
QString outputMistake(const QVector<JobOrErrors> &jobs, const QStringList &files);
