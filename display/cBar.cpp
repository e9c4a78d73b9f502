#include "display/cBar.h"

#include "display/ColourBarMenu.h"
#include "display/MouseRecording.h"
#include "numeric/RealToInt.h"

#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

using numeric::truncToInt;

namespace
{

constexpr double grabDistance = 10.0; // pixels

enum Handle { UpperEnd = 0, LowerEnd = 1 };

/// The pixel row of a coordinate, truncated toward zero. What rounding left of a whole row counts as that row: an end
/// that is not dragged would creep otherwise.
int rowOf(double y)
{
    const double whole = std::round(y);
    return truncToInt(std::abs(y - whole) < 1e-6 ? whole : y);
}

} // namespace

cBar::cBar(QWidget *parent)
    : QFrame(parent)
    , m_menu(new ColourBarMenu(this))
{
    ui.setupUi(this);
    setCBarType(0);
    connect(m_menu, &ColourBarMenu::scaleChosen, this, &cBar::chooseScale);
    connect(m_menu, &ColourBarMenu::invertedChosen, this, &cBar::chooseInverted);
    connect(m_menu, &ColourBarMenu::percentilesChosen, this, &cBar::percentilesWanted);
}

QColor cBar::getColor(double v) const
{
    return colors.at(colourIndex(v, colourScale(), nColors));
}

double cBar::valueAt(double index) const
{
    return m_zmin + (index - idxAtBottom) / (idxAtTop - idxAtBottom) * (m_zmax - m_zmin);
}

void cBar::setCBarType(int type)
{
    m_scale = type >= 0 && type < colourTableTypes ? type : 0;
    setColours(colourTable(m_scale));
}

void cBar::setColours(const ColourTable &table)
{
    colors.clear();
    colors.reserve(table.size());
    for (const quint32 colour : table)
        colors.append(QColor(colour));
    nColors = topIndex = colors.size();
    bottomIndex = 0;
    idxAtTop = nColors;
    idxAtBottom = 0;
    update();
}

void cBar::checkZOrder()
{
    if (m_zmin > m_zmax)
        std::swap(m_zmin, m_zmax);
    emit newScale();
}

void cBar::setLimits(double min, double max)
{
    m_zmin = min;
    m_zmax = max;
}

ColourScale cBar::colourScale() const
{
    ColourScale scale;
    scale.zmin = m_zmin;
    scale.zmax = m_zmax;
    scale.idxAtBottom = idxAtBottom;
    scale.idxAtTop = idxAtTop;
    scale.invert = invert;
    return scale;
}

ColourTable cBar::shownTable() const
{
    ColourTable table;
    table.reserve(colors.size());
    for (const QColor &colour : colors)
        table.append(colour.rgb());
    return table;
}

void cBar::setAutoScale(bool f)
{
    m_autoScale = f;
    emit newScale();
}

void cBar::newZmax(double max)
{
    m_zmax = max;
    checkZOrder();
}

void cBar::newZmin(double min)
{
    m_zmin = min;
    checkZOrder();
}

int cBar::maxCBarTypes() const
{
    return colourTableTypes;
}

void cBar::setInvertCBar(bool inverted)
{
    invert = inverted;
}

void cBar::chooseScale(int position)
{
    m_scale = position;
    setColours(offeredScale(position));
    emit newScale();
}

void cBar::chooseInverted(bool inverted)
{
    setInvertCBar(inverted);
    update();
    emit newScale();
}

void cBar::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    renderBar(&painter);

    const int lastRow = std::max(0, height() - 1);
    topPix = std::max(0, std::min(lastRow, rowOf(cc.r2sy(topIndex))));
    bottomPix = std::max(0, std::min(lastRow, rowOf(cc.r2sy(bottomIndex))));
    painter.fillRect(0, topPix, width(), 1, handleColor);
    painter.fillRect(0, bottomPix, width(), 1, handleColor);
}

void cBar::renderBar(QPainter *painter)
{
    cc.setScreenArea(0, height(), width(), 0);
    cc.setRealArea(0, idxAtBottom, 1, idxAtTop);
    const auto fillRows = [&](int row, int rows, const QColor &colour) {
        const int begin = std::max(0, row);
        const int end = static_cast<int>(std::min<qint64>(height(), qint64(row) + rows));
        if (begin < end)
            painter->fillRect(0, begin, width(), end - begin, colour);
    };
    // Where a colour covers more than a row, its band below leaves rows free: they belong to it too.
    for (int row = 0; row < height(); ++row) {
        const double index = cc.s2ry(row + 0.5);
        if (index >= 0.0 && index < nColors)
            fillRows(row, 1, shownColor(truncToInt(index)));
    }
    fillRows(rowOf(cc.r2sy(bottomIndex)), rowOf(cc.r2sy(idxAtBottom) - cc.r2sy(bottomIndex)), belowColor);
    const int band = std::max(1, truncToInt(1 + cc.r2sdy(1)));
    for (int i = 0; i < nColors; ++i)
        fillRows(rowOf(cc.r2sy(i)), band, shownColor(i));
    fillRows(0, rowOf(cc.r2sy(topIndex)), aboveColor);
}

void cBar::mousePressEvent(QMouseEvent *event)
{
    mouserecording::press(&mouse, *event);
    // A press away from both ends keeps the end grabbed last: a drag anywhere then moves it.
    if (std::abs(mouse.pressY - cc.r2sy(topIndex)) < grabDistance)
        grabbed = UpperEnd;
    if (std::abs(mouse.pressY - cc.r2sy(bottomIndex)) < grabDistance)
        grabbed = LowerEnd;
    update();
}

void cBar::mouseMoveEvent(QMouseEvent *event)
{
    mouserecording::move(&mouse, *event);
    if (!mouse.pressed)
        return;
    const int top = grabbed == UpperEnd ? mouse.nowY : rowOf(cc.r2sy(topIndex));
    const int bottom = grabbed == LowerEnd ? mouse.nowY : rowOf(cc.r2sy(bottomIndex));
    if (top != bottom) {
        const double indicesPerRow = static_cast<double>(topIndex - bottomIndex) / (top - bottom);
        idxAtTop = bottomIndex + (0 - bottom) * indicesPerRow;
        idxAtBottom = bottomIndex + (height() - bottom) * indicesPerRow;
        emit newScale();
    }
    update();
}

void cBar::mouseReleaseEvent(QMouseEvent *event)
{
    mouserecording::release(&mouse, *event);
}

void cBar::mouseDoubleClickEvent(QMouseEvent *event)
{
    mouserecording::doubleClick(&mouse, *event);
    idxAtBottom = bottomIndex;
    idxAtTop = topIndex;
    update(); // the map keeps its colours until it is drawn again
}

void cBar::contextMenuEvent(QContextMenuEvent *event)
{
    mouse.pressed = false; // the menu takes the release of the button that opened it
    m_menu->setChosen(m_scale, invert);
    m_menu->popup(event->globalPos());
}
