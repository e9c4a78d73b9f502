#include "import/TiffStack.h"

#include "import/ImportText.h"
#include "import/StackFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#ifdef FLOKLUK_HAVE_TIFF
#include "import/TiffFrames.h"
#endif

ImageFileName readImageFileName(const QString &path)
{
    static const QRegularExpression energy(QStringLiteral("(?<![0-9.])([0-9]+(?:\\.[0-9]+)?)[ _-]?(k?)eV(?![a-z])"),
                                           QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression flat(
        QStringLiteral("(?<![a-z])(?:flat|flats|flatfield|ref|refs|reference|bkg|bkgd|background)(?![a-z])"),
        QRegularExpression::CaseInsensitiveOption);
    const QString name = QFileInfo(path).completeBaseName();
    const QRegularExpressionMatch match = energy.match(name);
    ImageFileName found;
    found.energy = match.captured(1).toDouble() * (match.captured(2).isEmpty() ? 1.0 : 1000.0);
    found.isFlat = flat.match(name).hasMatch();
    return found;
}

#ifdef FLOKLUK_HAVE_TIFF

namespace
{

/// The pages of a file, one frame each.
bool pagesOf(const QString &path, QVector<QVector<TiffPage>> *frames, QString *error)
{
    const TiffFile file = openTiff(path, error);
    if (!file)
        return false;
    const int pages = static_cast<int>(TIFFNumberOfDirectories(file.get()));
    if (pages == 0)
        *error = damagedTiff(path);
    for (int i = 0; i < pages; ++i)
        frames->append({TiffPage{path, i}});
    return pages > 0;
}

/// Which values are bright is not always what the file says.
void noteZeroIsWhite(const QString &path, ImageStack *stack)
{
    QString unused;
    std::uint16_t photometric = PHOTOMETRIC_MINISBLACK;
    const TiffFile file = openTiff(path, &unused);
    if (file && TIFFGetField(file.get(), TIFFTAG_PHOTOMETRIC, &photometric) != 0 &&
        photometric == PHOTOMETRIC_MINISWHITE)
        stack->warnings << ImportText::tr("%1 says that 0 is white; its values were taken as counts all the same")
                               .arg(QDir::toNativeSeparators(path));
}

/// The energies that stand beside a file: NAME.txt.
bool takeEnergiesBeside(const QString &path, ImageStack *stack, QString *error)
{
    const QFileInfo info(path);
    const QString beside = info.dir().filePath(info.completeBaseName() + QLatin1String(".txt"));
    if (!QFileInfo(beside).isFile())
        return true;
    stack->files << beside;
    bool isGuess = false;
    if (!readEnergies(beside, &stack->energies, error, &isGuess))
        return false;
    stack->parts << QStringLiteral("energy: ") + QFileInfo(beside).fileName() +
                        (isGuess ? QStringLiteral(" (taken for keV)") : QString());
    return true;
}

/// One file per energy, each of one page, with the energies in their names: in all of them or in none.
bool takeFiles(const QStringList &files, ImageStack *stack, QString *error)
{
    QVector<QVector<TiffPage>> frames;
    for (const QString &file : files) {
        QVector<QVector<TiffPage>> pages;
        if (!pagesOf(file, &pages, error))
            return false;
        if (pages.size() != 1) {
            *error = ImportText::tr("%1 holds %2 images, but one file per energy holds one")
                         .arg(QDir::toNativeSeparators(file))
                         .arg(pages.size());
            return false;
        }
        frames << pages;
        const double energy = readImageFileName(file).energy;
        if (energy > 0.0)
            stack->energies << energy;
    }
    if (!stack->energies.isEmpty() && stack->energies.size() != files.size()) {
        *error = ImportText::tr("the names of %1 of %2 images hold no energy")
                     .arg(files.size() - stack->energies.size())
                     .arg(files.size());
        return false;
    }
    stack->images = TiffFrames::open(frames, error);
    return stack->images != nullptr;
}

/// I0 per energy where the names of the files hold energies: all files of an energy averaged.
bool flatsByEnergy(const QStringList &flats, const QVector<double> &energies, QVector<QVector<TiffPage>> *frames,
                   QString *error)
{
    for (const double energy : energies) {
        QVector<TiffPage> pages;
        for (const QString &flat : flats) {
            QVector<QVector<TiffPage>> ofFile;
            if (readImageFileName(flat).energy != energy)
                continue;
            if (!pagesOf(flat, &ofFile, error))
                return false;
            for (const QVector<TiffPage> &page : qAsConst(ofFile))
                pages << page;
        }
        if (pages.isEmpty()) {
            *error =
                ImportText::tr("there is an I0 image for other energies, but none for %1 eV").arg(energy, 0, 'g', 8);
            return false;
        }
        frames->append(pages);
    }
    return true;
}

bool takeFlats(const QStringList &flats, ImageStack *stack, QString *error)
{
    QVector<QVector<TiffPage>> frames;
    const bool haveEnergies = !stack->energies.isEmpty() && readImageFileName(flats.first()).energy > 0.0;
    if (haveEnergies && !flatsByEnergy(flats, stack->energies, &frames, error))
        return false;
    for (const QString &flat : flats) {
        if (!haveEnergies && !pagesOf(flat, &frames, error))
            return false;
    }
    stack->flatIsPerEnergy = haveEnergies || (frames.size() == stack->images->count() && frames.size() > 1);
    stack->parts << QStringLiteral("I0: ") + QFileInfo(flats.first()).fileName();
    stack->flat = TiffFrames::open(frames, error);
    return stack->flat != nullptr;
}

} // namespace

bool openTiffStack(const QStringList &files, ImageStack *stack, QString *error)
{
    QStringList images, flats;
    for (const QString &file : files)
        (readImageFileName(file).isFlat ? flats : images) << file;
    if (images.isEmpty())
        images.swap(flats); // a stack may be called so
    stack->layout = QStringLiteral("TIFF");
    stack->files << files;
    if (images.size() > 1) {
        if (!takeFiles(images, stack, error))
            return false;
    } else {
        stack->images = openTiffFrames(images.first(), error);
        if (!stack->images || !takeEnergiesBeside(images.first(), stack, error))
            return false;
        const double energy = readImageFileName(images.first()).energy;
        if (stack->energies.isEmpty() && stack->images->count() == 1 && energy > 0.0)
            stack->energies << energy;
    }
    noteZeroIsWhite(images.first(), stack);
    return flats.isEmpty() || takeFlats(flats, stack, error);
}

Frames openTiffFrames(const QString &path, QString *error)
{
    QVector<QVector<TiffPage>> frames;
    return pagesOf(path, &frames, error) ? TiffFrames::open(frames, error) : nullptr;
}

bool listTiff(const QString &path, QStringList *lines, QString *error)
{
    const Frames frames = openTiffFrames(path, error);
    if (!frames)
        return false;
    *lines << ImportText::tr("TIFF, number of pages: %1, the first of %2 pixels")
                  .arg(frames->count())
                  .arg(sizeText(frames->width(), frames->height()));
    const double energy = readImageFileName(path).energy;
    if (energy > 0.0)
        *lines << ImportText::tr("the name says %1 eV").arg(energy, 0, 'g', 8);
    return true;
}

#else

#include "import/InputFile.h"

bool openTiffStack(const QStringList &files, ImageStack *, QString *error)
{
    *error = builtWithout(files.first(), QStringLiteral("libtiff"));
    return false;
}

Frames openTiffFrames(const QString &path, QString *error)
{
    *error = builtWithout(path, QStringLiteral("libtiff"));
    return nullptr;
}

bool listTiff(const QString &path, QStringList *, QString *error)
{
    *error = builtWithout(path, QStringLiteral("libtiff"));
    return false;
}

#endif
