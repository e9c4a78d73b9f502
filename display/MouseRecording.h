#pragma once

class MouseC;
class QMouseEvent;

/// Writes what an event says into a mouse record; positions are rounded to the nearest pixel, halves away from zero.
namespace mouserecording
{

void press(MouseC *mouse, const QMouseEvent &event);
void move(MouseC *mouse, const QMouseEvent &event);
void release(MouseC *mouse, const QMouseEvent &event);
/// Leaves the current and the previous position as they are.
void doubleClick(MouseC *mouse, const QMouseEvent &event);

/// Whether the last press was the left button with none of Shift, Control and Alt held.
bool isPlainLeftPress(const MouseC &mouse);
/// Whether the mouse is within two pixels of the last press, as far as a hand may move in a click.
bool isBesidePress(const MouseC &mouse);
/// Whether the last press was the left button with Shift, but neither Control nor Alt held.
bool isShiftLeftPress(const MouseC &mouse);
/// The same with Control, but neither Shift nor Alt.
bool isControlLeftPress(const MouseC &mouse);

} // namespace mouserecording
