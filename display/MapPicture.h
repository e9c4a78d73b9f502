#pragma once

#include "display/ColourScale.h"

#include <QImage>

#include <cstddef>
#include <limits>
#include <vector>

class ChCoord;
class QPainter;
class QRectF;

/// The values of a map of nx x ny cells, row by row, borrowed for a call. Cell (i, j) covers the real coordinates from
/// (i, j) to (i + 1, j + 1).
struct MapValues {
    const double *values = nullptr;
    int nx = 0;
    int ny = 0;
    const quint8 *mask = nullptr; ///< one per value, or none: cells that are not 0 are hidden
    /// How many values there are: the cells that have none are drawn as those whose value is not finite.
    std::size_t count = std::numeric_limits<std::size_t>::max();
};

/// The picture of a map, coloured once and then drawn from memory until something changes.
class MapPicture
{
public:
    /// The values changed where they stand: the next update colours anew.
    void invalidate() { m_stale = true; }

    /// Colours the map, unless nothing changed since the last time: neither the arrays, their size, the scale or the
    /// table, nor was invalidate() called. Returns whether it coloured. An empty map, or one too large for an image,
    /// leaves an empty picture.
    bool update(const MapValues &map, const ColourScale &scale, const ColourTable &table);

    /// Whether the next update would colour whatever the scale: other values, or invalidated.
    bool isStale(const MapValues &map) const;

    /// One pixel per cell up to the last row that has a value; the first line is the row at y = 0.
    const QImage &image() const { return m_image; }

    /// Draws the cells that lie within the inner rectangle of `cc`, each pixel of the device in the colour of the cell
    /// that its centre lies in. Where cells are at least 10 pixels wide and high, they are outlined in grey.
    void draw(QPainter *painter, const ChCoord &cc);

private:
    void drawPixels(QPainter *painter, const ChCoord &cc, const QRectF &inner);
    void drawScaled(QPainter *painter, const ChCoord &cc, const QRectF &inner) const;
    void drawOutlines(QPainter *painter, const ChCoord &cc, const QRectF &inner) const;

    QImage m_image;
    QImage m_shown; // in the pixels of the device; kept for its memory
    std::vector<int> m_columns, m_rows;
    quint32 m_noValue = 0; // colour of the cells that have none
    MapValues m_map;       // what m_image was coloured from
    ColourScale m_scale;
    ColourTable m_table;
    bool m_stale = true;
};
