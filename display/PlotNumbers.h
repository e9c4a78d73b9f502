#pragma once

class ChCoord;
class QPainter;

namespace plot
{

enum class Numbers { AlongLeft, AlongBoth };

/// Numbers beside the ticks of a plot that is made for a file, with the painter's pen and font: in the 130 pixels left
/// of it and, for AlongBoth, below its lower edge; there they are at least `smallestStep` apart,
/// have as many digits as tell them apart, and are left out where the painter's window would cut them.
void drawNumbers(QPainter *p, const ChCoord &cc, Numbers where, double smallestStep = 0.0);

} // namespace plot
