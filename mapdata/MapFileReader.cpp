#include "mapdata/MapFileReader.h"

#include "mapdata/BlockReader.h"
#include "mapdata/MapHeader.h"
#include "mapdata/PixelLineParser.h"
#include "numeric/ParallelRanges.h"
#include "numeric/TextScanner.h"

#include <QBuffer>
#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <QIODevice>
#include <QThread>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <functional>
#include <memory>
#include <new>
#include <string_view>
#include <utility>
#include <vector>

namespace
{

using Device = std::unique_ptr<QIODevice>;
/// Opens the bytes once more: every worker reads through a device of its own. Null when that fails.
using OpenDevice = std::function<Device()>;

/// A run of whole lines that one worker counts and parses.
struct Segment {
    qint64 begin = 0; ///< first byte
    qint64 end = 0;   ///< behind the last byte
    qint64 room = 0;  ///< records there may be, at most
    qint64 firstSlot = 0;
    qint64 count = 0; ///< records there are
    bool lacksRoom = false;
    MapHeader header;
    bool failed = false;
};

qint64 mostRecords(const Segment &segment)
{
    constexpr qint64 shortestRecord = 4; // "1 1" and a line feed, the last of which may be missing
    return (segment.end - segment.begin) / shortestRecord + 1;
}

class MapLoader
{
public:
    MapLoader(OpenDevice open, A2DData *data, const MapReadOptions &options)
        : m_open(std::move(open))
        , m_data(data)
        , m_options(options)
    {
    }

    /// Reads the bytes from `begin` to the end of the device. False when that failed; the data are in an undefined
    /// but valid state then. Throws std::bad_alloc.
    bool load(qint64 begin);

    const MapHeader &header() const { return m_header; }

private:
    bool readLeadingHeader(QIODevice *device, qint64 begin, qint64 end, qint64 *dataBegin);
    std::vector<Segment> cut(QIODevice *device, qint64 begin, qint64 end, qint64 count) const;
    qint64 lineStart(QIODevice *device, qint64 from, qint64 end) const;
    bool count(std::vector<Segment> *segments, bool mayEstimate) const;
    static bool estimate(Segment *segment, QIODevice *device);
    bool parse(std::vector<Segment> *segments, bool mayEstimate, bool *lacksRoom);
    bool parse(QIODevice *device, qint64 begin, qint64 end, qint64 workers, std::vector<Segment> *segments);
    template <typename Work>
    bool inParallel(std::vector<Segment> *segments, Work work) const;
    bool layoutStays(const std::vector<Segment> &segments) const;
    void closeGaps(const std::vector<Segment> &segments, const A2DData::Columns &columns);

    OpenDevice m_open;
    A2DData *m_data;
    MapReadOptions m_options;
    MapHeader m_header;
};

/// Takes the header lines before the first data line, empty lines among them; `dataBegin` is where that starts.
bool MapLoader::readLeadingHeader(QIODevice *device, qint64 begin, qint64 end, qint64 *dataBegin)
{
    BlockReader reader(device, begin, end, std::min<qint64>(m_options.blockBytes, 16 * 1024));
    std::string_view block;
    bool isFirst = true;
    *dataBegin = begin;
    while (reader.next(&block)) {
        numeric::LineScanner lines(block);
        std::string_view line;
        while (lines.next(&line)) {
            std::string_view token;
            const bool isEmpty = !numeric::TokenScanner(line).next(&token);
            if (!isEmpty && !isHeaderLine(line))
                return true;
            if (!isEmpty)
                m_header.addLine(numeric::simplifiedLine(line), isFirst);
            isFirst = false;
            *dataBegin = std::min(*dataBegin + static_cast<qint64>(line.size()) + 1, end);
        }
    }
    return !reader.failed();
}

/// The first start of a line at `from` or behind it; `end` when there is none.
qint64 MapLoader::lineStart(QIODevice *device, qint64 from, qint64 end) const
{
    qint64 at = from - 1; // a line feed right before makes `from` itself a start
    if (!device->seek(at))
        return end;
    std::vector<char> bytes(static_cast<std::size_t>(std::min<qint64>(m_options.blockBytes, 4096)));
    while (at < end) {
        const qint64 got = device->read(bytes.data(), std::min(end - at, static_cast<qint64>(bytes.size())));
        if (got <= 0)
            return end;
        const void *const feed = std::memchr(bytes.data(), '\n', static_cast<std::size_t>(got));
        if (feed)
            return at + (static_cast<const char *>(feed) - bytes.data()) + 1;
        at += got;
    }
    return end;
}

/// Cuts [begin, end) at starts of lines into at most `count` segments of about the same length.
std::vector<Segment> MapLoader::cut(QIODevice *device, qint64 begin, qint64 end, qint64 count) const
{
    std::vector<Segment> segments;
    const qint64 step = (end - begin) / count;
    qint64 from = begin;
    for (qint64 i = 1; i <= count && from < end; ++i) {
        const qint64 wanted = begin + i * step;
        if (i < count && wanted <= from)
            continue; // a long line has swallowed this one
        Segment segment;
        segment.begin = from;
        segment.end = i < count ? lineStart(device, wanted, end) : end;
        from = segment.end;
        segments.push_back(segment);
    }
    return segments;
}

/// Calls work(segment, device) for every segment, each with a device of its own, and waits for all.
template <typename Work>
bool MapLoader::inParallel(std::vector<Segment> *segments, Work work) const
{
    const auto guarded = [this, &work](Segment &segment) {
        try {
            const Device device = m_open();
            segment.failed = !device || !work(&segment, device.get());
        } catch (const std::bad_alloc &) { // must not leave the worker
            segment.failed = true;
        }
    };
    const auto some = [segments, &guarded](std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i)
            guarded((*segments)[i]);
    };
    constexpr std::size_t worthAThread = 1;
    if (!segments->empty())
        numeric::parallelRanges(segments->size(), 0, some, worthAThread);
    return std::none_of(segments->begin(), segments->end(), [](const Segment &segment) { return segment.failed; });
}

/// Finds out how many records each segment needs room for: exactly, as records behind a gap would have to be moved,
/// but for the last one, where an estimate saves reading the file twice.
bool MapLoader::count(std::vector<Segment> *segments, bool mayEstimate) const
{
    const Segment *const last = mayEstimate && !segments->empty() ? &segments->back() : nullptr;
    return inParallel(segments, [this, last](Segment *segment, QIODevice *device) {
        if (segment == last && estimate(segment, device))
            return true;
        BlockReader reader(device, segment->begin, segment->end, m_options.blockBytes);
        std::string_view block;
        qint64 lines = 0;
        while (reader.next(&block))
            lines += countLineFeeds(block) + (block.back() == '\n' ? 0 : 1);
        segment->room = std::min(lines, mostRecords(*segment));
        return !reader.failed();
    });
}

/// Room for the lines that samples all over the segment let expect, and a few more. False for a short segment.
bool MapLoader::estimate(Segment *segment, QIODevice *device)
{
    constexpr qint64 samples = 16;
    constexpr qint64 sampleBytes = 4096;
    constexpr qint64 longEnough = 8 * samples * sampleBytes;
    const qint64 bytes = segment->end - segment->begin;
    if (bytes < longEnough)
        return false;
    qint64 feeds = 0;
    for (qint64 i = 0; i < samples; ++i) {
        std::array<char, sampleBytes> sample;
        if (!device->seek(segment->begin + i * ((bytes - sampleBytes) / (samples - 1))) ||
            device->read(sample.data(), sampleBytes) != sampleBytes)
            return false;
        feeds += countLineFeeds(std::string_view(sample.data(), sample.size()));
    }
    constexpr double margin = 1.03; // costs addresses, no memory, and is too little for few files
    segment->room = static_cast<qint64>(static_cast<double>(bytes) * margin * static_cast<double>(feeds) /
                                        static_cast<double>(samples * sampleBytes));
    return true;
}

/// Parses the segments into the columns. `lacksRoom` becomes true when an estimate was too low; all is to be done
/// again then, without.
bool MapLoader::parse(std::vector<Segment> *segments, bool mayEstimate, bool *lacksRoom)
{
    if (!count(segments, mayEstimate))
        return false;
    qint64 total = 0;
    for (Segment &segment : *segments) {
        segment.firstSlot = total;
        total += segment.room;
    }
    const A2DData::Columns columns = m_data->resize(total);

    const MapHeader header = m_header.continuation();
    const bool parsed = inParallel(segments, [this, &columns, &header](Segment *segment, QIODevice *device) {
        BlockReader reader(device, segment->begin, segment->end, m_options.blockBytes);
        PixelLineParser parser(header, columns, segment->firstSlot, segment->room);
        std::string_view block;
        while (reader.next(&block))
            parser.parse(block);
        segment->count = parser.count();
        segment->lacksRoom = parser.lacksRoom();
        segment->header = parser.header();
        return !reader.failed();
    });
    if (!parsed)
        return false;
    *lacksRoom = !segments->empty() && segments->back().lacksRoom;
    closeGaps(*segments, columns);
    return true;
}

/// Cuts [begin, end) for so many workers and parses it, whatever the estimate.
bool MapLoader::parse(QIODevice *device, qint64 begin, qint64 end, qint64 workers, std::vector<Segment> *segments)
{
    bool lacksRoom = false;
    *segments = cut(device, begin, end, workers);
    if (!parse(segments, true, &lacksRoom))
        return false;
    return !lacksRoom || parse(segments, false, &lacksRoom);
}

/// Moves the records together where a segment had fewer than there was room for.
void MapLoader::closeGaps(const std::vector<Segment> &segments, const A2DData::Columns &columns)
{
    qint64 total = 0;
    for (const Segment &segment : segments) {
        if (segment.firstSlot != total) {
            for (double *const column : {columns.x, columns.y, columns.I, columns.I0, columns.absorption})
                std::memmove(column + total, column + segment.firstSlot,
                             static_cast<std::size_t>(segment.count) * sizeof(double));
        }
        total += segment.count;
    }
    m_data->truncate(total);
}

/// Whether every segment began with the layout that the lines before it had asked for.
bool MapLoader::layoutStays(const std::vector<Segment> &segments) const
{
    const RecordLayout layout = m_header.layout();
    return segments.empty() || std::all_of(segments.begin(), segments.end() - 1, [&layout](const Segment &segment) {
               return segment.header.layout() == layout;
           });
}

bool MapLoader::load(qint64 begin)
{
    const Device device = m_open();
    if (!device)
        return false;
    const qint64 end = std::max(device->size(), begin);
    qint64 dataBegin = begin;
    if (!readLeadingHeader(device.get(), begin, end, &dataBegin))
        return false;

    const qint64 threads = m_options.threads > 0 ? m_options.threads : QThread::idealThreadCount();
    const qint64 most = (end - dataBegin) / std::max<qint64>(m_options.segmentBytes, 1);
    std::vector<Segment> segments;
    if (!parse(device.get(), dataBegin, end, std::max<qint64>(std::min(threads, most), 1), &segments))
        return false;
    // A header line between the data may have changed the columns: one after the other, then.
    if (!layoutStays(segments) && !parse(device.get(), dataBegin, end, 1, &segments))
        return false;
    for (const Segment &segment : segments)
        m_header.append(segment.header);
    m_data->setHeaderText(m_header.text());
    m_data->setGrid(m_header.grid());
    if (m_header.sizeIsFromPositions())
        m_data->setSizeFromPositions();
    return true;
}

MapLoadResult loadFrom(const OpenDevice &open, qint64 begin, A2DData *data, const MapReadOptions &options)
{
    MapLoadResult result;
    result.opened = true;
    try {
        MapLoader loader(open, data, options);
        if (loader.load(begin)) {
            result.energyText = loader.header().energyText();
            result.loaded = data->nx() > 0 && data->ny() > 0 && data->count() > 0;
            return result;
        }
    } catch (const std::bad_alloc &) {
        qDebug("not enough memory for a map data file");
    }
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

/// Loads from any device, whatever the encoding of its text.
MapLoadResult loadEncoded(const OpenDevice &open, A2DData *data, const MapReadOptions &options)
{
    const Device device = open();
    if (!device)
        return {};
    constexpr qint64 longestMark = 4;
    const QByteArray start = device->read(longestMark);
    const std::string_view mark(start.constData(), static_cast<std::size_t>(start.size()));
    if (!numeric::isWideText(mark))
        return loadFrom(open, numeric::utf8MarkLength(mark), data, options);

    constexpr qint64 longestWideText = 1 << 30; // its UTF-8 form must fit a QByteArray
    QByteArray utf8;
    if (device->size() <= longestWideText && device->seek(0))
        utf8 = numeric::wideTextToUtf8(device->readAll());
    return loadFrom(openerOf(utf8), 0, data, options);
}

} // namespace

MapLoadResult loadMapFile(const QString &path, A2DData *data, const MapReadOptions &options)
{
    if (!QFileInfo(path).isFile()) { // a pipe or device could block for ever
        qDebug("no map data file: %s", qUtf8Printable(path));
        return {};
    }
    const OpenDevice open = [path]() -> Device {
        auto file = std::make_unique<QFile>(path);
        if (!file->open(QIODevice::ReadOnly | QIODevice::Unbuffered))
            return nullptr;
        return file;
    };
    return loadEncoded(open, data, options);
}

MapLoadResult parseMapText(const QByteArray &text, A2DData *data, const MapReadOptions &options)
{
    return loadEncoded(openerOf(text), data, options);
}
