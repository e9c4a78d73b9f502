#pragma once

#include "analysis/job/Job.h"
#include "analysis/model/Analysis.h"

struct AnalysisInput;

/// Whether a job asks for a step of the analysis; the panel always tries them all.
bool wants(const Job &job, Step step);

/// What a job that is run must have besides what readJob() looks at, one sentence for each part that it lacks. One that
/// is only shown may be unfinished.
QStringList missingParts(const Job &job);

/// One sentence for each region that lies beside the first used map, whose size the results get.
QStringList regionsBeside(const Job &job, const AnalysisInput &input);

/// How many stages the progress of a job has: each file that is read or written, and what is calculated.
int stagesOf(const Job &job);
