#include "display/Displays.h"

#include "display/DispABase.h"

#include <QStylePainter>

Displays::Displays(QWidget *parent)
    : QFrame(parent)
{
    ui.setupUi(this);
    setAttribute(Qt::WA_QuitOnClose, false);
    addDisp(new DispABase, tr("Ref1"), Ref1, 0, 0, 1, 1);
    addDisp(new DispABase, tr("Ref2"), Ref2, 1, 0, 1, 1);
    addDisp(new DispABase, tr("Ref3"), Ref3, 2, 0, 1, 1);
    addDisp(new DispABase, tr("Ref4"), Ref4, 3, 0, 1, 1);
    addDisp(new DispABase, tr("Target"), Target, 0, 1, 1, 1);
    addDisp(new DispABase, tr("Muts"), Muts, 1, 1, 2, 1);
    addDisp(new DispABase, tr("LCF vs MPS"), LcfVsMps, 3, 1, 1, 1);
    addDisp(new DispABase, tr("Histgram of a"), HistA, 0, 2, 1, 1);
    addDisp(new DispABase, tr("Histgram of dMut"), HistDMut, 1, 2, 1, 1);
    addDisp(new DispABase, tr("dMut/v or a"), DMutVorA, 2, 2, 1, 1);
    addDisp(new DispABase, tr("M2/M3"), M2M3, -1, -1, 1, 1);
}

Displays::~Displays()
{
    for (const QPointer<DispABase> &dab : qAsConst(m_unplaced)) {
        if (dab && !dab->parent())
            delete dab;
    }
}

void Displays::addDisp(DispABase *dab, const QString &title, DispId id, int col, int row, int colSpan, int rowSpan)
{
    dab->xTitleInArea = true;
    dab->yTitleInArea = true;
    dab->setXYTitle(dab->xTitle, dab->yTitle); // out of the header
    dab->ui.Title->setText(title);
    dab->ui.Title->setToolTip(title); // where the panel is too narrow for it
    if (col >= 0 && row >= 0)
        ui.DispL->addWidget(dab, row, col, rowSpan, colSpan);
    else
        m_unplaced.append(dab);
    dabs.append(dab);
    ids.append(id);
    // Once only: a display registered twice is drawn once for each of its entries.
    connect(dab, &DispABase::draw, this, &Displays::receiveDraw, Qt::UniqueConnection);
    connect(dab, &DispABase::mPressed, this, &Displays::receiveMPressed, Qt::UniqueConnection);
    connect(dab, &DispABase::mDragging, this, &Displays::receiveMDragging, Qt::UniqueConnection);
    connect(dab, &DispABase::mReleased, this, &Displays::receiveMReleased, Qt::UniqueConnection);
}

DispABase *Displays::senderDisplay() const
{
    return qobject_cast<DispABase *>(sender());
}

void Displays::receiveDraw(QStylePainter *p)
{
    DispABase *const dab = senderDisplay();
    for (int i = 0; i < dabs.size(); ++i) {
        if (dabs.at(i) == dab)
            emit draw(ids.at(i), dab, p);
    }
}

void Displays::receiveMPressed(MouseC *m)
{
    emit mPressed(senderDisplay(), m);
}

void Displays::receiveMDragging(MouseC *m)
{
    emit mDragging(senderDisplay(), m);
}

void Displays::receiveMReleased(MouseC *m)
{
    emit mReleased(senderDisplay(), m);
}
