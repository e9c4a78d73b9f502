#pragma once

// What the tests of the result displays share: painting one into a picture and looking at places in it.

#include "display/DispArea.h"
#include "numeric/RealToInt.h"

#include <QImage>
#include <QStringList>
#include <QStylePainter>

#include <functional>
#include <initializer_list>
#include <optional>

/// "x0 x1 y0 y1" to 12 digits, or "none".
inline QString textOf(const std::optional<RealRange> &range)
{
    QStringList ends;
    if (range) {
        for (const double end : {range->x.min, range->x.max, range->y.min, range->y.max})
            ends << QString::number(end, 'g', 12);
    }
    return range ? ends.join(' ') : QStringLiteral("none");
}

/// A colour that a picture must have at a real point.
struct ColourAt {
    double x;
    double y;
    QColor colour;
};

/// A display (DispABase, DispMBase) and its picture of 400 x 300 pixels: the plot runs from (40, 15) to (380, 270).
template <class Display>
struct Canvas {
    explicit Canvas(const QSize &size = QSize(400, 300)) { display.area()->resize(size); }

    /// Paints as the display's paint event does.
    void paint(const std::function<void(QStylePainter *)> &draw, double pixelRatio = 1)
    {
        const QSize size = display.area()->size();
        image = QImage((QSizeF(size) * pixelRatio).toSize().expandedTo(QSize(1, 1)), QImage::Format_RGB32);
        image.setDevicePixelRatio(pixelRatio);
        image.fill(Qt::darkGray);
        QStylePainter p;
        p.begin(&image, display.area());
        cc().setScreenArea(0, size.height(), size.width(), 0);
        if (!display.area()->scaleFixed)
            cc().setRealArea(0, 0, 1, 1);
        draw(&p);
    }

    ChCoord &cc() { return display.area()->cc; }
    /// The pixel that a real point falls on.
    QPoint pixelOf(double x, double y)
    {
        return {numeric::truncToInt(cc().r2sx(x)), numeric::truncToInt(cc().r2sy(y))};
    }
    QColor at(double x, double y) { return image.pixelColor(pixelOf(x, y)); }
    /// Which of the points have another colour; an empty text when all are right.
    QString wrong(std::initializer_list<ColourAt> points)
    {
        QStringList others;
        for (const ColourAt &point : points) {
            if (at(point.x, point.y) != point.colour)
                others << QStringLiteral("(%1, %2) %3").arg(point.x).arg(point.y).arg(at(point.x, point.y).name());
        }
        return others.join(QStringLiteral(", "));
    }
    QString range() const { return textOf(display.area()->shownRange()); }
    /// How many pixels within the plot have that colour.
    int count(const QColor &colour)
    {
        int pixels = 0;
        for (int y = int(cc().isy1()) + 1; y < int(cc().isy0()); ++y) {
            for (int x = int(cc().isx0()) + 1; x < int(cc().isx1()); ++x)
                pixels += image.pixelColor(x, y) == colour ? 1 : 0;
        }
        return pixels;
    }

    Display display;
    QImage image;
};
