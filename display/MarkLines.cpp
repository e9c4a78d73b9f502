#include "display/MarkLines.h"

#include "display/ChCoord.h"
#include "display/MarkLine.h"
#include "display/MouseC.h"

#include <cmath>
#include <limits>

namespace
{
constexpr double pickDistance = 20; // pixels
}

MarkLines::MarkLines(QObject *parent)
    : QObject(parent)
{
}

void MarkLines::clear()
{
    marks.clear();
    isMoving = false;
    selected = -1;
}

double MarkLines::baseNumber(const MarkLine &mark) const
{
    const bool hasBase = mark.relative && mark.baseIndex >= 0 && mark.baseIndex < marks.size();
    return hasBase ? marks.at(mark.baseIndex)->fieldNumber()
                   : 0.0; // the base may be relative itself: not followed further
}

double MarkLines::position(int i) const
{
    return marks.at(i)->fieldNumber() + baseNumber(*marks.at(i));
}

void MarkLines::pick(const ChCoord &cc, const MouseC &mouse)
{
    int nearest = -1;
    double least = std::numeric_limits<double>::infinity();
    for (int i = 0; i < marks.size(); ++i) {
        const double distance = marks.at(i)->isVertical() ? std::abs(cc.r2sx(position(i)) - mouse.pressX)
                                                          : std::abs(cc.r2sy(position(i)) - mouse.pressY);
        if (distance < least) {
            least = distance;
            nearest = i;
        }
    }
    if (least >= pickDistance)
        return;
    if (isMoving)
        emit newPos();
    isMoving = true;
    selected = nearest;
}

void MarkLines::drag(const ChCoord &cc, const MouseC &mouse)
{
    if (!isMoving || selected < 0 || selected >= marks.size())
        return;
    MarkLine &mark = *marks.at(selected);
    const double value = mark.isVertical() ? cc.s2rx(mouse.nowX) : cc.s2ry(mouse.nowY);
    mark.setNumber(value - baseNumber(mark));
    emit moving();
}

void MarkLines::release(const ChCoord &cc, const MouseC &mouse)
{
    drag(cc, mouse);
    if (isMoving)
        emit newPos();
    isMoving = false;
    selected = -1;
}
