#include "analysis/model/Findings.h"

#include "analysis/model/AnalysisInput.h"
#include "analysis/model/UsedPoints.h"

#include <QCoreApplication>

#include <algorithm>

namespace
{

using Control = Finding::Control;
using Place = Finding::Place;
using Severity = Finding::Severity;

constexpr int fewestPoints = 3; // that determine a line of three coefficients

QString translated(const char *text)
{
    return QCoreApplication::translate("FourPs", text);
}

/// "8145-9145 eV": the energies of a spectrum, shifted, in whole eV.
QString scanOf(const AMutE &spectrum)
{
    return QStringLiteral("%1-%2 eV")
        .arg(spectrum.energyMin() - spectrum.dE(), 0, 'f', 0)
        .arg(spectrum.energyMax() - spectrum.dE(), 0, 'f', 0);
}

/// Looks at one spectrum that takes part.
class SpectrumCheck
{
public:
    SpectrumCheck(const AMutE &spectrum, Place place, int row, const QString &name, QVector<Finding> *found)
        : m_spectrum(spectrum)
        , m_place(place)
        , m_row(row)
        , m_name(name)
        , m_found(found)
    {
    }

    void ranges() const
    {
        int before = 0;
        int behind = 0;
        for (int i = 0; i < m_spectrum.pointCount(); ++i) {
            before += m_spectrum.shiftedEnergy(i) < m_spectrum.preEdgeEnd() ? 1 : 0;
            behind += m_spectrum.shiftedEnergy(i) > m_spectrum.postEdgeStart() ? 1 : 0;
        }
        range(translated(QT_TRANSLATE_NOOP("FourPs", "%1: the pre-edge range holds %2 points (data %3)")), before,
              Control::PreEdgeEnd);
        range(translated(QT_TRANSLATE_NOOP("FourPs", "%1: the post-edge range holds %2 points (data %3)")), behind,
              Control::PostEdgeStart);
    }

    void energy(int point, double energy) const
    {
        double value = 0.0;
        if (m_spectrum.valueMinusLine(energy, false, &value))
            return;
        const QString text = translated(QT_TRANSLATE_NOOP("FourPs", "Energy %1: %2 eV is outside of %3 (%4)"));
        m_found->append({Severity::Error, Place::Point, point,
                         text.arg(QString::number(point + 1), QString::number(energy), m_name, scanOf(m_spectrum)),
                         Control::Energy});
    }

private:
    void range(const QString &text, int points, Control end) const
    {
        if (points < fewestPoints)
            m_found->append({Severity::Warning, m_place, m_row,
                             text.arg(m_name, QString::number(points), scanOf(m_spectrum)), end});
    }

    const AMutE &m_spectrum;
    Place m_place;
    int m_row;
    QString m_name;
    QVector<Finding> *m_found;
};

void findInSpectrum(const AnalysisInput &input, const AMutE &spectrum, Place place, int row, const QString &name,
                    QVector<Finding> *found)
{
    const SpectrumCheck check(spectrum, place, row, name, found);
    check.ranges();
    for (const int point : usedPoints(input, false).all)
        check.energy(point, input.points[point].energy);
}

void findInMaps(const AnalysisInput &input, QVector<Finding> *found)
{
    const QVector<int> rows = usedPoints(input, true).all;
    for (const int row : rows) {
        const A2DData &first = *input.points[rows.first()].map;
        const A2DData &map = *input.points[row].map;
        if (map.nx() == first.nx() && map.ny() == first.ny())
            continue;
        const QString text =
            translated(QT_TRANSLATE_NOOP("FourPs", "Energy %1: the map has %2 x %3 pixels, that of energy %4 %5 x %6"));
        found->append(
            {Severity::Error, Place::Point, row,
             text.arg(row + 1).arg(map.nx()).arg(map.ny()).arg(rows.first() + 1).arg(first.nx()).arg(first.ny())});
    }
}

} // namespace

QVector<Finding> findings(const AnalysisInput &input)
{
    QVector<Finding> found;
    for (int row = 0; row < input.references.size(); ++row) {
        const ReferenceInput &reference = input.references[row];
        const QString name = translated(QT_TRANSLATE_NOOP("FourPs", "Ref %1")).arg(row + 1);
        if (reference.isUsed && !reference.hasValence)
            found.append(
                {Severity::Warning, Place::Reference, row,
                 translated(QT_TRANSLATE_NOOP("FourPs", "%1: the valence is no number and counts as 0")).arg(name),
                 Control::Valence});
        if (reference.takesPart())
            findInSpectrum(input, reference.spectrum, Place::Reference, row, name, &found);
    }
    const bool isFitWanted =
        std::any_of(input.points.begin(), input.points.end(), [](const PointInput &point) { return point.isForLcf; });
    if (input.target.spectrum.valid())
        findInSpectrum(input, input.target.spectrum, Place::Target, 0,
                       translated(QT_TRANSLATE_NOOP("FourPs", "Target")), &found);
    else if (isFitWanted)
        found.append(
            {Severity::Warning, Place::Target, 0,
             translated(QT_TRANSLATE_NOOP("FourPs", "Target: energies are marked LCF, but there is no spectrum"))});
    findInMaps(input, &found);
    return found;
}
