#include "analysis/panel/PanelInputs.h"

#include "controls/Field.h"

#include "ui_FourPs.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>

PanelInputs::PanelInputs(const Ui_FourPs &form)
    : ui(form)
    , m_references{form.Ref1File, form.Ref2File, form.Ref3File, form.Ref4File}
    , m_points{form.Energy1, form.Energy2, form.Energy3, form.Energy4,
               form.Energy5, form.Energy6, form.Energy7, form.Energy8}
    , m_mapFiles(m_points.size())
{
    for (const ARefFile *const reference : qAsConst(m_references))
        m_selectors.append(reference->selector());
    m_selectors.append(form.TargetFS);
    for (AEPoint *const row : qAsConst(m_points))
        row->setOtherMaps([this, row] { return mapsBeside(row); });
    m_valences.minEdit = form.HgAFrom;
    m_valences.maxEdit = form.HgATo;
    m_valences.numEdit = form.HgABoxes;
    m_valences.check = form.HgAAuto;
    m_thicknesses.minEdit = form.HgTFrom;
    m_thicknesses.maxEdit = form.HgTTo;
    m_thicknesses.numEdit = form.HgTBoxes;
    m_thicknesses.check = form.HgTAuto;
}

EdgeSettings PanelInputs::edge() const
{
    return {number(ui.EdgeE), number(ui.PreEEndDE), number(ui.PostEStartDE)};
}

HistogramSettings PanelInputs::settingsOf(const Histgram &histogram)
{
    return {number(histogram.minEdit), number(histogram.maxEdit), number(histogram.numEdit)};
}

Conditions PanelInputs::conditions() const
{
    Conditions conditions;
    conditions.isNonEquivalent = ui.TypeNonEquiv->isChecked();
    conditions.isExact = ui.TypeTMKisExact->isChecked();
    conditions.isLeastSquares = ui.TypeTMKisLS->isChecked();
    conditions.isLinear = ui.NonEquivBGLinear->isChecked();
    conditions.subtractsPostLineOfReferences = ui.SubPostEforRef->isChecked();
    conditions.subtractsPostLineOfTarget = ui.SubPostEforTarget->isChecked();
    conditions.edge = edge();
    conditions.valences = settingsOf(m_valences);
    conditions.thicknesses = settingsOf(m_thicknesses);
    return conditions;
}

AnalysisInput PanelInputs::gather() const
{
    AnalysisInput input;
    for (const ARefFile *const reference : m_references) {
        bool isNumber = false;
        const double valence = number(reference->valenceText(), &isNumber);
        input.references.append({reference->selector()->fileText(), reference->selector()->spectrum(),
                                 reference->isUsed(), valence, isNumber});
    }
    for (int row = 0; row < m_points.size(); ++row) {
        const AEPoint &point = *m_points[row];
        PointInput values;
        values.energy = point.energy();
        values.isUsed = point.isUsed();
        values.isVPoint = point.isVPoint();
        values.isForLcf = point.isForLCF();
        values.target = point.targetValue();
        for (std::size_t i = 0; i < values.references.size(); ++i)
            values.references[i] = point.referenceValue(static_cast<int>(i));
        values.map = point.loaded() ? &point.data() : nullptr;
        values.mapFile = point.loaded() ? m_mapFiles[row] : MapFile();
        input.points.append(values);
    }
    input.target = {target()->fileText(), target()->spectrum()};
    for (int i = 0; i < ui.SelectedFs->count(); ++i)
        input.displayFiles << ui.SelectedFs->item(i)->data(pathRole).toString();
    input.conditions = conditions();
    return input;
}

QVector<AEPoint *> PanelInputs::emptyPoints() const
{
    QVector<AEPoint *> rows;
    for (AEPoint *const row : m_points) {
        if (row->fileSelect()->fileText().isEmpty() && row->energyText().isEmpty())
            rows.append(row);
    }
    return rows;
}

void PanelInputs::applyEdge(AMutE *spectrum) const
{
    const EdgeSettings settings = edge();
    spectrum->setPreEdgeEnd(settings.edge + settings.preEnd);
    spectrum->setEdgeEnergy(settings.edge);
    spectrum->setPostEdgeStart(settings.edge + settings.postStart);
}

void PanelInputs::applyEdgeToRows()
{
    for (AXafsFileSelect *const selector : qAsConst(m_selectors))
        applyEdge(&selector->spectrum());
}

void PanelInputs::applyEdgeToAll()
{
    applyEdgeToRows();
    for (AXafsFileSelect *const selector : qAsConst(m_selectors))
        selector->spectrum().fitLines();
    for (const auto &spectrum : m_displaySpectra) {
        applyEdge(spectrum.get());
        spectrum->fitLines();
    }
}

void PanelInputs::refreshReference(int reference)
{
    for (AEPoint *const row : qAsConst(m_points))
        refreshReferenceAt(reference, row);
}

void PanelInputs::refreshTarget()
{
    for (AEPoint *const row : qAsConst(m_points))
        refreshTargetAt(row);
}

void PanelInputs::refreshPoint(AEPoint *row)
{
    for (int i = 0; i < m_references.size(); ++i) {
        if (m_selectors[i]->valid())
            refreshReferenceAt(i, row);
    }
    refreshTargetAt(row);
}

void PanelInputs::refreshReferenceAt(int reference, AEPoint *row)
{
    double value = 0.0;
    if (m_selectors[reference]->valid() && m_selectors[reference]->valueAtEnergy(row->energy(), &value))
        row->setReferenceValue(reference, value);
    else
        row->clearReferenceValue(reference);
}

void PanelInputs::refreshTargetAt(AEPoint *row)
{
    double value = 0.0;
    if (target()->valueAtEnergy(row->energy(), &value))
        row->setTargetValue(value);
    else
        row->clearTargetValue();
}

void PanelInputs::noteMap(AEPoint *row)
{
    ++m_mapRevision;
    const QFileInfo file(row->fileSelect()->fileText());
    m_mapFiles[m_points.indexOf(row)] = {QDir::current().absoluteFilePath(file.filePath()), file.size(),
                                         file.lastModified().toMSecsSinceEpoch()};
}

QVector<const A2DData *> PanelInputs::mapsBeside(const AEPoint *row) const
{
    QVector<const A2DData *> maps;
    for (const AEPoint *const other : m_points) {
        if (other != row && other->loaded())
            maps.append(&other->data());
    }
    return maps;
}
