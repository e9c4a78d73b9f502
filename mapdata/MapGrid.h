#pragma once

#include <QString>

#include <optional>

/// What a header says about the positions along one axis of a map; nothing where it does not say so.
struct MapAxis {
    QString name;                ///< such as "x"
    std::optional<double> start; ///< position of the first pixel, in the grid's unit
    std::optional<double> step;  ///< from one pixel to the next, in the grid's unit
};

/// What a map data file says about its pixels. Nothing promises that nx * ny is the number of records.
struct MapGrid {
    int nx = 0;        ///< pixels per row; 0 when the file does not say
    int ny = 0;        ///< rows; 0 when the file does not say
    QString unit = {}; ///< of the positions, such as "um"; empty when the file gives none, or two
    MapAxis x = {};
    MapAxis y = {};
};
