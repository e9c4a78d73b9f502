#pragma once

class ChCoord;
class QPainter;
class QString;

/// Draws below a map, between the labels of its ends, a bar of a round length (1, 2 or 5 times a power of ten) up to a
/// fifth of the plot, and that length. A real unit along x is `width` of `unit`. Nothing without a width, a unit or a
/// plot.
void drawScaleBar(QPainter *painter, const ChCoord &cc, double width, const QString &unit);

/// The largest round length that is not above `most`; 0 where that is not a positive number.
double roundLength(double most);
