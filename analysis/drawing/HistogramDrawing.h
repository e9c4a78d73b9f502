#pragma once

#include "analysis/results/QuantityRange.h"

#include <QColor>
#include <QString>
#include <QVector>

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

/// A histogram, its count axis from -0.1 to 1.1 times the largest count of it and its parts. Histograms whose boxes
/// were not set yet leave the area white. Empty histograms get an axis for one count, which does not stay.
void drawHistogram(DispABase *display, QStylePainter *p, const HistogramInput &input);

} // namespace resultdrawing
