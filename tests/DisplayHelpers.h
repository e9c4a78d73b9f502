#pragma once

// What the tests of the displays share: mouse events as a user makes them, and looks at what was painted.

#include "display/DispArea.h"

#include <QApplication>
#include <QStylePainter>
#include <QtTest>

#include <functional>

/// Of the plot's rectangle.
inline QColor outlineColour()
{
    return QColor(150, 150, 150);
}

/// A move to a position that need not be a whole pixel.
inline void moveTo(QWidget *widget, const QPointF &position, Qt::MouseButtons held = Qt::NoButton)
{
    QMouseEvent event(QEvent::MouseMove, position, widget->mapToGlobal(position.toPoint()), Qt::NoButton, held,
                      Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

/// Drags with the left button; modifiers are held at the press only.
inline void drag(QWidget *widget, const QPoint &from, const QPoint &to,
                 Qt::KeyboardModifiers modifiers = Qt::NoModifier, Qt::MouseButton button = Qt::LeftButton)
{
    QTest::mousePress(widget, button, modifiers, from);
    moveTo(widget, to, button);
    QTest::mouseRelease(widget, button, Qt::NoModifier, to);
}

/// Paints into a picture through a painter of the kind that displays hand out.
inline QImage painted(QWidget *widget, const QSize &size, const std::function<void(QStylePainter *)> &paint)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
    QStylePainter p;
    p.begin(&image, widget);
    paint(&p);
    return image;
}

/// The smallest rectangle around everything that is not white.
inline QRect inkIn(const QImage &image)
{
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) != Qt::white)
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

/// Red everywhere, then what an analysis would do: margins, a range and the scale.
inline void paintRedPlot(DispArea *area, QStylePainter *p, bool clearMargins)
{
    area->cc.setMargins();
    p->fillRect(area->rect(), Qt::red);
    area->drawScale(p, clearMargins);
}

/// A drawing area of 400 x 300 pixels with margins: plot from (40, 15) to (380, 270), 34 and 255 pixels per unit.
struct Plot {
    Plot()
    {
        QObject::connect(&area, &DispArea::draw, &area, [this](QStylePainter *p) { paintRedPlot(&area, p, true); });
        area.scaleFixed = true;
        area.cc.setRealArea(0, 0, 10, 1);
        area.grab();
    }

    DispArea area;
};
