#pragma once

#include <QColor>
#include <QPen>
#include <QPolygonF>
#include <QString>
#include <QVector>

class ChCoord;
class QPainter;

struct LegendEntry {
    QString name;
    QPen pen; ///< of the sample line
};

/// Draws the names of curves beside a piece of their line, into that corner of the plot (or the middle of its upper or
/// lower edge) where they cover the least of `curves`, given in pixels. The text is `textPixels` high, 0: as high as
/// that of the plot's graphs on the screen. Where they do not fit the text is made smaller, to two thirds of
/// `textPixels`; then long names and long lists are cut.
void drawLegend(QPainter *p, const ChCoord &cc, const QVector<LegendEntry> &entries, const QVector<QPolygonF> &curves,
                int textPixels = 0);
