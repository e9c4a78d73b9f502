#pragma once

#include "numeric/NumberText.h"

#include <QString>

/// The text of a number that the program writes into a field: general format, six significant digits, a decimal
/// point whatever the locale, as in every file it writes.
inline QString fieldText(double value)
{
    char text[numeric::g6Room];
    return QString::fromLatin1(text, static_cast<int>(numeric::writeG6(value, text) - text));
}
