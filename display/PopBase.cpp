#include "display/PopBase.h"

#include <QCloseEvent>

PopBase::PopBase(QWidget *parent)
    : QFrame(parent, Qt::Window)
{
    ui.setupUi(this);
    resize(800, 600);
    setAttribute(Qt::WA_QuitOnClose, false);
}

void PopBase::closeEvent(QCloseEvent *event)
{
    QFrame::closeEvent(event);
    emit closed();
}

void PopBase::updateAround()
{
    update(QRegion(rect()) - childrenRegion());
}
