#include "import/StackReader.h"

#include "import/ImportText.h"
#include "import/InputFile.h"
#include "import/StackFiles.h"

#include <QDir>

#include <algorithm>
#include <cmath>
#include <numeric>

using Signal = ImportOptions::Signal;

void toAbsorption(Exposure *exposure)
{
    const bool isAbsorption = exposure->incident.isEmpty() && exposure->level == 0.0;
    for (std::size_t i = 0; i < exposure->signal.values.size(); ++i) {
        double &value = exposure->signal.values[i];
        const double incident = exposure->incident.isEmpty() ? exposure->level : exposure->incident.values[i];
        if (!isAbsorption)
            value = std::log(incident / value);
        if (!std::isfinite(value))
            value = 0.0;
    }
}

bool StackReader::prepare(ImageStack *stack, const ImportOptions &options, QString *error)
{
    m_stack = stack;
    m_options = options;
    m_name = QDir::toNativeSeparators(stack->files.value(0));
    return takeEnergies(error) && takeGeometry(error) && takeDark(error) && takeIncident(error);
}

bool StackReader::takeEnergies(QString *error)
{
    QVector<double> energies = m_stack->energies;
    if (!m_options.energies.isEmpty()) {
        bool isGuess = false;
        if (!readEnergies(m_options.energies, &energies, error, &isGuess))
            return false;
        if (isGuess)
            m_stack->warnings << ImportText::tr("the energies of %1 are below 100 and were taken for keV")
                                     .arg(QDir::toNativeSeparators(m_options.energies));
    }
    if (energies.isEmpty()) {
        *error = ImportText::tr("%1 says nothing about energies: give them with --energies FILE, one a line, or "
                                "name a dataset of HDF5 with --energy ::PATH")
                     .arg(m_name);
        return false;
    }
    if (energies.size() != m_stack->images->count()) {
        *error = ImportText::tr("%1: the number of images is %2, that of energies %3")
                     .arg(m_name)
                     .arg(m_stack->images->count())
                     .arg(energies.size());
        return false;
    }
    if (!std::all_of(energies.begin(), energies.end(), [](double e) { return std::isfinite(e) && e > 0.0; })) {
        *error = ImportText::tr("%1: an energy is zero, negative or no number").arg(m_name);
        return false;
    }
    m_order.resize(energies.size());
    std::iota(m_order.begin(), m_order.end(), 0);
    std::stable_sort(m_order.begin(), m_order.end(), [&energies](int l, int r) { return energies[l] < energies[r]; });
    if (!std::is_sorted(energies.begin(), energies.end()))
        m_stack->warnings << ImportText::tr("the energies of the images did not rise and were sorted");
    for (const int i : qAsConst(m_order))
        m_energies << energies[i];
    const auto equal = std::adjacent_find(m_energies.begin(), m_energies.end());
    if (equal != m_energies.end())
        m_stack->warnings << ImportText::tr("several images have the energy %1 eV").arg(*equal, 0, 'g', 8);
    return true;
}

bool StackReader::takeGeometry(QString *error)
{
    const QRect whole(0, 0, m_stack->images->width(), m_stack->images->height());
    m_crop = m_options.crop.isNull() ? whole : m_options.crop;
    for (const QRect &part : {m_crop, m_options.incidentRegion.isNull() ? whole : m_options.incidentRegion}) {
        if (part.isValid() && whole.contains(part))
            continue;
        *error = ImportText::tr("the region %1,%2,%3,%4 does not lie within the %5 pixels of the images")
                     .arg(part.left())
                     .arg(part.top())
                     .arg(part.left() + part.width())
                     .arg(part.top() + part.height())
                     .arg(sizeText(whole.width(), whole.height()));
        return false;
    }
    m_width = m_crop.width() / m_options.bin;
    m_height = m_crop.height() / m_options.bin;
    if (m_width < 1 || m_height < 1) {
        *error = ImportText::tr("squares of %1 pixels are larger than the images").arg(m_options.bin);
        return false;
    }
    m_x = reduced(m_stack->x, m_crop.left(), m_width);
    m_y = reduced(m_stack->y, m_crop.top(), m_height);
    return true;
}

/// The positions of the pixels that are kept: the middle of those that become one.
PixelAxis StackReader::reduced(const PixelAxis &axis, int first, int count) const
{
    PixelAxis out;
    if (axis.positions.isEmpty())
        return out;
    out.unit = axis.unit;
    for (int i = 0; i < count; ++i) {
        const auto *const begin = axis.positions.constData() + first + i * m_options.bin;
        out.positions << std::accumulate(begin, begin + m_options.bin, 0.0) / m_options.bin;
    }
    return out;
}

void StackReader::reduce(Image *image) const
{
    crop(m_crop, image);
    bin(m_options.bin, image);
}

bool StackReader::sameSize(const FrameSource &frames, const QString &what, QString *error) const
{
    const FrameSource &images = *m_stack->images;
    if (frames.width() == images.width() && frames.height() == images.height())
        return true;
    *error =
        ImportText::tr("%1 has %2 pixels, the images of %3 have %4")
            .arg(what, sizeText(frames.width(), frames.height()), m_name, sizeText(images.width(), images.height()));
    return false;
}

bool StackReader::takeDark(QString *error)
{
    Frames given;
    if (!m_options.dark.isEmpty()) {
        given = openFrames(m_options.dark, error);
        if (!given)
            return false;
        m_stack->files << splitName(m_options.dark).file;
    }
    FrameSource *const dark = given ? given.get() : m_stack->dark.get();
    return dark == nullptr ||
           (sameSize(*dark, ImportText::tr("the dark image"), error) && averageFrames(dark, &m_dark, error));
}

/// What the user names goes before what the file has.
bool StackReader::takeIncident(QString *error)
{
    if (m_options.signal == Signal::Absorption) {
        m_incidentSource = QStringLiteral("none: the values are absorptions");
        return true;
    }
    if (!m_options.incidentRegion.isNull()) {
        m_usesRegion = true;
        m_incidentSource = QStringLiteral("mean of an empty region");
        return true;
    }
    if (!m_options.flat.isEmpty()) {
        m_stack->flat = openFrames(m_options.flat, error);
        if (!m_stack->flat)
            return false;
        m_stack->files << splitName(m_options.flat).file;
        m_stack->flatIsPerEnergy = m_stack->flat->count() == count() && count() > 1;
    }
    if (!m_options.incident.isEmpty() && !m_options.incident.startsWith(QLatin1String("::"))) {
        m_stack->flat.reset();
        m_stack->files << m_options.incident;
        QVector<double> energies(m_energies.size());
        for (int i = 0; i < m_order.size(); ++i)
            energies[m_order[i]] = m_energies[i];
        if (!readIncident(m_options.incident, energies, &m_stack->incident, error))
            return false;
    }
    return m_stack->flat ? takeFlat(error) : chooseIncident(error);
}

bool StackReader::takeFlat(QString *error)
{
    if (!sameSize(*m_stack->flat, ImportText::tr("the I0 image"), error))
        return false;
    m_flatIsPerEnergy = m_stack->flatIsPerEnergy;
    if (m_flatIsPerEnergy) {
        m_incidentSource = QStringLiteral("one image per energy");
        if (m_stack->flat->count() == count())
            return true;
        *error = ImportText::tr("the number of I0 images is %1, that of energies %2")
                     .arg(m_stack->flat->count())
                     .arg(count());
        return false;
    }
    m_incidentSource = QStringLiteral("the mean of %1 images").arg(m_stack->flat->count());
    if (!averageFrames(m_stack->flat.get(), &m_flat, error))
        return false;
    if (!m_dark.isEmpty())
        subtract(m_dark, &m_flat);
    crop(m_crop, &m_flat);
    if (!checkIncident(m_flat, 0.0, error))
        return false;
    bin(m_options.bin, &m_flat);
    return true;
}

bool StackReader::chooseIncident(QString *error)
{
    const QVector<double> &incident = m_stack->incident;
    m_incidentSource = QStringLiteral("one value per energy");
    if (incident.isEmpty())
        *error =
            ImportText::tr("%1 holds no incident intensity (I0): give an image without the sample, --flat FILE, or "
                           "an empty region of the images, --i0-region x0,y0,x1,y1")
                .arg(m_name);
    else if (incident.size() != count())
        *error = ImportText::tr("%1: the number of incident intensities is %2, that of energies %3")
                     .arg(m_name)
                     .arg(incident.size())
                     .arg(count());
    else if (!std::all_of(incident.begin(), incident.end(), [](double value) { return value > 0.0; }))
        *error = ImportText::tr("%1: the incident intensity (I0) is zero or negative at some energy").arg(m_name);
    else
        return true;
    return false;
}

/// `energy` in eV; 0: an image for all energies.
bool StackReader::checkIncident(const Image &image, double energy, QString *error) const
{
    const auto isBad = [](double value) {
        return !(value > 0.0);
    };
    const auto bad = std::count_if(image.values.begin(), image.values.end(), isBad);
    if (bad == 0)
        return true;
    const auto first = std::find_if(image.values.begin(), image.values.end(), isBad) - image.values.begin();
    const QString where = energy == 0.0 ? QString() : ImportText::tr(" at %1 eV").arg(energy, 0, 'g', 8);
    *error = ImportText::tr("%1: the I0 image is zero or negative in %2 pixels%3, first in column %4 of row %5")
                 .arg(m_name)
                 .arg(bad)
                 .arg(where)
                 .arg(m_crop.left() + static_cast<int>(first % image.width))
                 .arg(m_crop.top() + static_cast<int>(first / image.width));
    return false;
}

bool StackReader::readFlat(int frame, Image *image, QString *error)
{
    if (!m_stack->flat->read(frame, image, error))
        return false;
    if (!m_dark.isEmpty())
        subtract(m_dark, image);
    crop(m_crop, image);
    return true;
}

bool StackReader::read(int index, Exposure *exposure, QString *error)
{
    const int frame = m_order[index];
    exposure->level = 0.0;
    if (!m_stack->images->read(frame, &exposure->signal, error))
        return false;
    if (!m_dark.isEmpty())
        subtract(m_dark, &exposure->signal);
    if (m_usesRegion) {
        exposure->level = mean(m_options.incidentRegion, exposure->signal);
        if (!(exposure->level > 0.0)) {
            *error =
                ImportText::tr("%1: the empty region is zero or negative at %2 eV").arg(m_name).arg(m_energies[index]);
            return false;
        }
    }
    reduce(&exposure->signal);
    if (m_flatIsPerEnergy) {
        if (!readFlat(frame, &exposure->incident, error) ||
            !checkIncident(exposure->incident, m_energies[index], error))
            return false;
        bin(m_options.bin, &exposure->incident);
    } else if (!m_flat.isEmpty()) {
        exposure->incident = m_flat;
    } else if (!m_usesRegion && m_options.signal != Signal::Absorption) {
        exposure->level = m_stack->incident[frame];
    }
    if (m_options.signal != Signal::Fluorescence)
        return true;
    for (std::size_t i = 0; i < exposure->signal.values.size(); ++i)
        exposure->signal.values[i] /= exposure->incident.isEmpty() ? exposure->level : exposure->incident.values[i];
    exposure->incident = Image();
    exposure->level = 0.0;
    return true;
}
