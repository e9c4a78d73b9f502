#pragma once

#include <QtGlobal>

class PopBase;
class QGridLayout;
class QString;
class QWidget;

/// What every display shares about being popped out: its content moves between the display's own grid and a window.
/// The display connects its button and the window's closed() to a slot that calls togglePop(), and its draw() to the
/// window's updateAround().
class PopDock
{
public:
    PopBase *pop = nullptr;           ///< the window, owned by the display
    QGridLayout *popLayout = nullptr; ///< the window's inner grid
    bool docked = true;

protected:
    PopDock() = default;
    ~PopDock() = default;
    Q_DISABLE_COPY(PopDock)

    /// Makes the window. `content` stands at `row` and `column` of `home`, a grid of `display`.
    void setUpPop(QWidget *display, QWidget *content, QGridLayout *home, int row, int column);
    /// Moves the content into the window, which is shown under that title, or back.
    void togglePop(const QString &title);

private:
    QWidget *m_content = nullptr;
    QGridLayout *m_home = nullptr;
    int m_row = 0;
    int m_column = 0;
};
