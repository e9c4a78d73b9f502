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

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    Ui_PopBase ui;
};
