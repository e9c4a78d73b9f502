#pragma once

#include "plan/PlanResult.h"

class QTableWidget;

/// The tables of the page, with titles and tool tips and without lines.
QTableWidget *newEnergyTable();
QTableWidget *newSetTable();

/// A line per planned energy: energy, share of the exposure, what it separates.
void showEnergies(QTableWidget *table, const PlanRequest &request, const PlannedSet &set);

/// A line per set of energies: what it is, sigma_V at equal shares and at the best ones, change of V per 0.1 eV of
/// wrong energy, its energies. First the planned set, then those compared, then the plans for other numbers.
void showSets(QTableWidget *table, const PlanResult &result);
