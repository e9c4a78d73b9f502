#pragma once

#include <QString>

/// The text of a number that the program writes into a field: general format, six significant digits, a decimal
/// point whatever the locale.
inline QString fieldText(double value)
{
    return QString::number(value, 'g', 6);
}

/// The number that comes back when such a field is read: the four-points method calculates with what the user sees.
inline double asFieldNumber(double value)
{
    return fieldText(value).toDouble();
}
