#pragma once

#include "controls/FittedField.h"

/// A field with the path of a file. What tells files apart stands at its end, so a long one is painted without its
/// beginning.
class PathField : public FittedField
{
    Q_OBJECT

public:
    explicit PathField(QWidget *parent = nullptr);

protected:
    Fit fitted(const QString &text, int width) const override;
};
