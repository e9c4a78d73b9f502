#pragma once

#include <QLineEdit>
#include <QSize>

/// A field that shows a number which must not be cut: without its exponent it would read as another one. Where there is
/// no room the text shrinks, to half its size at most. The field asks for the same room all the time.
class NumberField : public QLineEdit
{
    Q_OBJECT

public:
    explicit NumberField(QWidget *parent = nullptr);

    QSize sizeHint() const override { return m_hint; }
    QSize minimumSizeHint() const override { return m_leastHint; }

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void fit();

    qreal m_size; ///< points, of a text that fits
    QSize m_hint;
    QSize m_leastHint;
};
