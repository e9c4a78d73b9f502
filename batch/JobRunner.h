#pragma once

#include "analysis/job/Job.h"
#include "analysis/job/Progress.h"

#include <QJsonObject>

#include <functional>

class FourPs;
class QTextStream;

/// How a job ended; the values are the program's exit codes.
enum class JobOutcome { Done = 0, Refused = 1, WrongJob = 2, CannotWrite = 3 };

struct JobResult {
    JobOutcome outcome = JobOutcome::Done;
    QStringList errors;   ///< one sentence each, beginning with the name of the job file
    QStringList warnings; ///< the same, about inputs that a result may not be trusted with
    QString messages;     ///< the panel's messages about what the job asks for, a line each
    QJsonObject report;   ///< see runReport(); empty where nothing was calculated, or nobody asks for it
};

struct RunOptions {
    bool checkOnly = false;  ///< look for mistakes, calculate and write nothing
    bool isHashed = false;   ///< the report gets the sums of the inputs
    bool isReported = false; ///< makes a report even where the job writes none
    bool isJapanese = false; ///< the language that the program was started in
    QTextStream *progress = nullptr;
    ProgressForm form = ProgressForm::Lines; ///< of the progress
};

/// Runs a job in a panel of its own. `job` is what readJob() gave: with its errors nothing is calculated, but all other
/// mistakes of the job are found as well. Needs a QApplication.
JobResult runJob(const JobOrErrors &job, const RunOptions &options);

/// Takes the inputs and settings of a job into a panel; returns all mistakes of the job, which need not ask for any
/// calculation. `loading` hears of every file before it is read.
QStringList loadJob(const JobOrErrors &job, FourPs *panel, const std::function<void(const QString &file)> &loading);
