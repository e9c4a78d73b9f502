#pragma once

#include "analysis/methods/FourPoints.h"
#include "analysis/methods/ResultPosition.h"
#include "analysis/results/QuantityRange.h"
#include "display/HistogramBins.h"

#include <QVector>

#include <optional>

class ResultRecords;

/// The boxes of a histogram as the user asks for them.
struct HistogramSettings {
    double from = 0.0;  ///< centre of the first box
    double to = 0.0;    ///< centre of the last box
    double boxes = 0.0; ///< how many, truncated
};

/// What is counted of a non-equivalent result besides its valences and amounts.
struct HistogramChoice {
    int position = ResultPosition::valence; ///< the quantity that is shown, see ResultPosition
    std::optional<ValueRange> range;        ///< its colour range; none: from its smallest to its largest finite value
    int references = 0;                     ///< that took part in the run
    bool hasShownParts = false;             ///< the shown quantity once more per reference
    bool hasThicknessParts = false;         ///< the amount once more per reference
};

/// The histograms of one run of results. Nothing stands in them before count(). The files of histograms are always
/// those of valence() and thickness(); shown() is what is looked at.
class ResultHistograms
{
public:
    /// Counts the valences and the thicknesses t of all pixels, and shows the valences. For results without pixels the
    /// boxes stand and are empty.
    void count(const ResultRecords &results, const ValencePair &valences, const HistogramSettings &valence,
               const HistogramSettings &thickness);
    /// Counts what was chosen of the results that count() has seen: another quantity than the valence in as many boxes
    /// as the valences have, and the parts. A four-points result has its valences and thicknesses only.
    void choose(const ResultRecords &results, const HistogramChoice &choice);

    const HistogramBins &valence() const { return m_valence; }
    const HistogramBins &thickness() const { return m_thickness; }
    /// The chosen quantity's, see shownPosition().
    const HistogramBins &shown() const { return m_quantity.isSet() ? m_quantity : m_valence; }
    int shownPosition() const { return m_position; }
    /// From the centre of the first box to that of the last one.
    ValueRange shownRange() const { return m_shownRange; }
    ValueRange thicknessRange() const { return m_thicknessRange; }
    /// One per reference that took part, in their order; empty unless chosen.
    const QVector<HistogramBins> &shownParts() const { return m_shownParts; }
    const QVector<HistogramBins> &thicknessParts() const { return m_thicknessParts; }

private:
    void forgetChoice();

    HistogramBins m_valence;
    HistogramBins m_thickness;
    HistogramBins m_quantity; ///< not set while the valence is shown
    ValueRange m_valenceRange;
    ValueRange m_thicknessRange;
    ValueRange m_shownRange;
    double m_boxes = 0.0; ///< of the valence histogram
    int m_position = ResultPosition::valence;
    QVector<HistogramBins> m_shownParts;
    QVector<HistogramBins> m_thicknessParts;
};

/// The histogram, in the boxes of `boxes`, of those pixels of a non-equivalent result in which the fraction at
/// position `ratio` (see ResultPosition) is at least a half. `values` holds one value per pixel. Empty boxes for a
/// four-points result.
HistogramBins referenceHistogram(const HistogramBins &boxes, const ResultRecords &results, int ratio,
                                 const double *values);
