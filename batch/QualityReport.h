#pragma once

#include "analysis/job/Job.h"
#include "analysis/model/Quality.h"

#include <QJsonArray>
#include <QJsonObject>

#include <vector>

struct AnalysisInput;
struct LinearCombination;
struct TargetFit;

/// What reports say about uncertainties; docs/batch.md describes it. Numbers that are not finite become null.
struct QualityReport {
    QJsonObject map;    ///< noise and medians over the material; only a "message" where there are none
    QJsonArray regions; ///< those of the job, in its order; empty where there are none
};

/// Calculates what `quality` does not know yet.
QualityReport qualityReport(Quality *quality, const AnalysisInput &now, const UncertaintyRequest &request,
                            const std::vector<Region> &regions);

/// Standard errors of a target's valence, t and fractions, and Student's factor for them.
QJsonObject targetErrorsReport(const TargetFit &target);
/// Standard errors of what a linear combination fit finds, and Student's factor for them; those of its coefficients
/// and base stand beside these.
QJsonObject fitErrorsReport(const LinearCombination &fit);
