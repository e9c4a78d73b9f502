#pragma once

#include "display/MarkLine.h"
#include "display/MarkLines.h"

#include <QObject>
#include <QString>

#include <memory>
#include <vector>

class DispArea;
class QLineEdit;

/// The markers of one display, whose positions stand in fields of the panel: dragging one moves the field's number. A
/// click moves none.
class FieldMarkers : public QObject
{
    Q_OBJECT

public:
    FieldMarkers(DispArea *area, QObject *parent);

    /// Forgets all markers.
    void clear();
    /// A vertical marker at the number in `field`; with a base (the index of an earlier marker) at that number plus the
    /// base's.
    void add(QLineEdit *field, int base = -1);

signals:
    /// A marker is being dragged; its field has a new number.
    void moving();
    /// A dragged marker was let go: the user has edited this field, which said `before` until then.
    void edited(QLineEdit *field, const QString &before);

private:
    void noteText();
    void follow();
    void finish();

    const DispArea *m_area;
    MarkLines m_lines;
    std::vector<std::unique_ptr<MarkLine>> m_marks;
    QString m_before;         ///< of the field whose marker was picked
    bool m_isDragged = false; ///< the mouse has left the place of the press
};
