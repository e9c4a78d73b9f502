#pragma once

#include "display/DispArea.h"
#include "display/MapPicture.h"
#include "display/PopDock.h"
#include "display/RealRange.h"
#include "display/ValueRange.h"
#include "display/cBar.h"

#include "ui_DispMBase.h"

#include <QFrame>
#include <QString>

#include <functional>
#include <optional>

class HeaderMenu;
class QLabel;
class QStylePainter;

/// A map: a header row with title and read-outs above a drawing area, and beside it a colour bar with its limits.
/// Whoever is connected to draw() paints the map, in the colours of the bar. It can be popped out into a window of its
/// own.
class DispMBase : public QFrame, public PopDock
{
    Q_OBJECT

public:
    explicit DispMBase(QWidget *parent = nullptr);
    ~DispMBase() override;

    /// A range of the map: taken once, then left to the user until a double click or clearScale().
    void setRealRange(double x0, double y0, double x1, double y1);
    /// The natural range of the map, at every draw: see DispArea.
    void offerRange(const RealRange &natural);
    /// Sets the limits of the colour bar and shows them. Announces nothing, so that a drawing routine may call it.
    void setLimits(double min, double max);
    /// The natural limits of the colours, to be offered at a draw before the natural range. They are taken when they
    /// are others than those offered last, and when the scale is not fixed (unless the user chose limits); otherwise
    /// the limits that stand are the user's. Nothing is taken without natural limits or without the bar's automatic
    /// scaling.
    void offerLimits(const std::optional<ValueRange> &natural);
    /// For another map: takes its natural limits whatever the user had set. None leaves the limits as they are.
    void takeLimits(const std::optional<ValueRange> &natural);
    /// Limits that the user chose. They stay until other natural ones are offered or taken, or until a double click on
    /// the map with the left button and no modifier.
    void chooseLimits(const ValueRange &chosen);
    /// How wide a cell is, for the scale bar of pictures; no width or unit: none is drawn.
    void setCellWidth(double width, const QString &unit);
    /// The header's title and the window's. Where it does not fit beside the read-outs the header has the short one, or
    /// none.
    void setTitle(const QString &title, const QString &shortTitle = QString());
    /// Shows the value under the mouse.
    void showValue(const QString &text);
    /// Shows behind the value how far it can be trusted. There is room for it from the first text on.
    void showError(const QString &text);
    /// The columns and rows of the map: the drawing area gets its proportions, so that cells are square. None: it
    /// takes all the room.
    void setCells(const QSize &cells);
    DispArea *area() const { return ui.DispA; }
    cBar *bar() const { return ui.CBar; }
    /// The context menu of the header row.
    HeaderMenu *headerMenu() const { return m_menu; }

    /// Who gives the limits that leave out the outermost values; none: there are no values.
    std::function<std::optional<ValueRange>()> percentiles;

    MapPicture picture; ///< for the drawing routine: what it drew last
    Ui_DispMBase ui;

signals:
    void draw(QStylePainter *p);
    void nowPos(double x, double y);
    void mPressed(MouseC *m);
    void mDragging(MouseC *m);
    void mReleased(MouseC *m);
    void mDClicked(MouseC *m);

public slots:
    void receiveNowPos(double rx, double ry);
    void receiveDraw(QStylePainter *p);
    void popDock();
    void clearScale();
    /// Take what the user typed; a text that is no number is 0.
    void newZmax();
    void newZmin();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void addLabels();
    void connectArea();
    void placeArea();
    QRect areaIn(const QRect &room) const;
    void makeRoomInHeader();
    void showLimits();
    void showHandleValues();
    void forgetChosenLimits(const MouseC *m);
    void renderPicture(QStylePainter *p);
    QSize pictureSize() const;
    void takePercentiles();

    HeaderMenu *m_menu;
    QLabel *m_error = nullptr;      // behind the value
    QLabel *m_shortTitle = nullptr; // where the title does not fit
    QSize m_cells;
    double m_cellWidth = 0.0;
    QString m_unit;                            // of the cell's width
    std::optional<ValueRange> m_naturalLimits; // offered or taken last
    std::optional<ValueRange> m_chosenLimits;
};
