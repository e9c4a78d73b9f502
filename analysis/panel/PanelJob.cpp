#include "analysis/panel/PanelJob.h"

#include "analysis/panel/PanelInputs.h"
#include "analysis/panel/PanelSettings.h"

#include "ui_FourPs.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace
{

/// A number as a field holds it, with all its digits.
QString exactText(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

/// `systemText`: what the system said when the file was read.
QString spectrumProblem(const QString &key, const QString &file, const QString &systemText)
{
    const QFileInfo info(file);
    const QString why = systemText.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(systemText);
    QString what = QStringLiteral("%1 is no spectrum file").arg(file);
    if (!info.exists())
        what = QStringLiteral("%1: no such file").arg(file);
    else if (!info.isFile() || !info.isReadable() || !why.isEmpty())
        what = QStringLiteral("%1 cannot be read, a spectrum file is expected%2").arg(file, why);
    return key + QLatin1String(": ") + what;
}

QString mapProblem(const QString &key, const QString &file, const MapLoadResult &result)
{
    if (!QFileInfo::exists(file))
        return key + QStringLiteral(": %1: no such file").arg(file);
    const QString why = result.systemText.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(result.systemText);
    const auto text = [&]() -> QString {
        switch (result.problem) {
        case MapLoadProblem::NotOpened:
            return QStringLiteral("%1 cannot be read, a map data file is expected%2").arg(file, why);
        case MapLoadProblem::NotRead:
            return QStringLiteral("%1 could not be read to its end%2").arg(file, why);
        case MapLoadProblem::NoMemory:
            return QStringLiteral("there is not enough memory for %1").arg(file);
        case MapLoadProblem::LineTooLong:
            return QStringLiteral("%1 is no map data file: a line is longer than 64 MB").arg(file);
        case MapLoadProblem::NoRecords:
            return QStringLiteral("%1 is no map data file: no line of it is a pixel").arg(file);
        case MapLoadProblem::NoSize:
        case MapLoadProblem::None:
            break;
        }
        return QStringLiteral("%1 is no map data file: it does not say how many columns and rows there are").arg(file);
    };
    return key + QLatin1String(": ") + text();
}

QString pathOf(const AFileSelect *selector)
{
    const QString path = selector->fileText();
    return path.isEmpty() ? path
                          : QDir::current().absoluteFilePath(path); // which keeps "..": it may stand behind a link
}

/// False when there is a file and it cannot be loaded.
bool loadSpectrum(AXafsFileSelect *selector, const QString &file, double dE)
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
bool loadEnergy(AEPoint *row, const Job::Energy &energy)
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

} // namespace

PanelJob::PanelJob(const QWidget *panel, const Ui_FourPs &form, const PanelInputs &inputs)
    : m_panel(panel)
    , ui(form)
    , m_inputs(inputs)
{
}

QStringList PanelJob::load(const Job &job, const std::function<void(const QString &file)> &loading) const
{
    QStringList problems;
    const auto announce = [&loading](const QString &file) {
        if (loading && !file.isEmpty())
            loading(file);
    };
    const PanelSettings settings(m_panel);
    settings.apply(job.settings);
    for (int i = 0; i < m_inputs.references().size(); ++i) {
        Job::Reference reference;
        reference.use = false; // those that the job does not name
        reference = job.references.value(i, reference);
        announce(reference.file);
        m_inputs.references()[i]->setUsed(reference.use);
        m_inputs.references()[i]->setValenceText(i < job.references.size() ? exactText(reference.valence) : QString());
        if (!loadSpectrum(m_inputs.selector(i), reference.file, reference.dE))
            problems << spectrumProblem(QStringLiteral("references[%1].file").arg(i), reference.file,
                                        m_inputs.selector(i)->spectrum().readProblem());
    }
    announce(job.target.file);
    if (!loadSpectrum(m_inputs.target(), job.target.file, job.target.dE))
        problems << spectrumProblem(QStringLiteral("target.file"), job.target.file,
                                    m_inputs.target()->spectrum().readProblem());
    for (int i = 0; i < m_inputs.points().size(); ++i) {
        Job::Energy energy;
        energy.use = false;
        energy = job.energies.value(i, energy);
        announce(energy.map);
        AEPoint *const row = m_inputs.points()[i];
        if (!loadEnergy(row, energy))
            problems << mapProblem(QStringLiteral("energies[%1].map").arg(i), energy.map, row->loadResult());
    }
    const QString edge = ui.EdgeE->objectName();
    if (job.settings.contains(edge)) // which the spectra have changed meanwhile
        settings.apply({{edge, job.settings.value(edge)}});
    ui.SaveFSelect->setFileText(job.resultFile);
    return problems;
}

Job PanelJob::present() const
{
    Job job;
    for (const ARefFile *const reference : m_inputs.references())
        job.references.append({pathOf(reference->selector()), reference->isUsed(), reference->valence(),
                               reference->selector()->dEText().toDouble()});
    job.target = {pathOf(m_inputs.target()), m_inputs.target()->dEText().toDouble()};
    for (const AEPoint *const row : m_inputs.points())
        job.energies.append(
            {row->energy(), pathOf(row->fileSelect()), row->isUsed(), row->isVPoint(), row->isForLCF()});
    // Rows at the end that hold nothing say nothing.
    while (!job.references.isEmpty() && job.references.last().file.isEmpty())
        job.references.removeLast();
    while (!job.energies.isEmpty() && job.energies.last().energy == 0.0 && job.energies.last().map.isEmpty())
        job.energies.removeLast();
    job.settings = PanelSettings(m_panel).present();
    job.resultFile = pathOf(ui.SaveFSelect);
    return job;
}

std::vector<Region> regionsOf(const Job &job)
{
    std::vector<Region> regions;
    for (const Job::Region &given : job.regions) {
        Region region = {given.name, std::nullopt, given.above, false};
        if (given.rectangle)
            region.rectangle = PixelRectangle{(*given.rectangle)[0], (*given.rectangle)[1], (*given.rectangle)[2],
                                              (*given.rectangle)[3]};
        regions.push_back(region);
    }
    return regions;
}

QVector<Job::Region> jobRegions(const std::vector<Region> &regions)
{
    QVector<Job::Region> found;
    for (const Region &region : regions) {
        QString name = region.name; // a job wants names that differ; the same pixel can be a region twice
        const auto isTaken = [&name](const Job::Region &other) {
            return other.name == name;
        };
        for (int i = 2; std::any_of(found.cbegin(), found.cend(), isTaken); ++i)
            name = QStringLiteral("%1 (%2)").arg(region.name, QString::number(i));
        Job::Region entry = {name, std::nullopt, region.above};
        if (const auto &pixels = region.rectangle)
            entry.rectangle = std::array<int, 4>{pixels->x0, pixels->y0, pixels->x1, pixels->y1};
        found.append(entry);
    }
    return found;
}
