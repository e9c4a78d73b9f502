#pragma once

#include <QObject>

class QAbstractButton;
class QWidget;

/// Ties a checkable button to a window: pressed it shows the window, within the screen, released it hides it, and it
/// follows when the user closes the window. A window that is open but behind the button's own comes to the front
/// instead of being hidden.
class WindowButton : public QObject
{
    Q_OBJECT

public:
    WindowButton(QAbstractButton *button, QWidget *window, QObject *parent);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void toggle(bool on);
    bool isBehind() const;

    QAbstractButton *m_button;
    QWidget *m_window;
    bool m_isClosing = false;
};
