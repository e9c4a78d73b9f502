#pragma once

#include "mapdata/A2DData.h"
#include "mapdata/MapLoadResult.h"

#include <QByteArray>
#include <QString>
#include <QVector>

/// How a map is loaded. The values never depend on it.
struct MapReadOptions {
    int threads = 0;                ///< 0: one for each core
    qint64 segmentBytes = 1 << 20;  ///< a further thread starts for no less than this
    qint64 blockBytes = 256 * 1024; ///< read and parsed at once; small enough to stay in the cache
    /// Maps loaded before. Positions that are those of one of them, bit for bit, are shared with it and take no memory,
    /// not even while the file is read. The map that is loaded is none of them.
    QVector<const A2DData *> others = {};
};

/// Loads a map data file into `data`, whose memory is used again where it suffices.
///
/// The text is UTF-8, or UTF-16 or UTF-32 with a byte order mark. The first line decides about the kind of file: one
/// that starts with "# 2003901" is column-mapped, any other plain. Lines whose first token begins with "#" are header
/// lines wherever they stand; with the keyword as token 1, in any case of letters:
///   AXIS    8 tokens or more: token 7 is the last index along x (token 2 is 0) or y (token 2 is 1); where token 5 and
///           6 are numbers and token 4 is none, tokens 3 to 6 are its name, its unit, its first position and its step
///   ENERGY  4 tokens or more: token 3 is the energy
///   I0, I   3 tokens or more: the integer behind the first ":" is the column of a column-mapped file
/// All other lines are data: {x, y, I, I0} is {t0, t1, t2, t3} in a plain file, {t0, t1, t2, 1.0} with exactly three
/// tokens, and {t0, t1, t(I column + 2), t(I0 column + 2)} in a column-mapped file. A line that lacks such a token is
/// ignored, a token that is no number reads as 0. A column-mapped file takes its size from its positions.
///
/// When the file cannot be opened, or is no regular file, the data stay as they are. Otherwise they hold what was
/// read, also when that is no usable map; they are empty when reading failed half-way, memory did not suffice or a line
/// was longer than BlockReader::longestLine. A file that changes while it is read gives some of its lines, old or new;
/// that, and whatever else makes the map doubtful, stands in its MapLoadFacts.
MapLoadResult loadMapFile(const QString &path, A2DData *data, const MapReadOptions &options = {});

/// The same for the contents of a file; `opened` is always true.
MapLoadResult parseMapText(const QByteArray &text, A2DData *data, const MapReadOptions &options = {});
