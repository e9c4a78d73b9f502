// How the panel keeps its energy rows and spectra in step with what the user chooses.

#include "analysis/panel/FourPs.h"
#include "controls/Field.h"
#include "controls/WaitCursor.h"

#include <QFileInfo>
#include <QScopedValueRollback>

#include <algorithm>

void FourPs::noticedNewEdge(double e)
{
    if (!ui.EdgeFixed->isChecked())
        showNumber(ui.EdgeE, e);
    setEdge();
}

void FourPs::applyEdge(AMutE *spectrum) const
{
    const double edge = number(ui.EdgeE);
    spectrum->setPreEdgeEnd(edge + number(ui.PreEEndDE));
    spectrum->setEdgeEnergy(edge);
    spectrum->setPostEdgeStart(edge + number(ui.PostEStartDE));
}

void FourPs::setEdge()
{
    for (AXafsFileSelect *const selector : qAsConst(m_selectors)) {
        applyEdge(&selector->spectrum());
        selector->spectrum().fitLines();
    }
    for (const auto &spectrum : m_displaySpectra) {
        applyEdge(spectrum.get());
        spectrum->fitLines();
    }
    receiveNewTarget(); // so that what is calculated belongs to the edge shown
    for (int i = 0; i < m_references.size(); ++i)
        receiveNewRef(i);
    if (!ui.FullRangeCB->isChecked())
        showEnergyWindow(false); // which is about the edge
    repaintDisplays();
}

/// While a marker is dragged the ranges follow it; the lines are fitted anew when it is let go.
void FourPs::showMovingEdge()
{
    for (AXafsFileSelect *const selector : qAsConst(m_selectors))
        applyEdge(&selector->spectrum());
    repaintDisplays();
}

void FourPs::receiveNewFile(const QString &)
{
    const int position = m_selectors.indexOf(qobject_cast<AXafsFileSelect *>(sender()));
    if (position >= 0 && position < m_references.size())
        receiveNewRef(position);
    else if (position == m_references.size())
        receiveNewTarget();
    calcBoth();
}

void FourPs::receiveNewRef(int i)
{
    if (i < 0 || i >= m_references.size() || !m_selectors[i]->valid())
        return;
    for (AEPoint *const row : qAsConst(m_energyRows))
        refreshReferenceValue(i, row);
    calcBoth();
    repaintDisplays();
}

void FourPs::receiveNewTarget()
{
    for (AEPoint *const row : qAsConst(m_energyRows))
        refreshTargetValue(row);
    repaintDisplays();
}

void FourPs::receiveUpdatedRef(int i)
{
    if (m_selectors[i]->valid()) {
        receiveNewRef(i);
        return;
    }
    for (AEPoint *const row : qAsConst(m_energyRows))
        row->clearReferenceValue(i);
    m_references[i]->clearResults();
    markStale();
    repaintDisplays();
}

void FourPs::receiveNewEnergy(double)
{
    auto *const row = qobject_cast<AEPoint *>(sender());
    if (!row)
        return;
    for (int i = 0; i < m_references.size(); ++i) {
        if (m_selectors[i]->valid())
            refreshReferenceValue(i, row);
    }
    refreshTargetValue(row);
    placeEnergyMarkers();
    repaintDisplays();
}

void FourPs::receiveNewMap()
{
    if (auto *const row = qobject_cast<AEPoint *>(sender())) {
        const auto other = std::find_if(m_energyRows.begin(), m_energyRows.end(), [row](const AEPoint *candidate) {
            return candidate != row && candidate->loaded();
        });
        if (other != m_energyRows.end())
            row->sharePositions(**other);
    }
    calcBoth();
    repaintDisplays();
}

void FourPs::refreshReferenceValue(int i, AEPoint *row)
{
    double value = 0.0;
    if (m_selectors[i]->valueAtEnergy(row->energy(), &value))
        row->setReferenceValue(i, value);
    else
        row->clearReferenceValue(i);
}

void FourPs::refreshTargetValue(AEPoint *row)
{
    double value = 0.0;
    if (ui.TargetFS->valueAtEnergy(row->energy(), &value))
        row->setTargetValue(value);
    else
        row->clearTargetValue();
}

void FourPs::receiveNewDir(const QString &dir)
{
    for (AXafsFileSelect *const selector : qAsConst(m_selectors))
        selector->setDir(dir);
    for (AEPoint *const row : qAsConst(m_energyRows))
        row->fileSelect()->setDir(dir);
    for (AFileSelect *const selector : {ui.MapFsSelect, ui.DispFSelect, ui.SaveFSelect})
        selector->setDir(dir);
}

void FourPs::receiveNewPaths(const QStringList &paths)
{
    {
        const QScopedValueRollback<bool> loading(m_isLoading, true);
        for (int i = 0; i < qMin(paths.size(), m_energyRows.size()); ++i)
            m_energyRows[i]->fileSelect()->choose(paths[i]);
    }
    if (paths.size() > m_energyRows.size())
        message(tr("%1 map files were chosen; the first %2 were taken.").arg(paths.size()).arg(m_energyRows.size()));
    calcBoth();
}

void FourPs::receiveNewDispFiles(const QStringList &paths)
{
    const WaitCursor wait;
    for (const QString &path : paths) {
        auto spectrum = std::make_unique<AMutE>();
        applyEdge(spectrum.get());
        if (!spectrum->read(path)) {
            message(tr("%1 is not a spectrum file.").arg(QFileInfo(path).fileName()));
            continue;
        }
        ui.SelectedFs->addItem(spectrum->fileName());
        ui.SelectedFs->setCurrentRow(ui.SelectedFs->count() - 1);
        m_displaySpectra.push_back(std::move(spectrum));
    }
    showAllSpectra();
}

void FourPs::removeAFile()
{
    const int row = ui.SelectedFs->currentRow();
    if (row < 0)
        return;
    delete ui.SelectedFs->takeItem(row);
    m_displaySpectra.erase(m_displaySpectra.begin() + row);
    showAllSpectra();
}

void FourPs::changedSubBGTypeForRef(bool f)
{
    // All of them first: each refresh recalculates with the values of all references.
    for (int i = 0; i < m_references.size(); ++i)
        m_selectors[i]->setSubtractPostLine(f);
    for (int i = 0; i < m_references.size(); ++i)
        receiveNewRef(i);
}

void FourPs::changedSubBGTypeForTarget(bool f)
{
    ui.TargetFS->setSubtractPostLine(f);
    receiveNewTarget();
    calcBoth();
}
