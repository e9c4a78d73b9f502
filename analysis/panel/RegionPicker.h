#pragma once

#include "analysis/uncertainty/RegionStatistics.h"

#include <QObject>
#include <QPoint>
#include <QPointF>
#include <QSize>

#include <functional>
#include <optional>

class DispMBase;
class MouseC;
class QPainter;

/// Picks pixels of a map with the mouse: a rectangle with Control and the left button, which neither moves nor reports
/// anything else there, and the pixel for "Region: this pixel". It listens to what the map reports anyway.
class RegionPicker : public QObject
{
    Q_OBJECT

public:
    /// `cells`: columns and rows of the map as it is shown.
    RegionPicker(DispMBase *map, std::function<QSize()> cells, QObject *parent = nullptr);

    /// The pixel that was clicked last since takePixel() was asked, or else the one that the mouse was over last; none
    /// before the mouse was over the map.
    std::optional<QPoint> takePixel();
    /// The rectangle that is being dragged.
    void draw(QPainter *p) const;

signals:
    /// The pixels that a drag has touched, when the button is released.
    void picked(const PixelRectangle &pixels);

private:
    void move(double x, double y);
    void press(const MouseC &mouse);
    void release(const MouseC &mouse);
    std::optional<PixelRectangle> dragged() const;
    std::optional<QPoint> pixelAt(double x, double y) const;

    DispMBase *m_map;
    std::function<QSize()> m_cells;
    bool m_isDragging = false;
    std::optional<QPoint> m_clicked;
    std::optional<QPoint> m_pointed;
};
