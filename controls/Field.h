#pragma once

#include "numeric/FieldText.h"
#include "numeric/PlainNumber.h"

#include <QLineEdit>
#include <QString>

/// The number that a user means by a text, 0 when it is none.
inline double number(const QString &text, bool *isNumber = nullptr)
{
    return numeric::plainNumber(text).text.toDouble(isNumber);
}

/// The number in a field, 0 when it holds none.
inline double number(const QLineEdit *field)
{
    return number(field->text());
}

/// Shows lines of a note below the first line of a widget's tool tip, in the place of the last note; empty: none.
inline void showNote(QWidget *widget, const QString &note)
{
    const QString what = widget->toolTip().section(QLatin1Char('\n'), 0, 0);
    widget->setToolTip(note.isEmpty() ? what : what + QLatin1Char('\n') + note);
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
