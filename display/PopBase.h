#pragma once

#include "ui_PopBase.h"

#include <QFrame>

/// The window of a display that is popped out. It never keeps the program running.
class PopBase : public QFrame
{
    Q_OBJECT

public:
    explicit PopBase(QWidget *parent = nullptr);

    /// Where the popped part goes.
    QGridLayout *layoutForContent() { return ui.PopBaseLayout; }

signals:
    void closed();

public slots:
    /// Repaints what the content leaves free of the window. To be connected to the content's own draw(): repainting the
    /// content too would have it ask again, without end.
    void updateAround();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    Ui_PopBase ui;
};
