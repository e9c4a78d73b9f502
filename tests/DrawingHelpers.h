#pragma once

// What the tests of the result displays share: painting one into a picture and looking at places in it.

#include "display/ChCoord.h"
#include "numeric/RealToInt.h"

#include <QImage>
#include <QStylePainter>

#include <functional>

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
    /// The real range to 12 digits: left, bottom, right, top.
    QVector<double> range()
    {
        QVector<double> ends;
        for (const double end : {cc().rx0(), cc().ry0(), cc().rx1(), cc().ry1()})
            ends.append(QString::number(end, 'g', 12).toDouble());
        return ends;
    }
    bool isWhite() const
    {
        QImage white(image.size(), image.format());
        white.fill(Qt::white);
        white.setDevicePixelRatio(image.devicePixelRatio());
        return image == white;
    }
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
