#include "controls/NumberField.h"

#include <QFont>
#include <QFontMetrics>

NumberField::NumberField(QWidget *parent)
    : QLineEdit(parent)
    , m_size(font().pointSizeF())
    , m_hint(QLineEdit::sizeHint())
    , m_leastHint(QLineEdit::minimumSizeHint())
{
    connect(this, &QLineEdit::textChanged, this, &NumberField::fit);
}

void NumberField::resizeEvent(QResizeEvent *event)
{
    QLineEdit::resizeEvent(event);
    fit();
}

void NumberField::fit()
{
    constexpr int padding = 8; // pixels that a line edit keeps beside its text
    constexpr qreal smallest = 0.5;
    if (m_size <= 0) // a font in pixels
        return;
    QFont fitting = font();
    fitting.setPointSizeF(m_size);
    const int wanted = QFontMetrics(fitting).horizontalAdvance(text());
    const int room = width() - padding;
    if (wanted > room)
        fitting.setPointSizeF(m_size * qMax(smallest, static_cast<qreal>(room) / wanted));
    if (fitting.pointSizeF() != font().pointSizeF())
        setFont(fitting);
}
