#include "import/ImportRun.h"

#include "analysis/job/Job.h"
#include "import/ImportText.h"
#include "import/MapWriter.h"
#include "import/PlannedPick.h"
#include "spectrum/AMutE.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <cmath>

using Outcome = ImportResult::Outcome;

/// The energies that the job takes: those that the user named, else planned ones, else those that tell most.
bool ImportRun::pick()
{
    m_pickInput.energies = m_reader.energies();
    if (m_pickInput.energies.isEmpty())
        return true;
    if (!takeReferenceValues())
        return false;
    m_vPoint = -1;
    if (!m_picked.isEmpty()) {
        m_pickedBy = QStringLiteral("named");
        return true;
    }
    if (m_pickInput.energies.size() > m_options.pickCount && m_writtenSpectra.size() >= 2 && !planPicked())
        return false;
    if (m_picked.isEmpty()) {
        m_pickedBy = QStringLiteral("contrast");
        m_picked = pickEnergies(m_pickInput, m_options.pickCount);
    }
    return true;
}

/// False only when it is stopped; without a plan nothing is picked.
bool ImportRun::planPicked()
{
    PlannedPickInput input;
    input.energies = m_pickInput.energies;
    input.isFluorescence = m_options.signal == ImportOptions::Signal::Fluorescence;
    input.isGoing = [this](double done) {
        return tell(ImportText::tr("planning"), mapsDone + (1.0 - mapsDone) * done);
    };
    for (int i = 0; i < m_writtenSpectra.size(); ++i) {
        PlanReference reference;
        reference.name = m_writtenSpectra[i].name;
        reference.valence = m_options.valences.value(i, 0.0);
        if (reference.spectrum.read(pathOf(reference.name)))
            input.references.push_back(reference);
    }
    if (input.references.size() < 2)
        return true;
    const PlannedPick planned = plannedPick(input, m_options.pickCount);
    if (planned.isStopped)
        return false;
    if (!planned.error.isEmpty())
        m_result.warnings << ImportText::tr("the energies were picked by contrast, not planned: %1").arg(planned.error);
    m_picked = planned.picked;
    m_vPoint = planned.vPoint;
    m_pickedBy = QStringLiteral("planned");
    return true;
}

/// The nearest image of each energy that is named; one that lies beyond the images is a mistake.
bool ImportRun::takePicked()
{
    const QVector<double> &energies = m_reader.energies();
    for (const double wanted : qAsConst(m_options.pickEnergies)) {
        const double margin = energies.size() > 1 ? (energies.last() - energies.first()) / (energies.size() - 1) : 1.0;
        if (!(wanted >= energies.first() - margin && wanted <= energies.last() + margin))
            return fail(Outcome::BadInput, ImportText::tr("there is no image near %1 eV (they are at %2 to %3 eV)")
                                               .arg(wanted)
                                               .arg(energies.first())
                                               .arg(energies.last()));
        const auto nearest = std::min_element(energies.begin(), energies.end(), [wanted](double l, double r) {
            return std::fabs(l - wanted) < std::fabs(r - wanted);
        });
        const int index = static_cast<int>(nearest - energies.begin());
        if (!m_picked.contains(index))
            m_picked << index;
        else
            m_result.warnings << ImportText::tr("--pick: the image at %1 eV is the nearest of two energies")
                                     .arg(energies[index], 0, 'g', 8);
    }
    std::sort(m_picked.begin(), m_picked.end());
    return true;
}

/// The references' absorption at the energies of the maps, where all of them have been measured there.
bool ImportRun::takeReferenceValues()
{
    const QVector<double> &energies = m_pickInput.energies;
    for (const WrittenSpectrum &written : qAsConst(m_writtenSpectra)) {
        AMutE spectrum;
        if (!spectrum.read(pathOf(written.name)) || spectrum.energyMin() > energies.first() ||
            spectrum.energyMax() < energies.last()) {
            m_pickInput.references.clear();
            m_result.warnings
                << ImportText::tr("%1 was not measured over all energies of the images").arg(written.name);
            return true;
        }
        QVector<double> values;
        for (const double energy : energies)
            values << spectrum.muAt(energy);
        m_pickInput.references << values;
    }
    return true;
}

bool ImportRun::writeJob()
{
    Job job;
    const int references = qMin(m_writtenSpectra.size(), Job::maxReferences);
    for (int i = 0; i < references; ++i)
        job.references.append({m_writtenSpectra[i].name, true, m_options.valences.value(i, 0.0), 0.0});
    const int vPoint = m_vPoint >= 0 || m_picked.isEmpty() ? m_vPoint : mostDifferent(m_pickInput, m_picked);
    for (const int i : qAsConst(m_picked))
        job.energies.append({energyText(m_reader.energies()[i]).toDouble(), m_maps[i], true, i == vPoint, false});
    constexpr int unknownsBesides = 2; // of the linear background
    if (references >= 2 && m_picked.size() >= references + unknownsBesides)
        job.settings.insert(QStringLiteral("TypeNonEquiv"), true);
    if (!m_picked.isEmpty()) {
        job.resultFile = QStringLiteral("result.dat");
        job.pictures = QStringLiteral("pictures");
        job.report = QStringLiteral("report.json");
    }
    if (m_writtenSpectra.size() > references)
        m_result.warnings
            << ImportText::tr("the job takes the first %1 of %2 spectra").arg(references).arg(m_writtenSpectra.size());
    if (m_options.valences.size() < references)
        m_result.warnings << ImportText::tr(
            "the valences of the references are not known: type them, or give --valences");
    return writeText(QStringLiteral("job.json"), job.toJson());
}

/// Whether a file that will be written is one that was read.
bool ImportRun::overwritesInput()
{
    QStringList inputs = m_stack.files;
    for (const SpectrumFile &file : qAsConst(m_spectra))
        inputs << file.path;
    QSet<QString> read;
    for (const QString &input : qAsConst(inputs))
        read.insert(QFileInfo(input).canonicalFilePath());
    QStringList names = m_maps;
    names << QStringLiteral("job.json") << QStringLiteral("import.json");
    for (const WrittenSpectrum &written : qAsConst(m_writtenSpectra))
        names << written.name;
    for (const QString &name : qAsConst(names)) {
        const QFileInfo file(QDir(m_options.directory).filePath(name));
        if (!file.exists() || !read.contains(file.canonicalFilePath()))
            continue;
        fail(Outcome::BadInput,
             ImportText::tr("%1 would be written over, but is read: choose another folder").arg(file.filePath()));
        return true;
    }
    return false;
}

bool ImportRun::publish()
{
    if (!m_folder.publish(m_result.files, &m_error))
        return fail(Outcome::CannotWrite, m_error);
    m_result.job = QDir(m_options.directory).filePath(QStringLiteral("job.json"));
    m_result.energies = m_maps.size();
    return tell(ImportText::tr("done"), 1.0) || true;
}
