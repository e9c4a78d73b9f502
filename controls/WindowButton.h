#pragma once

#include <QObject>

class QAbstractButton;
class QWidget;

/// Ties a checkable button to a window: pressed it shows the window, released it hides it, and it follows when the
/// user closes the window.
class WindowButton : public QObject
{
    Q_OBJECT

public:
    WindowButton(QAbstractButton *button, QWidget *window, QObject *parent);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QAbstractButton *m_button;
    QWidget *m_window;
};
