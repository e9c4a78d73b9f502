// The panel's inputs and settings as a job, both ways.

#include "analysis/panel/FourPs.h"
#include "analysis/panel/PanelSettings.h"
#include "analysis/results/ShownQuantity.h"

#include <QApplication>
#include <QClipboard>
#include <QFileInfo>
#include <QScopedValueRollback>

namespace
{

/// A number as a field holds it, with all its digits.
QString exactText(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

QString problem(const QString &key, const QString &file, const char *kind)
{
    const QFileInfo info(file);
    const QString what = info.isFile() && info.isReadable()
                             ? QStringLiteral("%1 is no %2 file")
                             : QStringLiteral("%1 cannot be read, a %2 file is expected");
    return key + QLatin1String(": ") + what.arg(file, QLatin1String(kind));
}

QString absolutePath(const QString &path)
{
    return path.isEmpty() ? path : QFileInfo(path).absoluteFilePath();
}

} // namespace

QStringList FourPs::load(const Job &job, const std::function<void(const QString &file)> &loading)
{
    const QScopedValueRollback<bool> hold(m_isLoading, true);
    QStringList problems;
    const auto announce = [&loading](const QString &file) {
        if (loading && !file.isEmpty())
            loading(file);
    };
    const PanelSettings settings(this);
    settings.apply(job.settings);
    for (int i = 0; i < m_references.size(); ++i) {
        Job::Reference reference;
        reference.use = false; // those that the job does not name
        reference = job.references.value(i, reference);
        announce(reference.file);
        m_references[i]->setUsed(reference.use);
        m_references[i]->setValenceText(exactText(reference.valence));
        if (!loadSpectrum(m_references[i]->selector(), reference.file, reference.dE))
            problems << problem(QStringLiteral("references[%1].file").arg(i), reference.file, "spectrum");
    }
    announce(job.target.file);
    if (!loadSpectrum(ui.TargetFS, job.target.file, job.target.dE))
        problems << problem(QStringLiteral("target.file"), job.target.file, "spectrum");
    for (int i = 0; i < m_energyRows.size(); ++i) {
        Job::Energy energy;
        energy.use = false;
        energy = job.energies.value(i, energy);
        announce(energy.map);
        if (!loadEnergy(m_energyRows[i], energy))
            problems << problem(QStringLiteral("energies[%1].map").arg(i), energy.map, "map data");
    }
    if (job.settings.contains(ui.EdgeE->objectName())) // which the spectra have changed meanwhile
        settings.apply({{ui.EdgeE->objectName(), job.settings.value(ui.EdgeE->objectName())}});
    setEdge();
    placeEnergyMarkers();
    ui.SaveFSelect->setFileText(job.resultFile);
    return problems;
}

/// False when there is a file and it cannot be loaded.
bool FourPs::loadSpectrum(AXafsFileSelect *selector, const QString &file, double dE)
{
    if (!selector->fileText().isEmpty())
        selector->clearFileName();
    selector->setDEText(exactText(dE));
    selector->setNewDE();
    if (file.isEmpty())
        return true;
    selector->choose(file);
    return selector->valid();
}

/// The same for a map. The energy is the job's, whatever the file says.
bool FourPs::loadEnergy(AEPoint *row, const Job::Energy &energy)
{
    if (!row->fileSelect()->fileText().isEmpty())
        row->fileSelect()->clearFileName();
    row->setUsed(energy.use);
    row->setVPoint(energy.vPoint);
    row->setForLCF(energy.lcf);
    if (!energy.map.isEmpty())
        row->fileSelect()->choose(energy.map);
    row->setEnergyText(energy.energy == 0.0 ? QString() : exactText(energy.energy));
    row->inNewEnergy();
    return energy.map.isEmpty() || row->loaded();
}

Job FourPs::job() const
{
    Job job;
    const auto pathOf = [](const AFileSelect *selector) {
        return absolutePath(selector->fileText());
    };
    for (const ARefFile *const reference : m_references)
        job.references.append({pathOf(reference->selector()), reference->isUsed(), reference->valence(),
                               reference->selector()->dEText().toDouble()});
    job.target = {pathOf(ui.TargetFS), ui.TargetFS->dEText().toDouble()};
    for (const AEPoint *const row : m_energyRows)
        job.energies.append(
            {row->energy(), pathOf(row->fileSelect()), row->isUsed(), row->isVPoint(), row->isForLCF()});
    // Rows at the end that hold nothing say nothing.
    while (!job.references.isEmpty() && job.references.last().file.isEmpty())
        job.references.removeLast();
    while (!job.energies.isEmpty() && job.energies.last().energy == 0.0 && job.energies.last().map.isEmpty())
        job.energies.removeLast();
    job.settings = PanelSettings(this).present();
    job.resultFile = pathOf(ui.SaveFSelect);
    return job;
}

void FourPs::copyConditions()
{
    QApplication::clipboard()->setText(QString::fromUtf8(job().toJson()));
    message(tr("The conditions are on the clipboard."));
}

const double *FourPs::quantity(int position, numeric::Plane *work) const
{
    const auto [first, second] = usedValences();
    return shownPlane(m_results, position, {true, first, second}, work);
}
