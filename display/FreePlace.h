#pragma once

#include <QPointF>
#include <QPolygonF>
#include <QRectF>
#include <QSizeF>
#include <QVector>

/// Of the places (upper left corners, pixels) for a rectangle of that size the one where it covers the least length of
/// `lines`, of equals the first. A null rectangle without places. A line that only touches the rectangle counts.
QRectF freePlace(const QVector<QPointF> &places, const QSizeF &size, const QVector<QPolygonF> &lines);
