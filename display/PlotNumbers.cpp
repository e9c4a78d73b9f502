#include "display/PlotNumbers.h"

#include "display/ChCoord.h"
#include "display/PlotFrame.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace
{

constexpr int usualDigits = 6;

/// So many significant digits tell numbers apart that differ by `step`, and write those below 1e10 without an exponent.
int digitsFor(double largest, double step)
{
    if (!(largest > 0.0) || !(step > 0.0))
        return usualDigits;
    const double whole = largest < 1e10 ? std::floor(std::log10(largest)) + 1.0 : 0.0;
    const double digits = std::max(whole, std::ceil(std::log10(largest / step)) + 1.0);
    return digits < 15.0 ? std::max(usualDigits, static_cast<int>(digits)) : 15;
}

} // namespace

namespace plot
{

void drawNumbers(QPainter *p, const ChCoord &cc, Numbers where, double smallestStep)
{
    const QRectF inner = innerRect(cc);
    const double textSize = p->font().pixelSize();
    const double room = 4.0 * textSize, gap = 0.4 * textSize; // left of the plot, between numbers and plot
    const double apartY = 2.5 * textSize;                     // at least
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
    const double largest = std::max(std::abs(cc.rx0()), std::abs(cc.rx1()));
    double step = 0.0, apartX = 4.6 * textSize;
    int digits = usualDigits;
    for (int pass = 0; pass < 2; ++pass) { // the second one knows how long the numbers are
        if (digits > usualDigits)
            apartX = 0.65 * (digits + 3) * textSize;
        step = std::max(smallestStep, tickStep(inner.width(), {cc.rx0(), cc.rx1()}, apartX));
        digits = digitsFor(largest, step);
    }
    const QFontMetricsF metrics(p->font());
    steps(cc.rx0(), cc.rx1(), step, [&](double value) {
        const QString number = QString::number(value + 0.0, 'g', digits);
        if (cc.r2sx(value) + 0.5 * metrics.horizontalAdvance(number) > p->window().right())
            return; // it would be cut
        p->drawText(QRectF(cc.r2sx(value) - apartX, inner.bottom() + textSize / 4.0, 2 * apartX, 1.5 * textSize),
                    Qt::AlignCenter, number);
    });
}

} // namespace plot
