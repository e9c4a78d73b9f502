#include "display/DispABase.h"

#include "controls/CompactControls.h"
#include "controls/Field.h"
#include "display/GraphBoxes.h"
#include "display/HeaderMenu.h"
#include "display/PopBase.h"

#include <QStylePainter>

namespace
{
constexpr double largestTitle = 12; // points
}

DispABase::DispABase(QWidget *parent)
    : QFrame(parent)
{
    ui.setupUi(this);
    setAttribute(Qt::WA_QuitOnClose, false);
    setUpPop(this, ui.DispABFrame, ui.gridLayout, 1, 0);
    m_menu = new HeaderMenu(
        ui.frame,
        [this] {
            return DisplayPicture{ui.Title->text(), ui.DispA, ui.DispA->size(), [this](QStylePainter *p) {
                                      ui.DispA->renderArea(p);
                                  }};
        },
        this);
    ui.DispA->hasTicks = true;
    for (QLineEdit *const readOut : {ui.XPos, ui.YPos}) // the title needs the room
        compact::fitField(readOut, QStringLiteral("-0.00"), QStringLiteral("-0.00000e+00"));
    compact::fitButton(ui.PopDockB);
    connectArea();
    connect(this, &DispABase::draw, pop, &PopBase::updateAround);
    connect(ui.PopDockB, &QPushButton::clicked, this, &DispABase::popDock);
    connect(pop, &PopBase::closed, this, &DispABase::popDock);
}

void DispABase::connectArea()
{
    connect(ui.DispA, &DispArea::nowPos, this, &DispABase::receiveNowPos);
    connect(ui.DispA, &DispArea::draw, this, &DispABase::receiveDraw);
    connect(ui.DispA, &DispArea::mPressed, this, &DispABase::mPressed);
    connect(ui.DispA, &DispArea::mDragging, this, &DispABase::mDragging);
    connect(ui.DispA, &DispArea::mReleased, this, &DispABase::mReleased);
    connect(ui.DispA, &DispArea::mDClicked, this, &DispABase::mDClicked);
}

void DispABase::setXYTitle(const QString &x, const QString &y)
{
    xTitle = x;
    yTitle = y;
    ui.XTitle->setText(xTitleInArea ? QString() : x);
    ui.YTitle->setText(yTitleInArea ? QString() : y);
}

void DispABase::setRealRange(double x0, double y0, double x1, double y1)
{
    ui.DispA->setRealRange({{x0, x1}, {y0, y1}});
}

void DispABase::offerRange(const RealRange &natural, Follow follow)
{
    ui.DispA->offerRange(natural, follow);
}

void DispABase::receiveNowPos(double rx, double ry)
{
    showNumber(ui.XPos, rx);
    showNumber(ui.YPos, ry);
}

void DispABase::receiveDraw(QStylePainter *p)
{
    emit draw(p);
    if (ui.DispA->cc.showXYTitle)
        drawXYTitle(p);
}

void DispABase::popDock()
{
    togglePop(ui.Title->text());
}

void DispABase::drawXYTitle(QStylePainter *p)
{
    p->setPen(Qt::black);
    const QFont font;
    const GraphBoxes boxes(ui.DispA->cc);
    if (xTitleInArea)
        ui.DispA->dt.drawText(p, boxes.xTitle, font, Qt::AlignCenter, 1, xTitle, largestTitle);
    if (yTitleInArea) {
        p->rotate(270);
        ui.DispA->dt.drawText(p, boxes.yTitle, font, Qt::AlignCenter, 1, yTitle, largestTitle);
        p->rotate(-270);
    }
}

void DispABase::clearScale()
{
    ui.DispA->scaleFixed = false;
}
