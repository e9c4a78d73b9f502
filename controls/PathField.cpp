#include "controls/PathField.h"

#include <QFontMetrics>

PathField::PathField(QWidget *parent)
    : FittedField(parent)
{
}

FittedField::Fit PathField::fitted(const QString &text, int width) const
{
    return {fontMetrics().elidedText(text, Qt::ElideLeft, width), font()};
}
