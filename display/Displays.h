#pragma once

#include "ui_Displays.h"

#include <QFrame>
#include <QPointer>
#include <QVector>

class DispABase;
class MouseC;
class QStylePainter;

/// The analysis' graphs in a grid. Whatever one of them asks for or reports is passed on with its identity.
class Displays : public QFrame
{
    Q_OBJECT

public:
    enum DispId { Ref1, Ref2, Ref3, Ref4, Target, Muts, LcfVsMps, HistA, HistDMut, DMutVorA, M2M3 };
    Q_ENUM(DispId)

    explicit Displays(QWidget *parent = nullptr);
    ~Displays() override;

    /// Registers a display under a title and an identity and, unless col or row is negative, places it in the grid. A
    /// display that is not placed and has no parent is deleted with this panel.
    void addDisp(DispABase *dab, const QString &title, DispId id, int col, int row, int colSpan, int rowSpan);

    /// The display registered first under an identity; null without one.
    DispABase *display(DispId id) const { return dabs.value(ids.indexOf(id)); }

    QVector<DispABase *> dabs; ///< in the order registered
    QVector<DispId> ids;       ///< parallel to dabs

signals:
    void draw(Displays::DispId id, DispABase *dab, QStylePainter *p);
    void mPressed(DispABase *dab, MouseC *m);
    void mDragging(DispABase *dab, MouseC *m);
    void mReleased(DispABase *dab, MouseC *m);

public slots:
    void receiveDraw(QStylePainter *p);
    void receiveMPressed(MouseC *m);
    void receiveMDragging(MouseC *m);
    void receiveMReleased(MouseC *m);

private:
    DispABase *senderDisplay() const;

    QVector<QPointer<DispABase>> m_unplaced;
    Ui_Displays ui;
};
