#pragma once

#include "numeric/FieldText.h"

#include <QLineEdit>
#include <QString>

/// The number in a field, 0 when it holds none.
inline double number(const QLineEdit *field)
{
    return field->text().toDouble();
}

/// Shows a text in a field, from its first character on.
inline void showText(QLineEdit *field, const QString &text)
{
    field->setText(text);
    field->setCursorPosition(0);
}

/// Shows a number in a field, from its first digit on.
inline void showNumber(QLineEdit *field, double value)
{
    showText(field, fieldText(value));
}
