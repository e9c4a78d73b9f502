#include "mapdata/MapLoader.h"

#include "mapdata/BlockReader.h"
#include "mapdata/PixelLineParser.h"
#include "mapdata/PixelOrder.h"
#include "numeric/ParallelRanges.h"
#include "numeric/TextScanner.h"

#include <QThread>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <optional>
#include <string_view>

namespace
{

struct Position {
    double x = 0.0;
    double y = 0.0;
};

/// The position of the record in the first line of a segment; nothing when that is no record or very long.
std::optional<Position> firstPosition(const MapSegment &segment, QIODevice *device, const MapHeader &header)
{
    std::array<char, 4096> bytes;
    const qint64 wanted = std::min(segment.end - segment.begin, static_cast<qint64>(bytes.size()));
    if (!device->seek(segment.begin) || device->read(bytes.data(), wanted) != wanted)
        return std::nullopt;
    const std::string_view text(bytes.data(), static_cast<std::size_t>(wanted));
    const auto feed = text.find('\n');
    if (feed == std::string_view::npos)
        return std::nullopt;
    Position position;
    MapRecord rest;
    double absorption = 0.0;
    PixelLineParser parser(header, {&position.x, &position.y, &rest.I, &rest.I0, &absorption}, 0, 1);
    parser.parse(text.substr(0, feed + 1));
    return parser.count() == 1 ? std::optional(position) : std::nullopt;
}

/// The record of `map` at a position that is nearest to the record `guess`; -1 when there is none up to `reach` away.
qint64 recordAt(const A2DData &map, const Position &position, qint64 guess, qint64 reach)
{
    const auto isThere = [&map, &position](qint64 i) {
        const auto index = static_cast<std::size_t>(i);
        return i >= 0 && i < map.count() && map.x()[index] == position.x && map.y()[index] == position.y;
    };
    for (qint64 away = 0; away <= reach; ++away) {
        for (const qint64 candidate : {guess + away, guess - away}) {
            if (isThere(candidate))
                return candidate;
        }
    }
    return -1;
}

} // namespace

/// Takes the header lines before the first data line, empty lines among them; `dataBegin` is where that starts.
MapLoadProblem MapLoader::readLeadingHeader(qint64 begin, qint64 end, qint64 *dataBegin)
{
    BlockReader reader(m_device, begin, end, std::min<qint64>(m_options.blockBytes, 16 * 1024));
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
                return MapLoadProblem::None;
            if (!isEmpty)
                m_header.addLine(numeric::simplifiedLine(line), isFirst);
            isFirst = false;
            *dataBegin = std::min(*dataBegin + static_cast<qint64>(line.size()) + 1, end);
        }
    }
    if (reader.problem() == MapLoadProblem::NotRead)
        m_systemText = m_device->errorString();
    return reader.problem();
}

/// The map whose positions this one probably has: one of the size that the header says, any where it says none.
const A2DData *MapLoader::likelyOther() const
{
    const MapGrid grid = m_header.grid();
    const bool hasSize = !m_header.sizeIsFromPositions() && grid.nx > 0 && grid.ny > 0;
    const auto other = std::find_if(m_options.others.begin(), m_options.others.end(), [&](const A2DData *map) {
        return map->count() > 0 && (!hasSize || (map->nx() == grid.nx && map->ny() == grid.ny));
    });
    return other == m_options.others.end() ? nullptr : *other;
}

/// Calls work(segment, device) for every segment and waits for all. The calling thread reads through the first device,
/// each other one through a device of its own; where none could be opened, the calling thread does that as well.
template <typename Work>
MapLoadProblem MapLoader::inParallel(Work work)
{
    std::vector<char> isLeft(m_segments.size(), 0);
    const auto attend = [this, &work](std::size_t i, QIODevice *device) {
        m_segments[i].problem = work(&m_segments[i], device);
        if (m_segments[i].problem == MapLoadProblem::NotRead)
            m_segments[i].systemText = device->errorString();
    };
    const auto some = [this, &isLeft, &attend](std::size_t begin, std::size_t end) {
        const Device own = begin > 0 ? m_open() : nullptr;
        QIODevice *const device = begin > 0 ? own.get() : m_device;
        for (std::size_t i = begin; i < end; ++i) {
            isLeft[i] = device == nullptr;
            if (device)
                attend(i, device);
        }
    };
    constexpr std::size_t worthAThread = 1;
    if (!m_segments.empty())
        numeric::parallelRanges(m_segments.size(), 0, some, worthAThread);
    for (std::size_t i = 0; i < m_segments.size(); ++i) {
        if (isLeft[i])
            attend(i, m_device);
        if (m_segments[i].problem != MapLoadProblem::None) {
            m_systemText = m_segments[i].systemText;
            return m_segments[i].problem;
        }
    }
    return MapLoadProblem::None;
}

/// Finds out how many records each segment needs room for: exactly, as records behind a gap would have to be moved,
/// but for the last one, where an estimate saves reading the file twice.
MapLoadProblem MapLoader::count(bool mayEstimate)
{
    const MapSegment *const last = mayEstimate && !m_segments.empty() ? &m_segments.back() : nullptr;
    return inParallel([this, last](MapSegment *segment, QIODevice *device) {
        if (segment == last && estimateRecords(segment, device))
            return MapLoadProblem::None;
        return countRecords(segment, device, m_options.blockBytes);
    });
}

/// Places the segments where their first positions stand in the other map, which saves counting their lines. What comes
/// out for another order or number of records is too little room, or gaps. False when a position is not found.
bool MapLoader::placeByPositions()
{
    if (!m_other || m_segments.size() < 2)
        return false;
    const MapHeader header = m_header.continuation();
    const qint64 begin = m_segments.front().begin;
    const double bytes = static_cast<double>(m_segments.back().end - begin);
    qint64 slot = 0;
    for (std::size_t i = 0; i < m_segments.size(); ++i) {
        const qint64 before = slot;
        const double part = static_cast<double>(m_segments[i].begin - begin) / bytes;
        const auto guess = static_cast<qint64>(part * static_cast<double>(m_other->count()));
        const qint64 reach = i == 0 ? 0 : 8 + m_other->count() / 16; // lines vary in length
        const auto first = firstPosition(m_segments[i], m_device, header);
        slot = first ? recordAt(*m_other, *first, guess, reach) : -1;
        if (slot < 0 || (i > 0 && slot <= before))
            return false;
        if (i > 0)
            m_segments[i - 1].room = slot - before;
    }
    m_segments.back().room = m_other->count() - slot;
    return true;
}

/// Parses the segments into the columns. `lacksRoom` becomes true when an estimate was too low; all is to be done
/// again then, without.
MapLoadProblem MapLoader::parseSegments(bool mayEstimate, bool *lacksRoom)
{
    if (!mayEstimate || !placeByPositions()) {
        const MapLoadProblem counting = count(mayEstimate);
        if (counting != MapLoadProblem::None)
            return counting;
    }
    qint64 total = 0;
    for (MapSegment &segment : m_segments) {
        segment.firstSlot = total;
        total += segment.room;
    }
    const A2DData::Columns columns = m_data->resize(total);

    const MapHeader header = m_header.continuation();
    KnownPositions known;
    if (m_other)
        known = {m_other->x().data(), m_other->y().data(), m_other->count()};
    const MapLoadProblem parsing = inParallel([&](MapSegment *segment, QIODevice *device) {
        BlockReader reader(device, segment->begin, segment->end, m_options.blockBytes);
        PixelLineParser parser(header, columns, segment->firstSlot, segment->room, known);
        std::string_view block;
        while (reader.next(&block))
            parser.parse(block);
        segment->count = parser.count();
        segment->lacksRoom = parser.lacksRoom();
        segment->hasKnownPositions = parser.hasKnownPositions();
        segment->unreadable = parser.unreadable();
        segment->header = parser.header();
        return reader.problem();
    });
    if (parsing != MapLoadProblem::None)
        return parsing;
    *lacksRoom = std::any_of(m_segments.begin(), m_segments.end(), [](const MapSegment &s) { return s.lacksRoom; });
    if (!*lacksRoom)
        settlePositions(columns);
    return MapLoadProblem::None;
}

/// Cuts [begin, end) for so many workers and parses it, whatever the estimate.
MapLoadProblem MapLoader::parse(qint64 begin, qint64 end, qint64 workers)
{
    bool lacksRoom = false;
    m_segments = cutAtLines(m_device, begin, end, workers);
    const MapLoadProblem problem = parseSegments(true, &lacksRoom);
    return lacksRoom ? parseSegments(false, &lacksRoom) : problem;
}

/// Takes the positions of the other map when all of this one's are the same; otherwise stores those that the segments
/// have left to it, and moves the records together.
void MapLoader::settlePositions(const A2DData::Columns &columns)
{
    qint64 total = 0;
    bool areKnown = m_other != nullptr;
    for (const MapSegment &segment : m_segments) {
        areKnown = areKnown && segment.hasKnownPositions && segment.firstSlot == total;
        total += segment.count;
    }
    if (areKnown && total == m_other->count()) {
        m_data->takePositions(*m_other);
        m_data->truncate(total);
        return;
    }
    for (const MapSegment &segment : m_segments) {
        if (!segment.hasKnownPositions)
            continue;
        const auto bytes = static_cast<std::size_t>(segment.count) * sizeof(double);
        std::memcpy(columns.x + segment.firstSlot, m_other->x().data() + segment.firstSlot, bytes);
        std::memcpy(columns.y + segment.firstSlot, m_other->y().data() + segment.firstSlot, bytes);
    }
    closeGaps(columns);
}

/// Moves the records together where a segment had fewer than there was room for.
void MapLoader::closeGaps(const A2DData::Columns &columns)
{
    qint64 total = 0;
    for (const MapSegment &segment : m_segments) {
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
bool MapLoader::layoutStays() const
{
    const RecordLayout layout = m_header.layout();
    return m_segments.empty() ||
           std::all_of(m_segments.begin(), m_segments.end() - 1,
                       [&layout](const MapSegment &segment) { return segment.header.layout() == layout; });
}

/// What the comparison while reading has missed: another map with these positions, records behind a gap.
void MapLoader::shareWithOthers()
{
    for (const A2DData *const other : qAsConst(m_options.others))
        m_data->sharePositions(*other);
}

MapLoadFacts MapLoader::facts() const
{
    MapLoadFacts facts;
    for (const MapSegment &segment : m_segments)
        facts.unreadableRecords += segment.unreadable;
    const MapGrid &grid = m_data->grid();
    for (const A2DData *const other : m_options.others) {
        if (m_data->sharesPositions(*other) && other->nx() == grid.nx && other->ny() == grid.ny &&
            other->grid().x.step == grid.x.step && other->grid().y.step == grid.y.step) {
            facts.orderBreak = other->facts().orderBreak;
            return facts;
        }
    }
    facts.orderBreak = findOrderBreak(*m_data);
    return facts;
}

MapLoadProblem MapLoader::load(qint64 begin)
{
    const qint64 end = std::max(m_device->size(), begin);
    qint64 dataBegin = begin;
    MapLoadProblem problem = readLeadingHeader(begin, end, &dataBegin);
    if (problem != MapLoadProblem::None)
        return problem;

    m_other = likelyOther();
    const qint64 threads = m_options.threads > 0 ? m_options.threads : QThread::idealThreadCount();
    const qint64 most = (end - dataBegin) / std::max<qint64>(m_options.segmentBytes, 1);
    problem = parse(dataBegin, end, std::max<qint64>(std::min(threads, most), 1));
    // A header line between the data may have changed the columns: one after the other, then.
    if (problem == MapLoadProblem::None && !layoutStays())
        problem = parse(dataBegin, end, 1);
    if (problem != MapLoadProblem::None)
        return problem;
    for (const MapSegment &segment : m_segments)
        m_header.append(segment.header);
    m_data->setHeaderText(m_header.text());
    m_data->setGrid(m_header.grid());
    if (m_header.sizeIsFromPositions())
        m_data->setSizeFromPositions();
    shareWithOthers();
    m_data->setFacts(facts());
    if (m_data->count() == 0)
        return MapLoadProblem::NoRecords;
    return m_data->nx() > 0 && m_data->ny() > 0 ? MapLoadProblem::None : MapLoadProblem::NoSize;
}
