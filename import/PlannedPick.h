#pragma once

#include "plan/PlanRequest.h"

#include <QString>
#include <QVector>

#include <functional>

/// What energies are planned by, of those that have been measured.
struct PlannedPickInput {
    QVector<double> energies;                 ///< eV, rising
    std::vector<PlanReference> references;    ///< in the order of the job; their lines need not be fitted
    bool isFluorescence = false;              ///< what the pixels count
    std::function<bool(double done)> isGoing; ///< hears of the share that is done; false stops
};

struct PlannedPick {
    QVector<int> picked; ///< indices, rising; empty where nothing can be planned
    int vPoint = -1;     ///< index of the four-points method's V point; -1: the method has none
    bool isStopped = false;
    QString error; ///< one sentence why there is no plan
};

/// The `count` of the energies that tell the valence best (docs/planning.md), as the job will be analysed: by the
/// linear non-equivalent method where they suffice for it, else by the four-points least squares. Edge and lines are
/// those that the window finds on its own: the edge of the last reference, lines from 50 eV before and 100 eV behind
/// it. 10 000 counts, a background of 0.5 and the other values are those of a plan that does not name them. Valences
/// that are all equal are not known: they count as 1, 2, 3, ..., which for two references changes nothing.
PlannedPick plannedPick(PlannedPickInput input, int count);
