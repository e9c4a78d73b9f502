#pragma once

#include <QObject>

/// What the mouse last did in a drawing area or colour bar: positions in widget pixels, buttons and modifiers as Qt's
/// flag values.
class MouseC : public QObject
{
    Q_OBJECT

public:
    MouseC() = default;

    int prevX = 0, prevY = 0; ///< the current position before the last press, move or release
    int nowX = 0, nowY = 0;   ///< the current position
    int pressX = 0, pressY = 0;
    int releaseX = 0, releaseY = 0;
    int dClickX = 0, dClickY = 0;
    bool pressed = false; ///< a button is held since a press in this area
    int moveButton = 0;
    int pressButton = 0;
    int releaseButton = 0;
    int dClickButton = 0;
    int moveModifiers = 0, pressModifiers = 0, releaseModifiers = 0, dClickModifiers = 0;
};
