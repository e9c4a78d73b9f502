#pragma once

#include "analysis/uncertainty/RegionStatistics.h"
#include "analysis/uncertainty/UncertaintyMap.h"
#include "mapdata/A2DData.h"
#include "numeric/Plane.h"

#include <QString>
#include <QtGlobal>

#include <cstddef>
#include <optional>
#include <vector>

class Analysis;
struct AnalysisInput;
struct RunInfo;

/// Pixels of the result map that are looked at together.
struct Region {
    QString name;
    std::optional<PixelRectangle> rectangle; ///< none: the whole map
    std::optional<double> above;             ///< only pixels with an amount t of at least this
    bool isMaterial = false;                 ///< only pixels that count as material (see UncertaintyMap)
};

/// The maps of a run in the order of its method (all of them, or those of the anchor points and then that of the V
/// point), as they are loaded now. Empty when one of them is no longer the file that the run read.
std::vector<const A2DData *> mapsOf(const RunInfo &run, const AnalysisInput &now);

/// The standard errors of the quantity at `position` (see ResultPosition); null for one that has none: only valence,
/// amount and, where they were asked for, the fractions have.
const numeric::Plane *standardErrors(const UncertaintyMap &map, int position);
/// Whether the quantity is a fraction, whose standard errors have to be asked for.
bool isFraction(int position);

/// How far the results of the last map calculation can be trusted. Nothing is calculated before it is asked for, and
/// then kept until the results or what is asked for are others. The intensities are not kept with the results but read
/// from the maps: what was not asked for while these were loaded is not to be had any more.
class Quality
{
public:
    explicit Quality(const Analysis &analysis)
        : m_analysis(analysis)
    {
    }
    Q_DISABLE_COPY(Quality)

    /// Standard errors and misfit of every pixel; null when there are none: problem() says why.
    const UncertaintyMap *map(const AnalysisInput &now, const UncertaintyRequest &request);
    /// The same without calculating: null unless it is known already.
    const UncertaintyMap *known(const UncertaintyRequest &request) const;
    /// Seconds that map() would probably take, by the last time that it was calculated; 0 when it is known.
    double expectedSeconds(const UncertaintyRequest &request) const;
    /// Medians over the material; none where map() is null. Detection limits only when fractions are asked for.
    std::optional<UncertaintySummary> summary(const AnalysisInput &now, const UncertaintyRequest &request);
    /// One per region; empty where map() is null. A region without a pixel has NaN.
    std::vector<RegionStatistics> statistics(const AnalysisInput &now, const UncertaintyRequest &request,
                                             const std::vector<Region> &regions);
    /// Why what was asked for last was not to be had, one sentence for the user; empty when it was.
    const QString &problem() const { return m_problem; }

private:
    std::vector<const A2DData *> mapsNow(const AnalysisInput &now);

    const Analysis &m_analysis;
    UncertaintyMap m_map;
    quint64 m_revision = 0; ///< of the results that m_map belongs to; 0: none
    double m_secondsPerValue = 5e-8;
    QString m_problem;
};
