// What the panel shows and writes of its results.

#include "analysis/drawing/HistogramDrawing.h"
#include "analysis/drawing/MapDrawing.h"
#include "analysis/drawing/MutsDrawing.h"
#include "analysis/drawing/ScatterDrawing.h"
#include "analysis/panel/FourPs.h"
#include "analysis/results/ResultHistograms.h"
#include "analysis/results/ResultQuantities.h"
#include "analysis/results/ResultWriter.h"
#include "analysis/results/ShownQuantity.h"
#include "controls/Field.h"
#include "display/DispABase.h"
#include "display/MouseC.h"

#include <QFileInfo>
#include <QStylePainter>
#include <QTime>

#include <algorithm>

namespace
{

template <class Button>
int checkedPosition(const QVector<Button *> &buttons)
{
    for (int i = buttons.size() - 1; i > 0; --i) {
        if (buttons[i]->isChecked())
            return i;
    }
    return 0;
}

QString quantityName(int position)
{
    return FourPs::tr(resultQuantities[static_cast<std::size_t>(position)].name);
}

} // namespace

int FourPs::mapQuantity() const
{
    return checkedPosition(m_mapButtons);
}

int FourPs::histogramQuantity() const
{
    return checkedPosition(m_histogramButtons);
}

bool FourPs::recordsQuantity(int position) const
{
    return position >= 0 && position < m_recordBoxes.size() && m_recordBoxes[position]->isChecked();
}

/// The numbers in the Valence fields of the first two references whose Use box is on; 0 where there is none.
std::pair<double, double> FourPs::usedValences() const
{
    const QVector<ARefFile *> used = usedReferences();
    return {used.size() > 0 ? used[0]->valence() : 0.0, used.size() > 1 ? used[1]->valence() : 0.0};
}

/// The colour range of a quantity; none for those that have none.
std::optional<ValueRange> FourPs::rangeOf(int position) const
{
    RangeConditions conditions;
    conditions.isFourPoints = m_results.count() > 0 && m_results.method() == ResultRecords::Method::FourPoints;
    conditions.thickness = {number(ui.HgTFrom), number(ui.HgTTo)};
    for (const ARefFile *const reference : validReferences())
        conditions.edgeJumps += reference->selector()->spectrum().edgeJump();
    const QVector<ARefFile *> used = usedReferences();
    for (int i = 0; i < used.size(); ++i) {
        const double valence = used[i]->valence();
        conditions.smallestValence = i == 0 ? valence : std::min(conditions.smallestValence, valence);
        conditions.largestValence = i == 0 ? valence : std::max(conditions.largestValence, valence);
    }
    return quantityRange(position, conditions);
}

// --- maps ---

void FourPs::refreshShownMap()
{
    const auto [first, second] = usedValences();
    m_shown = shownPlane(m_results, mapQuantity(), {true, first, second}, &m_shownWork);
    m_mask.clear();
    if (m_shown && !ui.MaskBelow->text().isEmpty())
        maskBelow(m_results, number(ui.MaskBelow), &m_mask);
    ui.ResultMap->setCells(QSize(m_results.width(), m_results.height()));
    ui.ResultMap->picture.invalidate();
    ui.ResultMap->area()->update();
}

void FourPs::showMapTitle()
{
    ui.ResultMap->setTitle(tr("Result map, %1").arg(quantityName(mapQuantity())));
}

bool FourPs::selectedNewMap()
{
    showMapTitle();
    const std::optional<ValueRange> range = rangeOf(mapQuantity());
    ui.ResultMap->takeLimits(range);
    refreshShownMap();
    ui.ResultMap->bar()->update();
    return range.has_value();
}

ShownMap FourPs::shownResultMap() const
{
    return {m_shown, m_results.count(), m_results.width(), m_results.height()};
}

void FourPs::drawMap(QStylePainter *p)
{
    ResultMapInput input;
    input.map = shownResultMap();
    input.mask = m_mask.empty() ? nullptr : m_mask.data();
    input.limits = rangeOf(mapQuantity());
    input.notComputed = tr("not computed by this method");
    resultdrawing::drawResultMap(ui.ResultMap, p, input);
}

void FourPs::receiveNowPosInMap(double x, double y)
{
    ui.ResultMap->showValue(cellText(m_shown, m_results.count(), m_results.width(), m_results.height(), x, y));
}

void FourPs::dClickedInMap(MouseC *m)
{
    if (m_results.method() != ResultRecords::Method::NonEquivalent || !m_shown || m->dClickButton != Qt::LeftButton)
        return;
    const int modifiers = m->dClickModifiers & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier);
    const quint8 *const mask = m_mask.empty() ? nullptr : m_mask.data();
    std::optional<ValueRange> chosen;
    if (modifiers == Qt::ShiftModifier)
        chosen = finiteRange(m_shown, m_results.count(), mask);
    else if (modifiers == Qt::ControlModifier)
        chosen = percentileRange(m_shown, m_results.count(), mask);
    if (chosen)
        ui.ResultMap->chooseLimits(*chosen);
    ui.ResultMap->area()->update();
}

/// One map at a time: the button of the row whose map was asked for switches the others off.
void FourPs::showDataMap(AEPoint *row, bool isShown)
{
    if (isShown) {
        m_dataMapRow = row;
        for (AEPoint *const other : qAsConst(m_energyRows)) {
            if (other != row)
                other->showMapButton()->setChecked(false);
        }
        ui.ShowDMap->setChecked(true);
    } else if (m_dataMapRow == row) {
        m_dataMapRow = nullptr;
    }
    m_dataMap->clearScale();
    updateDMap();
}

void FourPs::updateDMap()
{
    m_dataMap->setTitle(m_dataMapRow ? tr("Data map, %1 eV").arg(m_dataMapRow->energyText()) : tr("Data map"));
    const ShownMap map = dataMap(m_dataMapRow);
    m_dataMap->setCells(QSize(map.width, map.height));
    m_dataMap->picture.invalidate();
    m_dataMap->area()->update();
}

ShownMap FourPs::dataMap(const AEPoint *row) const
{
    if (!row || !row->loaded())
        return {};
    const A2DData &map = row->data();
    return {map.absorptions().data(), map.absorptions().size(), map.nx(), map.ny()};
}

void FourPs::drawDMap(QStylePainter *p)
{
    resultdrawing::drawDataMap(m_dataMap.get(), p, dataMap(m_dataMapRow));
}

void FourPs::receiveNowPosInDMap(double x, double y)
{
    const ShownMap map = dataMap(m_dataMapRow);
    m_dataMap->showValue(cellText(map.values, map.count, map.width, map.height, x, y));
}

// --- graphs ---

void FourPs::draw(Displays::DispId id, DispABase *dab, QStylePainter *p)
{
    switch (id) {
    case Displays::Muts:
        resultdrawing::drawMuts(dab, p, mutsInput());
        break;
    case Displays::LcfVsMps:
        resultdrawing::drawLcfVsMps(dab, p, comparisonInput());
        break;
    case Displays::HistA:
    case Displays::HistDMut:
        resultdrawing::drawHistogram(dab, p, histogramInput(id));
        break;
    case Displays::DMutVorA:
        resultdrawing::drawScatter(dab, p, scatterInput());
        break;
    case Displays::M2M3:
        resultdrawing::drawM2M3(dab, p, m2m3Input());
        break;
    default:
        break; // the graphs of single spectra are drawn by their selectors
    }
}

/// The spectrum type (AMutE::Type) for the chosen normalisation.
int FourPs::shownType() const
{
    if (ui.NNone->isChecked())
        return AMutE::Raw;
    if (ui.NBySubPre->isChecked())
        return AMutE::PreSubtracted;
    if (ui.NByEJ->isChecked())
        return AMutE::ByEdgeJump;
    if (ui.NBy2Vics->isChecked())
        return AMutE::ByBothLines;
    return 5; // no such type: every value is 0
}

/// Every spectrum that the display of all spectra shows, with its colour.
QVector<FourPs::ShownSpectrum> FourPs::shownSpectra() const
{
    constexpr Qt::PenStyle styles[] = {Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine};
    QVector<ShownSpectrum> spectra;
    for (int i = 0; i < m_references.size(); ++i) {
        if (m_selectors[i]->valid())
            spectra.append({&m_selectors[i]->spectrum(), m_references[i]->isUsed() ? Qt::red : Qt::blue, styles[i]});
    }
    if (ui.TargetFS->valid())
        spectra.append({&ui.TargetFS->spectrum(), Qt::black, Qt::SolidLine});
    for (std::size_t i = 0; i < m_displaySpectra.size(); ++i)
        spectra.append({m_displaySpectra[i].get(), m_colours.colors.at(static_cast<int>(i) % m_colours.colors.size()),
                        Qt::SolidLine});
    return spectra;
}

QVector<MutsCurve> FourPs::shownCurves() const
{
    QVector<MutsCurve> curves;
    for (const ShownSpectrum &shown : shownSpectra())
        curves.append(
            {shown.spectrum->fileName(), shown.colour, spectrumPoints(*shown.spectrum, shownType()), shown.style});
    if (m_fit && shownType() == AMutE::ByBothLines) // the fit is of normalised values
        curves.append({tr("LCF"), Qt::magenta, spectrumPoints(m_fit->fitted, AMutE::Raw), Qt::DashLine});
    return curves;
}

MutsInput FourPs::mutsInput() const
{
    MutsInput input;
    input.curves = shownCurves();
    const UsedRows rows = usedRows(false);
    for (const AEPoint *const row : rows.all)
        input.pointEnergies.append(row->energy());
    const double edge = number(ui.EdgeE);
    input.markedEnergies = {edge + number(ui.PreEEndDE), edge + number(ui.PostEStartDE)};
    if (rows.vPoint)
        input.markedEnergies.append(rows.vPoint->energy());
    if (!ui.FullRangeCB->isChecked()) {
        input.windowFrom = edge + 2 * number(ui.PreEEndDE);
        input.windowTo = edge + 2 * number(ui.PostEStartDE);
    }
    input.xTitle = tr("Eng.[eV]");
    input.yTitle = tr("mut");
    return input;
}

LcfVsMpsInput FourPs::comparisonInput() const
{
    const auto [first, second] = usedValences();
    return {m_comparisons, m_colours.colors, first, second, tr("MPs"), tr("LCF")};
}

void FourPs::mPressedInAllMut(MouseC *m)
{
    const DispArea *const area = m_displays->dabs[Displays::Muts]->area();
    if (area->markLines && area->markLines->isMoving)
        return;
    const double energy = area->cc.s2rx(m->pressX);
    QStringList values;
    for (const ShownSpectrum &shown : shownSpectra())
        values << QStringLiteral("%1 %2").arg(shown.spectrum->fileName(),
                                              fieldText(shown.spectrum->valueAtEnergy(shownType(), energy)));
    message(tr("%1 eV: %2").arg(fieldText(energy), values.join(QStringLiteral(", "))));
}

void FourPs::clearLCFvs4PS(MouseC *)
{
    m_comparisons.clear();
    m_colourIndex = 0;
    m_displays->dabs[Displays::LcfVsMps]->area()->update();
}

void FourPs::newColorLCFvs4PS(MouseC *)
{
    m_colourIndex = (m_colourIndex + 1) % m_colours.colors.size();
}

/// Counts what the two histogram displays show besides the valence and the thickness histogram.
void FourPs::refreshShownHistograms()
{
    m_quantityHistogram = HistogramBins();
    m_valenceParts.clear();
    m_thicknessParts.clear();
    if (m_results.method() != ResultRecords::Method::NonEquivalent || m_results.count() == 0)
        return;
    const int position = histogramQuantity();
    const double *const values = m_results.quantity(position);
    if (position != ResultPosition::valence) {
        std::optional<ValueRange> range = rangeOf(position);
        if (!range)
            range = finiteRange(values, m_results.count());
        m_quantityRange = range.value_or(ValueRange());
        m_quantityHistogram.setBoxes(m_quantityRange.min, m_quantityRange.max, number(ui.HgABoxes));
        m_quantityHistogram.addValues(m_results.count(), [values](std::size_t i) { return values[i]; });
    }
    const HistogramBins &shown = position == ResultPosition::valence ? m_valenceHistogram : m_quantityHistogram;
    const int references = validReferences().size();
    for (int j = 0; j < references; ++j) {
        if (ui.HgAPerRef->isChecked())
            m_valenceParts.append(referenceHistogram(shown, m_results, ResultPosition::ratio + j, values));
        if (ui.HgTPerRef->isChecked())
            m_thicknessParts.append(
                referenceHistogram(m_thicknessHistogram, m_results, ResultPosition::ratio + j, m_results.t()));
    }
}

QVector<HistogramPart> FourPs::histogramParts(const QVector<HistogramBins> &bins) const
{
    const QVector<ARefFile *> valid = validReferences();
    QVector<HistogramPart> parts;
    for (int j = 0; j < std::min(bins.size(), valid.size()); ++j)
        parts.append({&bins[j], m_colours.colors.at(j + 1), valid[j]->selector()->spectrum().fileName()});
    return parts;
}

HistogramInput FourPs::histogramInput(Displays::DispId id) const
{
    HistogramInput input;
    input.yTitle = tr("Num.");
    if (id == Displays::HistDMut) {
        input.bins = &m_thicknessHistogram;
        input.range = {number(ui.HgTFrom), number(ui.HgTTo)};
        input.parts = histogramParts(m_thicknessParts);
        input.xTitle = tr("Thick.");
        return input;
    }
    if (m_quantityHistogram.isSet()) {
        input.bins = &m_quantityHistogram;
        input.range = m_quantityRange;
        input.xTitle = quantityName(histogramQuantity());
    } else {
        input.bins = &m_valenceHistogram;
        input.range = {number(ui.HgAFrom), number(ui.HgATo)};
        input.xTitle = tr("Valence");
    }
    input.parts = histogramParts(m_valenceParts);
    return input;
}

ScatterInput FourPs::scatterInput() const
{
    ScatterInput input;
    input.a = m_results.a();
    input.t = m_results.t();
    input.count = m_results.count();
    std::tie(input.valenceA, input.valenceB) = usedValences();
    input.valences = {number(ui.HgAFrom), number(ui.HgATo)};
    input.amounts = {number(ui.HgTFrom), number(ui.HgTTo)};
    input.xTitle = tr("Valence");
    input.yTitle = tr("Thick.");
    return input;
}

M2M3Input FourPs::m2m3Input() const
{
    M2M3Input input;
    input.isBlue = ui.M2M3Blue->isChecked();
    input.xTitle = tr("M2");
    input.yTitle = tr("M3");
    const UsedRows rows = usedRows(true);
    const QVector<ARefFile *> valid = validReferences();
    if (rows.vPoint && rows.anchors.size() > 1 && valid.size() > 1) {
        const auto pixels = [](const AEPoint *row) {
            return PixelValues{row->data().absorptions().data(), row->data().absorptions().size()};
        };
        input.p = pixels(rows.anchors[0]);
        input.q = pixels(rows.anchors[1]);
        input.r = pixels(rows.vPoint);
        const auto values = [&rows, this](ARefFile *reference) {
            const int i = m_references.indexOf(reference);
            return EdgeValues{rows.anchors[0]->referenceValue(i), rows.anchors[1]->referenceValue(i),
                              rows.vPoint->referenceValue(i)};
        };
        input.first = values(valid[0]);
        input.second = values(valid[1]);
    }
    return input;
}

// --- files ---

void FourPs::write()
{
    const QString path = ui.SaveFSelect->fileText();
    RecordSelection selection;
    for (std::size_t i = 0; i < selection.size(); ++i)
        selection[i] = recordsQuantity(static_cast<int>(i));
    const auto [first, second] = usedValences();
    const WriteOutcome outcome =
        writeResultFile(path, m_results, {validReferences().size() >= 2, first, second}, selection);
    if (outcome == WriteOutcome::CannotOpen)
        refuse(Step::Write, tr("Can't open the file [%1]").arg(path));
    else if (outcome == WriteOutcome::CannotWrite)
        refuse(Step::Write, tr("Can't write the file [%1]").arg(path));
    // The histograms are written in any case, each for itself; the message area does not speak of them.
    const bool valences = m_valenceHistogram.write(path, QStringLiteral("HGAlpha"));
    const bool thicknesses = m_thicknessHistogram.write(path, QStringLiteral("HGThick"));
    if (!valences || !thicknesses)
        emit refused(Step::Write, tr("Can't write the histograms of [%1]").arg(path));
    if (outcome == WriteOutcome::Written && valences && thicknesses) {
        const QFileInfo info(path);
        ui.SaveFSelect->setExInfo(tr("%1: wrote %2, _HGAlpha and _HGThick")
                                      .arg(QTime::currentTime().toString(QStringLiteral("HH:mm:ss")), info.fileName()));
    } else {
        ui.SaveFSelect->setExInfo(QString());
    }
}
