// The panel's slots: each gathers what is set, runs a step and shows what came of it.

#include "analysis/model/ResultText.h"
#include "analysis/model/Staleness.h"
#include "analysis/model/TakingPart.h"
#include "analysis/panel/FourPs.h"
#include "analysis/panel/PanelJob.h"
#include "analysis/results/ResultQuantities.h"
#include "controls/Field.h"
#include "controls/WaitCursor.h"
#include "display/DispABase.h"
#include "numeric/OutputFile.h"

#include <QApplication>
#include <QClipboard>
#include <QFileInfo>
#include <QLabel>
#include <QTextCursor>
#include <QTime>

#include <algorithm>

// --- calculations ---

void FourPs::calculateAll()
{
    setAutoRanges();
    calcMap();
    calcTarget();
    lcf();
}

void FourPs::setAutoRanges()
{
    const TakingPart references = takingPart(m_inputs.gather());
    const auto show = [](const Histgram &histogram, const ValueRange &range) {
        if (!histogram.check->isChecked())
            return;
        showNumber(histogram.minEdit, range.min);
        showNumber(histogram.maxEdit, range.max);
    };
    show(m_inputs.valenceHistogram(), automaticValenceRange(references));
    show(m_inputs.thicknessHistogram(), automaticThicknessRange(references));
}

void FourPs::calcMap()
{
    const WaitCursor wait;
    if (report(m_analysis.runMap(m_inputs.gather())).isDone)
        showMapResults();
    refreshStaleMark();
}

void FourPs::calcTarget()
{
    const StepOutcome &outcome = m_analysis.runTarget(m_inputs.gather());
    if (outcome.isDone)
        showTargetResults();
    report(outcome);
}

void FourPs::lcf()
{
    if (report(m_analysis.runFit(m_inputs.gather())).isDone)
        showFit();
}

void FourPs::calcAndWrite()
{
    calcMap();
    write();
}

bool FourPs::recordsQuantity(int position) const
{
    const QCheckBox *const box = m_recordBoxes.value(position);
    return box && box->isChecked();
}

void FourPs::write()
{
    const QString path = ui.SaveFSelect->fileText();
    RecordSelection selection = {};
    for (int position = 0; position < ResultPosition::count; ++position)
        selection.at(static_cast<std::size_t>(position)) = recordsQuantity(position);
    const bool isDone = report(m_analysis.write(path, m_inputs.gather(), selection)).isDone;
    ui.SaveFSelect->setExInfo(
        isDone ? tr("%1: wrote %2, _HGAlpha and _HGThick")
                     .arg(QTime::currentTime().toString(QStringLiteral("HH:mm:ss")), QFileInfo(path).fileName())
               : QString());
}

// --- what is shown of them ---

void FourPs::message(const QString &text)
{
    // At the end, wherever the user has clicked meanwhile.
    ui.Messages->moveCursor(QTextCursor::End);
    ui.Messages->insertPlainText(text.simplified() + QLatin1Char('\n'));
    ui.Messages->ensureCursorVisible();
}

void FourPs::showStatus(const QString &text)
{
    m_status = text;
    if (auto *const line = findChild<QLabel *>(QStringLiteral("StatusLine")))
        line->setText(text);
}

const StepOutcome &FourPs::report(const StepOutcome &outcome)
{
    if (!outcome.message.isEmpty())
        message(outcome.message);
    return outcome;
}

void FourPs::showMapResults()
{
    const ResultRecords &results = m_analysis.results();
    const QVector<RunPoint> &taken = m_analysis.run()->points;
    for (int row = 0; row < m_inputs.points().size(); ++row) {
        const bool tookPart =
            std::any_of(taken.begin(), taken.end(), [row](const RunPoint &point) { return point.row == row; });
        AEPoint *const point = m_inputs.points()[row];
        point->warnOfSize(tookPart &&
                          (point->data().nx() != results.width() || point->data().ny() != results.height()));
    }
    chooseHistograms();
    m_resultMap.refresh();
    repaintDisplays();
}

/// The fields show what the last run for the target has found: nothing for who took no part in it.
void FourPs::showTargetResults()
{
    for (ARefFile *const reference : m_inputs.references())
        reference->clearResults();
    ui.TargetDMut->clear();
    if (!m_analysis.targetRun()->method.isNonEquivalent)
        return;
    const auto &target = m_analysis.nonEquivalentTarget();
    const auto valueAt = [&target](int position) {
        return target->values.at(static_cast<std::size_t>(position));
    };
    showNumber(ui.TargetDMut, valueAt(ResultPosition::amount));
    for (int j = 0; j < target->references.size(); ++j) {
        ARefFile *const reference = m_inputs.references()[target->references[j].row];
        reference->setRatio(valueAt(ResultPosition::ratio + j));
        reference->setAmount(valueAt(ResultPosition::dMut + j));
    }
}

void FourPs::showFit()
{
    const LinearCombination &fit = *m_analysis.fit();
    ui.LCFRes->setText(m_analysis.outcome(Step::Fit).message);
    ui.LCFRes->setCursorPosition(0);
    ui.LCFRes->setToolTip(fitSumText(fit));
    ui.LCFQuality->setText(fitQualityText(fit));
    ui.LCFQuality->setToolTip(fitErrorsText(fit));
    repaintDisplays();
}

void FourPs::refreshStaleMark()
{
    if (!m_recalculation.isHeld())
        m_staleMark.show(m_analysis.run() ? changesSince(*m_analysis.run(), m_inputs.gather()) : QStringList());
}

void FourPs::repaintDisplays()
{
    for (DispABase *const display : qAsConst(m_displays->dabs))
        display->area()->update();
    ui.ResultMap->area()->update(); // its colours follow the valences and edge jumps
}

void FourPs::repaintGraphs(std::initializer_list<Displays::DispId> ids)
{
    for (const Displays::DispId id : ids)
        m_displays->display(id)->area()->update();
}

void FourPs::chooseHistograms()
{
    HistogramChoice choice;
    choice.position = chosenPosition(m_histogramButtons);
    choice.range = m_analysis.colourRange(choice.position, m_inputs.gather());
    choice.references = m_analysis.run() ? m_analysis.run()->references.size() : 0;
    choice.hasShownParts = ui.HgAPerRef->isChecked();
    choice.hasThicknessParts = ui.HgTPerRef->isChecked();
    m_analysis.chooseHistograms(choice);
    repaintGraphs({Displays::HistA, Displays::HistDMut});
}

/// One map at a time: the button of the row whose map was asked for switches the others off.
void FourPs::showDataMapOf(AEPoint *row, bool isShown)
{
    if (isShown) {
        m_dataMap.show(row);
        for (AEPoint *const other : m_inputs.points()) {
            if (other != row)
                other->showMapButton()->setChecked(false);
        }
        ui.ShowDMap->setChecked(true);
    } else if (m_dataMap.row() == row) {
        m_dataMap.show(nullptr);
    }
}

/// The first map that there is, rather than an empty frame.
void FourPs::showSomeDataMap()
{
    if (!ui.ShowDMap->isChecked() || (m_dataMap.row() && m_dataMap.row()->loaded()))
        return;
    for (AEPoint *const row : m_inputs.points()) {
        if (row->loaded()) {
            row->showMapButton()->setChecked(true);
            return;
        }
    }
}

void FourPs::saveMapText(const QByteArray &text)
{
    QString path = askMapFile();
    if (path.isEmpty())
        return;
    if (QFileInfo(path).suffix().isEmpty())
        path += QLatin1String(".txt");
    numeric::OutputFile file(path);
    if (!file.open()) {
        message(tr("Can't open the file [%1]").arg(path));
        return;
    }
    file.write(text);
    if (file.commit())
        message(tr("saved %1").arg(QFileInfo(path).fileName()));
    else
        message(tr("Can't write the file [%1]").arg(path));
}

void FourPs::clearLCFvs4PS(MouseC *)
{
    m_analysis.comparisons.clear();
    repaintGraphs({Displays::LcfVsMps});
}

void FourPs::newColorLCFvs4PS(MouseC *)
{
    m_analysis.comparisons.nextColour(m_graphs.colours());
}

void FourPs::dispCalcConditions(bool f)
{
    ui.Conditions->setVisible(!f);
    ui.MoreConds->setVisible(f);
}

// --- inputs ---

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
            ui.TargetDMut->clear();
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
    else if (!m_inputs.references()[i]->isUsed())
        calcBoth();
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
}

void FourPs::receiveUpdatedTarget()
{
    AMutE &spectrum = m_inputs.target()->spectrum();
    spectrum.fitLines();
    receiveNewTarget();
    if (spectrum.valid())
        calcBoth();
    else
        ui.TargetDMut->clear();
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
}

void FourPs::receiveNewPaths(const QStringList &paths)
{
    const Recalculation::Scope once(m_recalculation);
    const int rows = m_inputs.points().size();
    for (int i = 0; i < std::min(paths.size(), rows); ++i)
        m_inputs.points()[i]->fileSelect()->choose(paths[i]);
    if (paths.size() > rows)
        message(tr("%1 map files were chosen; the first %2 were taken.").arg(paths.size()).arg(rows));
    calcBoth();
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
        ui.SelectedFs->addItem(spectrum->fileName());
        ui.SelectedFs->setCurrentRow(ui.SelectedFs->count() - 1);
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

// --- jobs ---

QStringList FourPs::load(const Job &job, const std::function<void(const QString &file)> &loading)
{
    const Recalculation::Scope once(m_recalculation);
    const QStringList problems = PanelJob(this, ui, m_inputs).load(job, loading);
    setEdge();
    placeEnergyMarkers();
    calcBoth();
    return problems;
}

Job FourPs::job() const
{
    return PanelJob(this, ui, m_inputs).present();
}

void FourPs::copyConditions()
{
    QApplication::clipboard()->setText(QString::fromUtf8(job().toJson()));
    message(tr("The conditions are on the clipboard."));
}
