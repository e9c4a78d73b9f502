// The panel's slots: each gathers what is set, runs a step and shows what came of it.

#include "analysis/job/OwnJob.h"
#include "analysis/model/Findings.h"
#include "analysis/model/ResultText.h"
#include "analysis/model/Staleness.h"
#include "analysis/model/TakingPart.h"
#include "analysis/model/UncertaintyText.h"
#include "analysis/panel/FourPs.h"
#include "analysis/panel/PanelJob.h"
#include "analysis/panel/RegionsView.h"
#include "controls/Field.h"
#include "controls/WaitCursor.h"
#include "display/DispABase.h"
#include "numeric/OutputFile.h"

#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
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

/// What has changed and can be calculated, without a word about what cannot; a map that would keep the user waiting is
/// left to the mark on "Calc.".
void FourPs::calculateDue()
{
    const DueSteps due = dueSteps(m_analysis, m_inputs.gather());
    if (due.map && due.mapValues * m_secondsPerValue < longestQuietMap) {
        setAutoRanges();
        calcMap();
    } else {
        showFindings();
        if (due.map)
            showStatus(tr("changed; press Calc. for a new map"));
        else if (!due.whyNoMap.isEmpty())
            showStatus(due.whyNoMap);
    }
    if (due.target)
        calcTarget();
    if (due.fit)
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
    QElapsedTimer timer;
    timer.start();
    const StepOutcome outcome = report(m_analysis.runMap(m_inputs.gather()));
    if (outcome.isDone) {
        showMapResults();
        const ResultRecords &results = m_analysis.results();
        const int energies = m_analysis.run()->points.size();
        const double seconds = static_cast<double>(timer.nsecsElapsed()) * 1e-9;
        m_secondsPerValue = seconds / std::max(1.0, static_cast<double>(results.count()) * energies);
        showStatus(tr("%1 x %2 pixels, %3 energies, %4 s")
                       .arg(results.width())
                       .arg(results.height())
                       .arg(energies)
                       .arg(seconds, 0, 'g', 2));
    } else {
        showStatus(outcome.message);
    }
    showFindings();
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
    writeInto(nullptr);
}

void FourPs::writeInto(numeric::FileSet *set)
{
    const QString path = ui.SaveFSelect->fileText();
    RecordSelection selection = {};
    for (int position = 0; position < ResultPosition::count; ++position)
        selection.at(static_cast<std::size_t>(position)) = recordsQuantity(position);
    const AnalysisInput now = m_inputs.gather();
    QString written;
    if (report(m_analysis.write(path, now, selection, set)).isDone) {
        const bool areOld = m_analysis.run() && !changesSince(*m_analysis.run(), now).isEmpty();
        written = (areOld ? tr("%1: wrote %2 (inputs changed since)") : tr("%1: wrote %2 and its histograms"))
                      .arg(QTime::currentTime().toString(QStringLiteral("HH:mm:ss")), QFileInfo(path).fileName());
        if (ui.WriteJob->isChecked() && !set)
            writeJob(path, areOld);
    }
    ui.SaveFSelect->setExInfo(written);
}

/// The job that repeats what was written, beside it.
void FourPs::writeJob(const QString &result, bool areOld)
{
    const QFileInfo info(result);
    const QString path = info.dir().filePath(info.completeBaseName() + QLatin1String(".json"));
    const QString name = QFileInfo(path).fileName();
    const Job made = job();
    const JobPlace place = placeForJob(path, made);
    if (areOld)
        message(
            tr("%1 is not written: it would calculate something else than the results, press Calc. first.").arg(name));
    else if (!m_analysis.run())
        message(tr("%1 is not written: there are no results that it could repeat.").arg(name));
    else if (place == JobPlace::Foreign)
        message(tr("%1 is not written: there is a file of that name which the program has not written.").arg(name));
    else if (place == JobPlace::Edited)
        message(tr("%1 is not written: the job of that name has been edited since the program wrote it, or an early "
                   "version wrote it. Rename or delete it.")
                    .arg(name));
    else if (!writeOwnJob(made, path))
        message(tr("Can't write the job %1").arg(path));
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
    ui.StatusLine->setText(text);
}

void FourPs::showFindings()
{
    m_findingMarks.show(findings(m_inputs.gather()));
}

StepOutcome FourPs::report(const StepOutcome &outcome)
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
    m_regions->refresh();
    repaintDisplays();
}

/// The fields show what the last run for the target has found: nothing for who took no part in it.
void FourPs::showTargetResults()
{
    for (ARefFile *const reference : m_inputs.references())
        reference->clearResults();
    clearTarget();
    const TargetFit fit = m_analysis.targetFit().value_or(TargetFit());
    showNote(ui.TargetDMut, targetErrorsText(fit));
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
        reference->noteRatio(fractionErrorText(fit, j));
        reference->setAmount(valueAt(ResultPosition::dMut + j));
    }
}

void FourPs::clearTarget()
{
    ui.TargetDMut->clear();
    showNote(ui.TargetDMut, QString());
}

void FourPs::showFit()
{
    const LinearCombination &fit = *m_analysis.fit();
    ui.LCFRes->setText(m_analysis.outcome(Step::Fit).message);
    ui.LCFRes->setCursorPosition(0);
    ui.LCFRes->setToolTip((fitSumText(fit) + QLatin1Char('\n') + fitResultErrorsText(fit)).trimmed());
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

void FourPs::takeRegions(const Job &job)
{
    m_regions->take(regionsOf(job));
    if (job.regions.size() > RegionsView::most)
        message(tr("Of the %1 regions the first %2 were taken.").arg(job.regions.size()).arg(RegionsView::most));
}

Job FourPs::job() const
{
    Job job = PanelJob(this, ui, m_inputs).present();
    job.regions = jobRegions(m_regions->regions());
    return job;
}

void FourPs::copyConditions()
{
    QApplication::clipboard()->setText(QString::fromUtf8(job().toJson()));
    message(tr("The conditions are on the clipboard."));
}
