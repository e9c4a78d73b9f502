#pragma once

#include "plan/PlanRequest.h"

#include <QString>

#include <vector>

/// The energies that all references reach, their dE counted.
struct PlanRange {
    double from = 0.0;
    double to = 0.0;
};
PlanRange commonRange(const PlanRequest &request);

/// The candidates, rising: those of the request's bounds and step, and what it keeps.
std::vector<double> planCandidates(const PlanRequest &request);

/// How many of the candidates can be taken together, what is kept among them.
int mostTogether(const PlanRequest &request, const std::vector<double> &candidates);

/// One sentence about what makes a request impossible; empty when it can be planned.
QString planMistake(const PlanRequest &request);
