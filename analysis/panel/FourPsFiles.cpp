// Files that come several at once, by a drop or as a job.

#include "analysis/model/DroppedFiles.h"
#include "analysis/model/UsedPoints.h"
#include "analysis/panel/FourPs.h"
#include "analysis/panel/PanelSettings.h"
#include "controls/WaitCursor.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>

#include <algorithm>

namespace
{

/// Their names without directories, the first few.
QString namesOf(const QStringList &paths)
{
    constexpr int most = 5;
    QStringList names;
    for (const QString &path : paths.mid(0, most))
        names << QFileInfo(path).fileName();
    const QString text = names.join(QStringLiteral(", "));
    return paths.size() <= most ? text : FourPs::tr("%1 and %2 more").arg(text, QString::number(paths.size() - most));
}

} // namespace

void FourPs::dragEnterEvent(QDragEnterEvent *event)
{
    if (!AFileSelect::droppedPaths(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void FourPs::dropEvent(QDropEvent *event)
{
    const QStringList paths = AFileSelect::droppedPaths(*event->mimeData());
    if (paths.isEmpty())
        return;
    event->acceptProposedAction();
    receiveDroppedFiles(paths);
}

void FourPs::receiveDroppedFiles(const QStringList &paths)
{
    const WaitCursor wait;
    const DroppedFiles files = sortDropped(paths);
    if (!files.job.isEmpty()) {
        loadConditions(files.job);
        return;
    }
    if (importFiles && files.maps.isEmpty() && !files.others.isEmpty() && importFiles(files.others, files.spectra))
        return;
    const Recalculation::Scope once(m_recalculation);
    takeSpectra(files.spectra);
    if (!files.maps.isEmpty())
        receiveNewPaths(files.maps);
    if (files.others.size() == 1)
        message(tr("%1 is neither a spectrum nor a map, nor a job that was dropped alone.").arg(namesOf(files.others)));
    else if (!files.others.isEmpty())
        message(tr("Neither spectra nor maps: %1.").arg(namesOf(files.others)));
}

void FourPs::takeSpectra(const QStringList &paths)
{
    QStringList present, left;
    for (const AXafsFileSelect *const selector : m_inputs.selectors())
        present << selector->fileText();
    const QVector<int> places = placesForSpectra(paths, present);
    int first = m_inputs.references().size();
    for (int i = 0; i < paths.size(); ++i) {
        if (places[i] < 0) {
            left << paths[i];
            continue;
        }
        m_inputs.selectors()[places[i]]->chooseByHand(paths[i]);
        first = std::min(first, places[i]);
    }
    if (!left.isEmpty())
        message(tr("No empty place for %1.").arg(namesOf(left)));
    if (first < m_inputs.references().size())
        askForValence(first);
}

void FourPs::receiveNewPaths(const QStringList &paths)
{
    const Recalculation::Scope once(m_recalculation);
    const int rows = m_inputs.points().size();
    QStringList kept;
    for (int i = 0; i < rows; ++i) {
        AEPoint *const row = m_inputs.points()[i];
        if (i < paths.size()) {
            row->fileSelect()->choose(paths[i]);
            row->setUsed(row->isUsed() || row->loaded());
        } else if (row->isUsed() && row->loaded()) {
            kept << QString::number(i + 1);
        }
    }
    const int vPoint = proposedVPoint(m_inputs.gather());
    if (vPoint >= 0)
        m_inputs.points()[vPoint]->setVPoint(true);
    placeEnergyMarkers();
    if (paths.size() > rows)
        message(tr("%1 map files were chosen; the first %2 were taken.").arg(paths.size()).arg(rows));
    if (paths.size() > 1 && !kept.isEmpty())
        message(tr("In use with the maps they had before: energies %1.").arg(kept.join(QStringLiteral(", "))));
    calcBoth();
}

/// Who chooses a spectrum by hand means to use it, and to tell its valence.
void FourPs::useReference(int i)
{
    {
        Recalculation::Scope withTheNewEdge(m_recalculation);
        m_inputs.references()[i]->setUsed(true);
        withTheNewEdge.drop();
    }
    askForValence(i);
}

void FourPs::chooseConditions()
{
    const QString path = askJobFile();
    if (!path.isEmpty())
        loadConditions(path);
}

void FourPs::loadConditions(const QString &path)
{
    const WaitCursor wait;
    const QFileInfo file(path);
    const JobOrErrors read = readJob(path);
    QStringList problems = read.errors + PanelSettings(this).mistakes(read.job.settings);
    const bool isTaken = problems.isEmpty(); // else all stays as it is
    if (isTaken)
        problems = load(read.job);
    if (isTaken)
        takeRegions(read.job);
    for (const QString &problem : qAsConst(problems))
        message(QStringLiteral("%1: %2").arg(file.fileName(), problem));
    message(isTaken ? tr("The conditions of %1 are loaded.").arg(file.fileName())
                    : tr("%1 is not loaded.").arg(file.fileName()));
    receiveNewDir(file.absoluteDir().canonicalPath());
}
