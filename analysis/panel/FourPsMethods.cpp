// Runs the methods on what the controls say and reports what they find.

#include "analysis/methods/FourPointsMap.h"
#include "analysis/methods/LinearCombination.h"
#include "analysis/methods/NonEquivalent.h"
#include "analysis/model/ResultText.h"
#include "analysis/panel/FourPs.h"
#include "analysis/results/MapRecords.h"
#include "analysis/results/ResultQuantities.h"
#include "analysis/results/ShownQuantity.h"
#include "controls/Field.h"
#include "display/DispABase.h"

#include <algorithm>

namespace
{

/// The order of the methods: anchor points, then the V point.
template <class Rows>
QVector<AEPoint *> pointsOf(const Rows &rows)
{
    QVector<AEPoint *> points = rows.anchors;
    points.append(rows.vPoint);
    return points;
}

} // namespace

FourPointsReferences FourPs::fourPointsReferences(const UsedRows &rows) const
{
    const QVector<ARefFile *> valid = validReferences();
    const int a = m_references.indexOf(valid[0]);
    const int b = m_references.indexOf(valid[1]);
    FourPointsReferences result;
    for (const AEPoint *const row : pointsOf(rows)) {
        result.energies.push_back(row->energy());
        result.a.push_back(row->referenceValue(a));
        result.b.push_back(row->referenceValue(b));
    }
    result.r = valid[0]->selector()->spectrum().edgeJump() / valid[1]->selector()->spectrum().edgeJump();
    return result;
}

double FourPs::valenceOf(double a) const
{
    const QVector<ARefFile *> valid = validReferences();
    return valid.size() < 2 ? 0.0 : mixedValence(valid[0]->valence(), valid[1]->valence(), a);
}

void FourPs::calcFourPointsTarget(const UsedRows &rows, FourPointsVariant variant)
{
    std::vector<double> x;
    for (const AEPoint *const row : pointsOf(rows))
        x.push_back(row->targetValue());
    numeric::LinearSystem work(3);
    const FourPointsResult result = solveFourPoints(variant, fourPointsReferences(rows), x.data(), &work);
    m_targetFourPoints = result;
    m_targetA = result.a;
    m_targetValence = valenceOf(result.a);
    switch (variant) {
    case FourPointsVariant::ThreePoint:
        message(tr("3ps: a = %1, Valence = %2").arg(m_targetA).arg(m_targetValence));
        break;
    case FourPointsVariant::Exact:
        message(tr("a = %1, Valence = %2, t/ts = %3").arg(m_targetA).arg(m_targetValence).arg(result.t));
        break;
    case FourPointsVariant::LeastSquares:
        message(tr("4ps2: a = %1, Valence = %2, t/ts = %3").arg(m_targetA).arg(m_targetValence).arg(result.t));
        break;
    case FourPointsVariant::None:
        break;
    }
}

void FourPs::calcFourPointsMap(const UsedRows &rows, FourPointsVariant variant)
{
    FourPointsMapInput input;
    input.variant = variant;
    input.references = fourPointsReferences(rows);
    for (const AEPoint *const row : pointsOf(rows))
        input.maps.push_back(&row->data());
    if (!fillRecords(input, &m_results)) {
        reportTooLarge(*input.maps.back());
        return;
    }
    finishMap(rows);
}

void FourPs::reportTooLarge(const A2DData &map)
{
    refuse(Step::Map, tr("The map of %1 x %2 pixels is too large.").arg(map.nx()).arg(map.ny()));
}

/// What follows every map calculation: the mark of results out of date goes, header lines, histograms, pictures.
void FourPs::finishMap(const UsedRows &rows)
{
    clearStaleMark();
    m_results.headerLines = rows.all.first()->data().headerLines();
    warnOfOtherSizes(rows);
    m_valenceHistogram.setUp();
    m_thicknessHistogram.setUp();
    const double *const t = m_results.t();
    m_thicknessHistogram.addValues(m_results.count(), [t](std::size_t i) { return t[i]; });
    const auto [first, second] = usedValences();
    if (const double *const valence =
            shownPlane(m_results, ResultPosition::valence, {true, first, second}, &m_shownWork))
        m_valenceHistogram.addValues(m_results.count(), [valence](std::size_t i) { return valence[i]; });
    refreshShownHistograms();
    refreshShownMap();
    repaintDisplays();
}

/// Data sets of another size than the map calculated say so in their rows.
void FourPs::warnOfOtherSizes(const UsedRows &rows)
{
    for (AEPoint *const row : rows.all) {
        const A2DData &map = row->data();
        row->warnOfSize(map.nx() != m_results.width() || map.ny() != m_results.height());
    }
}

namespace
{

std::vector<const AMutE *> spectraOf(const QVector<ARefFile *> &references)
{
    std::vector<const AMutE *> spectra;
    for (const ARefFile *const reference : references)
        spectra.push_back(&reference->selector()->spectrum());
    return spectra;
}

std::vector<double> valencesOf(const QVector<ARefFile *> &references)
{
    std::vector<double> valences;
    for (const ARefFile *const reference : references)
        valences.push_back(reference->valence());
    return valences;
}

std::vector<double> energiesOf(const QVector<AEPoint *> &rows)
{
    std::vector<double> energies;
    for (const AEPoint *const row : rows)
        energies.push_back(row->energy());
    return energies;
}

NonEquivalentBackground backgroundOf(bool victoreen)
{
    return victoreen ? NonEquivalentBackground::Victoreen : NonEquivalentBackground::Linear;
}

} // namespace

void FourPs::calcNonEquivalentTarget(const UsedRows &rows, bool victoreen)
{
    const QVector<ARefFile *> valid = validReferences();
    const std::vector<double> energies = energiesOf(rows.all);
    const int type = ui.SubPostEforTarget->isChecked() ? AMutE::PostSubtracted : AMutE::PreSubtracted;
    std::vector<double> y;
    for (const double energy : energies)
        y.push_back(ui.TargetFS->spectrum().valueAtEnergy(type, energy));
    const NonEquivalentValues values = solveNonEquivalent(
        backgroundOf(victoreen), y, prepareNonEquivalent(energies, spectraOf(valid), ui.SubPostEforRef->isChecked()),
        valencesOf(valid));

    m_targetNonEquivalent = values;
    showNumber(ui.TargetDMut, values[ResultPosition::amount]);
    for (int j = 0; j < valid.size(); ++j) {
        valid[j]->setRatio(values[static_cast<std::size_t>(ResultPosition::ratio + j)]);
        valid[j]->setAmount(values[static_cast<std::size_t>(ResultPosition::dMut + j)]);
    }
    const std::vector<double> fractions(values.begin(), values.begin() + valid.size());
    message(nonEquivalentText(fractions, values[ResultPosition::valence], values[ResultPosition::amount]));
}

void FourPs::calcNonEquivalentMap(const UsedRows &rows, bool victoreen)
{
    const QVector<ARefFile *> valid = validReferences();
    NonEquivalentMapInput input;
    input.background = backgroundOf(victoreen);
    input.references = prepareNonEquivalent(energiesOf(rows.all), spectraOf(valid), ui.SubPostEforRef->isChecked());
    input.valences = valencesOf(valid);
    for (const AEPoint *const row : rows.all)
        input.maps.push_back(&row->data());
    if (!fillRecords(input, &m_results)) {
        reportTooLarge(*input.maps.front());
        return;
    }
    finishMap(rows);
}

void FourPs::lcf()
{
    LinearCombinationInput input;
    input.energyMin = 1e300;
    input.energyMax = -1e300;
    int count = 0;
    for (const AEPoint *const row : qAsConst(m_energyRows)) {
        if (!row->isForLCF())
            continue;
        ++count;
        input.energyMin = std::min(input.energyMin, row->energy());
        input.energyMax = std::max(input.energyMax, row->energy());
    }
    if (count < 2 || input.energyMax < input.energyMin) {
        refuse(Step::Fit, tr("Energy Range is not selected, which should by selected by CB of TR."));
        return;
    }
    const QVector<ARefFile *> valid = validReferences();
    if (valid.size() < 2) {
        refuse(Step::Fit, tr("Number of Valid Reference files is %1, which is less than 2").arg(valid.size()));
        return;
    }
    input.references = spectraOf(valid);
    input.valences = valencesOf(valid);
    input.target = &ui.TargetFS->spectrum();

    m_fit = std::make_unique<LinearCombination>(fitLinearCombination(input));
    const QString text = linearCombinationText(m_fit->fractions, m_fit->valence, m_fit->base);
    message(text);
    ui.LCFRes->setText(text);
    ui.LCFRes->setCursorPosition(0);
    showFitQuality();
    m_comparisons.append({m_targetA, m_targetValence, m_fit->fractions[0], m_fit->valence, m_colourIndex});
    repaintDisplays();
}

void FourPs::showFitQuality()
{
    ui.LCFQuality->setText(tr("R = %1, %2 points").arg(m_fit->rFactor, 0, 'g', 3).arg(m_fit->points));
    QStringList lines = {tr("R = sum of (y - fit)^2 / sum of y^2; standard errors of the coefficients:")};
    const int references = static_cast<int>(m_fit->coefficients.size());
    for (int j = 0; j < references; ++j)
        lines << tr("Reference %1: %2 ± %3")
                     .arg(j + 1)
                     .arg(m_fit->coefficients[static_cast<std::size_t>(j)], 0, 'g', 4)
                     .arg(m_fit->standardErrors[static_cast<std::size_t>(j)], 0, 'g', 2);
    lines << tr("Base: %1 ± %2").arg(m_fit->base, 0, 'g', 4).arg(m_fit->standardErrors.back(), 0, 'g', 2);
    ui.LCFQuality->setToolTip(lines.join(QLatin1Char('\n')));
}
