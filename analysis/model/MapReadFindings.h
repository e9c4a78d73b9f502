#pragma once

#include "analysis/model/Findings.h"

#include <QVector>

struct AnalysisInput;

/// What reading the used maps has shown, as errors, one sentence per map and kind: another number of records than the
/// header's size asks for, values that are no numbers, records in another order than the header says, a file that
/// changed while it was read. In panel order; where one of the first two is found, the order is not looked at.
QVector<Finding> findInReadMaps(const AnalysisInput &input);
