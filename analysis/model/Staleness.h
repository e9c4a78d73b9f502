#pragma once

#include "analysis/results/RunInfo.h"

#include <QStringList>

struct AnalysisInput;

/// What differs between the inputs of two map calculations, a short text each in the language of the program, for
/// example "Ref 2: valence" or "Energy 3: map file"; rows are counted from 1 in them. Empty: the results would be the
/// same. Inputs that the method does not depend on do not count.
QStringList differences(const RunInfo &then, const RunInfo &now);

/// What has changed since a map was calculated; what would stop a calculation now is a change, too.
QStringList changesSince(const RunInfo &run, const AnalysisInput &now);
