#include "mapdata/MapSegments.h"

#include "mapdata/BlockReader.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace
{

/// The first start of a line at `from` or behind it; `end` when there is none, or none within the longest line.
qint64 lineStart(QIODevice *device, qint64 from, qint64 end)
{
    qint64 at = from - 1; // a line feed right before makes `from` itself a start
    if (!device->seek(at))
        return end;
    std::array<char, 4096> bytes;
    while (at < std::min(end, from + BlockReader::longestLine)) {
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

} // namespace

std::vector<MapSegment> cutAtLines(QIODevice *device, qint64 begin, qint64 end, qint64 count)
{
    std::vector<MapSegment> segments;
    const qint64 step = (end - begin) / count;
    qint64 from = begin;
    for (qint64 i = 1; i <= count && from < end; ++i) {
        const qint64 wanted = begin + i * step;
        if (i < count && wanted <= from)
            continue; // a long line has swallowed this one
        MapSegment segment;
        segment.begin = from;
        segment.end = i < count ? lineStart(device, wanted, end) : end;
        from = segment.end;
        segments.push_back(segment);
    }
    return segments;
}

MapLoadProblem countRecords(MapSegment *segment, QIODevice *device, qint64 blockBytes)
{
    constexpr qint64 shortestRecord = 4; // "1 1" and a line feed, the last of which may be missing
    BlockReader reader(device, segment->begin, segment->end, blockBytes);
    std::string_view block;
    qint64 lines = 0;
    while (reader.next(&block))
        lines += countLineFeeds(block) + (block.back() == '\n' ? 0 : 1);
    segment->room = std::min(lines, (segment->end - segment->begin) / shortestRecord + 1);
    return reader.problem();
}

bool estimateRecords(MapSegment *segment, QIODevice *device)
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
