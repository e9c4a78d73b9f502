#pragma once

#include "analysis/results/ResultRecords.h"
#include "analysis/uncertainty/UncertaintyMap.h"
#include "mapdata/A2DData.h"

#include <QIODevice>
#include <QJsonArray>
#include <QJsonObject>
#include <QString>

#include <functional>
#include <vector>

/// What the measurement of the methods calculates.

/// One method under measurement.
struct Case {
    QString name;
    QJsonObject conditions; ///< for the peer
    std::vector<int> points;
    std::function<bool(ResultRecords *, int threads)> run;
    std::function<bool(const ResultRecords &, UncertaintyMap *, int threads)> findErrors;
    int column1 = -1, column2 = -1; ///< result quantities to be compared, -1: a and t
};

/// Eight maps of side x side pixels: a mixture of the first two references in varying shares and thicknesses, in whole
/// counts; the counts go to `file` as well: per energy I0 and I, 16 bits each.
std::vector<A2DData> makeMaps(int side, QIODevice *file);

/// The energies of the maps, for the peer.
QJsonArray mapEnergies();

/// The cases on these maps, which they borrow.
std::vector<Case> makeCases(const std::vector<A2DData> &maps);
