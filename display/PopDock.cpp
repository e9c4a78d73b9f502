#include "display/PopDock.h"

#include "display/PopBase.h"

#include <QGridLayout>

void PopDock::setUpPop(QWidget *display, QWidget *content, QGridLayout *home, int row, int column)
{
    pop = new PopBase(display);
    popLayout = pop->layoutForContent();
    m_content = content;
    m_home = home;
    m_row = row;
    m_column = column;
}

void PopDock::togglePop(const QString &title)
{
    if (docked) {
        pop->setWindowTitle(title);
        popLayout->addWidget(m_content);
        pop->show();
    } else {
        m_home->addWidget(m_content, m_row, m_column);
        pop->hide();
    }
    docked = !docked;
}
