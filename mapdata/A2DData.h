#pragma once

#include "mapdata/MapGrid.h"
#include "mapdata/MapLoadFacts.h"
#include "numeric/Plane.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <cstddef>

/// One pixel of a map: its position as written in the file, the transmitted and the incident intensity (counts or
/// any common unit; with I0 = 1 the transmission ratio is in I). `extra` is empty after loading.
struct MapRecord {
    double x = 0.0;
    double y = 0.0;
    double I = 0.0;
    double I0 = 0.0;
    QVector<double> extra;
};

/// One map data file in memory: its header lines, its pixels in file order (row by row, x fastest) and the size of
/// the map. The pixels are kept as columns, 40 bytes per pixel. Nothing promises that nx * ny is the number of
/// pixels: whoever reads the map as a grid compares them first, in 64 bits. Moves, never copies.
class A2DData
{
public:
    /// The columns, each count() long; null as long as there has been no pixel.
    struct Columns {
        double *x = nullptr;
        double *y = nullptr;
        double *I = nullptr;
        double *I0 = nullptr;
        double *absorption = nullptr;
    };

    /// The header lines in file order, each with its white space simplified.
    QStringList headerLines() const;
    /// The same as one text, with a line feed between the lines.
    const QString &headerText() const { return m_headerText; }

    /// Number of pixel records.
    qint64 count() const { return static_cast<qint64>(m_x.size()); }
    /// Pixels per row, number of rows and their positions, as the file gives them.
    const MapGrid &grid() const { return m_grid; }
    int nx() const { return m_grid.nx; }
    int ny() const { return m_grid.ny; }

    /// The record `index`, 0 <= index < count().
    MapRecord record(qint64 index) const;

    /// The absorption of one pixel, computed when the map was loaded (see pixelAbsorption()); -1.0 for an index
    /// outside of the records.
    double absorption(qint64 index) const
    {
        return index < 0 || index >= count() ? -1.0 : m_absorption[static_cast<std::size_t>(index)];
    }

    const numeric::Plane &x() const { return m_x; }
    const numeric::Plane &y() const { return m_y; }
    const numeric::Plane &I() const { return m_I; }
    const numeric::Plane &I0() const { return m_I0; }
    /// The absorption of every pixel, count() values.
    const numeric::Plane &absorptions() const { return m_absorption; }

    /// What was noticed while the file was read.
    const MapLoadFacts &facts() const { return m_facts; }
    void setFacts(const MapLoadFacts &facts) { m_facts = facts; }

    /// Forgets everything, the memory included.
    void clear();
    void setHeaderText(const QString &text) { m_headerText = text; }
    void setGrid(const MapGrid &grid) { m_grid = grid; }
    void setSize(int nx, int ny);
    /// Takes the size, and no more of the grid, from the positions: nx is the number of pixels whose y is exactly the
    /// first pixel's, ny the number whose x is the first one's. 1 x 1 with one pixel, 0 x 0 with none; a NaN in the
    /// first position gives 0.
    void setSizeFromPositions();

    /// Keeps the positions of `other` in the place of its own where they are the same, bit for bit: the maps of one
    /// sample were measured at the same points, and need the memory for them once.
    void sharePositions(const A2DData &other);
    /// The same for positions that are known to be those of `other`; its own need not have been filled.
    void takePositions(const A2DData &other);
    bool sharesPositions(const A2DData &other) const;

    /// Makes room for `count` pixels, contents undefined, to be filled through the returned columns.
    /// Throws std::bad_alloc.
    Columns resize(qint64 count);
    /// Keeps the first `count` pixels.
    void truncate(qint64 count);

private:
    QString m_headerText;
    MapGrid m_grid;
    MapLoadFacts m_facts;
    numeric::Plane m_x;
    numeric::Plane m_y;
    numeric::Plane m_I;
    numeric::Plane m_I0;
    numeric::Plane m_absorption;
};

/// The absorption ln(I0 / I) of a pixel (Beer and Lambert's law). Without incident intensity the stored `I` is taken as
/// the absorption itself, without transmitted intensity it is 1.0; a negative ratio gives NaN.
double pixelAbsorption(double I, double I0);
