#pragma once

#include "display/ChCoord.h"
#include "display/DrawText.h"
#include "display/MarkLines.h"
#include "display/MouseC.h"
#include "display/RealRange.h"

#include "ui_DispArea.h"

#include <QFrame>
#include <QPointer>

#include <optional>

class QStylePainter;

/// The surface of a graph or map. It asks for its picture by emitting draw(), turns the mouse into zoom (wheel), pan
/// (Shift and drag) and reset (double click) of the real range of `cc`, and reports plain presses and drags, every
/// release and every double click.
class DispArea : public QFrame
{
    Q_OBJECT

public:
    explicit DispArea(QWidget *parent = nullptr);

    /// Has the area's picture painted, as large as on screen: on the screen or into a picture file.
    void renderArea(QStylePainter *p);
    /// Outlines the plot and labels the ends of its range; first wipes what was drawn beyond the plot if
    /// `clearMargins`. To be called when the data are drawn.
    void drawScale(QStylePainter *p, bool clearMargins);
    /// Sets a natural range, unless the range is fixed; fixes it.
    void setRealRange(const RealRange &range);
    /// What every paint offers: the natural range of what it shows. The plot follows it while the user has not zoomed.
    /// A zoom stays until the natural range becomes another one along the axes of `follow`; nothing moves while a
    /// marker is being dragged.
    void offerRange(const RealRange &natural, Follow follow = Follow::BothAxes);
    /// Whether an offer would be another natural range than the last one.
    bool isAnother(const RealRange &natural, Follow follow = Follow::BothAxes) const;
    /// The real range that the plot shows.
    RealRange shownRange() const;

    MouseC mouse;
    ChCoord cc;
    bool hasTicks = false;   ///< the scale has ticks between its ends
    bool scaleFixed = false; ///< the range was set once, or by the user: drawing routines leave it
    DrawText dt;
    QPointer<MarkLines> markLines; ///< not owned, may be null

signals:
    void nowPos(double rx, double ry);
    void draw(QStylePainter *p);
    void mPressed(MouseC *m);
    void mDragging(MouseC *m);
    void mReleased(MouseC *m);
    void mDClicked(MouseC *m);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    void showMarkers();
    void pan();

    std::optional<RealRange> m_offered; // the last natural range
    Ui_DispArea ui;
};
