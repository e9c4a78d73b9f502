#include "analysis/panel/Graphs.h"

#include "analysis/drawing/PlottedText.h"
#include "analysis/model/Analysis.h"
#include "analysis/model/TakingPart.h"
#include "analysis/model/UsedPoints.h"
#include "analysis/panel/PanelInputs.h"
#include "analysis/results/ResultQuantities.h"
#include "controls/Field.h"
#include "numeric/FieldText.h"

#include "ui_FourPs.h"

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>

namespace
{

QString translated(const char *text)
{
    return QCoreApplication::translate("FourPs", text);
}

/// What the fields say: the range is the user's, also before the next calculation.
ValueRange boundsOf(const Histgram &histogram)
{
    return {number(histogram.minEdit), number(histogram.maxEdit)};
}

/// The spectrum that a display of a single one shows.
const AMutE &spectrumOf(Displays::DispId id, const AnalysisInput &input)
{
    switch (id) {
    case Displays::Ref1:
        return input.references[0].spectrum;
    case Displays::Ref2:
        return input.references[1].spectrum;
    case Displays::Ref3:
        return input.references[2].spectrum;
    case Displays::Ref4:
        return input.references[3].spectrum;
    default:
        return input.target.spectrum;
    }
}

} // namespace

Graphs::Graphs(const Ui_FourPs &form, const PanelInputs &inputs, const Analysis &analysis)
    : ui(form)
    , m_inputs(inputs)
    , m_analysis(analysis)
{
}

void Graphs::draw(Displays::DispId id, DispABase *display, QStylePainter *p) const
{
    using namespace resultdrawing;
    switch (id) {
    case Displays::Muts:
        return drawMuts(display, p, spectra());
    case Displays::LcfVsMps:
        return drawLcfVsMps(display, p, comparison());
    case Displays::HistA:
        return drawHistogram(display, p, shownHistogram());
    case Displays::HistDMut:
        return drawHistogram(display, p, thicknessHistogram());
    case Displays::DMutVorA:
        return drawScatter(display, p, scatter(), &m_scatterCache);
    case Displays::M2M3:
        return drawM2M3(display, p, steps(), &m_stepsCache);
    default:
        return;
    }
}

bool Graphs::hasContents(Displays::DispId id) const
{
    switch (id) {
    case Displays::Muts:
        return true;
    case Displays::LcfVsMps:
        return m_analysis.fit() != nullptr;
    case Displays::HistA:
    case Displays::HistDMut:
    case Displays::DMutVorA:
    case Displays::M2M3:
        return m_analysis.run() != nullptr;
    default:
        return spectrumOf(id, m_inputs.gather()).valid();
    }
}

QString Graphs::text(Displays::DispId id) const
{
    switch (id) {
    case Displays::Muts:
        return plottedtext::of(spectra());
    case Displays::LcfVsMps:
        return plottedtext::of(comparison());
    case Displays::HistA:
        return plottedtext::of(shownHistogram());
    case Displays::HistDMut:
        return plottedtext::of(thicknessHistogram());
    case Displays::DMutVorA:
        return plottedtext::of(scatter());
    case Displays::M2M3:
        return plottedtext::of(steps());
    default: {
        const AnalysisInput input = m_inputs.gather();
        const AMutE &spectrum = spectrumOf(id, input);
        MutsInput single;
        single.curves = {{spectrum.fileName(), Qt::black, spectrumPoints(spectrum, AMutE::Raw)}};
        single.xTitle = translated(QT_TRANSLATE_NOOP("FourPs", "Eng.[eV]"));
        return plottedtext::of(single);
    }
    }
}

/// The spectrum type (AMutE::Type) for the chosen normalisation.
int Graphs::shownType() const
{
    const std::pair<const QAbstractButton *, int> types[] = {{ui.NNone, AMutE::Raw},
                                                             {ui.NBySubPre, AMutE::PreSubtracted},
                                                             {ui.NByEJ, AMutE::ByEdgeJump},
                                                             {ui.NBy2Vics, AMutE::ByBothLines}};
    for (const auto &[button, type] : types) {
        if (button->isChecked())
            return type;
    }
    return 5; // no such type: every value is 0
}

QVector<Graphs::ShownSpectrum> Graphs::shownSpectra(const AnalysisInput &input) const
{
    constexpr Qt::PenStyle styles[] = {Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine};
    QVector<ShownSpectrum> shown;
    for (int i = 0; i < input.references.size(); ++i) {
        const ReferenceInput &reference = input.references[i];
        if (reference.spectrum.valid())
            shown.append({reference.spectrum, reference.isUsed ? Qt::red : Qt::blue, styles[i]});
    }
    if (input.target.spectrum.valid())
        shown.append({input.target.spectrum, Qt::black});
    int colour = 0;
    for (const auto &spectrum : m_inputs.displaySpectra())
        shown.append({*spectrum, m_colours.colors.at(colour++ % m_colours.colors.size())});
    return shown;
}

MutsInput Graphs::spectra() const
{
    const AnalysisInput now = m_inputs.gather();
    const int type = shownType();
    MutsInput input;
    for (const ShownSpectrum &shown : shownSpectra(now))
        input.curves.append(
            {shown.spectrum.fileName(), shown.colour, spectrumPoints(shown.spectrum, type), shown.style});
    if (m_analysis.fit() && type == AMutE::ByBothLines) // the fit is of normalised values
        input.curves.append({translated(QT_TRANSLATE_NOOP("FourPs", "LCF")), Qt::magenta,
                             spectrumPoints(m_analysis.fit()->fitted, AMutE::Raw), Qt::DashLine});
    const UsedPoints used = usedPoints(now, false);
    for (const int row : used.all)
        input.pointEnergies.append(now.points[row].energy);
    const EdgeSettings &edge = now.conditions.edge;
    input.edgeEnergy = edge.edge;
    input.markedEnergies = {edge.edge + edge.preEnd, edge.edge + edge.postStart};
    if (used.vPoint >= 0)
        input.markedEnergies.append(now.points[used.vPoint].energy);
    if (!ui.FullRangeCB->isChecked()) {
        input.windowFrom = edge.edge + 2 * edge.preEnd;
        input.windowTo = edge.edge + 2 * edge.postStart;
    }
    input.xTitle = translated(QT_TRANSLATE_NOOP("FourPs", "Eng.[eV]"));
    input.yTitle = translated(QT_TRANSLATE_NOOP("FourPs", "mut"));
    return input;
}

QString Graphs::valuesAt(double energy) const
{
    QStringList values;
    for (const ShownSpectrum &shown : shownSpectra(m_inputs.gather()))
        values << QStringLiteral("%1 %2").arg(shown.spectrum.fileName(),
                                              fieldText(shown.spectrum.valueAtEnergy(shownType(), energy)));
    return values.join(QStringLiteral(", "));
}

LcfVsMpsInput Graphs::comparison() const
{
    const auto [first, second] = drawnValences(takingPart(m_inputs.gather()));
    return {m_analysis.comparisons.records,
            m_colours.colors,
            first,
            second,
            translated(QT_TRANSLATE_NOOP("FourPs", "MPs")),
            translated(QT_TRANSLATE_NOOP("FourPs", "LCF"))};
}

/// The histograms of single references, named as they were when the map was calculated.
QVector<HistogramPart> Graphs::parts(const QVector<HistogramBins> &bins) const
{
    QVector<HistogramPart> parts;
    const RunInfo *const run = m_analysis.run();
    for (int j = 0; run && j < std::min(bins.size(), run->references.size()); ++j)
        parts.append({&bins[j], m_colours.colors.at(j + 1), run->references[j].name});
    return parts;
}

HistogramInput Graphs::shownHistogram() const
{
    const ResultHistograms &histograms = m_analysis.histograms();
    const bool isValence = histograms.shownPosition() == ResultPosition::valence;
    HistogramInput input;
    input.bins = &histograms.shown();
    input.range = isValence ? boundsOf(m_inputs.valenceHistogram()) : histograms.shownRange();
    input.parts = parts(histograms.shownParts());
    input.xTitle = translated(quantityAt(histograms.shownPosition())->name);
    input.yTitle = translated(QT_TRANSLATE_NOOP("FourPs", "Num."));
    return input;
}

HistogramInput Graphs::thicknessHistogram() const
{
    const ResultHistograms &histograms = m_analysis.histograms();
    return {&histograms.thickness(), boundsOf(m_inputs.thicknessHistogram()), parts(histograms.thicknessParts()),
            translated(QT_TRANSLATE_NOOP("FourPs", "Thick.")), translated(QT_TRANSLATE_NOOP("FourPs", "Num."))};
}

ScatterInput Graphs::scatter() const
{
    const ResultRecords &results = m_analysis.results();
    ScatterInput input;
    input.a = results.a();
    input.t = results.t();
    input.count = results.count();
    std::tie(input.valenceA, input.valenceB) = drawnValences(takingPart(m_inputs.gather()));
    input.valences = boundsOf(m_inputs.valenceHistogram());
    input.amounts = boundsOf(m_inputs.thicknessHistogram());
    input.xTitle = translated(QT_TRANSLATE_NOOP("FourPs", "Valence"));
    input.yTitle = translated(QT_TRANSLATE_NOOP("FourPs", "Thick."));
    input.revision = m_scatterRevision.of({m_analysis.revision(), input.valenceA, input.valenceB});
    return input;
}

M2M3Input Graphs::steps() const
{
    M2M3Input input;
    input.isBlue = ui.M2M3Blue->isChecked();
    input.xTitle = translated(QT_TRANSLATE_NOOP("FourPs", "M2"));
    input.yTitle = translated(QT_TRANSLATE_NOOP("FourPs", "M3"));
    const auto points = threePoints(m_inputs.gather());
    if (!points)
        return input;
    const auto pixels = [](const A2DData *map) {
        return PixelValues{map->absorptions().data(), map->absorptions().size()};
    };
    const auto [p, q, r] = points->maps;
    input.p = pixels(p);
    input.q = pixels(q);
    input.r = pixels(r);
    input.first = {points->first[0], points->first[1], points->first[2]};
    input.second = {points->second[0], points->second[1], points->second[2]};
    input.revision = m_stepsRevision.of({p, q, r, m_inputs.mapRevision()});
    return input;
}
