#pragma once

#include "analysis/job/Job.h"
#include "plan/PlanResult.h"

#include <QString>
#include <QStringList>

/// A plan file (JSON): the references and settings of a job, and what is to be planned. docs/planning.md describes it.
/// A job file is one, too: its energies are compared with as many planned ones.
struct PlanFile {
    Job job;
    PlanRequest request;
    QStringList errors; ///< one sentence per mistake, without the name of the file; empty when the plan is good
};

/// Reads the file and the spectra that it names. Relative paths are taken from its own directory. As in the window, the
/// edge is that of the last spectrum where the settings name none.
PlanFile readPlan(const QString &path);

/// The job with the energies of a set of at most eight, all used and without maps. What a job that was the plan writes
/// is left out: it would take the place of what its own maps gave. Its V point is that of the set, or
/// where the references differ most: a target is analysed with no method unless there is one.
Job plannedJob(const PlanFile &plan, const PlannedSet &set);
