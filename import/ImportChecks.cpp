#include "import/ImportRun.h"

#include "analysis/job/Job.h"
#include "import/ImportText.h"

#include <algorithm>
#include <cmath>

using Outcome = ImportResult::Outcome;

bool ImportRun::checkOptions()
{
    const int incidents =
        !m_options.flat.isEmpty() + !m_options.incident.isEmpty() + !m_options.incidentRegion.isNull();
    if (m_options.inputs.isEmpty() && m_options.references.isEmpty())
        m_error = ImportText::tr("there is nothing to import");
    else if (m_options.directory.isEmpty())
        m_error = ImportText::tr("no folder is named to write into");
    else if (incidents > 1)
        m_error = ImportText::tr("I0 comes from one of --flat, --i0 and --i0-region");
    else if (m_options.bin < 1 || m_options.pickCount < 2 || m_options.pickCount > 8 ||
             m_options.pickEnergies.size() > 8)
        m_error = ImportText::tr("squares have a side from 1 on, and a job takes 2 to 8 energies");
    else
        return true;
    return failBadInput();
}

/// What only images could obey, and what absorptions could not.
bool ImportRun::checkStackOptions()
{
    const ImportOptions &o = m_options;
    const QVector<QPair<const char *, bool>> given = {{"--flat", !o.flat.isEmpty()},
                                                      {"--i0", !o.incident.isEmpty()},
                                                      {"--i0-region", !o.incidentRegion.isNull()},
                                                      {"--dark", !o.dark.isEmpty()},
                                                      {"--energies", !o.energies.isEmpty()},
                                                      {"--data", !o.data.isEmpty()},
                                                      {"--energy", !o.energy.isEmpty()},
                                                      {"--crop", !o.crop.isNull()},
                                                      {"--bin", o.bin > 1},
                                                      {"--align", o.align},
                                                      {"--pick", !o.pickEnergies.isEmpty()},
                                                      {"--signal", o.signal != ImportOptions::Signal::Transmission},
                                                      {"--format", o.layout != ImportOptions::Layout::Plain}};
    const bool isAbsorption = o.signal == ImportOptions::Signal::Absorption;
    constexpr int incidents = 3; // the first ones
    for (int i = 0; i < given.size(); ++i) {
        if (!given[i].second)
            continue;
        const QString name = QLatin1String(given[i].first);
        if (m_stackFiles.isEmpty())
            return fail(Outcome::BadInput, ImportText::tr("%1 is for images, and there are none").arg(name));
        if (isAbsorption && i < incidents)
            return fail(Outcome::BadInput, ImportText::tr("absorptions have no I0: %1 is not for them").arg(name));
    }
    return true;
}

/// One for each spectrum, or for each that the job takes.
bool ImportRun::checkValences()
{
    int spectra = 0;
    for (const SpectrumFile &file : qAsConst(m_spectra))
        spectra += file.own.isEmpty() ? file.spectra.size() : 1;
    const int valences = m_options.valences.size();
    return valences == 0 || valences == spectra || valences == std::min(spectra, Job::maxReferences) ||
           fail(Outcome::BadInput,
                ImportText::tr("the number of valences is %1, that of spectra %2").arg(valences).arg(spectra));
}

/// What the user should look at, when all maps are known.
void ImportRun::noteDoubts(int index, const Exposure &exposure, const MapGridText &grid)
{
    const bool isCounts = exposure.level != 0.0 || !exposure.incident.isEmpty();
    m_darkPixels += std::count_if(exposure.signal.values.begin(), exposure.signal.values.end(),
                                  [isCounts](double I) { return !std::isfinite(I) || (isCounts && I <= 0.0); });
    if (index < m_reader.count() - 1)
        return;
    if (m_darkPixels > 0)
        m_result.warnings << ImportText::tr("pixels without a positive intensity, in all maps: %1; they have no "
                                            "absorption")
                                 .arg(m_darkPixels);
    if (grid.hasDropped)
        m_result.warnings << ImportText::tr("some positions of the pixels are equal: their numbers stand in the maps");
}
