#pragma once

#include "analysis/job/Progress.h"

#include <QString>
#include <QStringList>

/// What the command line of flokluk-batch asks for.
struct BatchOptions {
    QStringList jobs;
    QString pictures;  ///< folder for the pictures, in the place of the jobs' own; empty: theirs
    QString report;    ///< file for the report, in the place of the jobs' own; empty: theirs
    QString table;     ///< file for one line a job; empty: none
    QString trend;     ///< picture of the fractions of all jobs; empty: none
    QString crate;     ///< folder for a research object of what was run; empty: none
    int processes = 1; ///< jobs that run at once
    QString verify;    ///< report whose files are looked at instead of running jobs; empty: none
    QString again;     ///< report whose run is repeated instead of running jobs; empty: none
    bool check = false;
    bool listOutputs = false;
    bool skipDone = false; ///< leaves out jobs whose report and files are those that they would write
    bool hash = false;     ///< sums of the inputs in the report
    bool show = false;
    bool lenient = false; ///< errors in the inputs are warnings, whatever the jobs say
    bool japanese = false;
    ProgressForm form = ProgressForm::Lines;
    QString outcomeFile; ///< for the program that started this one with one job: see seriesRowToJson(); empty: none

    QString answer; ///< help or version, to be printed instead of running anything
    QString error;  ///< why the command line cannot be taken; empty when it can

    /// Whether something is made of all jobs together.
    bool isSeries() const { return !table.isEmpty() || !trend.isEmpty() || !crate.isEmpty(); }
    /// Whether each job needs a report, even one that writes none.
    bool isReported() const { return isSeries() || !outcomeFile.isEmpty(); }
};

/// Whether arguments, the program's name first, ask for "--progress json", even if they are wrong otherwise.
bool areForPrograms(const QStringList &arguments);

/// Reads the arguments, the program's name first.
BatchOptions parseBatchOptions(const QStringList &arguments);
