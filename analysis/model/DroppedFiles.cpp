#include "analysis/model/DroppedFiles.h"

#include "analysis/model/InputFiles.h"
#include "mapdata/A2DData.h"
#include "mapdata/MapFileReader.h"
#include "mapdata/PixelLineParser.h"
#include "numeric/DecimalScale.h"
#include "numeric/TextScanner.h"
#include "spectrum/SpectrumReader.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <tuple>

namespace
{

constexpr qint64 beginning = 64 * 1024; // bytes; the headers of measurements are far shorter

enum class Kind { Map, Spectrum, Job, Other };

struct KnownFile {
    QString path;
    Kind kind = Kind::Other;
    double energy = 0.0; ///< of a map, eV; 0: it names none
};

/// "map2" before "map10": digits count as the number they make.
bool isBefore(const QString &l, const QString &r)
{
    int i = 0, j = 0;
    const auto numberAt = [](const QString &text, int *at) {
        const int begin = *at;
        while (*at < text.size() && text[*at].isDigit())
            ++*at;
        return text.mid(begin, *at - begin).toDouble();
    };
    while (i < l.size() && j < r.size()) {
        if (l[i].isDigit() && r[j].isDigit()) {
            const double left = numberAt(l, &i), right = numberAt(r, &j);
            if (left != right)
                return left < right;
        } else if (l[i].toCaseFolded() != r[j].toCaseFolded()) {
            return l[i].toCaseFolded() < r[j].toCaseFolded();
        } else {
            ++i;
            ++j;
        }
    }
    return std::make_tuple(l.size() - i, l) < std::make_tuple(r.size() - j, r);
}

/// Behind the header of a result stands an empty line, then cells of a fixed width, a blank before each.
bool isResult(std::string_view text)
{
    constexpr std::size_t cell = numeric::decimalscale::width + 1;
    numeric::LineScanner lines(text);
    std::string_view line;
    while (lines.next(&line) && isHeaderLine(line)) {
    }
    if (!numeric::simplifiedLine(line).isEmpty() || !lines.next(&line) || line.size() < 2 * cell)
        return false;
    const std::string_view end = line.substr(2 * cell, 1);
    return line[0] == ' ' && line[cell - 1] != ' ' && line[cell] == ' ' && line[2 * cell - 1] != ' ' &&
           (end.empty() || numeric::whiteSpaceAt(end.data(), end.data() + 1) > 0);
}

KnownFile recognized(const QString &path, A2DData *data)
{
    KnownFile known;
    known.path = path;
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) // a pipe could block for ever
        return known;
    const QByteArray bytes = file.read(beginning);
    const std::string_view text(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    MapReadOptions options;
    options.threads = 1;
    const MapLoadResult map = parseMapText(bytes, data, options);
    if (map.loaded && !isResult(text)) {
        known.kind = Kind::Map;
        known.energy = qMax(0.0, map.energyText.toDouble());
    } else if (parseSpectrum(text).hasData) {
        known.kind = Kind::Spectrum;
    } else if (bytes.mid(numeric::utf8MarkLength(text)).trimmed().startsWith('{')) {
        known.kind = Kind::Job;
    }
    return known;
}

/// Of all dropped paths, by name.
QStringList filesOf(const QStringList &paths)
{
    QStringList files;
    for (const QString &path : paths) {
        if (!QFileInfo(path).isDir()) {
            files << path;
            continue;
        }
        for (const QFileInfo &info : QDir(path).entryInfoList(QDir::Files))
            files << info.filePath();
    }
    std::stable_sort(files.begin(), files.end(), [](const QString &l, const QString &r) {
        return isBefore(QFileInfo(l).fileName(), QFileInfo(r).fileName());
    });
    return files;
}

} // namespace

DroppedFiles sortDropped(const QStringList &paths)
{
    DroppedFiles dropped;
    QVector<KnownFile> maps;
    A2DData data;
    for (const QString &path : filesOf(paths)) {
        const KnownFile file = recognized(path, &data);
        if (file.kind == Kind::Map)
            maps << file;
        else if (file.kind == Kind::Spectrum)
            dropped.spectra << path;
        else if (file.kind == Kind::Job && paths == QStringList(path))
            dropped.job = path;
        else
            dropped.others << path;
    }
    std::stable_sort(maps.begin(), maps.end(), [](const KnownFile &l, const KnownFile &r) {
        const auto place = [](const KnownFile &file) {
            return std::make_tuple(file.energy == 0, file.energy);
        };
        return place(l) < place(r);
    });
    for (const KnownFile &map : qAsConst(maps))
        dropped.maps << map.path;
    return dropped;
}

QVector<int> placesForSpectra(const QStringList &spectra, QStringList present)
{
    for (QString &path : present)
        path = path.isEmpty() ? path : identityOf(path);
    const int target = present.size() - 1;
    QVector<int> places;
    for (const QString &spectrum : spectra) {
        const bool isTarget = QFileInfo(spectrum).fileName().contains(QLatin1String("target"), Qt::CaseInsensitive);
        int place = present.indexOf(identityOf(spectrum));
        if (place < 0)
            place = isTarget ? present.indexOf(QString(), target) : present.mid(0, target).indexOf(QString());
        if (place >= 0)
            present[place] = identityOf(spectrum);
        places << place;
    }
    return places;
}
