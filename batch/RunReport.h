#pragma once

#include "analysis/model/AnalysisInput.h"
#include "analysis/model/Findings.h"
#include "analysis/shift/EnergyShift.h"
#include "batch/QualityReport.h"
#include "batch/RunRecord.h"

#include <QJsonObject>
#include <QStringList>
#include <QVector>

#include <optional>

class Analysis;
struct Job;
struct UncertaintyMap;

/// Seconds that the parts of a run took.
struct RunTimes {
    double load = 0.0;
    double calculate = 0.0;
    double quality = 0.0;
    double write = 0.0;
    double pictures = 0.0;
};

/// What a run has found out besides the results of its analysis.
struct RunFacts {
    QVector<Finding> findings;
    QJsonObject settings; ///< of the panel, all of them, as they were calculated with
    RunTimes times;
    RunRecord record;
    QStringList errors;
    QualityReport quality;
    const UncertaintyMap *uncertainties = nullptr; ///< of the map; none where it has none
    std::optional<EnergyShift> shift;              ///< where the job asks for it
};

/// What a run found, for JSON: edges and edge jumps, the target by every method, and mean and standard deviation of
/// each computed quantity over the finite pixels, how far these can be trusted, and the energy shift where it was
/// looked for; and what the run read and wrote, and with which program and settings. docs/batch.md describes it.
/// Numbers that are not finite become null.
QJsonObject runReport(const Job &job, const AnalysisInput &input, const Analysis &analysis, const RunFacts &facts);
