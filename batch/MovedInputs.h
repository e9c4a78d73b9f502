#pragma once

#include <QStringList>

struct ReportFile;

/// Follows the inputs of a report that has been moved together with them: one that is gone from where the run read it
/// is looked for where it lay from the folder of the report, and taken from there in "job", "asRun" and "inputs".
/// Whether it is the same file is for changedInputs() to say. A sentence for each that was followed.
QStringList followMovedInputs(ReportFile *report);
