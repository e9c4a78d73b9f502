#pragma once

#include "mapdata/MapFileReader.h"
#include "mapdata/MapHeader.h"
#include "mapdata/MapSegments.h"

#include <QIODevice>
#include <QString>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

/// Loads one map data file: reads its leading header lines, cuts the rest into segments, has these parsed by several
/// threads straight into the columns of the map, and joins what they found.
class MapLoader
{
public:
    using Device = std::unique_ptr<QIODevice>;
    /// Opens the bytes once more: every worker reads through a device of its own. Null when that fails.
    using OpenDevice = std::function<Device()>;

    /// `device` and whatever `open` gives are open and hold the same bytes.
    MapLoader(QIODevice *device, OpenDevice open, A2DData *data, const MapReadOptions &options)
        : m_device(device)
        , m_open(std::move(open))
        , m_data(data)
        , m_options(options)
    {
    }

    /// Reads the bytes from `begin` to the end of the device. Gives what stood in the way; the data are in an undefined
    /// but valid state then. Throws std::bad_alloc.
    MapLoadProblem load(qint64 begin);

    const MapHeader &header() const { return m_header; }
    /// What the system says about NotRead.
    const QString &systemText() const { return m_systemText; }

private:
    MapLoadProblem readLeadingHeader(qint64 begin, qint64 end, qint64 *dataBegin);
    const A2DData *likelyOther() const;
    MapLoadProblem count(bool mayEstimate);
    bool placeByPositions();
    MapLoadProblem parseSegments(bool mayEstimate, bool *lacksRoom);
    MapLoadProblem parse(qint64 begin, qint64 end, qint64 workers);
    template <typename Work>
    MapLoadProblem inParallel(Work work);
    bool layoutStays() const;
    void settlePositions(const A2DData::Columns &columns);
    void closeGaps(const A2DData::Columns &columns);
    void shareWithOthers();
    MapLoadFacts facts() const;

    QIODevice *m_device;
    OpenDevice m_open;
    A2DData *m_data;
    MapReadOptions m_options;
    MapHeader m_header;
    std::vector<MapSegment> m_segments;
    const A2DData *m_other = nullptr; ///< positions are compared with its while they are read; null: with none
    QString m_systemText;
};
