#pragma once

#include "numeric/FieldText.h"

#include <QLineEdit>

/// The number in a field, 0 when it holds none.
inline double number(const QLineEdit *field)
{
    return field->text().toDouble();
}

/// Shows a number in a field, from its first digit on.
inline void showNumber(QLineEdit *field, double value)
{
    field->setText(fieldText(value));
    field->setCursorPosition(0);
}
