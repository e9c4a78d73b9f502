#pragma once

#include "import/Image.h"
#include "import/ImageStack.h"
#include "import/ImportOptions.h"
#include "mapdata/MapText.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

/// The grid that all maps of an import share, in the texts of their files.
struct MapGridText {
    MapAxisText x, y;                      ///< a first position or step of "-" says that the steps are uneven
    std::vector<QByteArray> columns, rows; ///< the positions, each followed by a blank
    bool isCounted = false;                ///< an axis has no positions of its own, or equal ones: pixel numbers
    bool hasDropped = false;               ///< an axis has positions that do not tell its pixels apart
};
MapGridText mapGridText(int width, int height, const PixelAxis &x, const PixelAxis &y);

/// What one map file says.
struct MapToWrite {
    double energy = 0.0; ///< eV
    QStringList comments;
    const Image *signal = nullptr;   ///< I; the absorption itself where there is no I0
    const Image *incident = nullptr; ///< I0 of each pixel; null: `level` for all
    double level = 0.0;              ///< 0: the signal is the absorption
};

/// Energy in the digits of a map file, which a job repeats.
QByteArray energyText(double energy);

/// Writes a map file as a whole or not at all. Its bytes do not depend on `threads`.
[[nodiscard]] bool writeMap(const QString &path, ImportOptions::Layout layout, const MapGridText &grid,
                            const MapToWrite &map, int threads);
