#include "display/MouseRecording.h"

#include "display/MouseC.h"
#include "numeric/RealToInt.h"

#include <QMouseEvent>

#include <cmath>

namespace
{

int toPixel(double position)
{
    return numeric::truncToInt(std::round(position)); // qRound takes negative halves the other way
}

void setPosition(MouseC *mouse, const QMouseEvent &event)
{
    mouse->prevX = mouse->nowX;
    mouse->prevY = mouse->nowY;
    mouse->nowX = toPixel(event.localPos().x());
    mouse->nowY = toPixel(event.localPos().y());
}

/// The last press was the left button, and of Shift, Control and Alt exactly `held` were down.
bool leftPressWith(const MouseC &mouse, int held)
{
    constexpr int modifiers = Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier;
    return mouse.pressButton == Qt::LeftButton && (mouse.pressModifiers & modifiers) == held;
}

} // namespace

void mouserecording::press(MouseC *mouse, const QMouseEvent &event)
{
    setPosition(mouse, event);
    mouse->pressX = mouse->nowX;
    mouse->pressY = mouse->nowY;
    mouse->pressed = true;
    mouse->pressButton = event.button();
    mouse->pressModifiers = event.modifiers();
}

void mouserecording::move(MouseC *mouse, const QMouseEvent &event)
{
    setPosition(mouse, event);
    mouse->moveButton = event.button();
    mouse->moveModifiers = event.modifiers();
}

void mouserecording::release(MouseC *mouse, const QMouseEvent &event)
{
    setPosition(mouse, event);
    mouse->releaseX = mouse->nowX;
    mouse->releaseY = mouse->nowY;
    mouse->pressed = false;
    mouse->releaseButton = event.button();
    mouse->releaseModifiers = event.modifiers();
}

void mouserecording::doubleClick(MouseC *mouse, const QMouseEvent &event)
{
    mouse->dClickX = toPixel(event.localPos().x());
    mouse->dClickY = toPixel(event.localPos().y());
    mouse->dClickButton = event.button();
    mouse->dClickModifiers = event.modifiers();
}

bool mouserecording::isPlainLeftPress(const MouseC &mouse)
{
    return leftPressWith(mouse, Qt::NoModifier);
}

bool mouserecording::isBesidePress(const MouseC &mouse)
{
    constexpr int slack = 2;
    return std::abs(mouse.nowX - mouse.pressX) <= slack && std::abs(mouse.nowY - mouse.pressY) <= slack;
}

bool mouserecording::isShiftLeftPress(const MouseC &mouse)
{
    return leftPressWith(mouse, Qt::ShiftModifier);
}

bool mouserecording::isControlLeftPress(const MouseC &mouse)
{
    return leftPressWith(mouse, Qt::ControlModifier);
}
