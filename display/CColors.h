#pragma once

#include "display/ColourTable.h"

#include <QColor>
#include <QObject>
#include <QVector>

/// Distinct colours of curves: colour i draws the i-th curve.
class CColors : public QObject
{
    Q_OBJECT

public:
    /// The base colours, extended to `count` colours when they are fewer.
    explicit CColors(int count = 40);
    CColors(const QVector<QColor> &base, int count);

    QVector<QColor> colors;
};
