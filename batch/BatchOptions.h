#pragma once

#include <QString>
#include <QStringList>

/// What the command line of flokluk-batch asks for.
struct BatchOptions {
    QStringList jobs;
    QString pictures;  ///< folder for the pictures, in the place of the jobs' own; empty: theirs
    QString report;    ///< file for the report, in the place of the jobs' own; empty: theirs
    int processes = 1; ///< jobs that run at once
    QString verify;    ///< report whose files are looked at instead of running jobs; empty: none
    bool check = false;
    bool hash = false; ///< sums of the inputs in the report
    bool show = false;
    bool lenient = false; ///< errors in the inputs are warnings, whatever the jobs say
    bool japanese = false;

    QString answer; ///< help or version, to be printed instead of running anything
    QString error;  ///< why the command line cannot be taken; empty when it can
};

/// Reads the arguments, the program's name first.
BatchOptions parseBatchOptions(const QStringList &arguments);
