#pragma once

#include <QString>

/// Why loading a map data file did not give a map.
enum class MapLoadProblem {
    None,
    NotOpened,   ///< there is no such regular file, or the system does not open it
    NoMemory,    ///< its contents do not fit into memory
    NotRead,     ///< the system reported an error half-way
    LineTooLong, ///< longer than BlockReader::longestLine
    NoRecords,   ///< no line of it is a pixel
    NoSize       ///< it does not say how many columns and rows it has
};

/// What became of loading a map data file.
struct MapLoadResult {
    bool opened = false; ///< false: no readable regular file; the data are untouched then
    bool loaded = false; ///< a usable map: at least one record, nx > 0 and ny > 0
    QString energyText;  ///< as written in the last energy line (eV); null when the file has none
    MapLoadProblem problem = MapLoadProblem::NotOpened; ///< None when loaded
    QString systemText; ///< what the system says about NotOpened or NotRead; empty when it says nothing
};
