#pragma once

#include <QObject>
#include <QVector>

class ChCoord;
class MarkLine;
class MouseC;

/// The marker lines of one graph. The drawing area lets the mouse pick and move them; whoever fills the list owns the
/// markers.
class MarkLines : public QObject
{
    Q_OBJECT

public:
    explicit MarkLines(QObject *parent = nullptr);

    /// Forgets all markers.
    void clear();
    /// The real coordinate of marker i: its number, plus for a relative marker its base's own number.
    double position(int i) const;

    /// The marker nearest to a pixel if it is less than 20 pixels away, of equals the one added first; -1 for none.
    int nearest(const ChCoord &cc, double x, double y) const;
    /// Selects the marker nearest to the press, if there is one. A marker that was still moving is thereby done with.
    void pick(const ChCoord &cc, const MouseC &mouse);
    /// Moves the selected marker to the mouse.
    void drag(const ChCoord &cc, const MouseC &mouse);
    /// Moves the selected marker to the mouse and lets it go.
    void release(const ChCoord &cc, const MouseC &mouse);

    QVector<MarkLine *> marks; ///< in the order added
    bool isMoving = false;
    int selected = -1;

signals:
    void moving(); ///< a drag has moved the selected marker
    void newPos(); ///< a drag has ended

private:
    double baseNumber(const MarkLine &mark) const;
};
