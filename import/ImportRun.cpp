#include "import/ImportRun.h"

#include "import/ImportText.h"
#include "import/InputFile.h"
#include "import/MapWriter.h"
#include "import/StackFiles.h"
#include "numeric/OutputFile.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

#include <algorithm>
#include <cmath>

using Outcome = ImportResult::Outcome;

namespace
{

QString fileNameOf(const QString &path)
{
    return QFileInfo(path).fileName();
}

/// A label as a file name on any system.
QString asFileName(const QString &label)
{
    QString name;
    for (const QChar c : label.simplified().left(60))
        name += c.isLetterOrNumber() || QStringLiteral("-_.+").contains(c) ? c : QLatin1Char('_');
    return name.startsWith(QLatin1Char('.')) ? QLatin1Char('_') + name.mid(1) : name;
}

/// The absorption image in at most 32 x 32 squares of pixels, whose noise is less.
std::vector<float> thumbnailOf(const Image &image)
{
    constexpr int side = 32;
    const int columns = std::min(side, image.width);
    const int rows = std::min(side, image.height);
    std::vector<float> cells;
    for (int row = 0; row < rows; ++row) {
        const int top = row * image.height / rows;
        const int bottom = (row + 1) * image.height / rows;
        for (int column = 0; column < columns; ++column) {
            const int left = column * image.width / columns;
            const int right = (column + 1) * image.width / columns;
            cells.push_back(static_cast<float>(mean(QRect(left, top, right - left, bottom - top), image)));
        }
    }
    return cells;
}

} // namespace

ImportRun::ImportRun(const ImportOptions &options, const ImportProgress &progress)
    : m_options(options)
    , m_progress(progress)
{
}

ImportResult ImportRun::run()
{
    if (steps())
        m_result.directory = m_options.directory;
    else
        m_result.files.clear();
    return m_result;
}

bool ImportRun::steps()
{
    if (!checkOptions() || !sortInputs() || !checkStackOptions() || !readReferences() || !checkValences() ||
        !openImages())
        return false;
    if (!m_folder.open(m_options.directory, &m_error))
        return fail(Outcome::CannotWrite, m_error);
    return align() && writeReferences() && writeMaps() && pick() && writeJob() && writeRecord() && publish();
}

bool ImportRun::fail(Outcome outcome, const QString &error)
{
    m_result.outcome = outcome;
    m_result.error = error;
    return false;
}

bool ImportRun::tell(const QString &what, double done)
{
    return !m_progress || m_progress(what, done) || fail(Outcome::Cancelled, ImportText::tr("the import was stopped"));
}

/// Folders are the TIFF files in them; of the inputs texts are spectra, all else is the stack.
bool ImportRun::sortInputs()
{
    QStringList files;
    for (const QString &input : qAsConst(m_options.inputs)) {
        if (!QFileInfo(input).isDir()) {
            files << input;
            continue;
        }
        const QDir folder(input);
        for (const QString &name : folder.entryList({"*.tif", "*.tiff", "*.TIF", "*.TIFF"}, QDir::Files, QDir::Name))
            files << folder.filePath(name);
    }
    for (const QString &file : qAsConst(files)) {
        InputKind kind;
        if (!kindOf(splitName(file).file, &kind, &m_error))
            return failBadInput();
        (kind == InputKind::Spectrum ? m_spectrumNames : m_stackFiles) << file;
    }
    m_spectrumNames << m_options.references;
    if (files.isEmpty() && m_spectrumNames.isEmpty())
        return fail(Outcome::BadInput, ImportText::tr("there is no image in %1").arg(m_options.inputs.first()));
    return true;
}

bool ImportRun::readReferences()
{
    for (const QString &name : qAsConst(m_spectrumNames)) {
        SpectrumFile file;
        InputKind kind;
        if (!kindOf(splitName(name).file, &kind, &m_error))
            return failBadInput();
        if (kind != InputKind::Spectrum)
            return fail(Outcome::BadInput,
                        ImportText::tr("%1 is a stack of images, which --refs has taken for a spectrum: name it before "
                                       "--refs")
                            .arg(QDir::toNativeSeparators(splitName(name).file)));
        if (!readSpectrumFile(name, &file, &m_error))
            return failBadInput();
        m_spectra << file;
    }
    return true;
}

bool ImportRun::openImages()
{
    if (m_stackFiles.isEmpty())
        return true;
    if (!openStack(m_stackFiles, m_options, &m_stack, &m_error) || !m_reader.prepare(&m_stack, m_options, &m_error))
        return failBadInput();
    m_result.warnings << m_stack.warnings;
    return m_options.pickEnergies.isEmpty() || takePicked();
}

bool ImportRun::align()
{
    if (!m_options.align || m_reader.count() == 0)
        return true;
    const auto read = [this](int index, Image *absorption, QString *error) {
        Exposure exposure;
        if (!m_reader.read(index, &exposure, error))
            return false;
        toAbsorption(&exposure);
        *absorption = std::move(exposure.signal);
        return true;
    };
    const auto isGoingOn = [this](double done) {
        return tell(ImportText::tr("aligning"), done * 0.5);
    };
    if (!alignImages(m_reader.count(), read, isGoingOn, &m_alignment, &m_error))
        return m_result.outcome == Outcome::Cancelled ? false : failBadInput();
    double worst = 0.0;
    for (const ImageShift &shift : qAsConst(m_alignment.shifts))
        worst = std::max(worst, shift.disagreement);
    if (worst > 1.0)
        m_result.warnings << ImportText::tr("direct and chained shifts differ by up to %1 pixels: look at the maps")
                                 .arg(worst, 0, 'f', 1);
    return true;
}

QString ImportRun::uniqueName(const QString &wanted) const
{
    const auto isTaken = [this](const QString &name) {
        return std::any_of(m_writtenSpectra.begin(), m_writtenSpectra.end(), [&name](const WrittenSpectrum &written) {
            return written.name.compare(name, Qt::CaseInsensitive) == 0;
        });
    };
    QString stem = wanted.isEmpty() ? QStringLiteral("spectrum") : wanted;
    if (stem.compare(QLatin1String("result"), Qt::CaseInsensitive) == 0)
        stem += QLatin1String("_spectrum"); // the job writes result.dat
    QString name = stem + QLatin1String(".dat");
    for (int i = 2; isTaken(name); ++i)
        name = stem + QLatin1Char('_') + QString::number(i) + QLatin1String(".dat");
    return name;
}

bool ImportRun::writeText(const QString &name, const QByteArray &text)
{
    if (numeric::writeFile(pathOf(name), text)) {
        m_result.files << name;
        return true;
    }
    return fail(Outcome::CannotWrite, ImportText::tr("cannot write %1").arg(QDir(m_options.directory).filePath(name)));
}

bool ImportRun::writeReference(const QByteArray &text, const QString &label, WrittenSpectrum *written)
{
    written->name = uniqueName(asFileName(label));
    written->record.insert(QStringLiteral("file"), written->name);
    written->record.insert(QStringLiteral("from"), written->source);
    if (!writeText(written->name, text))
        return false;
    m_writtenSpectra << *written;
    return true;
}

bool ImportRun::writeReferences()
{
    for (const SpectrumFile &file : qAsConst(m_spectra)) {
        const QString stem = QFileInfo(file.path).completeBaseName();
        WrittenSpectrum written;
        written.source = fileNameOf(file.path);
        written.record.insert(QStringLiteral("format"), file.format);
        if (!file.own.isEmpty() && !writeReference(file.own, stem, &written))
            return false;
        for (const ImportedSpectrum &spectrum : file.spectra) {
            const bool isOneOfMany = file.format == QLatin1String("Athena project");
            if (isOneOfMany)
                written.source = fileNameOf(file.path) + QLatin1String("::") + spectrum.label;
            const SpectrumFileText text = spectrumFileText(spectrum, written.source);
            QJsonObject record{{"format", file.format},
                               {"label", spectrum.label},
                               {"absorption", spectrum.source},
                               {"mode", text.isRatio ? 3 : 2},
                               {"spacing", text.spacing},
                               {"points", spectrum.energy.size()},
                               {"firstEnergy", spectrum.energy.first()},
                               {"lastEnergy", spectrum.energy.last()},
                               {"notes", QJsonArray::fromStringList(spectrum.notes)}};
            written.record = record;
            for (const QString &note : spectrum.notes)
                m_result.warnings << written.source + QLatin1String(": ") + note;
            if (!writeReference(text.text, isOneOfMany ? spectrum.label : stem, &written))
                return false;
        }
    }
    m_result.references = m_writtenSpectra.size();
    return true;
}

/// Names of the maps: by number, so that they sort, and energy.
bool ImportRun::writeMaps()
{
    const int count = m_reader.count();
    const int digits = std::max(2, QString::number(count).size());
    for (int i = 0; i < count; ++i)
        m_maps << QStringLiteral("map%1_%2eV.txt")
                      .arg(i + 1, digits, 10, QLatin1Char('0'))
                      .arg(m_reader.energies()[i], 0, 'f', 2);
    if (count == 0)
        return !overwritesInput();
    if (overwritesInput())
        return false;
    const double start = m_alignment.isEmpty() ? 0.0 : 0.5;
    for (int i = 0; i < count; ++i) {
        if (!tell(ImportText::tr("%1 eV").arg(m_reader.energies()[i], 0, 'f', 2),
                  start + (mapsDone - start) * i / count) ||
            !writeMap(i))
            return false;
    }
    const double rise = m_meanAbsorption.last() - m_meanAbsorption.first();
    if (m_options.signal == ImportOptions::Signal::Transmission && count > 1 && rise < 0.0)
        m_result.warnings << ImportText::tr(
                                 "the mean absorption falls by %1 from the first to the last energy: are these "
                                 "fluorescence images (--signal fluorescence)?")
                                 .arg(-rise, 0, 'g', 3);
    return true;
}

bool ImportRun::writeMap(int index)
{
    Exposure exposure;
    if (!m_reader.read(index, &exposure, &m_error))
        return failBadInput();
    PixelAxis x = m_reader.x();
    PixelAxis y = m_reader.y();
    if (!m_alignment.isEmpty()) {
        const QRect &common = m_alignment.common;
        const ImageShift &shift = m_alignment.shifts[index];
        exposure.signal = shifted(exposure.signal, shift.x, shift.y, common);
        if (!exposure.incident.isEmpty())
            exposure.incident = shifted(exposure.incident, shift.x, shift.y, common);
        x.positions = x.positions.mid(common.left(), common.width());
        y.positions = y.positions.mid(common.top(), common.height());
    }
    m_result.width = exposure.signal.width;
    m_result.height = exposure.signal.height;
    const MapGridText grid = mapGridText(exposure.signal.width, exposure.signal.height, x, y);
    MapToWrite map;
    map.energy = m_reader.energies()[index];
    map.comments = comments(index);
    map.signal = &exposure.signal;
    map.incident = exposure.incident.isEmpty() ? nullptr : &exposure.incident;
    map.level = exposure.level;
    if (!::writeMap(pathOf(m_maps[index]), m_options.layout, grid, map, m_options.threads))
        return fail(Outcome::CannotWrite,
                    ImportText::tr("cannot write %1").arg(QDir(m_options.directory).filePath(m_maps[index])));
    m_result.files << m_maps[index];
    noteDoubts(index, exposure, grid);
    toAbsorption(&exposure);
    m_meanAbsorption << mean(QRect(0, 0, m_result.width, m_result.height), exposure.signal);
    m_pickInput.thumbnails.push_back(thumbnailOf(exposure.signal));
    return true;
}

/// What a map file says about itself; no line begins with a keyword of its header.
QStringList ImportRun::comments(int index) const
{
    QStringList done = {QStringLiteral("I0: %1").arg(m_reader.incidentSource())};
    if (!m_options.crop.isNull())
        done << QStringLiteral("crop %1,%2").arg(m_options.crop.left()).arg(m_options.crop.top());
    if (m_options.bin > 1)
        done << QStringLiteral("bin %1").arg(m_options.bin);
    if (!m_alignment.isEmpty())
        done << QStringLiteral("shift %1,%2")
                    .arg(m_alignment.shifts[index].x, 0, 'f', 2)
                    .arg(m_alignment.shifts[index].y, 0, 'f', 2);
    return {QStringLiteral("imported by flokluk-import from %1 (%2), %3")
                .arg(fileNameOf(m_stack.files.first()), m_stack.layout, done.join(QLatin1String(", ")))};
}
