#pragma once

#include <QString>

/// The text of a number that the program writes into a field: general format, six significant digits, a decimal
/// point whatever the locale.
inline QString fieldText(double value)
{
    return QString::number(value, 'g', 6);
}
