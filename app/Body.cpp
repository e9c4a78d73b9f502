#include "app/Body.h"

#include "analysis/panel/FourPs.h"
#include "controls/ScreenRoom.h"

#include <QApplication>
#include <QCloseEvent>

Body::Body(QWidget *parent)
    : QMainWindow(parent)
{
    ui.setupUi(this);
    setWindowTitle(QStringLiteral("flokluk")); // a name, the same in every language
    m_panel = new FourPs;
    ui.bodyLayout->addWidget(m_panel);
    resize(size().expandedTo(sizeHint()).boundedTo(screenroom::largestWindow(this)));
}

void Body::closeEvent(QCloseEvent *event)
{
    QMainWindow::closeEvent(event);
    if (event->isAccepted())
        QApplication::quit();
}
