#include "import/Hdf5Layouts.h"

#include <QRegularExpression>

#include <algorithm>

namespace
{

QString inGroup(const QString &group, const QString &name)
{
    return group.endsWith(QLatin1Char('/')) ? group + name : group + QLatin1Char('/') + name;
}

QString parentOf(const QString &path)
{
    const int at = path.lastIndexOf(QLatin1Char('/'));
    return at <= 0 ? QStringLiteral("/") : path.left(at);
}

/// The names in an attribute `axes`: a list of texts, or one text with separators.
QStringList axisNames(const QStringList &attribute)
{
    static const QRegularExpression separators(QStringLiteral("[\\s,:\\[\\]\"]+"));
    if (attribute.size() != 1)
        return attribute;
    QStringList names = attribute.first().split(separators);
    names.removeAll(QString());
    return names;
}

/// The names of a signal's dimensions, empty where nothing says: from the group, from the dataset, or, in older files,
/// from the attribute `axis` (1, 2, 3) of the positions.
QStringList dimensionNames(const Hdf5File &file, const QString &group, const Hdf5Dataset &signal)
{
    QStringList names = axisNames(file.attribute(group, "axes"));
    if (names.size() != signal.rank())
        names = axisNames(file.attribute(signal.path, "axes"));
    if (names.size() == signal.rank())
        return names;
    names = QVector<QString>(signal.rank()).toList();
    for (const QString &name : file.children(group)) {
        const int axis = file.attribute(inGroup(group, name), "axis").value(0).toInt();
        if (axis >= 1 && axis <= names.size() && file.dataset(inGroup(group, name)).rank() == 1)
            names[axis - 1] = name;
    }
    return names;
}

/// The dataset that holds the values of an NXdata group: named by its attribute, or marked by its own in older files.
Hdf5Dataset signalOf(const Hdf5File &file, const QString &group)
{
    const QString named = file.attribute(group, "signal").value(0);
    Hdf5Dataset direct = named.isEmpty() ? Hdf5Dataset() : file.dataset(inGroup(group, named));
    if (direct.exists())
        return direct;
    for (const QString &name : file.children(group)) {
        const QString path = inGroup(group, name);
        if (file.attribute(path, "signal").value(0).toInt() == 1)
            return file.dataset(path);
    }
    return Hdf5Dataset();
}

/// Takes the dimensions by name; those that nothing names are rows and columns in their order.
bool takeNexusAxes(const Hdf5File &file, const QString &group, const Hdf5Dataset &signal, Hdf5Layout *layout)
{
    const QStringList names = dimensionNames(file, group, signal);
    int energy = -1, x = -1, y = -1;
    for (int i = 0; i < 3; ++i) {
        if (names[i].contains(QLatin1String("energy"), Qt::CaseInsensitive))
            energy = i;
        else if (names[i].endsWith(QLatin1Char('x'), Qt::CaseInsensitive))
            x = i;
        else if (names[i].endsWith(QLatin1Char('y'), Qt::CaseInsensitive))
            y = i;
    }
    const QString energyName = energy >= 0 ? names[energy] : QStringLiteral("energy");
    layout->energy = inGroup(group, energyName);
    const Hdf5Dataset energies = file.dataset(layout->energy);
    if (!energies.exists())
        return false;
    if (energy < 0) {
        if (energies.rank() != 1 || !axesByLength(signal.shape, energies.shape[0], false, &layout->axes))
            return false;
        energy = layout->axes.frame;
    }
    layout->axes.frame = energy;
    x = x == energy ? -1 : x;
    y = y == energy ? -1 : y;
    for (int i = 0; i < 3; ++i) { // rows before columns
        if (i == energy || i == x || i == y)
            continue;
        (y < 0 ? y : x) = i;
    }
    layout->axes.row = y;
    layout->axes.column = x;
    const auto positions = [&](int axis, const char *usual) {
        const QString path = inGroup(group, names[axis].isEmpty() ? QLatin1String(usual) : names[axis]);
        return file.dataset(path).exists() ? path : QString();
    };
    layout->x = positions(x, "sample_x");
    layout->y = positions(y, "sample_y");
    return true;
}

/// One NXdata group; a layout without a name when it holds no stack.
Hdf5Layout nexusData(const Hdf5File &file, const QString &group, const QString &wanted)
{
    Hdf5Layout layout;
    const Hdf5Dataset signal = wanted.isEmpty() ? signalOf(file, group) : file.dataset(wanted);
    if (signal.rank() != 3 || !signal.isNumeric || !takeNexusAxes(file, group, signal, &layout))
        return Hdf5Layout();
    layout.data = signal.path;
    layout.energyUnit = file.attribute(layout.energy, "units").value(0, QStringLiteral("eV"));
    layout.name = QStringLiteral("NeXus NXstxm");
    return layout;
}

bool isOfClass(const Hdf5File &file, const QString &group, const char *nexusClass)
{
    return file.attribute(group, "NX_class").value(0) == QLatin1String(nexusClass);
}

/// The first NXdata group of an NXentry of the definition NXstxm that holds a stack.
Hdf5Layout findNexus(const Hdf5File &file, const QString &wanted)
{
    if (!wanted.isEmpty() && isOfClass(file, parentOf(wanted), "NXdata"))
        return nexusData(file, parentOf(wanted), wanted);
    for (const QString &entry : file.children(QStringLiteral("/"))) {
        const QString home = inGroup(QStringLiteral("/"), entry);
        if (!isOfClass(file, home, "NXentry") ||
            file.text(inGroup(home, QStringLiteral("definition"))) != QLatin1String("NXstxm"))
            continue;
        QStringList groups = file.children(home);
        const QString preferred = file.attribute(home, "default").value(0);
        if (groups.removeAll(preferred) > 0)
            groups.prepend(preferred);
        for (const QString &child : qAsConst(groups)) {
            if (!isOfClass(file, inGroup(home, child), "NXdata"))
                continue;
            const Hdf5Layout layout = nexusData(file, inGroup(home, child), QString());
            if (!layout.name.isEmpty())
                return layout;
        }
    }
    return Hdf5Layout();
}

QString existing(const Hdf5File &file, const char *path)
{
    return file.dataset(QLatin1String(path)).exists() ? QLatin1String(path) : QString();
}

/// "Data Exchange" (F. De Carlo et al., J. Synchrotron Rad. 21 (2014) 1224). Spectromicroscopy has its images as x, y,
/// energy and says "x:y" in the attribute `axes`; others have the energy first.
Hdf5Layout findExchange(const Hdf5File &file)
{
    Hdf5Layout layout;
    const Hdf5Dataset data = file.dataset(QStringLiteral("/exchange/data"));
    const Hdf5Dataset energy = file.dataset(QStringLiteral("/exchange/energy"));
    if (data.rank() != 3 || !data.isNumeric)
        return layout;
    layout.name = QStringLiteral("Data Exchange");
    layout.data = data.path;
    layout.energy = energy.path;
    layout.energyUnit = file.attribute(energy.path, "units").value(0);
    const QStringList names = axisNames(file.attribute(data.path, "axes"));
    const bool isXFirst = names.value(0) == QLatin1String("x") && names.value(1) == QLatin1String("y");
    if (!axesByLength(data.shape, energy.rank() == 1 ? energy.shape[0] : -1, isXFirst, &layout.axes))
        layout.axes = {0, 1, 2};
    if (isXFirst)
        std::swap(layout.axes.row, layout.axes.column);
    layout.x = existing(file, "/exchange/x");
    layout.y = existing(file, "/exchange/y");
    layout.flat = existing(file, "/exchange/data_white");
    layout.dark = existing(file, "/exchange/data_dark");
    layout.incident = existing(file, "/spectromicroscopy/normalization/white_spectrum");
    return layout;
}

Hdf5Layout findTxm(const Hdf5File &file)
{
    Hdf5Layout layout;
    const Hdf5Dataset data = file.dataset(QStringLiteral("/img_xanes"));
    if (data.rank() != 3 || !data.isNumeric)
        return layout;
    layout.name = QStringLiteral("full-field TXM");
    layout.data = data.path;
    layout.energy = existing(file, "/X_eng");
    layout.energyUnit = file.attribute(layout.energy, "units").value(0);
    layout.flat = existing(file, "/img_bkg");
    const Hdf5Dataset flat = file.dataset(layout.flat);
    layout.flatIsPerEnergy = flat.rank() == 3 && flat.shape[0] == data.shape[0] && flat.shape[0] > 1;
    layout.dark = existing(file, "/img_dark");
    return layout;
}

QString absolutePath(const QString &path)
{
    return path.isEmpty() || path.startsWith(QLatin1Char('/')) ? path : QLatin1Char('/') + path;
}

} // namespace

bool axesByLength(const QVector<qint64> &shape, qint64 energies, bool isLast, StackAxes *axes)
{
    const int found = isLast ? shape.lastIndexOf(energies) : shape.indexOf(energies);
    if (found < 0 || shape.size() != 3)
        return false;
    axes->frame = found;
    axes->row = found == 0 ? 1 : 0;
    axes->column = found == 2 ? 1 : 2;
    return true;
}

Hdf5Layout findHdf5Layout(const Hdf5File &file, const ImportOptions &options)
{
    const QString data = absolutePath(options.data);
    Hdf5Layout layout = findNexus(file, data);
    if (layout.name.isEmpty() && data.isEmpty())
        layout = findExchange(file);
    if (layout.name.isEmpty() && data.isEmpty())
        layout = findTxm(file);
    for (const Hdf5Layout &usual : {findExchange(file), findTxm(file)}) {
        if (layout.name.isEmpty() && !data.isEmpty() && usual.data == data)
            layout = usual; // whose name was given all the same
    }
    if (layout.name.isEmpty() && !data.isEmpty()) {
        layout.name = QStringLiteral("HDF5");
        layout.data = data;
    }
    if (!options.energy.isEmpty() && !layout.name.isEmpty()) {
        layout.energy = absolutePath(options.energy);
        layout.energyUnit = file.attribute(layout.energy, "units").value(0);
        const Hdf5Dataset energy = file.dataset(layout.energy);
        const Hdf5Dataset images = file.dataset(layout.data);
        if (layout.name == QLatin1String("HDF5") && energy.rank() == 1 &&
            !axesByLength(images.shape, energy.shape[0], false, &layout.axes))
            layout.axes = {0, 1, 2};
    }
    if (options.incident.startsWith(QLatin1String("::"))) {
        layout.incident = absolutePath(options.incident.mid(2));
        layout.flat.clear();
    }
    return layout;
}

QVector<Hdf5Proposal> proposals(const Hdf5File &file)
{
    QVector<Hdf5Proposal> found;
    QVector<Hdf5Dataset> lists, images;
    for (const Hdf5Dataset &dataset : file.datasets()) {
        if (dataset.isNumeric && dataset.rank() == 1 && dataset.shape[0] > 1)
            lists << dataset;
        else if (dataset.isNumeric && dataset.rank() == 3)
            images << dataset;
    }
    for (const Hdf5Dataset &data : qAsConst(images)) {
        Hdf5Proposal proposal{data, QString()};
        int best = 0;
        for (const Hdf5Dataset &list : qAsConst(lists)) {
            const QVector<double> values =
                data.shape.contains(list.shape[0]) ? file.numbers(list.path) : QVector<double>();
            if (values.isEmpty() || !std::is_sorted(values.begin(), values.end()) || values.first() == values.last())
                continue;
            const int points = 1 + 2 * list.path.contains(QLatin1String("ener"), Qt::CaseInsensitive) +
                               (parentOf(list.path) == parentOf(data.path));
            if (points > best)
                proposal.energy = list.path;
            best = std::max(best, points);
        }
        found << proposal;
    }
    return found;
}
