#include "analysis/model/Quality.h"

#include "analysis/methods/ResultPosition.h"
#include "analysis/model/Analysis.h"
#include "analysis/model/AnalysisInput.h"
#include "analysis/uncertainty/NoiseModel.h"
#include "analysis/uncertainty/UncertaintyConstants.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <algorithm>

namespace
{

QString translated(const char *text)
{
    return QCoreApplication::translate("FourPs", text);
}

/// Null when the row has another map now.
const A2DData *mapOf(const RunPoint &point, const AnalysisInput &now)
{
    if (point.row >= now.points.size() || !(now.points[point.row].mapFile == point.map))
        return nullptr;
    return now.points[point.row].map;
}

} // namespace

std::vector<const A2DData *> mapsOf(const RunInfo &run, const AnalysisInput &now)
{
    std::vector<const A2DData *> maps;
    for (const RunPoint &point : run.points) {
        if (!point.isMarked)
            maps.push_back(mapOf(point, now));
    }
    for (const RunPoint &point : run.points) {
        if (point.isMarked && point.row == run.vPoint) // of several marks the last one counts
            maps.push_back(mapOf(point, now));
    }
    if (std::find(maps.begin(), maps.end(), nullptr) != maps.end())
        maps.clear();
    return maps;
}

bool isFraction(int position)
{
    return position >= ResultPosition::ratio && position < ResultPosition::ratio + ResultPosition::referenceRows;
}

const numeric::Plane *standardErrors(const UncertaintyMap &map, int position)
{
    if (position == ResultPosition::valence)
        return &map.valence;
    if (position == ResultPosition::amount)
        return &map.amount;
    const auto reference = static_cast<std::size_t>(position - ResultPosition::ratio);
    return isFraction(position) && reference < map.fractions.size() ? &map.fractions[reference] : nullptr;
}

std::vector<const A2DData *> Quality::mapsNow(const AnalysisInput &now)
{
    m_problem.clear();
    if (!m_analysis.run()) {
        m_problem = translated(QT_TRANSLATE_NOOP("FourPs", "There is no result map yet."));
        return {};
    }
    std::vector<const A2DData *> maps = mapsOf(*m_analysis.run(), now);
    if (maps.empty())
        m_problem =
            translated(QT_TRANSLATE_NOOP("FourPs", "The maps have changed since the calculation; press Calc. first."));
    return maps;
}

const UncertaintyMap *Quality::known(const UncertaintyRequest &request) const
{
    const bool isSame = m_revision != 0 && m_revision == m_analysis.revision() && m_map.thinnest == request.thinnest &&
                        (!request.hasFractions || !m_map.fractions.empty());
    return isSame ? &m_map : nullptr;
}

double Quality::expectedSeconds(const UncertaintyRequest &request) const
{
    if (known(request) || !m_analysis.run())
        return 0.0;
    return m_secondsPerValue * static_cast<double>(m_analysis.results().count()) * m_analysis.run()->points.size();
}

const UncertaintyMap *Quality::map(const AnalysisInput &now, const UncertaintyRequest &request)
{
    m_problem.clear();
    if (const UncertaintyMap *const same = known(request))
        return same;
    const std::vector<const A2DData *> maps = mapsNow(now);
    if (maps.empty())
        return nullptr;
    const UncertaintyConstants constants = uncertaintyConstants(*m_analysis.run());
    if (constants.points == 0) {
        m_problem = translated(
            QT_TRANSLATE_NOOP("FourPs", "There are no uncertainties: the energies are fewer than the unknowns."));
        return nullptr;
    }
    if (constants.degrees == 0 && noiseModelOf(maps).isUniform) {
        m_problem = translated(QT_TRANSLATE_NOOP("FourPs", "There are no uncertainties: the maps have no intensities, "
                                                           "and with as many unknowns as energies nothing else tells "
                                                           "the noise."));
        return nullptr;
    }
    QElapsedTimer timer;
    timer.start();
    m_revision = 0;
    if (!computeUncertainty(constants, maps, m_analysis.results(), request, &m_map)) {
        m_problem = translated(QT_TRANSLATE_NOOP("FourPs", "There is no memory for the uncertainties."));
        return nullptr;
    }
    m_revision = m_analysis.revision();
    const double values = static_cast<double>(m_analysis.results().count()) * static_cast<double>(maps.size());
    m_secondsPerValue = static_cast<double>(timer.nsecsElapsed()) * 1e-9 / std::max(1.0, values);
    return &m_map;
}

std::optional<UncertaintySummary> Quality::summary(const AnalysisInput &now, const UncertaintyRequest &request)
{
    const UncertaintyMap *const errors = map(now, request);
    return errors ? std::optional<UncertaintySummary>(summarize(*errors, m_analysis.results())) : std::nullopt;
}

std::vector<RegionStatistics> Quality::statistics(const AnalysisInput &now, const UncertaintyRequest &request,
                                                  const std::vector<Region> &regions)
{
    std::vector<RegionStatistics> found;
    const UncertaintyMap *const errors = map(now, request);
    const std::vector<const A2DData *> maps = errors ? mapsNow(now) : std::vector<const A2DData *>();
    if (maps.empty())
        return found;
    const ResultRecords &results = m_analysis.results();
    const auto isNone = [&](std::size_t pixel) {
        return !errors->isMaterial(results.t()[pixel], errors->amount[pixel]);
    };
    for (const Region &region : regions) {
        std::vector<std::size_t> pixels = regionPixels(results, region.rectangle, region.above);
        if (region.isMaterial)
            pixels.erase(std::remove_if(pixels.begin(), pixels.end(), isNone), pixels.end());
        found.push_back(regionStatistics(*m_analysis.run(), maps, results, errors->noise, pixels));
    }
    return found;
}
