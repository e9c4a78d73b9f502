#pragma once

#include <QColor>
#include <QFont>
#include <QObject>
#include <QRectF>
#include <QStringList>
#include <QVector>

class QPainter;

/// Draws texts into rectangles at a size that fits them, and remembers rectangles that are taken. `flags` are those of
/// QPainter::drawText; sizes are in points; a size that is not a positive number draws nothing.
class DrawText : public QObject
{
    Q_OBJECT

public:
    explicit DrawText(QObject *parent = nullptr);

    /// Draws `text` into `rect`. With `fit` 1 at the largest size that fits, but at most `maxSize` where that is
    /// positive; returns the text's bounding box. With any other `fit` in the font as it is; returns an empty
    /// rectangle. The painter keeps its font.
    QRectF drawText(QPainter *painter, const QRectF &rect, const QFont &font, int flags, int fit, const QString &text,
                    double maxSize);
    /// The largest size at which `text` fits into `rect`; 10 for a text that takes no room.
    double fitSize(QPainter *painter, const QRectF &rect, const QFont &font, int flags, const QString &text);
    /// Draws every text into `rect`; with `fit` 0 all at the one size at which the largest of them fits, with a tenth
    /// to spare.
    void drawTexts(QPainter *painter, const QRectF &rect, const QFont &font, int flags, int fit,
                   const QStringList &texts, double maxSize);

    /// The same rectangle with positive width and height.
    static QRectF normalized(const QRectF &rect);
    void addRect(const QRectF &rect);
    /// Whether a rectangle meets one that is taken.
    bool overlaps(const QRectF &rect) const;

    int current = -1;
    QVector<QRectF> used; ///< taken rectangles, real coordinates
    /// For drawing routines.
    QColor color0{0, 220, 220};
    QColor color1{170, 255, 170};
    QColor color2{140, 180, 140};
    QColor color3{0, 0, 0};
};
