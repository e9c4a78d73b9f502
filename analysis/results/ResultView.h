#pragma once

#include "analysis/methods/FourPoints.h"
#include "analysis/methods/ResultPosition.h"
#include "analysis/results/ShownQuantity.h"
#include "numeric/Plane.h"

#include <QtGlobal>

#include <cstddef>
#include <optional>
#include <vector>

class ResultRecords;

/// What a map of results shows: the values of one quantity, and which pixels it hides. Points into the results: to be
/// shown anew whenever these change.
class ResultView
{
public:
    ResultView() = default;
    Q_DISABLE_COPY(ResultView)

    /// The quantity at `position` (see ResultPosition), for a four-points result with the valences of its run (see
    /// shownPlane()). Pixels whose amount t is below `hideBelow` are hidden; none: all are shown.
    void show(const ResultRecords &results, int position, const ValencePair &valences,
              std::optional<double> hideBelow = std::nullopt);

    /// Hides also the pixels where another plane of as many values is above `limit`.
    void hideAbove(const double *values, double limit);
    /// Shows another plane, of as many values as the results have, with the same pixels hidden.
    void showInstead(const double *values) { m_map.values = values; }

    int position() const { return m_position; }
    /// Its values are null when the method does not compute the quantity, and without results; the count is that of the
    /// results in any case.
    const ShownMap &map() const { return m_map; }
    const double *values() const { return m_map.values; }
    std::size_t count() const { return m_map.count; }
    /// One byte per pixel, 1 where it is hidden; null when all are shown.
    const quint8 *mask() const { return m_mask.empty() ? nullptr : m_mask.data(); }

private:
    int m_position = ResultPosition::ratio;
    ShownMap m_map;
    numeric::Plane m_work; ///< values that do not stand in the results
    std::vector<quint8> m_mask;
};
