#pragma once

#include "mapdata/MapHeader.h"
#include "mapdata/MapLoadResult.h"

#include <QIODevice>
#include <QString>

#include <vector>

/// A run of whole lines of a map data file that one worker counts and parses.
struct MapSegment {
    qint64 begin = 0; ///< first byte
    qint64 end = 0;   ///< behind the last byte
    qint64 room = 0;  ///< records there may be, at most
    qint64 firstSlot = 0;
    qint64 count = 0; ///< records there are
    bool lacksRoom = false;
    bool hasKnownPositions = false; ///< its positions are those of another map and were not stored
    qint64 unreadable = 0;          ///< records with a value that is no number
    MapHeader header;
    MapLoadProblem problem = MapLoadProblem::None;
    QString systemText; ///< what the system says about NotRead
};

/// Cuts the bytes [begin, end) at starts of lines into at most `count` segments of about the same length.
std::vector<MapSegment> cutAtLines(QIODevice *device, qint64 begin, qint64 end, qint64 count);

/// Finds out how many records the segment needs room for: as many as it has lines, in blocks of `blockBytes`.
MapLoadProblem countRecords(MapSegment *segment, QIODevice *device, qint64 blockBytes);

/// Room for the lines that samples all over the segment let expect, and a few more. False for a short segment.
bool estimateRecords(MapSegment *segment, QIODevice *device);
