#pragma once

#include <QByteArray>

#include <cmath>
#include <cstdint>

namespace sample
{

/// Appends `value` with `decimals` (0 to 10) digits after the decimal point, whatever the locale, rounded half away
/// from zero; at least `width` characters, blanks in front. For magnitudes below 9e18 / 10^decimals.
inline void appendFixed(QByteArray *text, double value, int decimals, int width = 0)
{
    double scale = 1.0;
    for (int i = 0; i < decimals; ++i)
        scale *= 10.0;
    const bool negative = value < 0.0;
    auto digits = static_cast<std::uint64_t>(std::floor((negative ? -value : value) * scale + 0.5));

    char buffer[32];
    char *const end = buffer + sizeof buffer;
    char *p = end;
    const bool zero = digits == 0;
    for (int i = 0; i <= decimals || digits != 0; ++i) {
        if (i == decimals && decimals > 0)
            *--p = '.';
        *--p = static_cast<char>('0' + digits % 10);
        digits /= 10;
    }
    if (negative && !zero)
        *--p = '-';
    while (end - p < width && p != buffer)
        *--p = ' ';
    text->append(p, static_cast<int>(end - p));
}

} // namespace sample
