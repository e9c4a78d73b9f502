#pragma once

#include "display/DispArea.h"
#include "display/PopDock.h"

#include "ui_DispABase.h"

#include <QFrame>

class HeaderMenu;
class MouseC;
class QStylePainter;

/// An x-y graph: a header row with title and read-outs above a drawing area. Whoever is connected to draw() paints the
/// graph; the display adds the axis titles. It can be popped out into a window of its own.
class DispABase : public QFrame, public PopDock
{
    Q_OBJECT

public:
    explicit DispABase(QWidget *parent = nullptr);

    /// The titles of the axes, each shown in the header or in the area.
    void setXYTitle(const QString &x, const QString &y);
    /// A range of the data: taken once, then left to the user until a double click or clearScale().
    void setRealRange(double x0, double y0, double x1, double y1);
    /// The natural range of the data, at every draw: see DispArea.
    void offerRange(const RealRange &natural, Follow follow = Follow::BothAxes);
    DispArea *area() const { return ui.DispA; }
    /// The context menu of the header row.
    HeaderMenu *headerMenu() const { return m_menu; }

    QString xTitle;
    QString yTitle;
    bool xTitleInArea = false; ///< drawn in the area, not shown in the header
    bool yTitleInArea = false;
    Ui_DispABase ui;

signals:
    void draw(QStylePainter *p);
    void mPressed(MouseC *m);
    void mDragging(MouseC *m);
    void mReleased(MouseC *m);
    void mDClicked(MouseC *m);

public slots:
    void receiveNowPos(double rx, double ry);
    void receiveDraw(QStylePainter *p);
    void popDock();
    void drawXYTitle(QStylePainter *p);
    void clearScale();

private:
    void connectArea();

    HeaderMenu *m_menu;
};
