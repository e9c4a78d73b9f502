#include "display/PlotNumbers.h"

#include "display/ChCoord.h"
#include "display/PlotFrame.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace plot
{

void drawNumbers(QPainter *p, const ChCoord &cc, Numbers where, double smallestStep)
{
    const QRectF inner = innerRect(cc);
    const double textSize = p->font().pixelSize();
    const double room = 4.0 * textSize, gap = 0.4 * textSize;      // left of the plot, between numbers and plot
    const double apartX = 4.6 * textSize, apartY = 2.5 * textSize; // at least
    const auto steps = [](double first, double last, double step, auto draw) {
        for (double i = std::ceil(first / step); step > 0.0 && i * step <= last; ++i)
            draw(i * step);
    };
    steps(cc.ry0(), cc.ry1(), tickStep(inner.height(), {cc.ry0(), cc.ry1()}, apartY), [&](double value) {
        p->drawText(QRectF(inner.left() - room - gap, cc.r2sy(value) - textSize, room, 2 * textSize),
                    Qt::AlignRight | Qt::AlignVCenter, QString::number(value + 0.0, 'g', 3));
    });
    if (where == Numbers::AlongLeft)
        return;
    const double step = std::max(smallestStep, tickStep(inner.width(), {cc.rx0(), cc.rx1()}, apartX));
    steps(cc.rx0(), cc.rx1(), step, [&](double value) {
        p->drawText(QRectF(cc.r2sx(value) - apartX, inner.bottom() + textSize / 4.0, 2 * apartX, 1.5 * textSize),
                    Qt::AlignCenter, QString::number(value + 0.0, 'g', 6));
    });
}

} // namespace plot
