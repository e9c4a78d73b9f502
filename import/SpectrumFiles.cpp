#include "import/SpectrumFiles.h"

#include "import/AthenaReader.h"
#include "import/Gunzip.h"
#include "import/ImportText.h"
#include "import/InputFile.h"
#include "import/XdiReader.h"
#include "numeric/TextScanner.h"
#include "spectrum/SpectrumReader.h"

#include <QDir>

#include <string_view>

namespace
{

bool readXdi(const QByteArray &text, const QString &part, SpectrumFile *file, QString *error)
{
    XdiFile xdi;
    ImportedSpectrum spectrum;
    if (!parseXdi(text, &xdi, error) || !spectrumOfXdi(xdi, part, &spectrum, error))
        return false;
    file->format = QStringLiteral("XDI ") + xdi.version;
    file->spectra << spectrum;
    return true;
}

bool readAthena(const QByteArray &text, const QString &part, SpectrumFile *file, QString *error)
{
    QVector<AthenaGroup> groups;
    file->format = QStringLiteral("Athena project");
    return parseAthena(text, &groups, error) && spectraOfAthena(groups, part, &file->spectra, error);
}

bool readColumns(const QByteArray &text, const QString &part, SpectrumFile *file, QString *error)
{
    ColumnTable table;
    ImportedSpectrum spectrum;
    if (!readTable(text, &table, error))
        return false;
    if (table.columns.isEmpty()) {
        *error = ImportText::tr("it is no spectrum and no stack of images that is known here");
        return false;
    }
    file->format = QStringLiteral("columns");
    if (!spectrumOf(table, part, 0.0, &spectrum, error))
        return false;
    file->spectra << spectrum;
    return true;
}

bool isMap(const QByteArray &text)
{
    const QByteArray first = text.left(text.indexOf('\n')).simplified();
    return first == "# 1301" || first == "# 2003901";
}

bool isOwnFormat(const QByteArray &text)
{
    const SpectrumScan scan = parseSpectrum({text.constData(), static_cast<std::size_t>(text.size())});
    return scan.hasData && scan.isSupported;
}

bool readText(QByteArray text, const QString &part, SpectrumFile *file, QString *error)
{
    const std::string_view view(text.constData(), static_cast<std::size_t>(text.size()));
    text = numeric::isWideText(view) ? numeric::wideTextToUtf8(text) : text.mid(numeric::utf8MarkLength(view));
    if (isMap(text)) {
        *error = ImportText::tr("it is a map, not a spectrum");
        return false;
    }
    if (isXdi(text))
        return readXdi(text, part, file, error);
    if (isAthenaProject(text))
        return readAthena(text, part, file, error);
    if (isOwnFormat(text)) {
        file->format = QStringLiteral("angles and counts");
        file->own = text;
        return true;
    }
    return readColumns(text, part, file, error);
}

} // namespace

bool readSpectrumFile(const QString &name, SpectrumFile *file, QString *error)
{
    const NamedPart named = splitName(name);
    QByteArray bytes;
    file->path = named.file;
    if (!readFile(named.file, &bytes, error))
        return false;
    QByteArray unpacked;
    bool good = true;
    if (isGzip(bytes)) {
        good = gunzip(bytes, &unpacked, error);
        bytes = unpacked;
    }
    good = good && readText(bytes, named.part, file, error);
    for (ImportedSpectrum &spectrum : file->spectra)
        good = good && tidySpectrum(&spectrum, error);
    if (!good)
        *error = QDir::toNativeSeparators(named.file) + QLatin1String(": ") + *error;
    return good;
}
