#include "controls/WindowButton.h"

#include <QAbstractButton>
#include <QEvent>
#include <QWidget>

WindowButton::WindowButton(QAbstractButton *button, QWidget *window, QObject *parent)
    : QObject(parent)
    , m_button(button)
    , m_window(window)
{
    connect(button, &QAbstractButton::toggled, this, [this](bool on) {
        m_window->setVisible(on);
        if (on)
            m_window->raise();
    });
    window->installEventFilter(this);
}

bool WindowButton::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_window && event->type() == QEvent::Close)
        m_button->setChecked(false);
    return false;
}
