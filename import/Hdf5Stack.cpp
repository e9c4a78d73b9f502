#include "import/Hdf5Stack.h"

#include "import/ImportText.h"

#ifdef FLOKLUK_HAVE_HDF5

#include "import/Hdf5Layouts.h"

#include <QStringList>

namespace
{

QString shapeText(const QVector<qint64> &shape)
{
    QStringList lengths;
    for (const qint64 length : shape)
        lengths << QString::number(length);
    return shape.isEmpty() ? ImportText::tr("one value") : lengths.join(QLatin1String(" x "));
}

/// The energies, checked against the images; none where the layout has none.
bool takeEnergies(const Hdf5File &file, const Hdf5Layout &layout, ImageStack *stack, QString *error)
{
    if (layout.energy.isEmpty())
        return true;
    const QVector<double> given = file.numbers(layout.energy);
    stack->energies = inEv(given, layout.energyUnit);
    stack->parts << energyPart(layout.energy, given, stack->energies, layout.energyUnit);
    if (!stack->energies.isEmpty())
        return true;
    *error = ImportText::tr("%1: %2 holds no energies").arg(file.name(), layout.energy);
    return false;
}

PixelAxis pixelAxis(const Hdf5File &file, const QString &path, int count, const QString &usualUnit)
{
    PixelAxis axis;
    axis.positions = path.isEmpty() ? QVector<double>() : file.numbers(path);
    if (axis.positions.size() != count)
        return PixelAxis();
    axis.unit = file.attribute(path, "units").value(0, usualUnit);
    return axis;
}

/// Images that may be one (two dimensions) or several (three, the frames first).
std::unique_ptr<Hdf5Frames> framesOf(const std::shared_ptr<Hdf5File> &file, const QString &path, QString *error)
{
    const bool isOne = file->dataset(path).rank() == 2;
    return Hdf5Frames::open(file, path, isOne ? StackAxes{-1, 0, 1} : StackAxes(), error);
}

/// I0 and dark frames: one I0 per energy, or images. Where there is both, images count.
bool takeIncident(const std::shared_ptr<Hdf5File> &file, const Hdf5Layout &layout, ImageStack *stack, QString *error)
{
    if (!layout.dark.isEmpty()) {
        stack->dark = framesOf(file, layout.dark, error);
        stack->parts << QStringLiteral("dark: ") + layout.dark;
        if (!stack->dark)
            return false;
    }
    const bool areImages = file->dataset(layout.incident).rank() >= 2;
    const QString flat = !layout.flat.isEmpty() ? layout.flat : areImages ? layout.incident : QString();
    if (!flat.isEmpty()) {
        stack->flat = areImages && flat == layout.incident ? Hdf5Frames::open(file, flat, layout.axes, error)
                                                           : framesOf(file, flat, error);
        stack->flatIsPerEnergy = layout.flat.isEmpty() || layout.flatIsPerEnergy;
        stack->parts << QStringLiteral("I0: ") + flat;
        return stack->flat != nullptr;
    }
    if (layout.incident.isEmpty())
        return true;
    stack->incident = file->numbers(layout.incident);
    stack->parts << QStringLiteral("I0: ") + layout.incident;
    if (stack->incident.isEmpty())
        *error = ImportText::tr("%1: %2 holds no incident intensities").arg(file->name(), layout.incident);
    return !stack->incident.isEmpty();
}

void listLayout(const Hdf5File &file, QStringList *lines)
{
    const Hdf5Layout layout = findHdf5Layout(file, ImportOptions());
    if (layout.name.isEmpty())
        return;
    *lines << ImportText::tr("%1: images %2, energies %3").arg(layout.name, layout.data, layout.energy);
    const QVector<double> energies = inEv(file.numbers(layout.energy), layout.energyUnit);
    if (!energies.isEmpty())
        *lines << ImportText::tr("  %1 energies, %2 to %3 eV")
                      .arg(energies.size())
                      .arg(energies.first(), 0, 'g', 8)
                      .arg(energies.last(), 0, 'g', 8);
}

} // namespace

bool openHdf5Stack(const QString &path, const ImportOptions &options, ImageStack *stack, QString *error)
{
    const std::shared_ptr<Hdf5File> file = Hdf5File::open(path, error);
    if (!file)
        return false;
    const Hdf5Layout layout = findHdf5Layout(*file, options);
    if (layout.name.isEmpty()) {
        *error = ImportText::tr("%1 has no layout that is known here: choose --data ::PATH and --energy ::PATH, which "
                                "--list proposes")
                     .arg(file->name());
        return false;
    }
    stack->layout = layout.name;
    stack->files << path;
    stack->parts << QStringLiteral("data: ") + layout.data;
    stack->images = Hdf5Frames::open(file, layout.data, layout.axes, error);
    if (!stack->images || !takeEnergies(*file, layout, stack, error))
        return false;
    const QString unit = layout.name.startsWith(QLatin1String("NeXus")) ? QStringLiteral("um") : QString();
    stack->x = pixelAxis(*file, layout.x, stack->images->width(), unit);
    stack->y = pixelAxis(*file, layout.y, stack->images->height(), unit);
    return takeIncident(file, layout, stack, error);
}

Frames openHdf5Frames(const QString &path, const QString &dataset, QString *error)
{
    const std::shared_ptr<Hdf5File> file = Hdf5File::open(path, error);
    if (!file)
        return nullptr;
    if (!dataset.isEmpty())
        return framesOf(file, dataset, error);
    *error = ImportText::tr("%1: name the dataset in it, FILE::PATH").arg(file->name());
    return nullptr;
}

bool listHdf5(const QString &path, QStringList *lines, QString *error)
{
    const std::shared_ptr<Hdf5File> file = Hdf5File::open(path, error);
    if (!file)
        return false;
    listLayout(*file, lines);
    for (const Hdf5Dataset &dataset : file->datasets())
        *lines << QStringLiteral("%1  %2  %3").arg(dataset.path, shapeText(dataset.shape), dataset.type);
    for (const Hdf5Proposal &proposal : proposals(*file)) {
        QString line = QStringLiteral("--data ::") + proposal.data.path;
        if (!proposal.energy.isEmpty())
            line += QStringLiteral(" --energy ::") + proposal.energy;
        *lines << ImportText::tr("may be: %1").arg(line);
    }
    return true;
}

#else

#include "import/InputFile.h"

bool openHdf5Stack(const QString &path, const ImportOptions &, ImageStack *, QString *error)
{
    *error = builtWithout(path, QStringLiteral("HDF5"));
    return false;
}

Frames openHdf5Frames(const QString &path, const QString &, QString *error)
{
    *error = builtWithout(path, QStringLiteral("HDF5"));
    return nullptr;
}

bool listHdf5(const QString &path, QStringList *, QString *error)
{
    *error = builtWithout(path, QStringLiteral("HDF5"));
    return false;
}

#endif
