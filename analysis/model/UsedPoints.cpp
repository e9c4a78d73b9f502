#include "analysis/model/UsedPoints.h"

#include "analysis/model/AnalysisInput.h"
#include "analysis/model/TakingPart.h"

#include <algorithm>
#include <cmath>

UsedPoints usedPoints(const AnalysisInput &input, bool withMap)
{
    UsedPoints used;
    for (int row = 0; row < input.points.size(); ++row) {
        const PointInput &point = input.points[row];
        if (!point.isUsed || (withMap && !point.map))
            continue;
        used.all.append(row);
        if (point.isVPoint)
            used.vPoint = row;
        else
            used.anchors.append(row);
    }
    return used;
}

int proposedVPoint(const AnalysisInput &input)
{
    const double edge = input.conditions.edge.edge;
    const bool hasVPoint =
        std::any_of(input.points.begin(), input.points.end(), [](const PointInput &point) { return point.isVPoint; });
    int nearest = -1;
    if (hasVPoint || !(edge > 0))
        return nearest;
    const auto distance = [&](int row) {
        return std::fabs(input.points[row].energy - edge);
    };
    for (const int row : usedPoints(input, true).all) {
        if (input.points[row].energy > 0 && (nearest < 0 || distance(row) < distance(nearest)))
            nearest = row;
    }
    return nearest;
}

std::optional<ThreePoints> threePoints(const AnalysisInput &input)
{
    const UsedPoints used = usedPoints(input, true);
    const QVector<TakingPart::Reference> valid = takingPart(input).valid();
    if (used.vPoint < 0 || used.anchors.size() < 2 || valid.size() < 2)
        return std::nullopt;
    const int rows[] = {used.anchors[0], used.anchors[1], used.vPoint};
    ThreePoints points;
    for (std::size_t i = 0; i < points.maps.size(); ++i) {
        const PointInput &point = input.points[rows[i]];
        points.maps[i] = point.map;
        points.first[i] = point.references.at(static_cast<std::size_t>(valid[0].row));
        points.second[i] = point.references.at(static_cast<std::size_t>(valid[1].row));
    }
    return points;
}
