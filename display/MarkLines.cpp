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

int MarkLines::nearest(const ChCoord &cc, double x, double y) const
{
    int found = -1;
    double least = std::numeric_limits<double>::infinity();
    for (int i = 0; i < marks.size(); ++i) {
        const double distance =
            marks.at(i)->isVertical() ? std::abs(cc.r2sx(position(i)) - x) : std::abs(cc.r2sy(position(i)) - y);
        if (distance < least) {
            least = distance;
            found = i;
        }
    }
    return least < pickDistance ? found : -1;
}

void MarkLines::pick(const ChCoord &cc, const MouseC &mouse)
{
    const int picked = nearest(cc, mouse.pressX, mouse.pressY);
    if (picked < 0)
        return;
    if (isMoving)
        emit newPos();
    isMoving = true;
    selected = picked;
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
