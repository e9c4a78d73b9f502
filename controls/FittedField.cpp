#include "controls/FittedField.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QToolTip>

FittedField::FittedField(QWidget *parent)
    : QLineEdit(parent)
{
}

QSize FittedField::sizeHint() const
{
    return {minimumSizeHint().width(), QLineEdit::sizeHint().height()};
}

QRect FittedField::textRect() const
{
    constexpr int margin = 1; // pixels beside the text
    QStyleOptionFrame panel;
    initStyleOption(&panel);
    return style()->subElementRect(QStyle::SE_LineEditContents, &panel, this).adjusted(margin, 0, -margin, 0);
}

FittedField::Fit FittedField::shown() const
{
    const int room = textRect().width();
    return fontMetrics().horizontalAdvance(text()) <= room ? Fit{text(), font()} : fitted(text(), room);
}

bool FittedField::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && shown().text != text()) {
        const QString what = toolTip() == text() || toolTip().isEmpty() ? QString() : QLatin1Char('\n') + toolTip();
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), text() + what, this);
        return true;
    }
    return QLineEdit::event(event);
}

void FittedField::paintEvent(QPaintEvent *event)
{
    const Fit fit = shown();
    if (hasFocus() || (fit.text == text() && fit.font == font())) {
        QLineEdit::paintEvent(event);
        return;
    }
    QStyleOptionFrame panel;
    initStyleOption(&panel);
    QPainter p(this);
    style()->drawPrimitive(QStyle::PE_PanelLineEdit, &panel, &p, this);
    p.setFont(fit.font);
    p.setPen(palette().color(QPalette::Text));
    p.drawText(textRect(), static_cast<int>(Qt::AlignVCenter | (alignment() & Qt::AlignHorizontal_Mask)), fit.text);
}
