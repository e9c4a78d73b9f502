#pragma once

#include "analysis/shift/EnergyShift.h"
#include "batch/QualityReport.h"

#include <QByteArray>
#include <QStringList>

#include <optional>

class Analysis;
struct AnalysisInput;
struct Job;
struct RunRecord;

/// Seconds that the parts of a run took.
struct RunTimes {
    double load = 0.0;
    double calculate = 0.0;
    double quality = 0.0;
    double write = 0.0;
    double pictures = 0.0;
};

/// What a run found, as JSON: edges and edge jumps, the target by every method, and mean and standard deviation of each
/// computed quantity over the finite pixels, how far these can be trusted, and the energy shift where it was looked
/// for; and what the run read and wrote. docs/batch.md describes it. Numbers that are not finite become null.
QByteArray runReport(const AnalysisInput &input, const Analysis &analysis, const Job &job, const RunTimes &times,
                     const RunRecord &record, const QStringList &errors, const QualityReport &quality = {},
                     const std::optional<EnergyShift> &shift = std::nullopt);
