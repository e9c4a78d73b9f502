#include "analysis/results/ResultView.h"

#include "analysis/results/ResultRecords.h"
#include "analysis/results/ShownQuantity.h"

void ResultView::show(const ResultRecords &results, int position, const ValencePair &valences,
                      std::optional<double> hideBelow)
{
    m_position = position;
    m_values = shownPlane(results, position, valences, &m_work);
    m_count = results.count();
    m_width = results.width();
    m_height = results.height();
    m_mask.clear();
    if (m_values && hideBelow)
        maskBelow(results, *hideBelow, &m_mask);
}
