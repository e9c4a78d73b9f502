#pragma once

#include "display/RealRange.h"
#include "display/ValueRange.h"

#include <QColor>
#include <QString>
#include <QVector>

#include <optional>

class DispABase;
class HistogramBins;
class QStylePainter;

/// The histogram of a part of the pixels, drawn as an outline.
struct HistogramPart {
    const HistogramBins *bins = nullptr;
    QColor colour;
    QString name;
};

struct HistogramInput {
    const HistogramBins *bins = nullptr;
    ValueRange range;             ///< of the values, along x
    QVector<HistogramPart> parts; ///< one per reference, where wanted
    QString xTitle;
    QString yTitle;
};

namespace resultdrawing
{

const QColor boxColour(160, 190, 235);
const QColor boxOutlineColour(50, 90, 160);

/// Along x the range of the values, along y -0.1 to 1.1 times the largest count of the histogram and its parts; for one
/// count where there is none. None before the boxes are set.
std::optional<RealRange> naturalRange(const HistogramInput &input);

/// A histogram. One whose boxes were not set yet leaves the area white. A zoom stays until the range of the values is
/// another one.
void drawHistogram(DispABase *display, QStylePainter *p, const HistogramInput &input);

} // namespace resultdrawing
