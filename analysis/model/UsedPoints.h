#pragma once

#include <QVector>

#include <array>
#include <optional>

class A2DData;
struct AnalysisInput;

/// The energy points that take part, by their rows from 0.
struct UsedPoints {
    QVector<int> all;     ///< in panel order
    QVector<int> anchors; ///< those without the V mark
    int vPoint = -1;      ///< the last one with it; -1: none

    /// The order of the four-points method: anchor points, then the V point.
    QVector<int> anchorsFirst() const { return QVector<int>(anchors) << vPoint; }
};

/// The points in use; `withMap`: only those that have a map.
UsedPoints usedPoints(const AnalysisInput &input, bool withMap);

/// The row to be proposed as V point: of those in use, with a map and an energy, the one nearest to the edge, the first
/// of several as near. -1 without such a row or without an edge above 0 eV, and when any row has the V mark already.
int proposedVPoint(const AnalysisInput &input);

/// The first two anchor points P and Q and the V point R, each with a map, and the first two valid references there:
/// what the scatter of the steps P to R against P to Q shows.
struct ThreePoints {
    std::array<const A2DData *, 3> maps = {}; ///< at P, Q, R; not owned
    std::array<double, 3> first = {};         ///< of the first reference, as the fields show it
    std::array<double, 3> second = {};
};

/// None when there are fewer points or references.
std::optional<ThreePoints> threePoints(const AnalysisInput &input);
