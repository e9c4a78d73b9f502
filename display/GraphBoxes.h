#pragma once

#include <QRectF>

class ChCoord;

/// Where the titles and range labels of a graph stand, in pixels. A text line is the inner height divided by
/// ChCoord::textLines and whole; boxes that rise from their edge or extend to its left have negative sizes.
struct GraphBoxes {
    explicit GraphBoxes(const ChCoord &cc);

    QRectF xTitle; ///< a line below the plot, as wide as the plot
    QRectF yTitle; ///< a line in from the left, reading upwards: in the coordinates of a painter rotated by 270 degrees
    QRectF yMaximum, yMinimum, xMinimum, xMaximum; ///< the labels of the range's ends
};

/// How many text lines a graph gets (ChCoord::textLines) whose margins are set: 20, in a small one as many fewer as
/// leave the labels readable and below the plot, in a narrow one more, so that the title stands beside it. At least 1.
int readableTextLines(const ChCoord &cc);
