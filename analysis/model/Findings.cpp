#include "analysis/model/Findings.h"

#include "analysis/model/AnalysisInput.h"
#include "analysis/model/EnergyFindings.h"
#include "analysis/model/InputFiles.h"
#include "analysis/model/MapFindings.h"
#include "analysis/model/MapReadFindings.h"
#include "analysis/model/UsedPoints.h"

#include <QCoreApplication>
#include <QHash>

#include <algorithm>
#include <cmath>

namespace
{

using Calculations = Finding::Calculations;
using Control = Finding::Control;
using Place = Finding::Place;
using Severity = Finding::Severity;

constexpr int fewestPoints = 3; // that determine a line of three coefficients

QString translated(const char *text)
{
    return QCoreApplication::translate("FourPs", text);
}

enum class Digits { WholeEv, All };

/// An energy in eV. One that no spectrum has, because its angles could not be read, gets few digits.
QString energyText(double energy, Digits digits)
{
    if (!(std::abs(energy) < 1e7))
        return QString::number(energy, 'g', 3);
    return digits == Digits::All ? QString::number(energy, 'g', 12) : QString::number(energy, 'f', 0);
}

/// "8145-9145 eV": the energies of a spectrum, shifted.
QString scanOf(const AMutE &spectrum, Digits digits = Digits::WholeEv)
{
    return QStringLiteral("%1-%2 eV")
        .arg(energyText(spectrum.energyMin() - spectrum.dE(), digits),
             energyText(spectrum.energyMax() - spectrum.dE(), digits));
}

/// Looks at one spectrum that takes part.
class SpectrumCheck
{
public:
    /// `concerns`: the calculations that it takes part in.
    SpectrumCheck(const AMutE &spectrum, Place place, int row, Calculations concerns, QVector<Finding> *found)
        : m_spectrum(spectrum)
        , m_place(place)
        , m_row(row)
        , m_name(nameOf(place, row))
        , m_concerns(concerns)
        , m_found(found)
    {
    }

    static QString nameOf(Place place, int row)
    {
        return place == Place::Target ? translated(QT_TRANSLATE_NOOP("FourPs", "Target"))
                                      : translated(QT_TRANSLATE_NOOP("FourPs", "Ref %1")).arg(row + 1);
    }

    void unit() const
    {
        if (looksLikeKev(m_spectrum.energyMax() - m_spectrum.dE()))
            warn(translated(QT_TRANSLATE_NOOP("FourPs", "%1: the energies look like keV (data %2)"))
                     .arg(m_name, scanOf(m_spectrum)));
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

    /// The linear combination is fitted to the points between the outermost energies marked for it.
    void fitRange(double first, double last) const
    {
        int points = 0;
        for (int i = 0; i < m_spectrum.pointCount(); ++i) {
            const double energy = m_spectrum.shiftedEnergy(i);
            points += energy >= first && energy <= last ? 1 : 0;
        }
        if (points < fewestPoints)
            m_found->append({Severity::Warning, m_place, m_row,
                             translated(QT_TRANSLATE_NOOP("FourPs", "%1: the range of the LCF holds %2 points"))
                                 .arg(m_name, QString::number(points)),
                             Finding::Fit});
    }

    /// The calculations take the value of the spectrum at the energies in use.
    void energy(const AnalysisInput &input, int point) const
    {
        const double energy = input.points[point].energy;
        const bool isReached = reaches(energy, input.conditions.isNonEquivalent);
        if (isReached && std::isfinite(m_spectrum.muAt(energy)))
            return;
        Calculations concerns = m_concerns & (Finding::Map | Finding::Target);
        concerns.setFlag(Finding::Map, concerns.testFlag(Finding::Map) && input.points[point].map);
        const QString text =
            isReached ? translated(QT_TRANSLATE_NOOP("FourPs", "Energy %1: at %2 eV %3 has no finite value (%4)"))
                      : translated(QT_TRANSLATE_NOOP("FourPs", "Energy %1: %2 eV is outside of %3 (%4)"));
        const bool isNear = reaches(energy - 1, false) || reaches(energy + 1, false); // whole eV would look the same
        m_found->append({Severity::Error, Place::Point, point,
                         text.arg(QString::number(point + 1), energyText(energy, Digits::All), m_name,
                                  scanOf(m_spectrum, isNear ? Digits::All : Digits::WholeEv)),
                         concerns, Control::Energy});
    }

private:
    /// Beyond the scan the four-points method counts with 0. The other one continues the last segment, which makes no
    /// difference over less than what tells two energies apart.
    bool reaches(double energy, bool isContinued) const
    {
        double value = 0.0;
        const auto isInside = [this, &value](double at) {
            return m_spectrum.valueMinusLine(at, false, &value);
        };
        return isInside(energy) || (isContinued && (isInside(energy - sameEnergy) || isInside(energy + sameEnergy)));
    }
    void range(const QString &text, int points, Control end) const
    {
        if (points < fewestPoints)
            warn(text.arg(m_name, QString::number(points), scanOf(m_spectrum)), end);
    }
    void warn(const QString &text, Control control = Control::File) const
    {
        m_found->append({Severity::Warning, m_place, m_row, text, m_concerns, control});
    }

    const AMutE &m_spectrum;
    Place m_place;
    int m_row;
    QString m_name;
    Calculations m_concerns;
    QVector<Finding> *m_found;
};

void findInSpectrum(const AnalysisInput &input, const AMutE &spectrum, Place place, int row, Calculations concerns,
                    QVector<Finding> *found)
{
    const SpectrumCheck check(spectrum, place, row, concerns, found);
    check.unit();
    check.ranges();
    for (const int point : usedPoints(input, false).all)
        check.energy(input, point);
}

/// What the valid reference number `order`, counted from 0, takes part in: the four-points method knows two.
Calculations calculationsWith(const AnalysisInput &input, int order)
{
    Calculations concerns = Finding::Fit;
    if (input.conditions.isNonEquivalent || order < 2)
        concerns |= Finding::Map;
    if (concerns.testFlag(Finding::Map) && input.target.spectrum.valid())
        concerns |= Finding::Target;
    return concerns;
}

void findInReferences(const AnalysisInput &input, QVector<Finding> *found)
{
    int valid = 0;
    for (int row = 0; row < input.references.size(); ++row) {
        const ReferenceInput &reference = input.references[row];
        const Calculations concerns = calculationsWith(input, valid);
        const QString name = SpectrumCheck::nameOf(Place::Reference, row);
        if (reference.isUsed && !reference.hasValence)
            found->append(
                {Severity::Warning, Place::Reference, row,
                 translated(QT_TRANSLATE_NOOP("FourPs", "%1: the valence is no number and counts as 0")).arg(name),
                 concerns, Control::Valence});
        if (!reference.takesPart())
            continue;
        findInSpectrum(input, reference.spectrum, Place::Reference, row, concerns, found);
        ++valid;
    }
}

void findInTarget(const AnalysisInput &input, QVector<Finding> *found)
{
    QVector<double> fitted;
    for (const PointInput &point : input.points) {
        if (point.isForLcf)
            fitted << point.energy;
    }
    if (input.target.spectrum.valid())
        findInSpectrum(input, input.target.spectrum, Place::Target, 0, Finding::Target | Finding::Fit, found);
    const auto ends = std::minmax_element(fitted.begin(), fitted.end());
    if (input.target.spectrum.valid() && fitted.size() > 1)
        SpectrumCheck(input.target.spectrum, Place::Target, 0, Finding::Fit, found).fitRange(*ends.first, *ends.second);
    if (!input.target.spectrum.valid() && !fitted.isEmpty())
        found->append(
            {Severity::Warning, Place::Target, 0,
             translated(QT_TRANSLATE_NOOP("FourPs", "Target: energies are marked LCF, but there is no spectrum")),
             Finding::Fit});
}

/// The same file twice, among spectra and among maps.
void findSameFiles(const AnalysisInput &input, QVector<Finding> *found)
{
    QHash<QString, QString> names; // of who has a file first
    const auto look = [&names, found](const QString &file, Place place, int row, const QString &name) {
        const QString path = identityOf(file);
        if (!names.contains(path)) {
            names.insert(path, name);
            return;
        }
        const QString text = translated(QT_TRANSLATE_NOOP("FourPs", "%1: the same file as %2"));
        found->append({Severity::Warning, place, row, text.arg(name, names.value(path)),
                       Finding::Map | Finding::Target | Finding::Fit});
    };
    for (int row = 0; row < input.references.size(); ++row) {
        if (input.references[row].takesPart())
            look(input.references[row].file, Place::Reference, row, SpectrumCheck::nameOf(Place::Reference, row));
    }
    if (input.target.spectrum.valid())
        look(input.target.file, Place::Target, 0, SpectrumCheck::nameOf(Place::Target, 0));
    for (const int row : usedPoints(input, true).all)
        look(input.points[row].mapFile.path, Place::Point, row,
             translated(QT_TRANSLATE_NOOP("FourPs", "Energy %1")).arg(row + 1));
}

} // namespace

QVector<Finding> findings(const AnalysisInput &input)
{
    QVector<Finding> found;
    findInReferences(input, &found);
    findInTarget(input, &found);
    findInEnergies(input, &found);
    findInMaps(input, &found);
    findSameFiles(input, &found);
    found += findInReadMaps(input);
    findMixedIntensities(input, &found);
    return found;
}
