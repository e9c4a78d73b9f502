#pragma once

#include "ui_cBar.h"

#include "display/ChCoord.h"
#include "display/ColourScale.h"
#include "display/MouseC.h"

#include <QColor>
#include <QFrame>
#include <QVector>

class ColourBarMenu;

/// A vertical colour bar: the colours of a map, the value range that they stand for, and two ends that the user drags
/// to stretch the colours over a part of the range. A menu of its own chooses among the colour scales.
class cBar : public QFrame
{
    Q_OBJECT

public:
    explicit cBar(QWidget *parent = nullptr);

    /// Colour of a value; see colourIndex.
    QColor getColor(double v) const;
    /// The value at a colour index: what stands at a handle for topIndex and bottomIndex.
    double valueAt(double index) const;
    /// Replaces the colours by those of type 0 ... maxCBarTypes() - 1 (any other is 0) and undoes the stretch.
    void setCBarType(int type);
    /// Beyond the types: one of the further scales of the menu.
    int cBarType() const { return m_scale; }
    /// Exchanges the limits when they stand the wrong way round, then announces the scale.
    void checkZOrder();
    /// Sets both limits and announces nothing: for the drawing routine, which runs within a paint.
    void setLimits(double min, double max);

    /// Paints the bar as large as on screen, without the lines at its ends.
    void renderBar(QPainter *painter);

    double zmax() const { return m_zmax; }
    double zmin() const { return m_zmin; }
    /// Whether the drawing routine sets the limits from the data.
    bool autoScale() const { return m_autoScale; }

    /// What getColor does, for whole maps.
    ColourScale colourScale() const;
    ColourTable shownTable() const;

    MouseC mouse;
    ChCoord cc;                        ///< colour index as real y
    QVector<QColor> colors;            ///< index 0 at the low end
    QColor aboveColor{255, 255, 255};  ///< above the upper end of the colours
    QColor belowColor{0, 0, 0};        ///< below the lower end
    QColor handleColor{150, 255, 150}; ///< lines at the two ends
    int nColors = 0;
    int topIndex = 0, bottomIndex = 0;    ///< colour indices of the two ends
    int topPix = 0, bottomPix = 0;        ///< rows where the ends were drawn last
    double idxAtTop = 0, idxAtBottom = 0; ///< colour indices at the edges of the bar and of zmax and zmin
    bool invert = false;
    int grabbed = 2; ///< end being dragged: 0 upper, 1 lower, 2 none. Stays after a release

signals:
    void newScale();
    /// The user wants the limits to leave out the outermost values.
    void percentilesWanted();

public slots:
    void setAutoScale(bool f);
    /// Sets a limit; when it passes the other one, the two are exchanged.
    void newZmax(double max);
    void newZmin(double min);
    int maxCBarTypes() const;
    /// Stores the flag only: neither repaints nor announces.
    void setInvertCBar(bool inverted);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void chooseScale(int position);
    void chooseInverted(bool inverted);
    void setColours(const ColourTable &table);
    const QColor &shownColor(int index) const { return colors.at(invert ? nColors - 1 - index : index); }

    Ui_cBar ui;
    ColourBarMenu *m_menu;
    int m_scale = 0; // among the offered scales
    double m_zmax = 1.0, m_zmin = 0.0;
    bool m_autoScale = true;
};
