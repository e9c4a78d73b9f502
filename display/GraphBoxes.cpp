#include "display/GraphBoxes.h"

#include "display/ChCoord.h"
#include "numeric/RealToInt.h"

#include <algorithm>
#include <cmath>

using numeric::truncToInt;

GraphBoxes::GraphBoxes(const ChCoord &cc)
{
    const int line = truncToInt((cc.isy1() - cc.isy0()) / cc.textLines); // negative: y pixels grow downwards
    const int margin = truncToInt((cc.sx1() - cc.sx0()) * cc.marginX0());
    const int left = truncToInt(cc.isx0());
    const int right = truncToInt(cc.isx1());
    const int bottom = truncToInt(cc.isy0());
    const int textHeight = -truncToInt(cc.textFill * line);
    const int belowPlot = bottom - truncToInt((1 - cc.textFill) * line);

    xTitle = QRectF(left, belowPlot, truncToInt(std::abs(cc.isx1() - cc.isx0())), textHeight);
    const int fullHeight = truncToInt(std::abs(cc.sy1() - cc.sy0()));
    yTitle = QRectF(-fullHeight, -truncToInt(line * cc.textFill), fullHeight,
                    truncToInt(cc.textFill * truncToInt(std::abs(line))));

    yMaximum = QRectF(0, truncToInt(cc.isy1()), 0.95 * margin, textHeight);
    yMinimum = QRectF(0, bottom, 0.95 * margin, -textHeight);
    xMinimum = QRectF(left, belowPlot, 2.0 * margin, textHeight);
    xMaximum = QRectF(right, belowPlot, -2.0 * margin, textHeight);
}

int readableTextLines(const ChCoord &cc)
{
    constexpr double readable = 16, legible = 10; // pixels for a line
    constexpr int most = 20;
    const double height = std::abs(cc.isy1() - cc.isy0());
    const int fitting = truncToInt(std::ceil(height / std::abs(cc.sy0() - cc.isy0()))); // a line stands in the margin
    // The title of the y axis ends two text heights in from the left: beside the plot, not across its edge.
    const int beside = truncToInt(std::ceil(2 * cc.textFill * height / std::abs(cc.isx0() - cc.sx0())));
    return std::max({std::min(most, std::max(fitting, truncToInt(height / readable))),
                     std::min(beside, truncToInt(height / legible)), 1});
}
