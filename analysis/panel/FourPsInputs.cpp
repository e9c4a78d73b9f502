// How the panel follows what the user chooses: files, energies, edge, lines.

#include "analysis/panel/FourPs.h"
#include "controls/Field.h"
#include "controls/WaitCursor.h"
#include "display/DispABase.h"
#include "display/HeaderMenu.h"
#include "numeric/FieldText.h"

#include <QFileInfo>

#include <algorithm>

QStringList FourPs::edgeTexts() const
{
    return {ui.EdgeE->text(), ui.PreEEndDE->text(), ui.PostEStartDE->text()};
}

void FourPs::noticedNewEdge(double e)
{
    if (!ui.EdgeFixed->isChecked())
        showNumber(ui.EdgeE, e);
    setEdge();
}

void FourPs::setEdge()
{
    m_appliedEdge = m_shownEdge = edgeTexts();
    m_inputs.applyEdgeToAll();
    receiveNewTarget(); // so that what is calculated belongs to the edge shown
    for (int i = 0; i < m_inputs.references().size(); ++i)
        receiveNewRef(i);
    repaintDisplays();
}

void FourPs::shiftReferences(double shift)
{
    const Recalculation::Scope once(m_recalculation);
    for (int i = 0; i < m_inputs.references().size(); ++i) {
        AXafsFileSelect *const selector = m_inputs.selector(i);
        if (!selector->valid())
            continue;
        selector->setDEText(fieldText(selector->spectrum().dE() + shift));
        selector->setNewDE();
    }
}

void FourPs::useEnergies(const QVector<double> &energies, int vPoint)
{
    const QVector<AEPoint *> rows = m_inputs.emptyPoints();
    const bool hasVPoint = std::any_of(m_inputs.points().begin(), m_inputs.points().end(),
                                       [](const AEPoint *row) { return row->isVPoint(); });
    for (int i = 0; i < std::min(rows.size(), energies.size()); ++i) {
        rows[i]->setEnergyText(fieldText(energies[i]));
        rows[i]->setUsed(true);
        if (i == vPoint && !hasVPoint)
            rows[i]->setVPoint(true);
        rows[i]->inNewEnergy();
    }
    placeEnergyMarkers();
    repaintDisplays();
    recalculateQuietly();
}

/// Leaving a field as it was is no change.
void FourPs::receiveEditedEdge()
{
    if (edgeTexts() != m_appliedEdge)
        setEdge();
}

void FourPs::receiveNewFile(const QString &)
{
    const int position = m_inputs.selectors().indexOf(qobject_cast<AXafsFileSelect *>(sender()));
    if (position >= 0 && m_inputs.selectors()[position] == m_inputs.target()) {
        receiveNewTarget();
        if (!m_inputs.target()->valid())
            clearTarget();
    } else {
        receiveNewRef(position);
    }
    calcBoth();
}

void FourPs::receiveNewRef(int i)
{
    if (i < 0 || i >= m_inputs.references().size() || !m_inputs.selector(i)->valid())
        return;
    m_inputs.refreshReference(i);
    calcBoth();
    repaintDisplays();
}

void FourPs::receiveNewTarget()
{
    m_inputs.refreshTarget();
    repaintDisplays();
}

/// A reference without a spectrum that leaves the calculation may have been all that stopped it.
void FourPs::receiveChangedUse(int i)
{
    if (m_inputs.selector(i)->valid())
        receiveNewRef(i);
    else
        recalculateQuietly();
}

/// Its energies were shifted, or its file was taken away.
void FourPs::receiveUpdatedRef(int i)
{
    if (m_inputs.selector(i)->valid()) {
        m_inputs.selector(i)->spectrum().fitLines();
        receiveNewRef(i);
        return;
    }
    m_inputs.refreshReference(i);
    m_inputs.references()[i]->clearResults();
    refreshStaleMark();
    repaintDisplays();
    recalculateQuietly();
}

void FourPs::receiveUpdatedTarget()
{
    AMutE &spectrum = m_inputs.target()->spectrum();
    spectrum.fitLines();
    receiveNewTarget();
    if (spectrum.valid()) {
        calcBoth();
        return;
    }
    clearTarget();
    recalculateQuietly();
}

void FourPs::receiveNewEnergy(double)
{
    auto *const row = qobject_cast<AEPoint *>(sender());
    if (!row)
        return;
    m_inputs.refreshPoint(row);
    placeEnergyMarkers();
    repaintDisplays();
}

void FourPs::receiveNewMap()
{
    if (auto *const row = qobject_cast<AEPoint *>(sender()))
        m_inputs.noteMap(row);
    placeEnergyMarkers();
    calcBoth();
    repaintDisplays();
}

void FourPs::receiveNewDir(const QString &dir)
{
    for (AFileSelect *const selector : findChildren<AFileSelect *>())
        selector->setDir(dir);
    HeaderMenu::setDirectory(dir);
}

void FourPs::receiveNewDispFiles(const QStringList &paths)
{
    const WaitCursor wait;
    for (const QString &path : paths) {
        auto spectrum = std::make_unique<AMutE>();
        m_inputs.applyEdge(spectrum.get());
        if (!spectrum->read(path)) {
            message(tr("%1 is not a spectrum file.").arg(QFileInfo(path).fileName()));
            continue;
        }
        auto *const item = new QListWidgetItem(spectrum->fileName(), ui.SelectedFs);
        item->setData(PanelInputs::pathRole, path);
        item->setToolTip(path);
        ui.SelectedFs->setCurrentItem(item);
        m_inputs.displaySpectra().push_back(std::move(spectrum));
    }
    repaintGraphs({Displays::Muts});
}

void FourPs::removeAFile()
{
    const int row = ui.SelectedFs->currentRow();
    if (row < 0)
        return;
    delete ui.SelectedFs->takeItem(row);
    m_inputs.displaySpectra().erase(m_inputs.displaySpectra().begin() + row);
    repaintGraphs({Displays::Muts});
}

void FourPs::changedSubBGTypeForRef(bool f)
{
    const Recalculation::Scope once(m_recalculation);
    for (int i = 0; i < m_inputs.references().size(); ++i) {
        m_inputs.selector(i)->setSubtractPostLine(f);
        receiveNewRef(i);
    }
}

void FourPs::changedSubBGTypeForTarget(bool f)
{
    m_inputs.target()->setSubtractPostLine(f);
    receiveNewTarget();
    calcBoth();
}

void FourPs::showEnergyWindow(bool full)
{
    for (AXafsFileSelect *const selector : m_inputs.selectors())
        selector->setFullRange(full);
    repaintDisplays();
}
