#include "import/StackFiles.h"

#include "import/ColumnTable.h"
#include "import/Hdf5Stack.h"
#include "import/ImportText.h"
#include "import/InputFile.h"
#include "import/SpectrumFiles.h"
#include "import/TiffStack.h"
#include "import/XimStack.h"
#include "numeric/TextScanner.h"

#include <QDir>

#include <algorithm>

namespace
{

/// The value at `x` on the straight lines between points that rise in x; false outside of them, beyond what a motor
/// misses.
bool interpolate(const QVector<double> &xs, const QVector<double> &ys, double x, double *y)
{
    constexpr double margin = 0.01; // eV
    if (x < xs.first() - margin || x > xs.last() + margin)
        return false;
    const auto above = std::lower_bound(xs.begin() + 1, xs.end() - 1, x);
    const int i = static_cast<int>(above - xs.begin());
    *y = ys[i - 1] + (ys[i] - ys[i - 1]) / (xs[i] - xs[i - 1]) * (std::clamp(x, xs.first(), xs.last()) - xs[i - 1]);
    return true;
}

/// One line of a list of energies.
struct EnergyLine {
    double energy = 0.0;
    bool isNumber = false;
    QString unit; ///< in small letters; empty where the line has none
    bool isUnit = true;
};

/// "7112.5", "7.1125 keV", "7112.5eV"; numbers behind the energy do not count. False for a comment and an empty line.
bool readEnergyLine(std::string_view line, EnergyLine *found)
{
    numeric::TokenScanner scanner(line);
    std::string_view token;
    if (!scanner.next(&token) || token.front() == '#' || token.front() == '*')
        return false;
    QString word = QString::fromUtf8(token.data(), static_cast<int>(token.size())).toLower();
    for (const QLatin1String unit : {QLatin1String("kev"), QLatin1String("ev")}) {
        if (word.endsWith(unit)) {
            found->unit = unit;
            word.chop(unit.size());
        }
    }
    found->energy = word.toDouble(&found->isNumber);
    if (!found->unit.isEmpty() || !scanner.next(&token) || token.front() == '#' || token.front() == '*')
        return true;
    bool isNumber = false;
    word = QString::fromUtf8(token.data(), static_cast<int>(token.size())).toLower();
    word.toDouble(&isNumber);
    if (!isNumber)
        found->unit = word;
    found->isUnit = isNumber || word == QLatin1String("ev") || word == QLatin1String("kev");
    return true;
}

bool listSpectra(const QString &path, QStringList *lines, QString *error)
{
    SpectrumFile file;
    if (!readSpectrumFile(path, &file, error))
        return false;
    *lines << file.format;
    for (const ImportedSpectrum &spectrum : qAsConst(file.spectra)) {
        *lines << ImportText::tr("\"%1\": %2, %3 points, %4 to %5 eV")
                      .arg(spectrum.label, spectrum.source)
                      .arg(spectrum.energy.size())
                      .arg(spectrum.energy.first(), 0, 'g', 8)
                      .arg(spectrum.energy.last(), 0, 'g', 8);
        for (const QString &note : spectrum.notes)
            *lines << QLatin1String("  ") + note;
    }
    return true;
}

} // namespace

bool openStack(const QStringList &files, const ImportOptions &options, ImageStack *stack, QString *error)
{
    InputKind kind = InputKind::Spectrum;
    if (!kindOf(files.first(), &kind, error))
        return false;
    for (int i = 1; i < files.size(); ++i) {
        InputKind other = InputKind::Spectrum;
        if (!kindOf(files[i], &other, error))
            return false;
        if (kind == InputKind::Tiff && other == kind)
            continue;
        *error = ImportText::tr("%1 and %2 are two stacks: import each into a folder of its own")
                     .arg(QDir::toNativeSeparators(files[0]), QDir::toNativeSeparators(files[i]));
        return false;
    }
    switch (kind) {
    case InputKind::Hdf5:
        return openHdf5Stack(files.first(), options, stack, error);
    case InputKind::Tiff:
        return openTiffStack(files, stack, error);
    case InputKind::StackHeader:
        return openXimStack(files.first(), stack, error);
    case InputKind::Spectrum:
        break;
    }
    *error = ImportText::tr("%1 is no stack of images").arg(QDir::toNativeSeparators(files.first()));
    return false;
}

Frames openFrames(const QString &name, QString *error)
{
    const NamedPart named = splitName(name);
    InputKind kind;
    if (!kindOf(named.file, &kind, error))
        return nullptr;
    switch (kind) {
    case InputKind::Hdf5:
        return openHdf5Frames(named.file, named.part, error);
    case InputKind::Tiff:
        return openTiffFrames(named.file, error);
    case InputKind::StackHeader:
        break;
    case InputKind::Spectrum:
        return openXimFrames(named.file, error);
    }
    *error = ImportText::tr("%1 is no image").arg(QDir::toNativeSeparators(named.file));
    return nullptr;
}

bool readEnergies(const QString &path, QVector<double> *energies, QString *error, bool *isGuess)
{
    QByteArray bytes;
    if (!readFile(path, &bytes, error))
        return false;
    energies->clear();
    const QString name = QDir::toNativeSeparators(path);
    QString unit; // the first that is named holds for all
    numeric::LineScanner lines({bytes.constData(), static_cast<std::size_t>(bytes.size())});
    std::string_view line;
    for (int number = 1; lines.next(&line); ++number) {
        EnergyLine found;
        if (!readEnergyLine(line, &found))
            continue;
        if (!found.isNumber || energies->size() >= mostFrames) {
            *error = ImportText::tr("%1: there is no energy in line %2").arg(name).arg(number);
            return false;
        }
        if (!found.isUnit || (!unit.isEmpty() && !found.unit.isEmpty() && found.unit != unit)) {
            *error = ImportText::tr("%1: \"%2\" in line %3 is not the unit of all, eV or keV")
                         .arg(name, found.unit.left(40))
                         .arg(number);
            return false;
        }
        unit = unit.isEmpty() ? found.unit : unit;
        energies->append(found.energy);
    }
    const auto [least, most] = std::minmax_element(energies->begin(), energies->end());
    if (unit.isEmpty() && !energies->isEmpty() && *least < 100.0 && *most >= 100.0) {
        *error = ImportText::tr("%1: %2 would be keV and %3 eV: name the unit behind the energies")
                     .arg(name)
                     .arg(*least)
                     .arg(*most);
        return false;
    }
    if (isGuess != nullptr)
        *isGuess = unit.isEmpty() && !energies->isEmpty() && *most < 100.0;
    *energies = inEv(*energies, unit);
    return true;
}

bool readIncident(const QString &path, const QVector<double> &energies, QVector<double> *incident, QString *error)
{
    QByteArray bytes;
    ColumnTable table;
    if (!readFile(path, &bytes, error))
        return false;
    const QString name = QDir::toNativeSeparators(path);
    if (!readTable(bytes, &table, error)) {
        *error = name + QLatin1String(": ") + *error;
        return false;
    }
    ImportedSpectrum points; // whose "absorption" is the intensity
    if (table.columns.size() >= 2) {
        points.energy = inEv(table.columns[0], QString());
        points.mu = table.columns[1];
    }
    if (!tidySpectrum(&points, error)) {
        *error = name + QLatin1String(": ") + *error;
        return false;
    }
    incident->clear();
    for (const double energy : energies) {
        double value = 0.0;
        if (!interpolate(points.energy, points.mu, energy, &value)) {
            *error = ImportText::tr("%1 has no incident intensity at %2 eV").arg(name).arg(energy, 0, 'g', 8);
            return false;
        }
        incident->append(value);
    }
    return true;
}

bool listInput(const QString &path, QStringList *lines, QString *error)
{
    InputKind kind;
    if (!kindOf(path, &kind, error))
        return false;
    switch (kind) {
    case InputKind::Hdf5:
        return listHdf5(path, lines, error);
    case InputKind::Tiff:
        return listTiff(path, lines, error);
    case InputKind::StackHeader:
        return listXim(path, lines, error);
    case InputKind::Spectrum:
        break;
    }
    return listSpectra(path, lines, error);
}
