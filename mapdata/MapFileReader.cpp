#include "mapdata/MapFileReader.h"

#include "mapdata/MapLoader.h"
#include "numeric/TextScanner.h"

#include <QBuffer>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QIODevice>

#include <cstddef>
#include <memory>
#include <new>
#include <string_view>

namespace
{

using Device = MapLoader::Device;
using OpenDevice = MapLoader::OpenDevice;

/// What of a file changes when another program writes to it.
struct FileState {
    explicit FileState(const QString &path)
        : FileState(QFileInfo(path))
    {
    }
    explicit FileState(const QFileInfo &info)
        : size(info.size())
        , time(info.lastModified())
    {
    }
    bool operator!=(const FileState &other) const { return size != other.size || time != other.time; }

    qint64 size;
    QDateTime time;
};

MapLoadResult loadFrom(QIODevice *device, const OpenDevice &open, qint64 begin, A2DData *data,
                       const MapReadOptions &options)
{
    MapLoader loader(device, open, data, options);
    MapLoadResult result;
    result.problem = loader.load(begin);
    result.loaded = result.problem == MapLoadProblem::None;
    result.systemText = loader.systemText();
    if (result.loaded || result.problem == MapLoadProblem::NoRecords || result.problem == MapLoadProblem::NoSize)
        result.energyText = loader.header().energyText();
    else
        data->clear();
    return result;
}

OpenDevice openerOf(const QByteArray &text)
{
    return [text]() -> Device {
        auto buffer = std::make_unique<QBuffer>();
        buffer->setData(text);
        buffer->open(QIODevice::ReadOnly);
        return buffer;
    };
}

/// Loads a device whatever the encoding of its text.
MapLoadResult loadEncoded(QIODevice *device, const OpenDevice &open, A2DData *data, const MapReadOptions &options)
{
    constexpr qint64 longestMark = 4;
    const QByteArray start = device->read(longestMark);
    const std::string_view mark(start.constData(), static_cast<std::size_t>(start.size()));
    if (!numeric::isWideText(mark))
        return loadFrom(device, open, numeric::utf8MarkLength(mark), data, options);

    constexpr qint64 longestWideText = 1 << 30; // its UTF-8 form must fit a QByteArray
    if (device->size() > longestWideText)
        throw std::bad_alloc();
    device->seek(0);
    const OpenDevice openUtf8 = openerOf(numeric::wideTextToUtf8(device->readAll()));
    return loadFrom(openUtf8().get(), openUtf8, 0, data, options);
}

/// The same where memory may not suffice.
MapLoadResult loadOpened(QIODevice *device, const OpenDevice &open, A2DData *data, const MapReadOptions &options)
{
    MapLoadResult result;
    try {
        result = loadEncoded(device, open, data, options);
    } catch (const std::bad_alloc &) {
        qDebug("not enough memory for a map data file");
        data->clear();
        result.problem = MapLoadProblem::NoMemory;
    }
    result.opened = true;
    return result;
}

} // namespace

MapLoadResult loadMapFile(const QString &path, A2DData *data, const MapReadOptions &options)
{
    const QFileInfo info(path);
    if (!info.isFile()) { // a pipe or device could block for ever
        qDebug("no map data file: %s", qUtf8Printable(path));
        return {};
    }
    const FileState before(info);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        MapLoadResult result;
        result.systemText = file.errorString();
        return result;
    }
    const OpenDevice open = [path]() -> Device {
        auto again = std::make_unique<QFile>(path);
        return again->open(QIODevice::ReadOnly | QIODevice::Unbuffered) ? std::move(again) : nullptr;
    };
    const MapLoadResult result = loadOpened(&file, open, data, options);
    MapLoadFacts facts = data->facts();
    facts.changedMeanwhile = FileState(path) != before;
    data->setFacts(facts);
    return result;
}

MapLoadResult parseMapText(const QByteArray &text, A2DData *data, const MapReadOptions &options)
{
    const OpenDevice open = openerOf(text);
    return loadOpened(open().get(), open, data, options);
}
