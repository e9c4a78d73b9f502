#pragma once

#include "analysis/methods/ResultPosition.h"
#include "mapdata/A2DData.h"
#include "mapdata/MapGrid.h"
#include "numeric/Plane.h"

#include <QStringList>
#include <QVector>
#include <QtGlobal>

#include <array>
#include <cstddef>

/// The result of one pixel.
struct ResultRecord {
    double x = 0.0; ///< position as in the map files
    double y = 0.0;
    double a = 0.0;         ///< fraction of the first reference
    double t = 0.0;         ///< thickness: t/ts of the four-points method, total edge jump of the non-equivalent method
    QVector<double> values; ///< by ResultPosition; empty for a four-points result
};

/// The results of the last map calculation, kept as one plane per quantity: width * height pixels row by row, x
/// fastest. Memory is kept from run to run.
class ResultRecords
{
public:
    static constexpr int quantityCount = ResultPosition::count;

    enum class Method { FourPoints, NonEquivalent };

    static constexpr qint64 mostPixels = qint64(1) << 27;

    /// Makes room for as many pixels as the size of `map` says; the values are undefined until filled. The positions
    /// are those of the map's pixels, 0 where it has none; they are shared with the map, not copied. The quantity
    /// planes exist for a non-equivalent result only. False, and everything as it was, when that is more than
    /// mostPixels or more than the memory holds.
    [[nodiscard]] bool reset(Method method, const A2DData &map);

    Method method() const { return m_method; }
    /// Of the map that gave the size and the positions.
    const MapGrid &grid() const { return m_grid; }
    int width() const { return m_grid.nx; }
    int height() const { return m_grid.ny; }
    std::size_t count() const { return m_count; }

    /// Header lines of the first map file that took part, for the result file.
    QStringList headerLines;

    /// In a non-equivalent result, a and t are the quantities at ResultPosition::ratio and amount.
    double *a() { return m_planes[ResultPosition::ratio].data(); }
    double *t() { return m_planes[ResultPosition::amount].data(); }
    /// To be filled; non-equivalent results only, and not after setZero().
    double *quantity(int position) { return m_planes[static_cast<std::size_t>(position)].data(); }
    /// Makes the whole quantity 0; all such quantities share one plane.
    void setZero(int position);
    /// Whether setZero() made the quantity 0: the method knows no such quantity.
    bool isZero(int position) const { return m_isZero[static_cast<std::size_t>(position)]; }
    const double *x() const { return m_x.data(); }
    const double *y() const { return m_y.data(); }
    const double *a() const { return m_planes[ResultPosition::ratio].data(); }
    const double *t() const { return m_planes[ResultPosition::amount].data(); }
    /// Null for a four-points result.
    const double *quantity(int position) const;

    /// All zero outside the records.
    ResultRecord record(std::size_t index) const;

private:
    Method m_method = Method::FourPoints;
    MapGrid m_grid;
    std::size_t m_count = 0;
    numeric::Plane m_x, m_y; ///< at least m_count values
    std::array<numeric::Plane, quantityCount> m_planes;
    std::array<bool, quantityCount> m_isZero = {}; ///< these planes are m_zeros
    numeric::Plane m_zeros;
    std::size_t m_zerosKnown = 0; ///< so many leading values of it are 0
};
