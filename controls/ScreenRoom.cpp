#include "controls/ScreenRoom.h"

#include <QApplication>
#include <QPoint>
#include <QRect>
#include <QScreen>
#include <QSize>
#include <QWidget>
#include <QWindow>

namespace
{

constexpr QSize usualFrame(4, 28); // pixels that a window manager puts around a window

QRect roomOn(const QWidget *widget)
{
    const QWindow *const window = widget->window()->windowHandle();
    const QScreen *const screen = window ? window->screen() : QApplication::primaryScreen();
    return screen->availableGeometry();
}

} // namespace

QSize screenroom::largestWindow(const QWidget *widget)
{
    return roomOn(widget).size() - usualFrame;
}

void screenroom::keepOnScreen(QWidget *window)
{
    window->resize(window->size().boundedTo(largestWindow(window)));
    const QRect room = roomOn(window), frame = window->frameGeometry();
    if (!window->isVisible() || room.contains(frame))
        return;
    const int x = qMax(room.left(), qMin(frame.left(), room.right() - frame.width()));
    const int y = qMax(room.top(), qMin(frame.top(), room.bottom() - frame.height()));
    window->move(x, y);
}
