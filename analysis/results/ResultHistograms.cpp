#include "analysis/results/ResultHistograms.h"

#include "analysis/results/ResultQuantities.h"
#include "analysis/results/ResultRecords.h"

#include <algorithm>
#include <cstddef>
#include <limits>

namespace
{

HistogramBins emptyBoxes(const ValueRange &range, double boxes)
{
    HistogramBins bins;
    bins.setBoxes(range.min, range.max, boxes);
    return bins;
}

} // namespace

void ResultHistograms::count(const ResultRecords &results, const ValencePair &valences,
                             const HistogramSettings &valence, const HistogramSettings &thickness)
{
    m_valenceRange = {valence.from, valence.to};
    m_thicknessRange = {thickness.from, thickness.to};
    m_boxes = valence.boxes;
    m_valence = emptyBoxes(m_valenceRange, valence.boxes);
    m_thickness = emptyBoxes(m_thicknessRange, thickness.boxes);
    forgetChoice();
    const double *const t = results.t();
    m_thickness.addValues(results.count(), [t](std::size_t i) { return t[i]; });
    if (results.method() == ResultRecords::Method::NonEquivalent) {
        const double *const values = results.quantity(ResultPosition::valence);
        m_valence.addValues(results.count(), [values](std::size_t i) { return values[i]; });
    } else {
        const double *const a = results.a();
        m_valence.addValues(results.count(), [a, valences](std::size_t i) { return valences.mixed(a[i]); });
    }
}

void ResultHistograms::forgetChoice()
{
    m_quantity = HistogramBins();
    m_position = ResultPosition::valence;
    m_shownRange = m_valenceRange;
    m_shownParts.clear();
    m_thicknessParts.clear();
}

void ResultHistograms::choose(const ResultRecords &results, const HistogramChoice &choice)
{
    forgetChoice();
    const bool isKnown = quantityAt(choice.position) != nullptr;
    if (results.method() != ResultRecords::Method::NonEquivalent || results.count() == 0 || !isKnown)
        return;
    const double *const values = results.quantity(choice.position);
    if (choice.position != ResultPosition::valence) {
        m_position = choice.position;
        const auto ownRange = choice.range ? choice.range : finiteRange(values, results.count());
        m_shownRange = ownRange.value_or(ValueRange());
        m_quantity = emptyBoxes(m_shownRange, m_boxes);
        m_quantity.addValues(results.count(), [values](std::size_t i) { return values[i]; });
    }
    for (int j = 0; j < std::min(choice.references, ResultPosition::referenceRows); ++j) {
        const int ratio = ResultPosition::ratio + j;
        if (choice.hasShownParts)
            m_shownParts.append(referenceHistogram(shown(), results, ratio, values));
        if (choice.hasThicknessParts)
            m_thicknessParts.append(referenceHistogram(m_thickness, results, ratio, results.t()));
    }
}

HistogramBins referenceHistogram(const HistogramBins &boxes, const ResultRecords &results, int ratio,
                                 const double *values)
{
    HistogramBins bins = boxes;
    bins.counts.fill(0, bins.n);
    bins.total = bins.under = bins.over = 0;
    if (results.method() != ResultRecords::Method::NonEquivalent || !boxes.isSet())
        return bins;
    const double *const fraction = results.quantity(ratio);
    constexpr double notCounted = std::numeric_limits<double>::quiet_NaN();
    bins.addValues(results.count(),
                   [fraction, values](std::size_t i) { return fraction[i] >= 0.5 ? values[i] : notCounted; });
    bins.total = bins.under + bins.inRangeCount() + bins.over;
    return bins;
}
