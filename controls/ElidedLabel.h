#pragma once

#include <QLabel>
#include <QSize>

/// A label of one line that yields its room to others and then ends its text in dots.
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget *parent = nullptr);

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};
