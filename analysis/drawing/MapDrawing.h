#pragma once

#include "analysis/results/ShownQuantity.h"
#include "display/RealRange.h"
#include "display/ValueRange.h"

#include <QColor>
#include <QString>
#include <QtGlobal>

#include <cstddef>
#include <optional>

class DispMBase;
class QStylePainter;

struct ResultMapInput {
    ShownMap map;                     ///< no values: the method does not compute the quantity
    const quint8 *mask = nullptr;     ///< one per value, or none: cells that are not 0 are hidden
    std::optional<ValueRange> limits; ///< the quantity's own colour range; none leaves the limits that stand
    QString notComputed;              ///< what is said without values
};

/// Fits a display to the pixels of the map that it will show: proportions, and the scale bar of pictures.
void showGrid(DispMBase *display, const MapGrid &grid);

namespace resultdrawing
{

const QColor notFiniteColour(128, 128, 128);
const QColor maskedColour(215, 215, 215);

/// From (0, 0) to width and height; none without cells.
std::optional<RealRange> naturalRange(const ShownMap &map);

/// The map of a result quantity. It offers the display the whole map and the colour range of the quantity (that of the
/// finite values, if the range is not finite). Cells without a value have notFiniteColour. A map without cells leaves
/// the white area and the scale; one without values has the words `notComputed` besides.
void drawResultMap(DispMBase *display, QStylePainter *p, const ResultMapInput &input);

/// The map of measured values, in the colour range from the smallest to the largest finite one.
void drawDataMap(DispMBase *display, QStylePainter *p, const ShownMap &map);

} // namespace resultdrawing
