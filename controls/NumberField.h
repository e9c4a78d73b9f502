#pragma once

#include "controls/FittedField.h"

/// A field that shows a number which must not be cut: without its exponent it would read as another one. Where there is
/// no room it is painted smaller, down to 8 points, then rounded to as many significant digits as fit, five at most.
class NumberField : public FittedField
{
    Q_OBJECT

public:
    explicit NumberField(QWidget *parent = nullptr);

protected:
    Fit fitted(const QString &text, int width) const override;
};
