#include "controls/WindowButton.h"

#include "controls/ScreenRoom.h"

#include <QAbstractButton>
#include <QEvent>
#include <QWidget>

WindowButton::WindowButton(QAbstractButton *button, QWidget *window, QObject *parent)
    : QObject(parent)
    , m_button(button)
    , m_window(window)
{
    connect(button, &QAbstractButton::toggled, this, &WindowButton::toggle);
    window->installEventFilter(this);
}

void WindowButton::toggle(bool on)
{
    if (!on && isBehind()) {
        m_button->setChecked(true);
        return;
    }
    if (on && m_window->isMinimized())
        m_window->showNormal();
    m_window->setVisible(on);
    if (!on)
        return;
    screenroom::keepOnScreen(m_window);
    m_window->raise();
    m_window->activateWindow();
}

/// A window manager tells nobody what covers what: the window of the button was clicked, so it is in front of whatever
/// it overlaps.
bool WindowButton::isBehind() const
{
    const QWidget *const own = m_button->window();
    if (m_isClosing || !m_window->isVisible() || !own->isActiveWindow())
        return false;
    return m_window->isMinimized() || m_window->frameGeometry().intersects(own->frameGeometry());
}

bool WindowButton::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_window && event->type() == QEvent::Close) {
        m_isClosing = true;
        m_button->setChecked(false);
        m_isClosing = false;
    }
    return false;
}
