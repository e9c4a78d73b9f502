#include "analysis/results/ResultView.h"

#include "analysis/results/ResultRecords.h"

void ResultView::show(const ResultRecords &results, int position, const ValencePair &valences,
                      std::optional<double> hideBelow)
{
    m_position = position;
    m_map = {shownPlane(results, position, valences, &m_work), results.count(), results.grid()};
    m_mask.clear();
    if (m_map.values && hideBelow)
        maskBelow(results, *hideBelow, &m_mask);
}

void ResultView::hideAbove(const double *values, double limit)
{
    if (m_map.values)
        maskAbove(values, m_map.count, limit, &m_mask);
}
