#pragma once

#include "display/ColourTable.h"

#include <cstddef>
#include <optional>
#include <tuple>

/// How values become indices into a colour table: zmin falls on idxAtBottom and zmax on idxAtTop.
struct ColourScale {
    double zmin = 0.0;
    double zmax = 1.0;
    double idxAtBottom = 0.0; ///< 0 and the number of colours, unless the colours are stretched
    double idxAtTop = 0.0;
    bool invert = false;              ///< the table is read from its other end
    std::optional<quint32> notFinite; ///< colour of infinities and NaN; without one they are treated as numbers
    std::optional<quint32> masked;    ///< colour of masked pixels; without one the mask is not looked at
};

inline bool operator==(const ColourScale &l, const ColourScale &r)
{
    return std::tie(l.zmin, l.zmax, l.idxAtBottom, l.idxAtTop, l.invert, l.notFinite, l.masked) ==
           std::tie(r.zmin, r.zmax, r.idxAtBottom, r.idxAtTop, r.invert, r.notFinite, r.masked);
}
inline bool operator!=(const ColourScale &l, const ColourScale &r)
{
    return !(l == r);
}

/// Index of the colour of `value` in a table of `count` >= 1 colours, in 0 ... count - 1: the position on the scale,
/// truncated toward zero and kept within the table. NaN counts as below the scale. With equal limits a value above
/// them has the last colour and a value below them the first.
int colourIndex(double value, const ColourScale &scale, int count);

/// Colours `count` values as colourIndex does, each into its pixel, on `threads` threads (0: one per core). A pixel
/// whose `mask` is not 0 gets the colour scale.masked. No table: all pixels black.
void colourPlane(const double *values, std::size_t count, const ColourScale &scale, const ColourTable &table,
                 quint32 *pixels, const quint8 *mask = nullptr, int threads = 0);
