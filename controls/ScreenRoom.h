#pragma once

class QSize;
class QWidget;

/// Windows that stay on the screen, whatever its size.
namespace screenroom
{

/// The largest size that a window can have on the screen of `widget`, pixels: the frame and the desktop's own panels
/// are taken off.
QSize largestWindow(const QWidget *widget);

/// Makes a window as small as its screen wants it, and moves it there where it stands beyond.
void keepOnScreen(QWidget *window);

} // namespace screenroom
