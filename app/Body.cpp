#include "app/Body.h"

#include "analysis/panel/FourPs.h"
#include "controls/ScreenRoom.h"
#include "mapdata/AFileSelect.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>

Body::Body(QWidget *parent)
    : QMainWindow(parent)
{
    ui.setupUi(this);
    setWindowTitle(QStringLiteral("flokluk")); // a name, the same in every language
    setAcceptDrops(true);
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

void Body::dragEnterEvent(QDragEnterEvent *event)
{
    if (!AFileSelect::droppedPaths(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void Body::dropEvent(QDropEvent *event)
{
    event->acceptProposedAction();
    m_panel->receiveDroppedFiles(AFileSelect::droppedPaths(*event->mimeData()));
}
