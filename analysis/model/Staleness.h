#pragma once

#include "analysis/results/RunInfo.h"

#include <QString>
#include <QStringList>

class Analysis;
struct AnalysisInput;

/// What differs between the inputs of two map calculations, a short text each in the language of the program, for
/// example "Ref 2: valence" or "Energy 3: map file"; rows are counted from 1 in them. Empty: the results would be the
/// same. Inputs that the method does not depend on do not count.
QStringList differences(const RunInfo &then, const RunInfo &now);

/// What has changed since a map was calculated; what would stop a calculation now is a change, too.
QStringList changesSince(const RunInfo &run, const AnalysisInput &now);

/// Which steps the checks allow now and would give something else than their last run.
struct DueSteps {
    bool map = false;
    bool target = false;
    bool fit = false;
    double mapValues = 0.0; ///< pixels times energies that a map calculation would take
    QString whyNoMap;       ///< the message of the check that stops it; empty where none does
};
DueSteps dueSteps(const Analysis &analysis, const AnalysisInput &now);
