#include "display/DispArea.h"

#include "display/GraphBoxes.h"
#include "display/MarkLine.h"
#include "display/MouseRecording.h"
#include "display/PlotFrame.h"
#include "numeric/RealToInt.h"

#include <QMouseEvent>
#include <QStylePainter>

#include <cmath>

using numeric::truncToInt;

namespace
{

constexpr double largestLabel = 12; // points

/// A label is cut to its first characters, an exponent too.
QString labelText(double value, int characters)
{
    return QString::number(value, 'g', 6).left(characters);
}

void wipeMargins(QPainter *p, const ChCoord &cc)
{
    const auto wipe = [p](double x0, double y0, double x1, double y1) {
        p->fillRect(QRectF(QPointF(x0, y0), QPointF(x1, y1)).normalized(), Qt::white);
    };
    wipe(cc.sx0(), cc.sy0(), cc.isx0(), cc.sy1());
    wipe(cc.sx0(), cc.sy0(), cc.sx1(), cc.isy0());
    wipe(cc.sx0(), cc.isy1(), cc.sx1(), cc.sy1());
    wipe(cc.isx1(), cc.sy0(), cc.sx1(), cc.sy1());
}

} // namespace

DispArea::DispArea(QWidget *parent)
    : QFrame(parent)
{
    ui.setupUi(this);
}

void DispArea::renderArea(QStylePainter *p)
{
    cc.showXYTitle = true;
    cc.setScreenArea(0, height(), width(), 0);
    if (!scaleFixed)
        cc.setRealArea(0, 0, 1, 1);
    emit draw(p);
}

RealRange DispArea::shownRange() const
{
    return {{cc.rx0(), cc.rx1()}, {cc.ry0(), cc.ry1()}};
}

void DispArea::setRealRange(const RealRange &range)
{
    if (scaleFixed)
        return;
    cc.setRealArea(range.x.min, range.y.min, range.x.max, range.y.max);
    scaleFixed = true;
}

bool DispArea::isAnother(const RealRange &natural, Follow follow) const
{
    return !m_offered || natural.x != m_offered->x || (follow == Follow::BothAxes && natural.y != m_offered->y);
}

void DispArea::offerRange(const RealRange &natural, Follow follow)
{
    if (scaleFixed && markLines && markLines->isMoving) // the picture would run away under the mouse
        return;
    if (isAnother(natural, follow) || shownRange() == *m_offered)
        scaleFixed = false;
    m_offered = natural;
    setRealRange(natural);
}

void DispArea::drawScale(QStylePainter *p, bool clearMargins)
{
    if (clearMargins)
        wipeMargins(p, cc);
    p->setPen(QColor(150, 150, 150));
    p->setBrush(Qt::NoBrush);
    p->drawRect(truncToInt(cc.isx0()), truncToInt(cc.isy1()), truncToInt(std::abs(cc.isx1() - cc.isx0())),
                truncToInt(std::abs(cc.isy1() - cc.isy0())));
    if (hasTicks)
        plot::drawTicks(p, cc);

    p->setPen(Qt::black);
    const QFont font;
    const GraphBoxes boxes(cc);
    constexpr int right = Qt::AlignRight | Qt::AlignVCenter;
    constexpr int left = Qt::AlignLeft | Qt::AlignVCenter;
    dt.drawText(p, boxes.yMaximum, font, right, 1, labelText(cc.ry1(), 5), largestLabel);
    dt.drawText(p, boxes.yMinimum, font, right, 1, labelText(cc.ry0(), 5), largestLabel);
    dt.drawText(p, boxes.xMinimum, font, left, 1, labelText(cc.rx0(), 6), largestLabel);
    dt.drawText(p, boxes.xMaximum, font, right, 1, labelText(cc.rx1(), 6), largestLabel);
}

void DispArea::paintEvent(QPaintEvent *)
{
    QStylePainter p(this);
    renderArea(&p);
}

void DispArea::mousePressEvent(QMouseEvent *event)
{
    mouserecording::press(&mouse, *event);
    if (!mouserecording::isPlainLeftPress(mouse))
        return;
    if (markLines)
        markLines->pick(cc, mouse);
    emit mPressed(&mouse);
}

void DispArea::mouseMoveEvent(QMouseEvent *event)
{
    mouserecording::move(&mouse, *event);
    emit nowPos(cc.s2rx(mouse.nowX), cc.s2ry(mouse.nowY));
    if (!mouse.pressed) {
        showMarkers();
        return;
    }
    if (mouserecording::isPlainLeftPress(mouse)) {
        if (markLines)
            markLines->drag(cc, mouse);
        emit mDragging(&mouse);
    } else if (mouserecording::isShiftLeftPress(mouse)) {
        pan();
    }
}

/// By the cursor: where a press would pick one.
void DispArea::showMarkers()
{
    const int marker = markLines ? markLines->nearest(cc, mouse.nowX, mouse.nowY) : -1;
    if (marker < 0)
        unsetCursor();
    else
        setCursor(markLines->marks.at(marker)->isVertical() ? Qt::SplitHCursor : Qt::SplitVCursor);
}

void DispArea::pan()
{
    const double dx = cc.s2rx(mouse.prevX) - cc.s2rx(mouse.nowX);
    const double dy = cc.s2ry(mouse.prevY) - cc.s2ry(mouse.nowY);
    cc.setRealArea(cc.rx0() + dx, cc.ry0() + dy, cc.rx1() + dx, cc.ry1() + dy);
    update();
}

void DispArea::mouseReleaseEvent(QMouseEvent *event)
{
    mouserecording::release(&mouse, *event);
    if (markLines) {
        if (markLines->isMoving)
            update(); // the natural range may have changed meanwhile
        markLines->release(cc, mouse);
    }
    emit mReleased(&mouse);
}

void DispArea::mouseDoubleClickEvent(QMouseEvent *event)
{
    mouserecording::doubleClick(&mouse, *event);
    scaleFixed = false;
    emit mDClicked(&mouse);
    update();
}

void DispArea::wheelEvent(QWheelEvent *event)
{
    if (event->angleDelta().y() == 0 && event->angleDelta().x() != 0) { // a swipe to the side
        event->ignore();
        return;
    }
    const double steps = event->angleDelta().y() * 0.125 / 15; // eighths of a degree, 15 degrees per notch
    const double factor = steps < 0 ? 1.1 : 1 / 1.1;
    const double rx = cc.s2rx(mouse.nowX);
    const double ry = cc.s2ry(mouse.nowY);
    const bool overYAxis = cc.nearEdgeX(mouse.nowX);
    const bool overXAxis = cc.nearEdgeY(mouse.nowY);
    if (overYAxis || !overXAxis)
        cc.setRealY(ry + (cc.ry0() - ry) * factor, ry + (cc.ry1() - ry) * factor);
    if (overXAxis || !overYAxis)
        cc.setRealX(rx + (cc.rx0() - rx) * factor, rx + (cc.rx1() - rx) * factor);
    event->accept();
    update();
}
