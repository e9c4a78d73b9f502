#include "analysis/model/MapFindings.h"

#include "analysis/model/AnalysisInput.h"
#include "analysis/model/UsedPoints.h"
#include "analysis/uncertainty/NoiseModel.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

using Severity = Finding::Severity;

constexpr double tolerableSteps = 0.1; // rounded positions and the play of a stage stay below
constexpr double otherPixel = 0.5;     // step; beyond it the pixel of that place is another one

QString translated(const char *text)
{
    return QCoreApplication::translate("FourPs", text);
}

/// Why no pixel of a map can be analysed; empty when one can. Numbers that could not be read are 0.
QString emptiness(const A2DData &map)
{
    bool isMeasured = false;
    for (std::size_t i = 0; i < map.I().size(); ++i) {
        const bool hasIntensity = map.I()[i] != 0.0;
        if (hasIntensity && std::isfinite(map.absorptions()[i]))
            return QString();
        isMeasured = isMeasured || hasIntensity;
    }
    return isMeasured
               ? translated(QT_TRANSLATE_NOOP("FourPs", "Energy %1: no pixel of the map has a finite absorption"))
               : translated(QT_TRANSLATE_NOOP("FourPs", "Energy %1: the intensity of every pixel is 0"));
}

/// The mean distance of neighbours along an axis, from the first row or the first column of the map: of its first pixel
/// and the one `count` - 1 strides further on. 0 where there is none.
double meanStep(const numeric::Plane &positions, qint64 stride, qint64 count)
{
    const qint64 known = (static_cast<qint64>(positions.size()) + stride - 1) / stride;
    const qint64 steps = std::min(count, known) - 1;
    if (steps < 1)
        return 0.0;
    const double step =
        std::abs(positions[static_cast<std::size_t>(steps * stride)] - positions[0]) / static_cast<double>(steps);
    return std::isfinite(step) ? step : 0.0;
}

double farthest(const numeric::Plane &l, const numeric::Plane &r)
{
    if (l.data() == r.data()) // shared
        return 0.0;
    double most = 0.0;
    const std::size_t count = std::min(l.size(), r.size());
    for (std::size_t i = 0; i < count; ++i) {
        const double distance = std::abs(l[i] - r[i]);
        if (!(distance <= most))
            most = std::isnan(distance) ? std::numeric_limits<double>::infinity() : distance;
    }
    return most;
}

/// Looks at one map beside the first one in use.
class MapCheck
{
public:
    MapCheck(const AnalysisInput &input, int firstRow, int row, QVector<Finding> *found)
        : m_first(*input.points[firstRow].map)
        , m_map(*input.points[row].map)
        , m_firstRow(firstRow)
        , m_row(row)
        , m_found(found)
    {
    }

    void contents() const
    {
        const QString text = emptiness(m_map);
        if (!text.isEmpty())
            note(Severity::Error, text.arg(m_row + 1));
    }

    bool isOfOneSize() const
    {
        if (m_map.nx() == m_first.nx() && m_map.ny() == m_first.ny())
            return true;
        const QString text =
            translated(QT_TRANSLATE_NOOP("FourPs", "Energy %1: the map has %2 x %3 pixels, that of energy %4 %5 x %6"));
        note(Severity::Error, text.arg(m_row + 1)
                                  .arg(m_map.nx())
                                  .arg(m_map.ny())
                                  .arg(m_firstRow + 1)
                                  .arg(m_first.nx())
                                  .arg(m_first.ny()));
        return false;
    }

    void positions() const
    {
        const double steps = farthestPixel(m_first, m_map);
        if (!(steps > tolerableSteps))
            return;
        const QString text = translated(
            QT_TRANSLATE_NOOP("FourPs", "Energy %1: the pixels lie up to %2 of their steps from those of energy %3"));
        note(steps > otherPixel ? Severity::Error : Severity::Warning,
             text.arg(m_row + 1).arg(steps, 0, 'g', 2).arg(m_firstRow + 1));
    }

private:
    void note(Severity severity, const QString &text) const
    {
        m_found->append({severity, Finding::Place::Point, m_row, text, Finding::Map});
    }

    const A2DData &m_first;
    const A2DData &m_map;
    int m_firstRow;
    int m_row;
    QVector<Finding> *m_found;
};

bool hasIncident(const A2DData &map)
{
    return intensitiesOf(map) != Intensities::Absorptions;
}

} // namespace

double farthestPixel(const A2DData &first, const A2DData &map)
{
    const auto stepOf = [&first, &map](const numeric::Plane &(A2DData::*axis)() const, bool isAlongRows) {
        double step = 0.0;
        for (const A2DData *const data : {&first, &map}) {
            const qint64 stride = isAlongRows ? 1 : std::max(data->nx(), 1);
            step = std::max(step, meanStep((data->*axis)(), stride, isAlongRows ? data->nx() : data->ny()));
        }
        return step;
    };
    double stepX = stepOf(&A2DData::x, true);
    double stepY = stepOf(&A2DData::y, false);
    stepX = stepX > 0.0 ? stepX : stepY;
    stepY = stepY > 0.0 ? stepY : stepX;
    if (!(stepX > 0.0))
        return 0.0;
    return std::max(farthest(first.x(), map.x()) / stepX, farthest(first.y(), map.y()) / stepY);
}

void findInMaps(const AnalysisInput &input, QVector<Finding> *found)
{
    const QVector<int> rows = usedPoints(input, true).all;
    for (const int row : rows) {
        const MapCheck check(input, rows.first(), row, found);
        check.contents();
        if (check.isOfOneSize())
            check.positions();
    }
}

void findMixedIntensities(const AnalysisInput &input, QVector<Finding> *found)
{
    const QVector<int> rows = usedPoints(input, true).all;
    for (const int row : rows) {
        if (hasIncident(*input.points[row].map) == hasIncident(*input.points[rows.first()].map))
            continue;
        const QString text = translated(QT_TRANSLATE_NOOP(
            "FourPs", "Energy %1: either this map or that of energy %2 has no I0, so that I counts as the absorption"));
        found->append(
            {Severity::Warning, Finding::Place::Point, row, text.arg(row + 1).arg(rows.first() + 1), Finding::Map});
    }
}
