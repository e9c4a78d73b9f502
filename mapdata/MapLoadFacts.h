#pragma once

#include <QtGlobal>

#include <optional>

/// Two records between which a position does not go the way that the header gives it: x along each row, y from row to
/// row.
struct OrderBreak {
    bool isAlongX = true;
    qint64 from = 0; ///< of the two the one that stands first in the file, counted from 0
    qint64 to = 0;
    double positionFrom = 0.0; ///< x or y, as in the file
    double positionTo = 0.0;
};

/// What was noticed while a map data file was read.
struct MapLoadFacts {
    qint64 unreadableRecords = 0; ///< with a value that is no number and was read as 0
    std::optional<OrderBreak> orderBreak;
    bool changedMeanwhile = false; ///< the file had another size or time when it had been read
};
