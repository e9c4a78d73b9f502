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
    constexpr double room = 130.0, gap = 10.0;      // left of the plot, between numbers and plot
    constexpr double apartX = 110.0, apartY = 60.0; // at least
    const QRectF inner = innerRect(cc);
    const int textSize = p->font().pixelSize();
    const auto steps = [](double first, double last, double step, auto draw) {
        for (double i = std::ceil(first / step); step > 0.0 && i * step <= last; ++i)
            draw(i * step);
    };
    steps(cc.ry0(), cc.ry1(), tickStep(inner.height(), {cc.ry0(), cc.ry1()}, apartY), [&](double value) {
        p->drawText(QRectF(inner.left() - room + 3 * gap, cc.r2sy(value) - textSize, room - 4 * gap, 2 * textSize),
                    Qt::AlignRight | Qt::AlignVCenter, QString::number(value + 0.0, 'g', 3));
    });
    if (where == Numbers::AlongLeft)
        return;
    const double step = std::max(smallestStep, tickStep(inner.width(), {cc.rx0(), cc.rx1()}, apartX));
    steps(cc.rx0(), cc.rx1(), step, [&](double value) {
        p->drawText(QRectF(cc.r2sx(value) - 100, inner.bottom() + 6, 200, 1.5 * textSize), Qt::AlignCenter,
                    QString::number(value + 0.0, 'g', 6));
    });
}

} // namespace plot
